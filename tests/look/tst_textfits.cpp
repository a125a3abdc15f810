#include <array>

#include <QAbstractButton>
#include <QTest>

#include "content/questionnumbers.h"
#include "platform/controllers.h"
#include "platform/textlabel.h"
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

using namespace Qt::StringLiterals;
using platform::TextLabel;
using platform::Window;

/// No text is cut off, at normal and at double size, in a window that is as small as it can be.
class tst_textfits final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void everyWindow_data() { sizes(); }
    void everyWindow();
    void everyQuestion_data() { sizes(); }
    void everyQuestion();
    void everyResult_data() { sizes(); }
    void everyResult();

 private:
    static void sizes();
    void applySize();
    template <class Controller>
    std::shared_ptr<Controller> open(const QString &layout);
    static void shrink(Window &window);
    static QStringList cutOff(const Window &window);

    QFont font_;
    QSize screen_;
    AppDelegate delegate_;
};

void tst_textfits::initTestCase() {
    font_ = QApplication::font();
    platform::Application::shared().loadMainLayout(delegate_);
}

void tst_textfits::init() {
    store::fill(store::seeded());
    applySize();
}

void tst_textfits::cleanup() {
    desk::clear();
    QApplication::setFont(font_);
}

void tst_textfits::sizes() {
    QTest::addColumn<double>("textSize");
    QTest::addColumn<QSize>("screen");
    QTest::newRow("100 %") << 1.0 << QSize(1280, 720);
    QTest::newRow("200 %") << 2.0 << QSize(1920, 1080);
}

void tst_textfits::applySize() {
    QFETCH(double, textSize);
    QFETCH(QSize, screen);
    QFont font = font_;
    font.setPointSizeF(font.pointSizeF() * textSize);
    QApplication::setFont(font);
    // A window manager's frame takes its share.
    screen_ = screen - QSize(16, 48);
}

template <class Controller>
std::shared_ptr<Controller> tst_textfits::open(const QString &layout) {
    auto controller = platform::makeController<Controller>(layout);
    controller->showWindow();
    shrink(*controller->window());
    return controller;
}

void tst_textfits::shrink(Window &window) {
    window.resize(1, 1);
    QCoreApplication::processEvents();
}

QStringList tst_textfits::cutOff(const Window &window) {
    QStringList cutOff;
    for (const TextLabel *label : window.findChildren<TextLabel *>()) {
        if (!label->isVisible()) {
            continue;
        }
        const QRect room = label->contentsRect();
        const int flags = int(label->alignment()) | (label->wordWrap() ? Qt::TextWordWrap : 0);
        const QRect needed = label->fontMetrics().boundingRect(
            QRect(0, 0, room.width(), QWIDGETSIZE_MAX), flags, label->text());
        if (needed.width() > room.width() || needed.height() > room.height()) {
            cutOff << label->text();
        }
    }
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
        const QSize needed = button->sizeHint();
        if (button->isVisible() &&
            (needed.width() > button->width() || needed.height() > button->height())) {
            cutOff << button->text();
        }
    }
    return cutOff;
}

void tst_textfits::everyWindow() {
    const std::array<std::shared_ptr<platform::WindowController>, 6> controllers{
        open<MainMenu>(u"MainMenu"_s),           open<MainTest>(u"MainTest"_s),
        open<QuizComplete>(u"QuizComplete"_s),   open<progress>(u"progress"_s),
        open<SettingsController>(u"Settings"_s), open<Help>(u"Help"_s)};
    for (const auto &controller : controllers) {
        const Window &window = *controller->window();
        QCOMPARE(cutOff(window), QStringList());
        QVERIFY2(window.width() <= screen_.width() && window.height() <= screen_.height(),
                 qPrintable(u"%1 is %2 x %3"_s.arg(window.objectName())
                                .arg(window.width())
                                .arg(window.height())));
    }
}

void tst_textfits::everyQuestion() {
    store::set(u"currentTest"_s, u"7"_s);
    store::set(u"timedQuizzes"_s, u"yes"_s);
    const auto quiz = open<MainTest>(u"MainTest"_s);
    quizRun().minutesLeft = 7;
    quizRun().quizTimer->fire();

    int shown = 0;
#define FITS(number)                                  \
    quiz->Question##number();                         \
    quizRun().questionIndex = 0;                      \
    QCOMPARE(cutOff(*quiz->window()), QStringList()); \
    ++shown;
    FOR_EACH_QUESTION_NUMBER(FITS)
#undef FITS
    QCOMPARE(shown, 77);

    desk::click(quiz->window(), u"btnAnswer1"_s);
    QCOMPARE(cutOff(*quiz->window()), QStringList());
}

void tst_textfits::everyResult() {
    store::set(u"currentTest"_s, u"1"_s);
    const auto results = open<QuizComplete>(u"QuizComplete"_s);
    for (const auto &status : {u"pass"_s, u"fail"_s}) {
        store::set(u"currentStatus"_s, status);
        for (int passCount = 0; passCount <= 3; ++passCount) {
            results->SetCheckMarks(passCount);
            QCOMPARE(cutOff(*results->window()), QStringList());
        }
    }
}

ZORVAN_TEST_MAIN(tst_textfits)
#include "tst_textfits.moc"
