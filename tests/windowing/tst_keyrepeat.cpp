#include <QKeyEvent>
#include <QTest>
#include <QWindow>

#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 scanCode = 65;
constexpr quint64 moment = 1000;

/// A key as the keyboard sends it; the time is in milliseconds.
struct Stroke {
    quint32 scanCode = ::scanCode;
    quint64 time = moment;
    bool autoRepeat = false;
};

/// Sends a stroke of the space bar. Returns whether the receiver accepted it.
bool send(QObject &receiver, QEvent::Type type, const Stroke &stroke = {}) {
    QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, stroke.scanCode, 0, 0, u" "_s,
                    stroke.autoRepeat);
    event.setTimestamp(stroke.time);
    QCoreApplication::sendEvent(&receiver, &event);
    return event.isAccepted();
}

/// Records the events that reach an object.
class Listener final : public QObject {
 public:
    explicit Listener(QObject &receiver) { receiver.installEventFilter(this); }

    QList<QEvent::Type> heard;

 protected:
    bool eventFilter(QObject *, QEvent *event) override {
        heard << event->type();
        return false;
    }
};

}  // namespace

class tst_keyrepeat final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void unmarkedRepetitionIsSwallowed() {
        QWindow first;
        QWindow second;
        for (QWindow *window : {&first, &second}) {
            const Listener released(first);
            send(first, QEvent::KeyRelease);
            QCOMPARE(released.heard, QList{QEvent::KeyRelease});
            const Listener pressed(*window);
            // Accepting the override keeps the key from triggering a shortcut.
            QVERIFY(send(*window, QEvent::ShortcutOverride));
            QVERIFY(send(*window, QEvent::KeyPress));
            QCOMPARE(pressed.heard, QList<QEvent::Type>());
        }
    }

    void otherStrokesAreLetThrough() {
        struct {
            const char *name;
            Stroke release;
            Stroke press;
        } const rows[]{
            {"another key", {}, {.scanCode = scanCode + 1}},
            {"later", {}, {.time = moment + 1}},
            {"marked as a repetition", {}, {.autoRepeat = true}},
            {"without a time, by way of a screen reader", {.time = 0}, {.time = 0}},
            {"without a scan code", {.scanCode = 0}, {.scanCode = 0}},
        };
        for (const auto &[name, release, press] : rows) {
            QWindow window;
            send(window, QEvent::KeyRelease, release);
            const Listener listener(window);
            QVERIFY2(!send(window, QEvent::ShortcutOverride, press), name);
            send(window, QEvent::KeyPress, press);
            QVERIFY2(listener.heard == (QList{QEvent::ShortcutOverride, QEvent::KeyPress}), name);
        }
    }

    void widgetsAreLeftAlone() {
        QWindow window;
        QWidget widget;
        send(window, QEvent::KeyRelease);
        const Listener listener(widget);
        QVERIFY(!send(widget, QEvent::ShortcutOverride));
        send(widget, QEvent::KeyPress);
        QVERIFY(listener.heard.contains(QEvent::ShortcutOverride));
        QVERIFY(listener.heard.contains(QEvent::KeyPress));
    }
};

ZORVAN_TEST(tst_keyrepeat)
#include "tst_keyrepeat.moc"
