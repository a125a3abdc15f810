#include <vector>

#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "controls/messagebox.h"
#include "support/optics.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/alert.h"
#include "windowing/window.h"

using namespace Qt::StringLiterals;

using platform::Alert;
using platform::Window;

namespace {

/// A window without a controller.
struct TestWindow {
    struct Delegate final : QObject, platform::WindowDelegate {
        bool windowShouldClose() override { return true; }
        void windowDidClose() override {}
    };

    /// Shows the window, in front of the others.
    bool appear() const {
        window->show();
        window->activateWindow();
        return QTest::qWaitForWindowActive(window.get());
    }

    Delegate delegate;
    std::unique_ptr<Window> window = std::make_unique<Window>(delegate);
};

}  // namespace

class tst_alert final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void alertAfterAnEventWaitsForNobody() {
        TestWindow owner;
        // As on a desktop without a keyboard: the offscreen platform gives tool tips no keyboard.
        owner.window->setWindowFlags(Qt::ToolTip);
        owner.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(owner.window.get()));
        QVERIFY(QGuiApplication::focusWindow() == nullptr);
        alerts_->answer(u"OK"_s);
        QCOMPARE(Alert(u"Over"_s, {u"OK"_s}).runModal(owner.window.get(), Alert::Cause::Event), 1);
    }

    void eachButtonHasItsResult() {
        for (const auto &[button, result] :
             {std::pair{u"Yes"_s, 1}, {u"No"_s, 0}, {u"Later"_s, -1}}) {
            alerts_->answer(button);
            QCOMPARE(Alert(u"Now?"_s, {u"Yes"_s, u"No"_s, u"Later"_s}).runModal(nullptr), result);
        }
    }

    void keysPressTheDefaultAndTheAlternate() {
        struct Row {
            Alert::Buttons buttons;
            int escape = 0;
        };
        const std::vector<Row> rows{
            {{u"OK"_s}, 1},
            {{u"Yes"_s, u"No"_s}, 0},
            {{u"Yes"_s, u"No"_s, u"Later"_s}, 0},
            {{u"Yes"_s, {}, u"Later"_s}, 1},
        };
        for (const auto &[buttons, escape] : rows) {
            alerts_->press(Qt::Key_Return);
            QCOMPARE(Alert(u"Now?"_s, buttons).runModal(nullptr), 1);
            alerts_->press(Qt::Key_Escape);
            QCOMPARE(Alert(u"Now?"_s, buttons).runModal(nullptr), escape);
        }
    }

    void alertIsBareAndOnItsDefaultButton() {
        QString focused;
        QString spoken;
        alerts_->answer(u"OK"_s, [&] {
            const auto *button = qobject_cast<QPushButton *>(box().focusWidget());
            focused = button == nullptr ? QString() : button->text();
            spoken = box().accessibleName();
            QCOMPARE(optics::texts(box()).size(), 3);
        });
        Alert(u"Done & dusted"_s, {u"OK"_s, u"No"_s}).runModal(nullptr);
        const ShownAlert alert = alerts_->shown().constFirst();
        QCOMPARE(alert.buttons, QStringList({u"OK"_s, u"No"_s}));
        QCOMPARE(alert.title, QString());
        QVERIFY(!alert.hasIcon);
        QCOMPARE(focused, u"OK"_s);
        QCOMPARE(spoken, u"Done & dusted"_s);
    }

    void textsAreShownToTheCharacter() {
        for (const QString &text :
             {u"Q&A && more"_s, u"<b>bold</b> &amp; <br>"_s, u"100 %1 %s %n"_s}) {
            QStringList drawn;
            alerts_->answer(u"OK"_s, [&] {
                for (const optics::Text &line : optics::texts(box())) {
                    drawn << line.text;
                }
            });
            Alert(text, {u"OK"_s}, text).runModal(nullptr);
            QVERIFY2(drawn.count(text) == 2, qPrintable(drawn.join(u'\n')));
        }
    }

    void alertBlocksTheWholeProgram() {
        QMainWindow window;
        QPushButton button(&window);
        int clicks = 0;
        connect(&button, &QPushButton::clicked, &window, [&] { ++clicks; });
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto click = [&] {
            QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                              button.geometry().center());
        };
        alerts_->answer(u"OK"_s, click);
        Alert(u"Done"_s, {u"OK"_s}).runModal(nullptr);
        QCOMPARE(clicks, 0);
        click();
        QCOMPARE(clicks, 1);
    }

    void alertStandsOverItsOwnerOrTheWindowInFront() {
        const TestWindow hidden;
        TestWindow behind;
        TestWindow front;
        QVERIFY(behind.appear() && front.appear());
        const std::vector<std::pair<Window *, Window *>> owners{
            {hidden.window.get(), front.window.get()},
            {nullptr, front.window.get()},
            {behind.window.get(), behind.window.get()},
        };
        for (const auto &[owner, expected] : owners) {
            const QWidget *below = nullptr;
            alerts_->answer(u"OK"_s, [&] { below = box().parentWidget(); });
            Alert(u"Done"_s, {u"OK"_s}).runModal(owner);
            QCOMPARE(below, expected);
        }
        QVERIFY(!hidden.window->isVisible());
    }

    void ownerComesForward() {
        TestWindow owner;
        TestWindow other;
        QVERIFY(owner.appear() && other.appear());
        owner.window->showMinimized();
        other.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(other.window.get()));
        bool minimised = true;
        alerts_->answer(u"OK"_s, [&] { minimised = owner.window->isMinimized(); });
        Alert(u"Done"_s, {u"OK"_s}).runModal(owner.window.get());
        QVERIFY(!minimised);
    }

    void pressingABlockedWindowBringsTheAlertBack() {
        TestWindow owner;
        TestWindow other;
        QVERIFY(owner.appear() && other.appear());
        alerts_->answer(u"OK"_s, [&] {
            for (const TestWindow *pressed : {&owner, &other}) {
                const QWindow *alert = box().windowHandle();
                // As a desktop does when a window is clicked.
                pressed->window->windowHandle()->requestActivate();
                QTRY_COMPARE(QGuiApplication::focusWindow(), alert);
            }
        });
        Alert(u"Done"_s, {u"OK"_s}).runModal(owner.window.get());
    }

    void windowStaysWhileItsAlertIsOnItsWay() {
        TestWindow owner;
        {
            TestWindow other;
            QVERIFY(owner.appear() && other.appear());
        }
        // The offscreen platform gives the keyboard of a window that is freed to none.
        QVERIFY(QGuiApplication::focusWindow() == nullptr);
        bool isClosed = true;
        QTimer::singleShot(0, owner.window.get(), [&] {
            isClosed = owner.window->close();
            owner.appear();
        });
        alerts_->answer(u"OK"_s);
        Alert(u"Time is up"_s, {u"OK"_s}).runModal(owner.window.get(), Alert::Cause::Event);
        QVERIFY(!isClosed);
    }

    void alertWhoseOwnerIsFreedIsAnsweredAsByEscape() {
        for (const auto &[alternate, result] : {std::pair{QString(), 1}, {u"No"_s, 0}}) {
            TestWindow owner;
            QVERIFY(owner.appear());
            QTimer::singleShot(0, &owner.delegate, [&] { owner.window.reset(); });
            QCOMPARE(Alert(u"Sure?"_s, {u"Yes"_s, alternate}).runModal(owner.window.get()), result);
        }
    }

 private:
    static platform::MessageBox &box() {
        auto *box = qobject_cast<platform::MessageBox *>(QApplication::activeModalWidget());
        if (box == nullptr) {
            qFatal("No alert is up");
        }
        return *box;
    }
};

ZORVAN_TEST(tst_alert)
#include "tst_alert.moc"
