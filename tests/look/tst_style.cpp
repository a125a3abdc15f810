#include <algorithm>

#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTest>
#include <QVBoxLayout>

#include "look/palette.h"
#include "support/drawing.h"
#include "support/inkcontrast.h"
#include "support/keyboard.h"
#include "support/optics.h"
#include "support/palettes.h"
#include "support/pointer.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// A button in an active window, and another one that has the focus.
template <class Button>
struct Shown {
    QWidget window;
    Button button{u"Next question"_s, &window};
    Button another{u"another"_s, &window};

    Shown() {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(&button);
        column->addWidget(&another);
        // Wide enough for its text in any font.
        button.setMinimumSize(240, 36);
        another.setFocus();
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("The button's window is not active");
        }
    }

    /// The colour above the text.
    QColor background() {
        return button.grab().toImage().pixelColor(button.width() / 2, button.height() / 6);
    }
};

void makeDefault(QPushButton &button, bool isDefault) {
    button.setAutoDefault(false);
    button.setDefault(isDefault);
}

/// From the middle of each side of a picture, the step inwards.
QList<std::pair<QPoint, QPoint>> sidesOf(const QImage &picture) {
    const QPoint middle = picture.rect().center();
    return {{{0, middle.y()}, {1, 0}},
            {{picture.width() - 1, middle.y()}, {-1, 0}},
            {{middle.x(), 0}, {0, 1}},
            {{middle.x(), picture.height() - 1}, {0, -1}}};
}

/// The widths of a ring in that colour, of the gap inside it, and of the beginning of the fill.
QList<int> ringGapAndFill(const QImage &picture, QPoint at, const QPoint &inwards,
                          const QColor &color) {
    QList<int> widths{0, 0, 0};
    for (int part = 0; part < 3 && widths[2] < 3 && picture.rect().contains(at); at += inwards) {
        if ((picture.pixelColor(at) == color) != (part != 1)) {
            ++part;
        }
        if (part < 3) {
            ++widths[part];
        }
    }
    return widths;
}

}  // namespace

class tst_style final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase_data() { palettes::addAll(); }

    void init() {
        QFETCH_GLOBAL(const QPalette, palette);
        QApplication::setPalette(palette);
    }

    void focusIsARingInTheAccent() {
        Shown<QPushButton> push;
        makeDefault(push.another, false);
        expectRingRound(push.button, push.another);
        Shown<QRadioButton> radio;
        expectRingRound(radio.button, radio.another);
    }

    void focusStandsOffTheDefaultButton() {
        Shown<QPushButton> shown;
        makeDefault(shown.button, true);
        shown.button.setFocus();
        keyboard::use(shown.window);
        const QImage picture = shown.button.grab().toImage();
        for (const auto &[from, inwards] : sidesOf(picture)) {
            const QList<int> widths = ringGapAndFill(picture, from, inwards, accent());
            QVERIFY(widths[0] >= 2 && widths[0] <= picture.height() / 8);
            QVERIFY(widths[1] >= 2);
            QVERIFY(widths[2] >= 2);
        }
    }

    void defaultButtonIsFilledWithTheAccent() {
        Shown<QPushButton> shown;
        makeDefault(shown.button, false);
        QVERIFY(shown.background() != accent());
        makeDefault(shown.button, true);
        QCOMPARE(shown.background(), accent());
        QVERIFY2(drawing::pixels(shown.button, onAccent()) > 0,
                 "its text is not in the colour for the accent");
    }

    void pointerAndPressAreSeenOnAButton() {
        for (const bool isDefault : {false, true}) {
            Shown<QPushButton> shown;
            makeDefault(shown.button, isDefault);
            pointer::moveTo(shown.another);
            const QColor usual = shown.background();
            pointer::moveTo(shown.button);
            QVERIFY2(shown.background() != usual, "the pointer is not seen");
            shown.button.setDown(true);
            QVERIFY2(shown.background() != usual, "the press is not seen");
            shown.button.setDown(false);
            pointer::moveTo(shown.another);
            QCOMPARE(shown.background(), usual);
        }
    }

    void textIsReadableUnderThePointer() {
        const QPalette palette = QApplication::palette();
        const double usual = optics::contrast(palette.color(QPalette::WindowText).rgb(),
                                              palette.color(QPalette::Window).rgb());
        Shown<QPushButton> push;
        makeDefault(push.button, false);
        pointer::moveTo(push.button);
        QVERIFY(inkContrasts(push.button).constFirst() >= qMin(usual, 4.5));
        push.button.setDown(true);
        QVERIFY(inkContrasts(push.button).constFirst() >= qMin(usual, 4.5));
        push.button.setDown(false);
        Shown<QRadioButton> radio;
        pointer::moveTo(radio.button);
        QVERIFY(inkContrasts(radio.button).constFirst() >= qMin(usual, 4.5));
    }

    void optionIsPressedAnywhereOnItsRow() {
        for (const QPoint &corner : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)}) {
            QRadioButton option(u"Timed"_s);
            option.resize(2 * option.sizeHint());
            QTest::mouseClick(
                &option, Qt::LeftButton, {},
                {corner.x() * (option.width() - 1), corner.y() * (option.height() - 1)});
            QVERIFY(option.isChecked());
        }
    }

    void onlyTheOptionThatIsOnIsFilled() {
        QRadioButton option(u"Timed"_s);
        option.setAutoExclusive(false);
        QCOMPARE(drawing::pixels(option, accent()), 0);
        option.setChecked(true);
        const int line = option.fontMetrics().height();
        QVERIFY(drawing::pixels(option, accent()) > line * line / 4);
        QVERIFY2(drawing::pixels(option, onAccent()) > 0, "there is no dot inside");
        option.setChecked(false);
        QCOMPARE(drawing::pixels(option, accent()), 0);
    }

    void sizesAreKnownWithoutAControl() {
        const QStyle &style = *QApplication::style();
        QVERIFY(style.pixelMetric(QStyle::PM_ScrollBarExtent) > 0);
        QVERIFY(style.pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) > 0);
    }

 private:
    static QColor accent() { return platform::look::accent(QApplication::palette()); }
    static QColor onAccent() { return platform::look::onAccent(QApplication::palette()); }

    static void expectRingRound(QWidget &button, QWidget &another) {
        keyboard::use(*button.window());
        another.setFocus();
        QCOMPARE(drawing::pixels(button, accent()), 0);
        button.setFocus();
        const QImage picture = button.grab().toImage();
        for (const auto &[edge, inwards] : sidesOf(picture)) {
            QCOMPARE(picture.pixelColor(edge + inwards), accent());
        }
    }
};

ZORVAN_TEST(tst_style)
#include "tst_style.moc"
