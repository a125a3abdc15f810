#include <QHBoxLayout>
#include <QPushButton>
#include <QTest>
#include <QTransform>

#include "controls/actionrow.h"
#include "controls/rowbutton.h"
#include "controls/statusicon.h"
#include "controls/textlabel.h"
#include "look/palette.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/pointer.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::RowState;

namespace {

/// A window with an answer's row and another control.
struct Row {
    QWidget window;
    platform::ActionRow row{&window};
    platform::RowButton button{u"A"_s, &row};
    platform::TextLabel text{&row};
    platform::StatusIcon icon{&row};
    QPushButton another{u"another"_s, &window};

    explicit Row(bool badge = true) {
        button.setProperty("badge", badge);
        auto *inRow = new QHBoxLayout(&row);
        inRow->addWidget(&button);
        inRow->addWidget(&text, 1);
        inRow->addWidget(&icon);
        auto *inWindow = new QVBoxLayout(&window);
        inWindow->addWidget(&row);
        inWindow->addWidget(&another);
        text.setStringValue(u"an answer"_s);
        icon.setProperty("label", QString());
        window.resize(400, 160);
        another.setFocus();
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("The row's window is not active");
        }
    }

    /// Presses or releases the mouse on the text.
    void mouse(QTest::MouseAction action) {
        QTest::mouseEvent(action, window.windowHandle(), Qt::LeftButton, {},
                          text.mapTo(&window, text.rect().center()));
    }
    /// The row's colour at a spot that none of its parts covers.
    QColor fill() { return at(row.width() / 2, row.layout()->contentsMargins().top() / 2); }
    QColor border() { return at(row.width() / 2, 0); }
    QColor windowColor() const { return window.palette().color(QPalette::Window); }

 private:
    QColor at(int x, int y) { return row.grab().toImage().pixelColor(x, y); }
};

constexpr std::array states{RowState::Open,  RowState::Next,  RowState::Done,
                            RowState::Right, RowState::Wrong, RowState::Other};

/// How many pixels differ by more than antialiasing can explain.
int differences(const QImage &one, const QImage &other) {
    int differences = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            differences += qAbs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > 64 ? 1 : 0;
        }
    }
    return differences;
}

}  // namespace

class tst_rows final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() { QApplication::setPalette(palette_); }

    void fillSaysTheStateOfARow_data() { drawing::addPalettes(); }

    void fillSaysTheStateOfARow() {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        Row row;
        QMap<RowState, QColor> fills;
        for (const RowState state : states) {
            row.row.setState(state);
            fills[state] = row.fill();
        }
        const QColor open = fills[RowState::Open];
        QVERIFY2(open != row.windowColor(), "an open row has no fill");
        QCOMPARE(fills[RowState::Done], open);
        QVERIFY2(fills[RowState::Next] != open, "what is next is not set off");
        QVERIFY2(fills[RowState::Next] != row.windowColor(), "what is next has no fill");
        QCOMPARE(fills[RowState::Right], fills[RowState::Next]);
        QCOMPARE(fills[RowState::Wrong], row.windowColor());
        QCOMPARE(fills[RowState::Other], row.windowColor());
    }

    void onlyTheRightAnswerHasABorderInTheAccent() {
        Row row;
        const QColor accent = platform::look::accent(row.window.palette());
        for (const RowState state : states) {
            row.row.setState(state);
            QCOMPARE(row.border() == accent, state == RowState::Right);
            QVERIFY2(row.border() != row.windowColor(), "the row has no border");
        }
    }

    void focusIsOnTheBorderWhateverTheState() {
        Row row;
        const QColor accent = platform::look::accent(row.window.palette());
        for (const RowState state : states) {
            row.row.setState(state);
            row.another.setFocus();
            const int without = drawing::pixels(row.row, accent);
            row.button.setFocus();
            QCOMPARE(row.border(), accent);
            // The border goes all the way round; other parts may have the accent colour too.
            const int around = drawing::pixels(row.row, accent) - without;
            QVERIFY2(around > row.row.width() + row.row.height(),
                     qPrintable(u"the focus adds %1 pixels"_s.arg(around)));
        }
    }

    void rowThatCannotBePressedHasNoFill() {
        Row row;
        row.button.setEnabled(false);
        QCOMPARE(row.fill(), row.windowColor());
        row.button.setEnabled(true);
        QVERIFY(row.fill() != row.windowColor());
    }

    void pointerLightsTheFillAndLeavesTheBorder_data() {
        QTest::addColumn<RowState>("state");
        QTest::newRow("open") << RowState::Open;
        QTest::newRow("next") << RowState::Next;
        QTest::newRow("done") << RowState::Done;
    }

    void pointerLightsTheFillAndLeavesTheBorder() {
        QFETCH(const RowState, state);
        Row row;
        row.row.setState(state);
        pointer::moveTo(row.another);
        const QColor fill = row.fill();
        const QColor border = row.border();
        pointer::moveTo(row.text);
        QVERIFY(row.row.isHovered());
        QVERIFY2(row.fill() != fill, "the pointer is not seen");
        QCOMPARE(row.border(), border);
        pointer::moveTo(row.another);
        QVERIFY(!row.row.isHovered());
        QCOMPARE(row.fill(), fill);
    }

    void pointerDoesNotLightWhatCannotBePressed() {
        for (const RowState state : {RowState::Open, RowState::Right, RowState::Other}) {
            Row row;
            row.button.setEnabled(false);
            row.row.setState(state);
            pointer::moveTo(row.another);
            const QImage picture = row.row.grab().toImage();
            pointer::moveTo(row.text);
            QVERIFY(!row.row.isHovered());
            QCOMPARE(row.row.grab().toImage(), picture);
        }
    }

    void pressIsSeenOnTheRow() {
        Row row;
        pointer::moveTo(row.another);
        const QColor usual = row.fill();
        pointer::moveTo(row.text);
        const QColor hovered = row.fill();
        row.mouse(QTest::MousePress);
        const QColor pressed = row.fill();
        row.mouse(QTest::MouseRelease);
        QVERIFY2(pressed != hovered, "the press is not told from the pointer");
        QVERIFY2(pressed != usual, "the press is not seen");
        QCOMPARE(row.fill(), hovered);
    }

    void everyPartIsRedrawn_data() {
        using Change = std::function<void(Row &)>;
        QTest::addColumn<Change>("change");
        QTest::newRow("another state")
            << Change([](Row &row) { row.row.setState(RowState::Wrong); });
        QTest::newRow("the pointer") << Change([](Row &row) { pointer::moveTo(row.text); });
        QTest::newRow("the focus") << Change([](Row &row) { row.button.setFocus(); });
        QTest::newRow("cannot be pressed")
            << Change([](Row &row) { row.button.setEnabled(false); });
        QTest::newRow("pressed by the mouse")
            << Change([](Row &row) { row.mouse(QTest::MousePress); });
        QTest::newRow("pressed by a key") << Change([](Row &row) { Q_EMIT row.button.pressed(); });
        QTest::newRow("released by a key")
            << Change([](Row &row) { Q_EMIT row.button.released(); });
    }

    void everyPartIsRedrawn() {
        QFETCH(const std::function<void(Row &)>, change);
        Row row;
        pointer::moveTo(row.another);
        QCoreApplication::processEvents();
        const drawing::Paints whole(row.row);
        const drawing::Paints icon(row.icon);
        const drawing::Paints text(row.text);
        change(row);
        QVERIFY2(QTest::qWaitFor([&] { return whole.count() > 0; }), "the row is not redrawn");
        QVERIFY2(QTest::qWaitFor([&] { return icon.count() > 0; }), "its icon is not redrawn");
        QVERIFY2(QTest::qWaitFor([&] { return text.count() > 0; }), "its text is not redrawn");
    }

    void iconIsATickACrossOrNothing() {
        Row row;
        const QImage nothing = icon(row, RowState::Other);
        QCOMPARE(icon(row, RowState::Open), nothing);
        const int size = nothing.width() * nothing.height();
        const QImage cross = icon(row, RowState::Wrong);
        const QImage tick = icon(row, RowState::Right);
        QCOMPARE(icon(row, RowState::Done), tick);
        QVERIFY2(differences(cross, nothing) > size / 50, "there is no cross");
        // A cross is symmetrical, a tick is not.
        for (const QTransform &turned :
             {QTransform::fromScale(-1, 1), QTransform::fromScale(1, -1)}) {
            QVERIFY(differences(cross, cross.transformed(turned)) < size / 100);
            QVERIFY(differences(tick, tick.transformed(turned)) > size / 50);
        }
        // They replace the label, whatever it is.
        QCOMPARE(icon(row, RowState::Wrong, u"8"_s), cross);
        QCOMPARE(icon(row, RowState::Right, u"8"_s), tick);
    }

    void iconWithoutATickOrCrossIsItsLabel() {
        Row row;
        for (const RowState state : {RowState::Open, RowState::Next, RowState::Other}) {
            QVERIFY(icon(row, state, u"1"_s) != icon(row, state, u"2"_s));
            QVERIFY(icon(row, state, u"1"_s) != icon(row, state));
        }
        // The label has a ring around it.
        const QImage ring = icon(row, RowState::Open, u"1"_s);
        const QImage nothing = icon(row, RowState::Open);
        const int middle = ring.width() / 2;
        int edges = 0;
        for (const QPoint &inwards : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            for (int step = 0; step < optics::ratio; ++step) {
                const QPoint at = QPoint(middle, middle) - inwards * (middle - 1 - step);
                if (ring.pixel(at) != nothing.pixel(at)) {
                    ++edges;
                    break;
                }
            }
        }
        QCOMPARE(edges, 4);
    }

    void iconOfWhatIsNextDoneOrRightIsADisc() {
        Row row;
        const QRgb accent = platform::look::accent(row.window.palette()).rgb();
        const QColor onAccent = platform::look::onAccent(row.window.palette());
        for (const RowState state : states) {
            const bool disc =
                state == RowState::Next || state == RowState::Done || state == RowState::Right;
            const QImage picture = icon(row, state, u"1"_s);
            QCOMPARE(optics::mainColor(picture) == accent, disc);
            QCOMPARE(drawing::pixels(picture, onAccent) > 0, disc);
            QCOMPARE(picture.pixel(0, 0), row.windowColor().rgb());
        }
    }

    void badgeIsFilledWhereItIsRightPressedOrPointedAt() {
        Row row;
        pointer::moveTo(row.another);
        const QColor accent = platform::look::accent(row.window.palette());
        const auto filled = [&] {
            return drawing::pixels(row.button, accent) >
                   row.button.width() * row.button.height() / 2;
        };
        QVERIFY(!filled());
        pointer::moveTo(row.text);
        QVERIFY(filled());
        pointer::moveTo(row.another);
        QVERIFY(!filled());
        row.button.setDown(true);
        QVERIFY(filled());
        row.button.setDown(false);
        row.button.setEnabled(false);
        for (const RowState state : {RowState::Right, RowState::Wrong, RowState::Other}) {
            row.row.setState(state);
            QCOMPARE(filled(), state == RowState::Right);
        }
    }

    void buttonThatCannotBePressedIsFaint() {
        for (const bool badge : {false, true}) {
            Row row(badge);
            pointer::moveTo(row.another);
            const auto darkest = [&] {
                const QImage picture = row.button.grab().toImage();
                int gray = 255;
                for (int y = 0; y < picture.height(); ++y) {
                    for (int x = 0; x < picture.width(); ++x) {
                        gray = qMin(gray, qGray(picture.pixel(x, y)));
                    }
                }
                return gray;
            };
            const int usual = darkest();
            row.button.setEnabled(false);
            QVERIFY2(darkest() > usual + 64,
                     qPrintable(u"%1 on, %2 off"_s.arg(usual).arg(darkest())));
        }
    }

    void wordsSayHowARowStands() {
        QWidget window;
        platform::ActionRow row(&window);
        const platform::RowButton button(u"Variables"_s, &row);
        platform::TextLabel text(&row);
        const platform::TextLabel words(&row);
        text.setStringValue(u"19 questions"_s);
        window.show();
        row.setState(RowState::Done, u"Mastered"_s);
        QCOMPARE(words.text(), u"Mastered"_s);
        QCoreApplication::processEvents();
        QCOMPARE(button.accessibleDescription(), u"mastered"_s);
        QCOMPARE(text.text(), u"19 questions"_s);
        row.setState(RowState::Open);
        QCOMPARE(words.text(), QString());
        QCoreApplication::processEvents();
        QCOMPARE(button.accessibleDescription(), QString());
    }

 private:
    static QImage icon(Row &row, RowState state, const QString &label = {}) {
        row.icon.setProperty("label", label);
        row.row.setState(state);
        QImage picture(row.icon.size() * optics::ratio, QImage::Format_RGB32);
        picture.setDevicePixelRatio(optics::ratio);
        picture.fill(row.windowColor());
        row.icon.render(&picture, {}, {}, QWidget::DrawChildren);
        return picture;
    }

    QPalette palette_ = QApplication::palette();
};

ZORVAN_TEST(tst_rows)
#include "tst_rows.moc"
