#include <array>

#include <QTest>

#include "content/questionnumbers.h"
#include "progress/progress.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "shell/appdelegate.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "stillness.h"
#include "support/desk.h"
#include "support/golden.h"
#include "support/store.h"
#include "support/testmain.h"
#include "windowing/application.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;
using platform::Window;

namespace {

#define VERIFY_STILL(look)                            \
    do {                                              \
        const QString moved = look;                   \
        QVERIFY2(moved.isEmpty(), qPrintable(moved)); \
    } while (false)

enum class Room { Least, AsItOpens, Enlarged };

using Operation = void (MainTest::*)();
const std::array operations{
#define OPERATION(number) &MainTest::Question##number,
    FOR_EACH_QUESTION_NUMBER(OPERATION)
#undef OPERATION
};

}  // namespace

/// Nothing jumps: whatever a window shows, its controls and its texts stay where they are.
class tst_stillness final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() {
        font_ = QApplication::font();
        platform::Application::shared().loadMainLayout(delegate_);
    }

    void init() {
        store::fill(store::seeded());
        applyTextSize();
    }

    void cleanup() {
        desk::clear();
        QApplication::setFont(font_);
    }

    void questionsAndVerdictsMoveNoControl_data() { addSizes(); }

    void questionsAndVerdictsMoveNoControl() {
        for (const bool timed : {false, true}) {
            const auto quiz = openQuiz(timed);
            Window &window = *quiz->window();
            // Drawing makes no difference here and takes time.
            window.setUpdatesEnabled(false);
            stillness::Controls controls;
            VERIFY_STILL(controls.look(window, u"as it opens"_s));
            for (int number = 1; number <= 77; ++number) {
                // The answer at the last position would end the attempt.
                ask(*quiz, number, number % 28);
                VERIFY_STILL(controls.look(window, moment(number, "on screen")));
                answer(*quiz, number, true);
                VERIFY_STILL(controls.look(window, moment(number, "answered right")));
                desk::click(&window, u"btnNextQuestion"_s);
                QCoreApplication::processEvents();
                VERIFY_STILL(controls.look(window, moment(number, "left behind")));
                ask(*quiz, number, number % 28);
                answer(*quiz, number, false);
                VERIFY_STILL(controls.look(window, moment(number, "answered wrong")));
            }
            QVERIFY(controls.size() >= 15);
            desk::clear();
        }
    }

    void theClockMovesNothing_data() { addSizes(); }

    void theClockMovesNothing() {
        const auto quiz = openQuiz(true);
        Window &window = *quiz->window();
        stillness::Controls controls;
        stillness::Writing writing;
        VERIFY_STILL(controls.look(window, u"Before the first tick"_s));
        // Down from several minutes, and down to none.
        for (const int minutes : {7, 1}) {
            quizRun().minutesLeft = minutes;
            quizRun().secondsLeft = 12;
            for (int tick = 0; tick < 15; ++tick) {
                const QString before = desk::text(&window, u"lblTimeLeft"_s);
                quizRun().quizTimer->fire();
                QCoreApplication::processEvents();
                const QString time = desk::text(&window, u"lblTimeLeft"_s);
                QVERIFY2(time != before, qPrintable(time));
                VERIFY_STILL(controls.look(window, time));
                VERIFY_STILL(writing.look(stillness::Ink(window), time));
            }
        }
    }

    void questionsDifferInNothingButTheirTexts_data() {
        QTest::addColumn<double>("textSize");
        QTest::addColumn<Room>("room");
        QTest::newRow("100 % text") << 1.0 << Room::AsItOpens;
        QTest::newRow("200 % text") << 2.0 << Room::AsItOpens;
    }

    void questionsDifferInNothingButTheirTexts() {
        const auto quiz = openQuiz(false);
        Window &window = *quiz->window();
        stillness::Writing writing;
        QMap<QString, QImage> stages;
        const auto differenceFromBefore = [&](const QImage &stage, const QString &situation,
                                              const QString &moment) {
            if (!stages.contains(situation)) {
                stages[situation] = stage;
            }
            return stillness::differenceOf(window, stage, stages[situation], moment);
        };
        for (int number = 1; number <= 77; ++number) {
            ask(*quiz, number, 11);
            const QString asked = moment(number, "on screen");
            const stillness::Ink ink(window);
            VERIFY_STILL(writing.look(ink, asked));
            for (const QString &name :
                 {u"lblQuestion"_s, u"lblAnswer1"_s, u"lblAnswer2"_s, u"lblAnswer3"_s}) {
                const auto &label = desk::control<QLabel>(&window, name);
                if (!label.text().isEmpty() && startsWhereOthersDo(label)) {
                    VERIFY_STILL(writing.lookAtStart(ink, label, asked));
                }
            }
            // If there are only two answers, the third row may look different.
            const QString answers =
                u"%1 %2"_s.arg(int(desk::control(&window, u"btnAnswer3"_s).isEnabled()))
                    .arg(int(desk::text(&window, u"lblAnswer3"_s).isEmpty()));
            VERIFY_STILL(differenceFromBefore(ink.stage(), answers, asked));

            const bool right = number % 3 != 0;
            answer(*quiz, number, right);
            const QString answered = moment(number, "answered");
            const stillness::Ink inkAfterwards(window);
            VERIFY_STILL(writing.look(inkAfterwards, answered));
            VERIFY_STILL(differenceFromBefore(
                inkAfterwards.stage(),
                u"%1 %2 %3"_s.arg(answers).arg(golden::question(number).right).arg(right),
                answered));
        }
    }

    void otherLevelsMoveNothing_data() { addSizes(); }

    void otherLevelsMoveNothing() {
        const auto menu = open<MainMenu>(u"MainMenu"_s);
        Window &window = *menu->window();
        stillness::Controls controls;
        stillness::Writing writing;
        for (const QString &level : {u"0"_s, u"1"_s, u"2"_s, u"3"_s}) {
            for (int quiz = 1; quiz <= 7; ++quiz) {
                store::set(u"quiz%1"_s.arg(quiz), level);
            }
            desk::click(&window, u"btnRefresh"_s);
            QCoreApplication::processEvents();
            QCOMPARE(menu->progressbarMain.get()->doubleValue(), 7 * level.toDouble());
            const QString moment = u"Level "_s + level;
            VERIFY_STILL(controls.look(window, moment));
            VERIFY_STILL(writing.look(stillness::Ink(window), moment));
        }
    }

    void theChoiceOfTheTimingMovesNothing_data() { addSizes(); }

    void theChoiceOfTheTimingMovesNothing() {
        const auto settings = open<SettingsController>(u"Settings"_s);
        Window &window = *settings->window();
        stillness::Controls controls;
        stillness::Writing writing;
        for (const QString &radio : {u"noRadio"_s, u"yesRadio"_s, u"noRadio"_s}) {
            desk::click(&window, radio);
            QCoreApplication::processEvents();
            QVERIFY(desk::control<QAbstractButton>(&window, radio).isChecked());
            VERIFY_STILL(controls.look(window, radio));
            // The focus ring around a text would vanish with the text.
            window.focusWidget()->clearFocus();
            VERIFY_STILL(writing.look(stillness::Ink(window), radio));
        }
    }

    void everyOutcomeStandsInTheSamePlace_data() { addSizes(); }

    void everyOutcomeStandsInTheSamePlace() {
        stillness::Controls controls;
        stillness::Writing writing;
        for (int quiz = 1; quiz <= 7; ++quiz) {
            store::set(u"currentTest"_s, QString::number(quiz));
            const auto results = open<QuizComplete>(u"QuizComplete"_s);
            Window &window = *results->window();
            for (const QString &status : {u"pass"_s, u"fail"_s}) {
                store::set(u"currentStatus"_s, status);
                for (int passCount = 0; passCount <= 3; ++passCount) {
                    results->SetCheckMarks(passCount);
                    QCoreApplication::processEvents();
                    const QString moment =
                        u"Quiz %1, %2, pass count %3"_s.arg(quiz).arg(status).arg(passCount);
                    VERIFY_STILL(controls.look(window, moment));
                    VERIFY_STILL(writing.look(stillness::Ink(window), moment));
                }
            }
            desk::clear();
        }
    }

    void everyPercentageStandsInTheSamePlace_data() { addSizes(); }

    void everyPercentageStandsInTheSamePlace() {
        stillness::Controls controls;
        stillness::Writing writing;
        for (const auto &[level, percentage] :
             {std::pair{u"0"_s, u"0%"_s}, std::pair{u"1"_s, u"33%"_s},
              std::pair{u"3"_s, u"100%"_s}}) {
            for (int quiz = 1; quiz <= 7; ++quiz) {
                store::set(u"quiz%1"_s.arg(quiz), level);
            }
            const auto overview = open<progress>(u"progress"_s);
            Window &window = *overview->window();
            QCOMPARE(desk::text(&window, u"lblQuiz1Progress"_s), percentage);
            VERIFY_STILL(controls.look(window, percentage));
            VERIFY_STILL(writing.look(stillness::Ink(window), percentage));
            desk::clear();
        }
    }

    void pointerAndFocusMoveNothing_data() { addSizes(); }

    void pointerAndFocusMoveNothing() {
        store::set(u"currentTest"_s, u"7"_s);
        const std::array<std::shared_ptr<platform::WindowController>, 6> controllers{
            open<MainMenu>(u"MainMenu"_s),           open<MainTest>(u"MainTest"_s),
            open<QuizComplete>(u"QuizComplete"_s),   open<progress>(u"progress"_s),
            open<SettingsController>(u"Settings"_s), open<Help>(u"Help"_s)};
        for (const auto &controller : controllers) {
            Window &window = *controller->window();
            window.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&window));
            stillness::Controls controls;
            VERIFY_STILL(controls.look(window, u"as it opens"_s));
            for (QWidget *control : window.findChildren<QWidget *>()) {
                // Menus are left out: they open when they are pressed.
                if (control->isVisible() && control->window() == &window &&
                    control->parentWidget() != &window) {
                    pointAt(window, *control, controls);
                    if (QTest::currentTestFailed()) {
                        return;
                    }
                }
            }
        }
    }

 private:
    static void addSizes() {
        QTest::addColumn<double>("textSize");
        QTest::addColumn<Room>("room");
        for (const auto &[size, textSize] : {std::pair{"100 %", 1.0}, std::pair{"200 %", 2.0}}) {
            QTest::addRow("%s text, least window", size) << textSize << Room::Least;
            QTest::addRow("%s text, window as it opens", size) << textSize << Room::AsItOpens;
            QTest::addRow("%s text, enlarged window", size) << textSize << Room::Enlarged;
        }
    }

    void applyTextSize() {
        QFETCH(const double, textSize);
        QFont font = font_;
        font.setPointSizeF(font.pointSizeF() * textSize);
        QApplication::setFont(font);
    }

    template <class Controller>
    std::shared_ptr<Controller> open(const QString &layout) {
        auto controller = platform::makeController<Controller>(layout);
        controller->showWindow();
        Window &window = *controller->window();
        QFETCH(const Room, room);
        if (room == Room::Least) {
            window.resize(1, 1);
        } else if (room == Room::Enlarged) {
            window.resize(window.size() * 1.4);
        }
        QCoreApplication::processEvents();
        return controller;
    }

    std::shared_ptr<MainTest> openQuiz(bool timed) {
        store::set(u"currentTest"_s, u"7"_s);
        store::set(u"timedQuizzes"_s, timed ? u"yes"_s : u"no"_s);
        return open<MainTest>(u"MainTest"_s);
    }

    static void ask(MainTest &quiz, int number, int position) {
        quizRun().questionOrder[position] = QString::number(number);
        quizRun().questionIndex = position;
        quizRun().correctCount = position * 2 / 3;
        quiz.goNextQuestion();
        // Called directly for the questions that the program has but never asks.
        (quiz.*operations.at(static_cast<std::size_t>(number - 1)))();
        QCoreApplication::processEvents();
    }

    static void answer(const MainTest &quiz, int number, bool right) {
        const int rightAnswer = golden::question(number).right;
        const int wrongAnswer = rightAnswer == 1 ? 2 : 1;
        desk::click(quiz.window(), u"btnAnswer%1"_s.arg(right ? rightAnswer : wrongAnswer));
        QCOMPARE(desk::text(quiz.window(), u"lblStatus"_s), right ? u"correct"_s : u"wrong"_s);
        QVERIFY(desk::isShown(quiz.window(), u"btnNextQuestion"_s));
        QCoreApplication::processEvents();
    }

    static QString moment(int number, const char *when) {
        return u"Question %1, %2"_s.arg(number).arg(QString::fromLatin1(when));
    }

    /// Answers are centred in their rows: one of two lines starts higher than one of a single line.
    static bool startsWhereOthersDo(const QLabel &label) {
        return label.objectName() == u"lblQuestion" ||
               label.fontMetrics().horizontalAdvance(label.text()) < label.contentsRect().width();
    }

    void pointAt(Window &window, QWidget &control, stillness::Controls &controls) {
        const QString path = stillness::pathOf(control);
        QWindow *handle = window.windowHandle();
        const QPoint middle = control.mapTo(&window, control.rect().center());
        const QPoint corner(1, window.height() - 2);
        if (control.isEnabled() && control.visibleRegion().contains(control.rect().center())) {
            QTest::mouseMove(handle, middle);
            QCoreApplication::processEvents();
            QVERIFY2(control.underMouse(), qPrintable(path));
            VERIFY_STILL(controls.look(window, u"With the pointer on "_s + path));
            QTest::mousePress(handle, Qt::LeftButton, {}, middle);
            QCoreApplication::processEvents();
            VERIFY_STILL(controls.look(window, u"With a button held down on "_s + path));
            // Released elsewhere, it does nothing.
            QTest::mouseMove(handle, corner);
            QTest::mouseRelease(handle, Qt::LeftButton, {}, corner);
        }
        if (control.focusPolicy() != Qt::NoFocus) {
            control.setFocus(Qt::TabFocusReason);
            QCoreApplication::processEvents();
            QVERIFY2(control.hasFocus() || !control.isEnabled(), qPrintable(path));
            VERIFY_STILL(controls.look(window, u"With the focus on "_s + path));
        }
    }

    QFont font_;
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_stillness)
#include "tst_stillness.moc"
