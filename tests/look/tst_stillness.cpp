#include <QTest>

#include "stillness.h"
#include "support/quizdesk.h"
#include "support/states.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;
using platform::Window;

namespace {

enum class Room { Least, Enlarged };

}  // namespace

/// Nothing jumps: whatever a window shows, its controls and its texts stay where they are.
class tst_stillness final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase_data() {
        QTest::addColumn<double>("textSize");
        QTest::addColumn<Room>("room");
        QTest::newRow("100 % text, least window") << 1.0 << Room::Least;
        QTest::newRow("100 % text, enlarged window") << 1.0 << Room::Enlarged;
        QTest::newRow("200 % text, least window") << 2.0 << Room::Least;
    }

    void init() {
        ProgramTest::init();
        QFETCH_GLOBAL(const double, textSize);
        QFont font = QApplication::font();
        font.setPointSizeF(font.pointSizeF() * textSize);
        QApplication::setFont(font);
        stillness_ = Stillness();
    }

    void cleanup() {
        ProgramTest::cleanup();
        QCOMPARE(stillness_.moved(), QString());
    }

    void questionsVerdictsAndTheClockMoveNothing() {
        store::set(u"currentTest"_s, u"7"_s);
        store::set(u"timedQuizzes"_s, u"yes"_s);
        const auto quiz = open<MainTest>(u"MainTest"_s);
        Window &window = *quiz->window();
        stillness_.look(window, u"as it opens"_s);
        for (int question = 1; question <= 77; ++question) {
            quizRun().quizTimer->fire();
            states::ask(question);
            QCoreApplication::processEvents();
            stillness_.look(window, u"Question %1"_s.arg(question));
            const int rightAnswer = quizRun().correctAnswerNumber;
            const int wrongAnswer = rightAnswer == 1 ? 2 : 1;
            const bool right = question % 2 == 0;
            quizdesk::answer(&window, right ? rightAnswer : wrongAnswer);
            QCoreApplication::processEvents();
            QCOMPARE(desk::text(&window, u"lblStatus"_s), right ? u"correct"_s : u"wrong"_s);
            stillness_.look(window, u"Answer to question %1"_s.arg(question));
        }
        QVERIFY(stillness_.seen() > 200);
    }

    void otherLevelsMoveNothing() {
        const auto menu = open<MainMenu>(u"MainMenu"_s);
        for (const QString &level : {u"0"_s, u"1"_s, u"2"_s, u"3"_s}) {
            setLevels(level);
            desk::click(menu->window(), u"btnRefresh"_s);
            QCoreApplication::processEvents();
            QCOMPARE(menu->progressbarMain.get()->doubleValue(), 7 * level.toDouble());
            stillness_.look(*menu->window(), u"Level "_s + level);
        }
    }

    void theChoiceOfTheTimingMovesNothing() {
        const auto settings = open<SettingsController>(u"Settings"_s);
        for (const QString &radio : {u"noRadio"_s, u"yesRadio"_s, u"noRadio"_s}) {
            desk::click(settings->window(), radio);
            QCoreApplication::processEvents();
            stillness_.look(*settings->window(), radio);
        }
    }

    void everyOutcomeStandsInTheSamePlace() {
        for (int quiz = 1; quiz <= 7; ++quiz) {
            store::set(u"currentTest"_s, QString::number(quiz));
            const auto results = open<QuizComplete>(u"QuizComplete"_s);
            for (const QString &status : {u"pass"_s, u"fail"_s}) {
                store::set(u"currentStatus"_s, status);
                for (int passCount = 0; passCount <= 3; ++passCount) {
                    results->SetCheckMarks(passCount);
                    QCoreApplication::processEvents();
                    stillness_.look(
                        *results->window(),
                        u"Quiz %1, %2, pass count %3"_s.arg(quiz).arg(status).arg(passCount));
                }
            }
            desk::clear();
        }
    }

    void everyPercentageStandsInTheSamePlace() {
        for (const auto &[level, percentage] :
             {std::pair{u"0"_s, u"0%"_s}, std::pair{u"1"_s, u"33%"_s},
              std::pair{u"3"_s, u"100%"_s}}) {
            setLevels(level);
            const auto overview = open<progress>(u"progress"_s);
            QCOMPARE(desk::text(overview->window(), u"lblQuiz1Progress"_s), percentage);
            stillness_.look(*overview->window(), percentage);
            desk::clear();
        }
    }

    void pointerAndFocusMoveNothing_data() { layoutRows(); }

    void pointerAndFocusMoveNothing() {
        QFETCH(const QString, layout);
        Window &window = *openWindow(layout);
        resize(window);
        states::settle(window);
        stillness_.lookAtControls(window, u"as it opens"_s);
        for (QWidget *control : window.findChildren<QWidget *>()) {
            // Menus are left out: they open when they are pressed.
            if (control->isVisible() && control->window() == &window &&
                control->parentWidget() != &window) {
                pointAt(window, *control);
            }
        }
    }

 private:
    static void setLevels(const QString &level) {
        for (int quiz = 1; quiz <= 7; ++quiz) {
            store::set(u"quiz%1"_s.arg(quiz), level);
        }
    }

    template <class Controller>
    std::shared_ptr<Controller> open(const QString &layout) {
        auto controller = platform::makeController<Controller>(layout);
        controller->showWindow();
        resize(*controller->window());
        return controller;
    }

    static void resize(Window &window) {
        QFETCH_GLOBAL(const Room, room);
        window.resize(room == Room::Least ? QSize(1, 1) : window.size() * 1.4);
        QCoreApplication::processEvents();
    }

    void pointAt(Window &window, QWidget &control) {
        const QString path = Stillness::pathOf(control);
        QWindow *handle = window.windowHandle();
        const QPoint middle = control.mapTo(&window, control.rect().center());
        const QPoint corner(1, window.height() - 2);
        if (control.isEnabled() && !control.testAttribute(Qt::WA_TransparentForMouseEvents) &&
            control.visibleRegion().contains(control.rect().center())) {
            pointer::moveTo(control);
            stillness_.lookAtControls(window, u"With the pointer on "_s + path);
            QTest::mousePress(handle, Qt::LeftButton, {}, middle);
            QCoreApplication::processEvents();
            stillness_.lookAtControls(window, u"With a button held on "_s + path);
            // Released elsewhere, it does nothing.
            QTest::mouseMove(handle, corner);
            QTest::mouseRelease(handle, Qt::LeftButton, {}, corner);
        }
        if (control.focusPolicy() != Qt::NoFocus) {
            control.setFocus(Qt::TabFocusReason);
            QCoreApplication::processEvents();
            QVERIFY2(control.hasFocus() || !control.isEnabled(), qPrintable(path));
            stillness_.lookAtControls(window, u"With the focus on "_s + path);
        }
    }

    Stillness stillness_;
};

ZORVAN_TEST(tst_stillness)
#include "tst_stillness.moc"
