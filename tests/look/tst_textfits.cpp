#include <QTest>

#include "support/learner.h"
#include "support/states.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "texts.h"

using namespace Qt::StringLiterals;
using platform::Window;

/// No text is cut off, overlaps another or leaves its window, at normal and at double size, in a
/// window that is as small as it can be.
class tst_textfits final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase_data() {
        QTest::addColumn<double>("textSize");
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<QString>("styleSheet");
        QTest::newRow("100 %") << 1.0 << QSize(1280, 720) << QString();
        QTest::newRow("200 %") << 2.0 << QSize(1920, 1080) << QString();
        QTest::newRow("style sheet") << 1.0 << QSize(1920, 1080) << u"* { font-size: %1pt }"_s;
    }

    void init() {
        ProgramTest::init();
        QFETCH_GLOBAL(const double, textSize);
        QFETCH_GLOBAL(const QString, styleSheet);
        QFont font = QApplication::font();
        // As large in any font.
        constexpr double lineHeight = 14;
        const double points = font.pointSizeF() * lineHeight / QFontMetricsF(font).height();
        font.setPointSizeF(points * textSize);
        QApplication::setFont(font);
        if (!styleSheet.isEmpty()) {
            qApp->setStyleSheet(styleSheet.arg(2 * points));
        }
    }

    void everyWindow_data() { layoutRows(); }

    void everyWindow() {
        QFETCH(const QString, layout);
        Window &window = *openWindow(layout);
        shrink(window);
        QCOMPARE(texts::flaws(window), QString());
        QFETCH_GLOBAL(const QSize, screen);
        // The window manager's frame needs some of the screen.
        const QSize room = screen - QSize(16, 48);
        QVERIFY2(window.width() <= room.width() && window.height() <= room.height(),
                 qPrintable(u"It is %1 x %2"_s.arg(window.width()).arg(window.height())));
    }

    void everyQuestion() {
        store::set(u"timedQuizzes"_s, u"yes"_s);
        Window &window = *openQuiz();
        quizRun().quizTimer->fire();
        for (int question = 1; question <= 77; ++question) {
            states::ask(question);
            const bool right = question % 2 == 0;
            quizRun().correctAnswerNumber = right ? 1 : 2;
            desk::click(&window, u"btnAnswer1"_s);
            QCOMPARE(desk::text(&window, u"lblStatus"_s), right ? u"correct"_s : u"wrong"_s);
            QCoreApplication::processEvents();
            QCOMPARE(texts::flaws(window), QString());
        }
    }

    void questionWithoutAClock() {
        Window &window = *openQuiz();
        QVERIFY(!desk::isShown(&window, u"lblTimeLeft"_s));
        states::ask(48);
        QCoreApplication::processEvents();
        QCOMPARE(texts::flaws(window), QString());
    }

    void everyResult() {
        store::set(u"currentTest"_s, u"1"_s);
        const auto results = platform::makeController<QuizComplete>(u"QuizComplete"_s);
        results->showWindow();
        shrink(*results->window());
        for (const auto &status : {u"pass"_s, u"fail"_s}) {
            store::set(u"currentStatus"_s, status);
            for (int passCount = 0; passCount <= 3; ++passCount) {
                results->SetCheckMarks(passCount);
                QCOMPARE(texts::flaws(*results->window()), QString());
            }
        }
    }

    void longAlerts() {
        for (const QString &message :
             {u"Welcome to Zorvan, this is the main progress screen where you can select quizzes "
              "to take and track your progress."_s,
              u"This will end your current progress on this test, would you still like to close "
              "this window?"_s}) {
            QString flaws = u"not shown"_s;
            alerts_->answer(u"Yes"_s,
                            [&] { flaws = texts::flaws(*QApplication::activeModalWidget()); });
            platform::Alert(message, {.defaultButton = u"Yes"_s, .alternateButton = u"No"_s})
                .runModal(nullptr);
            QCOMPARE(flaws, QString());
        }
    }

 private:
    Window *openQuiz() {
        delegate_->ShowMainMenu();
        learner::press(delegate_->theMainMenu->window(), u"goTest7"_s);
        Window *window = desk::window(u"MainTest"_s);
        shrink(*window);
        return window;
    }

    static void shrink(Window &window) {
        window.resize(1, 1);
        QCoreApplication::processEvents();
    }
};

ZORVAN_TEST(tst_textfits)
#include "tst_textfits.moc"
