#include <QKeyEvent>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

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
bool send(QObject &receiver, QEvent::Type type, const Stroke &stroke) {
    QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, stroke.scanCode, 0, 0, u" "_s,
                    stroke.autoRepeat);
    event.setTimestamp(stroke.time);
    QCoreApplication::sendEvent(&receiver, &event);
    return event.isAccepted();
}

/// Records the events that reach an object.
class Listener final : public WindowTest {
    Q_OBJECT

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

Q_DECLARE_METATYPE(Stroke)

class tst_keyrepeat final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void unmarkedRepetitionIsSwallowed_data() {
        QTest::addColumn<bool>("inAnotherWindow");
        QTest::newRow("the same window") << false;
        QTest::newRow("another window") << true;
    }

    void unmarkedRepetitionIsSwallowed() {
        QFETCH(const bool, inAnotherWindow);
        QWindow first;
        QWindow second;
        QWindow &window = inAnotherWindow ? second : first;
        const Listener beforehand(first);
        send(first, QEvent::KeyRelease, {});
        QCOMPARE(beforehand.heard, QList{QEvent::KeyRelease});

        const Listener afterwards(window);
        // Accepting the override keeps the key from triggering a shortcut.
        QVERIFY(send(window, QEvent::ShortcutOverride, {}));
        QVERIFY(send(window, QEvent::KeyPress, {}));
        QCOMPARE(afterwards.heard, QList<QEvent::Type>());
    }

    void otherStrokesAreLetThrough_data() {
        QTest::addColumn<Stroke>("release");
        QTest::addColumn<Stroke>("press");
        QTest::newRow("another key") << Stroke() << Stroke{.scanCode = scanCode + 1};
        QTest::newRow("later") << Stroke() << Stroke{.time = moment + 1};
        QTest::newRow("marked as a repetition") << Stroke() << Stroke{.autoRepeat = true};
        QTest::newRow("without a time, by way of a screen reader")
            << Stroke{.time = 0} << Stroke{.time = 0};
        QTest::newRow("without a scan code") << Stroke{.scanCode = 0} << Stroke{.scanCode = 0};
    }

    void otherStrokesAreLetThrough() {
        QFETCH(const Stroke, release);
        QFETCH(const Stroke, press);
        QWindow window;
        send(window, QEvent::KeyRelease, release);
        const Listener listener(window);
        QVERIFY(!send(window, QEvent::ShortcutOverride, press));
        send(window, QEvent::KeyPress, press);
        QCOMPARE(listener.heard, (QList{QEvent::ShortcutOverride, QEvent::KeyPress}));
    }

    void widgetsAreLeftAlone() {
        QWindow window;
        QWidget widget;
        send(window, QEvent::KeyRelease, {});
        const Listener listener(widget);
        QVERIFY(!send(widget, QEvent::ShortcutOverride, {}));
        QVERIFY(listener.heard.contains(QEvent::ShortcutOverride));
        send(widget, QEvent::KeyPress, {});
        QVERIFY(listener.heard.contains(QEvent::KeyPress));
    }

    void heldKeyDoesNotAnswerTheNextQuestion() {
        const auto quiz = quizdesk::open(u"1"_s);
        QWindow &window = *quiz->window()->windowHandle();
        send(window, QEvent::KeyPress, {.time = moment - 500});
        send(window, QEvent::KeyRelease, {});
        QCOMPARE(quizRun().questionIndex, 1);
        quizdesk::goOn(quiz->window());
        QCOMPARE(quizdesk::answersEnabled(quiz->window()), quizdesk::threeAnswers);

        const Stroke atLast{.time = moment + 30};
        send(window, QEvent::KeyPress, {});
        send(window, QEvent::KeyRelease, atLast);
        QCOMPARE(quizRun().questionIndex, 1);
        QCOMPARE(quizdesk::answersEnabled(quiz->window()), quizdesk::threeAnswers);

        send(window, QEvent::KeyPress, {.time = moment + 500});
        send(window, QEvent::KeyRelease, {.time = moment + 600});
        QCOMPARE(quizRun().questionIndex, 2);
    }
};

ZORVAN_TEST(tst_keyrepeat)
#include "tst_keyrepeat.moc"
