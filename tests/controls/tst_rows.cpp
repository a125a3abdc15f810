#include <QTransform>

#include "look/palette.h"
#include "support/answerrow.h"
#include "support/drawing.h"
#include "support/inkcontrast.h"
#include "support/keyboard.h"
#include "support/optics.h"
#include "support/pointer.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::RowState;

namespace {

/// A row whose colours are looked at.
struct Row : AnswerRow {
    using AnswerRow::AnswerRow;

    QColor fill() {
        // None of its parts covers this spot.
        return at(row.layout()->contentsMargins().top() / 2);
    }
    QColor border() { return at(0); }
    QColor windowColor() const { return window.palette().color(QPalette::Window); }
    QColor accent() const { return platform::look::accent(window.palette()); }

    QImage iconOf(RowState state, const QString &label = {}) {
        icon.setProperty("label", label);
        row.setState(state);
        QImage picture(icon.size() * optics::ratio, QImage::Format_RGB32);
        picture.setDevicePixelRatio(optics::ratio);
        picture.fill(windowColor());
        icon.render(&picture, {}, {}, QWidget::DrawChildren);
        return picture;
    }

 private:
    QColor at(int y) { return row.grab().toImage().pixelColor(row.width() / 2, y); }
};

constexpr std::array states{RowState::Open,  RowState::Next,  RowState::Done,
                            RowState::Right, RowState::Wrong, RowState::Other};

/// The share of the pixels that differ by more than antialiasing can explain.
double difference(const QImage &one, const QImage &other) {
    int different = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            different += qAbs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > 64 ? 1 : 0;
        }
    }
    return double(different) / (one.width() * one.height());
}

}  // namespace

class tst_rows final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void fillSaysTheStateOfARow_data() { drawing::addPalettes(); }

    void fillSaysTheStateOfARow() {
        QFETCH(const QPalette, palette);
        Row row;
        row.window.setPalette(palette);
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

    void borderShowsTheFocusAndTheRightAnswer() {
        Row row;
        keyboard::use(row.window);
        for (const RowState state : states) {
            row.row.setState(state);
            row.another.setFocus();
            QCOMPARE(row.border() == row.accent(), state == RowState::Right);
            QVERIFY2(row.border() != row.windowColor(), "the row has no border");
            row.button.setFocus();
            QCOMPARE(row.border(), row.accent());
        }
    }

    void pointerAndPressAreSeenInTheFillAlone() {
        for (const RowState state : {RowState::Open, RowState::Next, RowState::Done}) {
            Row row;
            row.row.setState(state);
            pointer::moveTo(row.another);
            const QColor usual = row.fill();
            const QColor border = row.border();
            pointer::moveTo(row.text);
            const QColor hovered = row.fill();
            QVERIFY2(hovered != usual, "the pointer is not seen");
            QCOMPARE(row.border(), border);
            row.mouse(QTest::MousePress, row.text);
            const QColor pressed = row.fill();
            QVERIFY2(pressed != usual, "the press is not seen");
            QVERIFY2(pressed != hovered || state == RowState::Next,
                     "the press is not told from the pointer");
            row.mouse(QTest::MouseRelease, row.text);
            QCOMPARE(row.fill(), hovered);
            pointer::moveTo(row.another);
            QCOMPARE(row.fill(), usual);
        }
    }

    void rowThatCannotBePressedIsFaintAndStaysDark() {
        for (const bool badge : {false, true}) {
            Row row(badge);
            pointer::moveTo(row.another);
            const auto contrastOfTheButton = [&] { return inkContrasts(row.window).constFirst(); };
            const double usual = contrastOfTheButton();
            row.button.setEnabled(false);
            QVERIFY(contrastOfTheButton() < 0.7 * usual);
            QCOMPARE(row.fill(), row.windowColor());
            const QImage picture = row.row.grab().toImage();
            pointer::moveTo(row.text);
            QCOMPARE(row.row.grab().toImage(), picture);
        }
    }

    void wholeRowIsRedrawn() {
        const QList<std::pair<const char *, void (*)(Row &)>> changes{
            {"another state", [](Row &row) { row.row.setState(RowState::Wrong); }},
            {"the pointer", [](Row &row) { pointer::moveTo(row.text); }},
            {"the focus", [](Row &row) { row.button.setFocus(); }},
            {"cannot be pressed", [](Row &row) { row.button.setEnabled(false); }},
            {"pressed by the mouse", [](Row &row) { row.mouse(QTest::MousePress, row.text); }},
            {"pressed by a key", [](Row &row) { Q_EMIT row.button.pressed(); }},
            {"released by a key", [](Row &row) { Q_EMIT row.button.released(); }},
        };
        for (const auto &[name, change] : changes) {
            Row row;
            pointer::moveTo(row.another);
            QCoreApplication::processEvents();
            // Stands for every part: it changes by itself in none of these cases.
            const drawing::Paints icon(row.icon);
            change(row);
            QVERIFY2(QTest::qWaitFor([&] { return icon.count() > 0; }), name);
            // A button that stays down would keep the pointer from the next window.
            row.mouse(QTest::MouseRelease, row.text);
        }
    }

    void focusIsSeenInEveryState() {
        Row row;
        keyboard::use(row.window);
        for (const RowState state : states) {
            row.row.setState(state);
            row.another.setFocus();
            const QImage without = row.row.grab().toImage();
            row.button.setFocus();
            QVERIFY2(row.row.grab().toImage() != without, qPrintable(QString::number(int(state))));
        }
    }

    void iconIsATickOrACross() {
        Row row;
        const QImage nothing = row.iconOf(RowState::Other);
        QCOMPARE(row.iconOf(RowState::Open), nothing);
        const QImage cross = row.iconOf(RowState::Wrong);
        const QImage tick = row.iconOf(RowState::Right);
        QCOMPARE(row.iconOf(RowState::Done), tick);
        QVERIFY2(difference(cross, nothing) > 0.02, "there is no cross");
        // A cross is symmetrical, a tick is not.
        for (const auto &turned : {QTransform::fromScale(-1, 1), QTransform::fromScale(1, -1)}) {
            QVERIFY(difference(cross, cross.transformed(turned)) < 0.01);
            QVERIFY(difference(tick, tick.transformed(turned)) > 0.02);
        }
    }

    void iconOfWhatIsNextDoneOrRightIsADisc() {
        Row row;
        const QColor onAccent = platform::look::onAccent(row.window.palette());
        for (const RowState state : states) {
            const bool disc =
                state == RowState::Next || state == RowState::Done || state == RowState::Right;
            const bool labelled =
                state == RowState::Next || state == RowState::Open || state == RowState::Other;
            const QImage picture = row.iconOf(state, u"7"_s);
            QCOMPARE(optics::mainColor(picture) == row.accent().rgb(), disc);
            QCOMPARE(drawing::pixels(picture, onAccent) > 0, disc);
            // Round: nothing of it is in the corner.
            QCOMPARE(picture.pixelColor(0, 0), row.windowColor());
            const QList<optics::Text> texts = optics::texts(row.window);
            QCOMPARE(std::ranges::count(texts, u"7"_s, &optics::Text::text), labelled ? 1 : 0);
        }
    }

    void badgeIsFilledWhereItIsRightPressedOrPointedAt() {
        Row row;
        pointer::moveTo(row.another);
        const auto filled = [&] {
            return optics::mainColor(row.button.grab().toImage()) == row.accent().rgb();
        };
        QVERIFY(!filled());
        pointer::moveTo(row.text);
        QVERIFY(filled());
        pointer::moveTo(row.another);
        row.button.setDown(true);
        QVERIFY(filled());
        row.button.setDown(false);
        row.button.setEnabled(false);
        for (const RowState state : {RowState::Right, RowState::Wrong, RowState::Other}) {
            row.row.setState(state);
            QCOMPARE(filled(), state == RowState::Right);
        }
    }
};

ZORVAN_TEST(tst_rows)
#include "tst_rows.moc"
