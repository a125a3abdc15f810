#include <utility>

#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/desk.h"
#include "support/store.h"
#include "support/testmain.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

using platform::Window;

/// Windows on a screen that is too small for most of them.
class tst_window final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        store::fill(store::seeded());
        quizRun().random = [] { return 0U; };
    }

    void cleanup() {
        controller_.reset();
        desk::clear();
        QApplication::setFont(font_);
    }

    void screenIsSmall() {
        // On another screen the other tests would prove nothing.
        QCOMPARE(QGuiApplication::primaryScreen()->availableSize(), QSize(480, 360));
    }

    void largeWindowScrollsWithinTheScreen_data() {
        QTest::addColumn<QString>("layout");
        QTest::newRow("main menu") << u"MainMenu"_s;
        QTest::newRow("quiz") << u"MainTest"_s;
    }

    void largeWindowScrollsWithinTheScreen() {
        QFETCH(const QString, layout);
        Window &window = open(layout);
        QVERIFY2(area(window) != nullptr, "the window does not scroll");
        const QSize screen = window.screen()->availableSize();
        QVERIFY2(
            window.width() < screen.width() && window.height() < screen.height(),
            qPrintable(u"the window has %1 by %2 pixels, the screen %3 by %4"_s.arg(window.width())
                           .arg(window.height())
                           .arg(screen.width())
                           .arg(screen.height())));
        QVERIFY2(
            window.height() > screen.height() * 3 / 4,
            qPrintable(u"the window has only %1 of the screen's %2 pixels"_s.arg(window.height())
                           .arg(screen.height())));
        const QWidget &content = *area(window)->widget();
        QVERIFY2(content.width() >= content.minimumSizeHint().width() &&
                     content.height() >= content.minimumSizeHint().height(),
                 "the content is squeezed");
        QVERIFY(area(window)->verticalScrollBar()->maximum() > 0);
        window.resize(1200, 1200);
        const QWidget &room = *area(window)->viewport();
        QVERIFY(QTest::qWaitFor([&] { return content.size() == room.size(); }));
        // A frame of its own would be a second one, and Tab has nothing to do there.
        QCOMPARE(area(window)->frameShape(), QFrame::NoFrame);
        QCOMPARE(area(window)->focusPolicy(), Qt::NoFocus);
    }

    void everyControlOfALargeWindowIsReachedByTab_data() {
        largeWindowScrollsWithinTheScreen_data();
    }

    void everyControlOfALargeWindowIsReachedByTab() {
        QFETCH(const QString, layout);
        Window &window = open(layout);
        QSet<const QWidget *> missing;
        for (const auto *button : window.findChildren<QAbstractButton *>()) {
            if (button->isVisibleTo(&window) && button->isEnabled()) {
                missing << button;
            }
        }
        QVERIFY(missing.size() >= 3);
        const qsizetype turns = 3 * missing.size();
        for (qsizetype turn = 0; turn < turns; ++turn) {
            QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
            const QWidget *focused = window.focusWidget();
            QVERIFY(focused != nullptr);
            if (const auto *button = qobject_cast<const QAbstractButton *>(focused)) {
                QVERIFY2(isInView(window, *button),
                         qPrintable(u"%1 has the focus out of view"_s.arg(button->objectName())));
                missing.remove(button);
            }
        }
        QStringList names;
        for (const QWidget *control : std::as_const(missing)) {
            names << control->objectName();
        }
        QVERIFY2(names.isEmpty(), qPrintable(u"not reached: %1"_s.arg(names.join(u' '))));
    }

    void focusThatMovesByItselfIsInView_data() {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("focused");
        QTest::newRow("first answer") << u"MainTest"_s << u"btnAnswer1"_s;
        QTest::newRow("way on") << u"MainTest"_s << u"btnNextQuestion"_s;
        QTest::newRow("quiz that comes next") << u"MainMenu"_s << u"btnQuiz7"_s;
    }

    void focusThatMovesByItselfIsInView() {
        QFETCH(const QString, layout);
        QFETCH(const QString, focused);
        for (int quiz = 1; quiz <= 6; ++quiz) {
            store::set(u"quiz%1"_s.arg(quiz), u"3"_s);
        }
        Window &window = open(layout);
        if (focused == u"btnNextQuestion") {
            QTest::keyClick(window.windowHandle(), Qt::Key_A);
        }
        const QWidget &control = desk::control(&window, focused);
        QVERIFY(QTest::qWaitFor([&] { return window.focusWidget() == &control; }));
        QCoreApplication::processEvents();
        QVERIFY2(isInView(window, control),
                 qPrintable(u"%1 of %2 has the focus out of view: %3 down in a window of %4"_s
                                .arg(focused, layout)
                                .arg(control.mapTo(&window, QPoint()).y())
                                .arg(window.height())));
    }

    void focusIsInViewWithTheHeadingOfItsGroup() {
        setTextSize(12);
        Window &window = open(u"Settings"_s);
        QScrollBar &bar = *area(window)->verticalScrollBar();
        QVERIFY(desk::control(&window, u"noRadio"_s).hasFocus());
        bar.setValue(bar.maximum());
        desk::control(&window, u"yesRadio"_s).setFocus();
        for (const QString &name : {u"textLabel1"_s, u"yesRadio"_s}) {
            const QWidget &control = desk::control(&window, name);
            QVERIFY2(isInView(window, control),
                     qPrintable(u"%1 is out of view: %2 down in a window of %3"_s.arg(name)
                                    .arg(control.mapTo(&window, QPoint()).y())
                                    .arg(window.height())));
        }
    }

    void windowThatFitsIsLeftAlone() {
        setTextSize(5);
        Window &window = open(u"Settings"_s);
        QCOMPARE(area(window), nullptr);
    }

    void windowShownAgainScrollsOnce() {
        Window &window = open(u"MainMenu"_s);
        const QWidget *content = area(window)->widget();
        controller_->showWindow();
        QCOMPARE(area(window)->widget(), content);
    }

    void windowFreedWithTheFocusScrollsNoMore() {
        const QPointer<Window> older = &open(u"MainTest"_s);
        const auto first = std::exchange(controller_, nullptr);
        const QPointer<Window> newer = &open(u"MainMenu"_s);
        QVERIFY(area(*newer)->isAncestorOf(QApplication::focusWidget()));
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

    void windowInATileThatIsTooSmallScrolls() {
        setTextSize(5);
        Window &window = open(u"Settings"_s);
        QCOMPARE(area(window), nullptr);
        const QSize needed = window.minimumSize();
        const QWidget *focused = window.focusWidget();
        QVERIFY(focused != nullptr);
        // As a window manager does, without asking the window.
        window.windowHandle()->resize(needed - QSize(40, 40));
        QVERIFY(QTest::qWaitFor([&] { return window.size() == needed - QSize(40, 40); }));
        QVERIFY2(area(window) != nullptr, "the window does not scroll");
        QVERIFY(QTest::qWaitFor([&] { return area(window)->verticalScrollBar()->maximum() > 0; }));
        QVERIFY(area(window)->horizontalScrollBar()->maximum() > 0);
        const QWidget &content = *area(window)->widget();
        QVERIFY2(content.width() >= content.minimumSizeHint().width() &&
                     content.height() >= content.minimumSizeHint().height(),
                 "the content is squeezed");
        QCOMPARE(window.focusWidget(), focused);
        QVERIFY(QTest::qWaitFor([&] { return focused->hasFocus(); }));
        window.windowHandle()->resize(needed);
        QVERIFY(
            QTest::qWaitFor([&] { return content.size() == area(window)->viewport()->size(); }));
        QVERIFY(!area(window)->verticalScrollBar()->isVisible());
    }

    void resizedWindowGrowsWithItsText() {
        setTextSize(5);
        Window &window = open(u"Settings"_s);
        const QSize fitting = window.size();
        const QSize larger = fitting + QSize(30, 10);
        window.resize(larger);
        setTextSize(6);
        QVERIFY(QTest::qWaitFor([&] { return window.height() > larger.height(); }));
        QCOMPARE(area(window), nullptr);
        const QSize grown = window.size();
        setTextSize(5);
        QCoreApplication::processEvents();
        // A window that was enlarged on purpose does not shrink with its text.
        QCOMPARE(window.size(), grown);
    }

 private:
    void setTextSize(double points) {
        QFont font = font_;
        font.setPointSizeF(points);
        QApplication::setFont(font);
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

    static QScrollArea *area(const Window &window) {
        return qobject_cast<QScrollArea *>(window.centralWidget());
    }

    static bool isInView(const Window &window, const QWidget &control) {
        const QWidget &view =
            area(window) == nullptr ? *window.centralWidget() : *area(window)->viewport();
        const QRect place(control.mapTo(&window, QPoint()), control.size());
        const QRect seen(view.mapTo(&window, QPoint()), view.size());
        return seen.contains(place);
    }

    std::shared_ptr<platform::WindowController> controller_;
    const QFont font_ = QApplication::font();
};

ZORVAN_TEST(tst_window)
#include "tst_window.moc"
