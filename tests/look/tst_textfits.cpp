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
#include "support/alerts.h"
#include "support/desk.h"
#include "support/store.h"
#include "support/testmain.h"
#include "texts.h"
#include "windowing/alert.h"
#include "windowing/application.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;
using platform::Window;

/// No text is cut off, overlaps another or leaves its window, at normal and at double size, in a
/// window that is as small as it can be.
class tst_textfits final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase_data() {
        QTest::addColumn<double>("textSize");
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<QString>("styleSheet");
        QTest::newRow("100 %") << 1.0 << QSize(1280, 720) << QString();
        QTest::newRow("200 %") << 2.0 << QSize(1920, 1080) << QString();
        QTest::newRow("style sheet") << 1.0 << QSize(1920, 1080) << u"* { font-size: 18pt }"_s;
    }

    void initTestCase() {
        font_ = QApplication::font();
        platform::Application::shared().loadMainLayout(delegate_);
    }

    void init() {
        store::fill(store::seeded());
        applySize();
    }

    void cleanup() {
        desk::clear();
        QApplication::setFont(font_);
        qApp->setStyleSheet(QString());
    }

    void everyWindow() {
        const std::array<std::shared_ptr<platform::WindowController>, 6> controllers{
            open<MainMenu>(u"MainMenu"_s),           open<MainTest>(u"MainTest"_s),
            open<QuizComplete>(u"QuizComplete"_s),   open<progress>(u"progress"_s),
            open<SettingsController>(u"Settings"_s), open<Help>(u"Help"_s)};
        for (const auto &controller : controllers) {
            fits(*controller->window());
        }
    }

    void wayBack() {
        open<MainMenu>(u"MainMenu"_s)->close();
        QCoreApplication::processEvents();
        Window *window = desk::window(u"MainLayout"_s);
        QVERIFY(window != nullptr);
        shrink(*window);
        fits(*window);
    }

    void everyQuestion_data() {
        QTest::addColumn<QString>("timed");
        QTest::newRow("timed") << u"yes"_s;
        QTest::newRow("untimed") << u"no"_s;
    }

    void everyQuestion() {
        QFETCH(const QString, timed);
        store::set(u"currentTest"_s, u"7"_s);
        store::set(u"timedQuizzes"_s, timed);
        const auto quiz = open<MainTest>(u"MainTest"_s);
        QCOMPARE(desk::isShown(quiz->window(), u"lblTimeLeft"_s), timed == u"yes");
        if (timed == u"yes") {
            quizRun().quizTimer->fire();
            QCOMPARE(desk::text(quiz->window(), u"lblTimeLeft"_s), u"7:36"_s);
        }
        quizRun().questionIndex = 29;
        quiz->goNextQuestion();
        QCOMPARE(desk::text(quiz->window(), u"lblProgressPercent"_s), u"30/30"_s);
        askEverything(*quiz);

        for (const auto &[right, verdict] :
             {std::pair{1, u"correct"_s}, std::pair{2, u"wrong"_s}}) {
            // As the first of many questions: the answer to the last would end the attempt.
            quizRun().questionIndex = 0;
            desk::control(quiz->window(), u"btnAnswer1"_s).setEnabled(true);
            quizRun().correctAnswerNumber = right;
            desk::click(quiz->window(), u"btnAnswer1"_s);
            QCOMPARE(desk::text(quiz->window(), u"lblStatus"_s), verdict);
            QVERIFY(desk::isShown(quiz->window(), u"btnNextQuestion"_s));
            askEverything(*quiz);
        }
    }

    void everyResult() {
        store::set(u"currentTest"_s, u"1"_s);
        const auto results = open<QuizComplete>(u"QuizComplete"_s);
        for (const auto &status : {u"pass"_s, u"fail"_s}) {
            store::set(u"currentStatus"_s, status);
            for (int passCount = 0; passCount <= 3; ++passCount) {
                results->SetCheckMarks(passCount);
                QCOMPARE(texts::flaws(*results->window()), QString());
            }
        }
    }

    void everyAlert_data() {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("alternateButton");
        QTest::newRow("welcome")
            << u"Welcome to Zorvan, this is the main progress screen where you "
               "can select quizzes to take and track your progress."_s
            << QString();
        QTest::newRow("no quiz") << u"Error loading the current quiz"_s << QString();
        QTest::newRow("no test") << u"Could not load the selected test."_s << QString();
        QTest::newRow("abandon") << u"This will end your current progress on this test, would you "
                                    "still like to close this window?"_s
                                 << u"No"_s;
        QTest::newRow("time is up") << u"The time is up for this test."_s << QString();
        QTest::newRow("clear")
            << u"This will reset all progress. Are you sure you want to clear your "
               "progress?"_s
            << u"No"_s;
        QTest::newRow("cleared") << u"All progress on quizzes has been reset"_s << QString();
    }

    void everyAlert() {
        QFETCH(const QString, message);
        QFETCH(const QString, alternateButton);
        const QString button = alternateButton.isEmpty() ? u"OK"_s : u"Yes"_s;
        QString flaws = u"not shown"_s;
        QStringList shown;
        Alerts alerts;
        alerts.answer(button, [&] {
            QWidget *alert = QApplication::activeModalWidget();
            flaws = texts::flaws(*alert);
            for (const auto *label : alert->findChildren<QLabel *>()) {
                shown << label->text();
            }
        });
        platform::Alert(message, {.defaultButton = button, .alternateButton = alternateButton})
            .runModal(nullptr);
        QVERIFY(alerts.verify());
        QCOMPARE(flaws, QString());
        QVERIFY(shown.contains(message));
    }

 private:
    void applySize() {
        QFETCH_GLOBAL(double, textSize);
        QFETCH_GLOBAL(QSize, screen);
        QFont font = font_;
        font.setPointSizeF(font.pointSizeF() * textSize);
        QApplication::setFont(font);
        QFETCH_GLOBAL(QString, styleSheet);
        qApp->setStyleSheet(styleSheet);
        // The window manager's frame needs some of the screen.
        screen_ = screen - QSize(16, 48);
    }

    template <class Controller>
    std::shared_ptr<Controller> open(const QString &layout) {
        auto controller = platform::makeController<Controller>(layout);
        controller->showWindow();
        shrink(*controller->window());
        return controller;
    }

    static void shrink(Window &window) {
        window.resize(1, 1);
        QCoreApplication::processEvents();
    }

    void fits(Window &window) {
        QCOMPARE(texts::flaws(window), QString());
        QVERIFY2(window.width() <= screen_.width() && window.height() <= screen_.height(),
                 qPrintable(u"%1 is %2 x %3"_s.arg(window.objectName())
                                .arg(window.width())
                                .arg(window.height())));
    }

    static void askEverything(MainTest &quiz) {
        int asked = 0;
#define FITS(number)                                   \
    quiz.Question##number();                           \
    QCoreApplication::processEvents();                 \
    QCOMPARE(texts::flaws(*quiz.window()), QString()); \
    ++asked;
        FOR_EACH_QUESTION_NUMBER(FITS)
#undef FITS
        QCOMPARE(asked, 77);
    }

    QFont font_;
    QSize screen_;
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_textfits)
#include "tst_textfits.moc"
