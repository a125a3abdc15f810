#include <vector>

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

/// Sends a stroke of the space bar. Returns whether it was accepted: swallowed, as a window and a
/// widget alone accept none.
bool send(QObject &receiver, QEvent::Type type, const Stroke &stroke = {}) {
    QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, stroke.scanCode, 0, 0, u" "_s,
                    stroke.autoRepeat);
    event.setTimestamp(stroke.time);
    QCoreApplication::sendEvent(&receiver, &event);
    return event.isAccepted();
}

}  // namespace

class tst_keyrepeat final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void unmarkedRepetitionIsSwallowed() {
        QWindow first;
        QWindow second;
        for (QWindow *window : {&first, &second}) {
            QVERIFY(!send(first, QEvent::KeyRelease));
            // A key whose override is accepted triggers no shortcut.
            QVERIFY(send(*window, QEvent::ShortcutOverride));
            QVERIFY(send(*window, QEvent::KeyPress));
        }
    }

    void otherStrokesAreLetThrough() {
        struct Row {
            const char *name = nullptr;
            Stroke release;
            Stroke press;
        };
        const std::vector<Row> rows{
            {"another key", {}, {.scanCode = scanCode + 1}},
            {"later", {}, {.time = moment + 1}},
            {"marked as a repetition", {}, {.autoRepeat = true}},
            {"without a time, by way of a screen reader", {.time = 0}, {.time = 0}},
            {"without a scan code", {.scanCode = 0}, {.scanCode = 0}},
        };
        for (const auto &[name, release, press] : rows) {
            QWindow window;
            send(window, QEvent::KeyRelease, release);
            QVERIFY2(!send(window, QEvent::ShortcutOverride, press), name);
            QVERIFY2(!send(window, QEvent::KeyPress, press), name);
        }
    }

    void widgetsAreLeftAlone() {
        QWindow window;
        QWidget widget;
        send(window, QEvent::KeyRelease);
        QVERIFY(!send(widget, QEvent::ShortcutOverride));
        QVERIFY(!send(widget, QEvent::KeyPress));
    }
};

ZORVAN_TEST(tst_keyrepeat)
#include "tst_keyrepeat.moc"
