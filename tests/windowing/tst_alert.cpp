#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

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
    // Runs first: once a window has had the keyboard, the offscreen platform never takes it away.
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

    void eachButtonHasItsResult_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("result");
        QTest::newRow("default") << u"Yes"_s << 1;
        QTest::newRow("alternate") << u"No"_s << 0;
        QTest::newRow("other") << u"Later"_s << -1;
    }

    void eachButtonHasItsResult() {
        QFETCH(const QString, button);
        QFETCH(const int, result);
        alerts_->answer(button);
        QCOMPARE(Alert(u"Now?"_s, {u"Yes"_s, u"No"_s, u"Later"_s}).runModal(nullptr), result);
        QCOMPARE(alerts_->shown().first().buttons.size(), 3);
    }

    void keysPressTheDefaultAndTheAlternate_data() {
        QTest::addColumn<QString>("alternate");
        QTest::addColumn<QString>("other");
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("result");
        const QString none;
        QTest::newRow("OK, Return") << none << none << Qt::Key_Return << 1;
        QTest::newRow("OK, Enter") << none << none << Qt::Key_Enter << 1;
        QTest::newRow("OK, Escape") << none << none << Qt::Key_Escape << 1;
        QTest::newRow("Yes and No, Return") << u"No"_s << none << Qt::Key_Return << 1;
        QTest::newRow("Yes and No, Enter") << u"No"_s << none << Qt::Key_Enter << 1;
        QTest::newRow("Yes and No, Escape") << u"No"_s << none << Qt::Key_Escape << 0;
        QTest::newRow("three buttons, Return") << u"No"_s << u"Later"_s << Qt::Key_Return << 1;
        QTest::newRow("three buttons, Escape") << u"No"_s << u"Later"_s << Qt::Key_Escape << 0;
        QTest::newRow("without alternate, Escape") << none << u"Later"_s << Qt::Key_Escape << 1;
    }

    void keysPressTheDefaultAndTheAlternate() {
        QFETCH(const QString, alternate);
        QFETCH(const QString, other);
        QFETCH(const Qt::Key, key);
        QFETCH(const int, result);
        alerts_->press(key);
        QCOMPARE(Alert(u"Now?"_s, {u"Yes"_s, alternate, other}).runModal(nullptr), result);
    }

    void alertIsBare() {
        alerts_->answer(u"OK"_s, [] {
            QVERIFY(box().findChild<QLabel *>(u"qt_msgbox_informativelabel"_s) == nullptr);
            QVERIFY(box().detailedText().isEmpty());
            QVERIFY(box().checkBox() == nullptr);
        });
        Alert(u"Done"_s, {u"OK"_s}).runModal(nullptr);
        const ShownAlert alert = alerts_->shown().first();
        QCOMPARE(alert.message, u"Done"_s);
        QCOMPARE(alert.buttons, QStringList{u"OK"_s});
        QCOMPARE(alert.title, QString());
        QCOMPARE(alert.informativeText, QString());
        QVERIFY(!alert.hasIcon);
    }

    void textIsShownToTheCharacter_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("ampersand") << u"Q&A && more"_s;
        QTest::newRow("markup") << u"<b>bold</b> &amp; <br>"_s;
        QTest::newRow("percent") << u"100 %1 %s %n"_s;
    }

    void textIsShownToTheCharacter() {
        QFETCH(const QString, text);
        bool literal = false;
        alerts_->answer(u"OK"_s, [&] {
            const auto *label = box().findChild<QLabel *>(u"qt_msgbox_label"_s);
            literal = label->text() == text && label->textFormat() == Qt::PlainText &&
                      label->buddy() == nullptr;
        });
        Alert(text, {u"OK"_s}).runModal(nullptr);
        QVERIFY(literal);
    }

    void informativeTextIsShownToTheCharacter() {
        const QString text = u"<b>more</b> & more"_s;
        bool literal = false;
        alerts_->answer(u"OK"_s, [&] {
            const auto *label = box().findChild<QLabel *>(u"qt_msgbox_informativelabel"_s);
            literal = label->text() == text && label->textFormat() == Qt::PlainText;
        });
        Alert(u"Done"_s, {u"OK"_s}, text).runModal(nullptr);
        QCOMPARE(alerts_->shown().first().informativeText, text);
        QVERIFY(literal);
    }

    void alertBlocksTheWholeProgram() {
        QMainWindow window;
        QPushButton button(&window);
        int clicks = 0;
        connect(&button, &QPushButton::clicked, &window, [&] { ++clicks; });
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        bool returned = false;
        bool blocked = false;
        alerts_->answer(u"OK"_s, [&] {
            blocked = !returned && box().windowModality() == Qt::ApplicationModal;
            QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                              button.geometry().center());
        });
        Alert(u"Done"_s, {u"OK"_s}).runModal(nullptr);
        returned = true;
        QVERIFY(blocked);
        QCOMPARE(clicks, 0);
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, button.geometry().center());
        QCOMPARE(clicks, 1);
    }

    void defaultButtonHasTheFocus() {
        QString focused;
        alerts_->answer(u"No"_s, [&] {
            const auto *button = qobject_cast<QPushButton *>(box().focusWidget());
            focused = button == nullptr ? QString() : button->text();
        });
        Alert(u"Sure?"_s, {u"Yes"_s, u"No"_s}).runModal(nullptr);
        QCOMPARE(focused, u"Yes"_s);
    }

    void screenReaderGetsTheMessage() {
        QString spoken;
        alerts_->answer(u"OK"_s, [&] { spoken = box().accessibleName(); });
        Alert(u"Done & dusted"_s, {u"OK"_s}).runModal(nullptr);
        QCOMPARE(spoken, u"Done & dusted"_s);
    }

    void alertStandsOverItsOwner() {
        TestWindow owner;
        TestWindow other;
        QVERIFY(owner.appear() && other.appear());
        QVERIFY(other.window->isActiveWindow());
        const QWidget *below = nullptr;
        alerts_->answer(u"OK"_s, [&] { below = box().parentWidget(); });
        Alert(u"Done"_s, {u"OK"_s}).runModal(owner.window.get());
        QCOMPARE(below, owner.window.get());
    }

    void alertOfAHiddenOwnerStandsOverTheWindowInFront() {
        const TestWindow hidden;
        TestWindow front;
        TestWindow behind;
        QVERIFY(behind.appear() && front.appear());
        QWidgetList below;
        for (Window *owner : {hidden.window.get(), static_cast<Window *>(nullptr)}) {
            alerts_->answer(u"OK"_s, [&] { below << box().parentWidget(); });
            Alert(u"Done"_s, {u"OK"_s}).runModal(owner);
        }
        QCOMPARE(below, (QWidgetList{front.window.get(), front.window.get()}));
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
        QStringList lost;
        alerts_->answer(u"OK"_s, [&] {
            for (TestWindow *window : {&owner, &other}) {
                const QWindow *alert = box().windowHandle();
                // As a desktop does when a window is clicked.
                window->window->windowHandle()->requestActivate();
                if (!QTest::qWaitFor([&] { return QGuiApplication::focusWindow() == alert; })) {
                    lost << (window == &owner ? u"owner"_s : u"another"_s);
                }
            }
        });
        Alert(u"Done"_s, {u"OK"_s}).runModal(owner.window.get());
        QCOMPARE(lost, QStringList());
    }

    void alertWhoseOwnerIsFreedIsAnsweredAsByEscape_data() {
        QTest::addColumn<QString>("alternate");
        QTest::addColumn<int>("result");
        QTest::newRow("OK") << QString() << 1;
        QTest::newRow("Yes and No") << u"No"_s << 0;
    }

    void alertWhoseOwnerIsFreedIsAnsweredAsByEscape() {
        QFETCH(const QString, alternate);
        QFETCH(const int, result);
        TestWindow owner;
        QVERIFY(owner.appear());
        QTimer::singleShot(0, &owner.delegate, [&] { owner.window.reset(); });
        QCOMPARE(Alert(u"Sure?"_s, {u"Yes"_s, alternate}).runModal(owner.window.get()), result);
    }

 private:
    static QMessageBox &box() {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box == nullptr) {
            qFatal("No alert is up");
        }
        return *box;
    }
};

ZORVAN_TEST(tst_alert)
#include "tst_alert.moc"
