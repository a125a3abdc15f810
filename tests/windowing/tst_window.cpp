#include <utility>

#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include "quizrun/maintest.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

using platform::Window;

namespace {

bool scrolls(const Window &window) {
    return qobject_cast<QScrollArea *>(window.centralWidget()) != nullptr;
}

QScrollArea &area(const Window &window) {
    if (!scrolls(window)) {
        qFatal("\"%s\" does not scroll", qUtf8Printable(window.objectName()));
    }
    return *qobject_cast<QScrollArea *>(window.centralWidget());
}

void requireInView(const Window &window, const QWidget &control) {
    const QWidget &view = *area(window).viewport();
    const QRect place(control.mapTo(&window, QPoint()), control.size());
    const QRect seen(view.mapTo(&window, QPoint()), view.size());
    QVERIFY2(seen.contains(place), qPrintable(control.objectName() + u" is out of view"_s));
}

void requireRoom(const QWidget &content) {
    QVERIFY2(content.size().expandedTo(content.minimumSizeHint()) == content.size(),
             "the content is squeezed");
}

void setTextSize(double points) {
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    QApplication::setFont(font);
}

}  // namespace

/// Windows on a screen that is too small for most of them.
class tst_window final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() {
        // On another screen the tests would prove nothing.
        QCOMPARE(QGuiApplication::primaryScreen()->availableSize(), QSize(480, 360));
    }

    void cleanup() {
        controller_.reset();
        WindowTest::cleanup();
    }

    void largeWindowScrollsWithinTheScreen_data() { addLargeWindows(); }

    void largeWindowScrollsWithinTheScreen() {
        QFETCH(const QString, layout);
        Window &window = open(layout);
        QVERIFY(scrolls(window));
        const QSize screen = window.screen()->availableSize();
        QVERIFY2(window.width() < screen.width() && window.height() < screen.height() &&
                     window.height() > screen.height() * 3 / 4,
                 qPrintable(u"%1 by %2 pixels"_s.arg(window.width()).arg(window.height())));
        const QWidget &content = *area(window).widget();
        requireRoom(content);
        QVERIFY(area(window).verticalScrollBar()->maximum() > 0);
        controller_->showWindow();
        QVERIFY2(area(window).widget() == &content, "the window scrolls twice");
        window.resize(1200, 1200);
        QTRY_COMPARE(content.size(), area(window).viewport()->size());
        // A frame of its own would be a second one, and Tab has nothing to do there.
        QCOMPARE(area(window).frameShape(), QFrame::NoFrame);
        QCOMPARE(area(window).focusPolicy(), Qt::NoFocus);
    }

    void everyControlOfALargeWindowIsReachedByTab_data() { addLargeWindows(); }

    void everyControlOfALargeWindowIsReachedByTab() {
        QFETCH(const QString, layout);
        Window &window = open(layout);
        QStringList missing;
        for (const auto *button : window.findChildren<QAbstractButton *>()) {
            if (button->isVisibleTo(&window) && button->isEnabled()) {
                missing << button->objectName();
            }
        }
        QVERIFY(missing.size() >= 3);
        for (qsizetype turns = 3 * missing.size(); turns > 0; --turns) {
            QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
            QVERIFY(window.focusWidget() != nullptr);
            if (missing.removeOne(window.focusWidget()->objectName())) {
                requireInView(window, *window.focusWidget());
            }
        }
        QCOMPARE(missing, QStringList());
    }

    void focusThatMovesByItselfIsInView() {
        for (int quiz = 1; quiz <= 6; ++quiz) {
            store::set(u"quiz%1"_s.arg(quiz), u"3"_s);
        }
        const Window &menu = open(u"MainMenu"_s);
        requireFocusInView(menu, u"btnQuiz7"_s);
        Window &quiz = open(u"MainTest"_s);
        requireFocusInView(quiz, u"btnAnswer1"_s);
        QTest::keyClick(quiz.windowHandle(), Qt::Key_A);
        requireFocusInView(quiz, u"btnNextQuestion"_s);
    }

    void focusIsInViewWithTheHeadingOfItsGroup() {
        setTextSize(12);
        Window &window = open(u"Settings"_s);
        QScrollBar &bar = *area(window).verticalScrollBar();
        requireFocusInView(window, u"noRadio"_s);
        bar.setValue(bar.maximum());
        desk::control(&window, u"yesRadio"_s).setFocus();
        requireInView(window, desk::control(&window, u"textLabel1"_s));
        requireInView(window, desk::control(&window, u"yesRadio"_s));
    }

    void nothingMovesWhileTheMouseButtonIsDown() {
        setTextSize(12);
        Window &window = open(u"Settings"_s);
        QScrollBar &bar = *area(window).verticalScrollBar();
        const QWidget &option = desk::control(&window, u"yesRadio"_s);
        // Half of the option is out of view.
        const QPoint middle = option.rect().center();
        bar.setValue(option.mapTo(area(window).widget(), middle).y());
        const int before = bar.value();
        const QPoint spot = option.mapTo(&window, middle) + QPoint(0, 2);
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, spot);
        QVERIFY(option.hasFocus());
        QCOMPARE(bar.value(), before);
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, spot);
        QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);
    }

    void windowFreedWithTheFocusScrollsNoMore() {
        const QPointer<Window> older = &open(u"MainTest"_s);
        const auto first = std::exchange(controller_, nullptr);
        const QPointer<Window> newer = &open(u"MainMenu"_s);
        QVERIFY(area(*newer).isAncestorOf(QApplication::focusWidget()));
        older->activateWindow();
        controller_->close();
        first->close();
        controller_.reset();
        // Freed before the event loop hears that no window has the focus. Only the sanitizers find
        // the error that this test is for.
        desk::freeUnused();
        QVERIFY(!newer);
        QVERIFY(QApplication::focusWidget() == nullptr);
    }

    void windowScrollsOnceItsTileIsTooSmall() {
        setTextSize(5);
        Window &window = open(u"Settings"_s);
        QVERIFY(!scrolls(window));
        const QSize needed = window.minimumSize();
        const QSize tile = needed - QSize(40, 40);
        const QWidget *focused = window.focusWidget();
        QVERIFY(focused != nullptr);
        // As a window manager does, without asking the window.
        window.windowHandle()->resize(tile);
        QTRY_COMPARE(window.size(), tile);
        QVERIFY(scrolls(window));
        QTRY_VERIFY(area(window).verticalScrollBar()->maximum() > 0);
        QVERIFY(area(window).horizontalScrollBar()->maximum() > 0);
        const QWidget &content = *area(window).widget();
        requireRoom(content);
        QCOMPARE(window.focusWidget(), focused);
        QTRY_VERIFY(focused->hasFocus());
        window.windowHandle()->resize(needed);
        QTRY_COMPARE(content.size(), area(window).viewport()->size());
        QVERIFY(!area(window).verticalScrollBar()->isVisible());
    }

    void resizedWindowGrowsWithItsText() {
        setTextSize(5);
        Window &window = open(u"Settings"_s);
        const QSize larger = window.size() + QSize(150, 5);
        window.resize(larger);
        setTextSize(6);
        QTRY_VERIFY(window.height() > larger.height());
        QVERIFY(!scrolls(window));
        // A window that was enlarged on purpose does not shrink with its text.
        QCOMPARE(window.width(), larger.width());
        const QSize grown = window.size();
        const int needed = window.sizeHint().height();
        setTextSize(5);
        QTRY_VERIFY(window.sizeHint().height() < needed);
        QCoreApplication::processEvents();
        QCOMPARE(window.size(), grown);
    }

 private:
    static void addLargeWindows() {
        QTest::addColumn<QString>("layout");
        QTest::newRow("main menu") << u"MainMenu"_s;
        QTest::newRow("quiz") << u"MainTest"_s;
    }

    static void requireFocusInView(const Window &window, const QString &name) {
        const QWidget &control = desk::control(&window, name);
        QTRY_COMPARE(window.focusWidget(), &control);
        QCoreApplication::processEvents();
        requireInView(window, control);
    }

    Window &open(const QString &layout) {
        if (layout == u"MainMenu") {
            controller_ = platform::makeController<MainMenu>(layout);
        } else if (layout == u"MainTest") {
            store::set(u"currentTest"_s, u"1"_s);
            controller_ = platform::makeController<MainTest>(layout);
        } else {
            controller_ = platform::makeController<SettingsController>(layout);
        }
        controller_->showWindow();
        controller_->window()->activateWindow();
        if (!QTest::qWaitForWindowActive(controller_->window())) {
            qFatal("The window does not become active");
        }
        QCoreApplication::processEvents();
        return *controller_->window();
    }

    std::shared_ptr<platform::WindowController> controller_;
};

ZORVAN_TEST(tst_window)
#include "tst_window.moc"
