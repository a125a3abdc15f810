#include <QStyle>
#include <QTest>

#include "look/palette.h"
#include "support/optics.h"
#include "support/palettes.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;
using platform::look::Fill;

namespace {

/// In eight bits, as it is drawn.
QRgb drawn(const QColor &color) {
    return color.rgba64().toArgb32();
}

double contrast(const QColor &one, const QColor &other) {
    return optics::contrast(drawn(one), drawn(other));
}

/// Half of each.
QColor blended(const QColor &one, const QColor &other) {
    const auto half = [](int a, int b) { return (a + b) / 2; };
    return {half(one.red(), other.red()), half(one.green(), other.green()),
            half(one.blue(), other.blue())};
}

QColor windowOf(const QPalette &palette) {
    return palette.color(QPalette::Window);
}

/// What the desktop's own text has on its window.
double usualContrast(const QPalette &palette) {
    return contrast(palette.color(QPalette::WindowText), windowOf(palette));
}

/// A palette of nothing but these.
QPalette desktop(const QColor &window, const QColor &text, const QColor &base) {
    QPalette palette(window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    return palette;
}

QList<QColor> fillsOf(const QPalette &palette) {
    QList<QColor> fills{windowOf(palette)};
    for (const Fill fill : {Fill::Surface, Fill::Hovered, Fill::Prominent, Fill::Pressed}) {
        fills << platform::look::fillColor(palette, fill);
    }
    return fills;
}

/// What is wrong with the colours, in words.
QStringList flawsOf(const QPalette &palette) {
    using namespace platform::look;
    QStringList flaws;
    const auto demand = [&](const char *what, const QColor &one, const QColor &other,
                            double wanted) {
        if (contrast(one, other) < wanted) {
            flaws << u"%1 has %2 on %3, wanted is %4"_s.arg(QLatin1String(what))
                         .arg(contrast(one, other))
                         .arg(other.name())
                         .arg(wanted);
        }
    };
    const double wanted = qMin(4.5, usualContrast(palette));
    for (const QColor &fill : fillsOf(palette)) {
        demand("text", text(palette), fill, wanted);
        demand("secondary text", secondaryText(palette), fill, wanted);
        demand("the outline", outline(palette), fill, 3);
        demand("the accent", accent(palette), fill, 3);
    }
    demand("text on the accent", onAccent(palette), accent(palette), 4.5);
    demand("text on the hovered accent", onAccent(palette), fillColor(palette, Fill::HoveredAccent),
           4.5);
    demand("the verdict", Qt::white, fillColor(palette, Fill::Band), 4.5);
    demand("the band", fillColor(palette, Fill::Band), windowOf(palette), 1.6);
    const QColor faded = fillColor(palette, Fill::Faded);
    const QColor ground = faded.alpha() == 0 ? windowOf(palette) : faded;
    demand("text at half opacity", blended(fadedText(palette), ground), ground, 3);
    return flaws;
}

}  // namespace

/// The colours of the look, whatever the desktop's colours.
class tst_palette final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void usualColoursAreThese_data() {
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<QByteArray>("expected");
        // Of the style: the desktop's colours are its own.
        QTest::newRow("light") << QApplication::style()->standardPalette()
                               << QByteArray(
                                      "#3a55c4 #ffffff #000000 #393939 #000000 #7b7b7b #c9c9c9"
                                      " #ffffff #edf0fa #e7ebf8 #dfe4f6 #4c64c9 #2b3563");
        QTest::newRow("dark") << drawing::darkPalette()
                              << QByteArray(
                                     "#9db2ff #121833 #ececee #bebec1 #ececee #a2a3a5 #4c4c50"
                                     " #38393d #42444f #454855 #494d5c #90a4ed #415096");
    }

    void usualColoursAreThese() {
        using namespace platform::look;
        QFETCH(const QPalette, palette);
        QFETCH(const QByteArray, expected);
        QStringList actual;
        for (const QColor &color :
             {accent(palette), onAccent(palette), text(palette), secondaryText(palette),
              fadedText(palette), outline(palette), hairline(palette)}) {
            actual << color.name();
        }
        for (const Fill fill : {Fill::Surface, Fill::Hovered, Fill::Prominent, Fill::Pressed,
                                Fill::HoveredAccent, Fill::Band}) {
            actual << fillColor(palette, fill).name();
        }
        QCOMPARE(actual.join(u' ').toUtf8(), expected);
        QCOMPARE(fillColor(palette, Fill::Accent), accent(palette));
        QCOMPARE(fillColor(palette, Fill::Outline), outline(palette));
        QCOMPARE(fillColor(palette, Fill::None).alpha(), 0);
        QCOMPARE(fillColor(palette, Fill::Faded).alpha(), 0);
    }

    void everythingIsReadable_data() { palettes::addAll(); }

    void everythingIsReadable() {
        QFETCH(const QPalette, palette);
        QCOMPARE(flawsOf(palette).join(u'\n'), QString());
    }

    void everythingIsReadableOnWindowsOfEveryColour() {
        constexpr int levels = 6;
        const auto level = [](int number) { return number % levels * 255 / (levels - 1); };
        for (int window = 0; window < levels * levels * levels; ++window) {
            const QColor color(level(window / levels / levels), level(window / levels),
                               level(window));
            for (const Qt::GlobalColor text : {Qt::white, Qt::black, Qt::gray, Qt::darkBlue}) {
                for (const Qt::GlobalColor base : {Qt::white, Qt::black, Qt::gray}) {
                    const QPalette palette = desktop(color, text, base);
                    // A desktop with less is not meant to be read.
                    if (usualContrast(palette) >= 3) {
                        QVERIFY2(flawsOf(palette).isEmpty(),
                                 qPrintable(u"%1 on %2: %3"_s.arg(QColor(text).name(), color.name(),
                                                                  flawsOf(palette).join(u'\n'))));
                    }
                }
            }
        }
    }

    void accentIsBlue_data() { palettes::addAll(); }

    void accentIsBlue() {
        QFETCH(const QPalette, palette);
        const QColor accent = platform::look::accent(palette);
        QVERIFY2(accent.hue() > 220 && accent.hue() < 235, qPrintable(accent.name()));
        QVERIFY2(accent.hslSaturationF() > 0.5F, qPrintable(accent.name()));
    }

    void accentIsOnTheSideOfTheText_data() {
        QTest::addColumn<QColor>("window");
        QTest::addColumn<QColor>("text");
        QTest::newRow("white on blue") << QColor(0x00, 0x00, 0xff) << QColor(Qt::white);
        QTest::newRow("white on violet") << QColor(0x80, 0x40, 0xff) << QColor(Qt::white);
        QTest::newRow("black on green") << QColor(0x00, 0xa0, 0x00) << QColor(Qt::black);
        QTest::newRow("black on grey") << QColor(0x7c, 0x7c, 0x7c) << QColor(Qt::black);
        QTest::newRow("white on grey") << QColor(0x72, 0x72, 0x72) << QColor(Qt::white);
    }

    void accentIsOnTheSideOfTheText() {
        QFETCH(const QColor, window);
        QFETCH(const QColor, text);
        const QPalette palette = desktop(window, text, Qt::white);
        const bool isLight = text == Qt::white;
        const auto toBlack = [](const QColor &color) { return contrast(color, Qt::black); };
        QCOMPARE(toBlack(platform::look::accent(palette)) > toBlack(window), isLight);
        QCOMPARE(toBlack(platform::look::onAccent(palette)) < toBlack(window), isLight);
    }

    void surfaceIsTheBaseWhereTextIsReadableOnIt_data() {
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<bool>("isBase");
        QTest::newRow("light") << QApplication::palette() << true;
        QTest::newRow("high contrast white") << palettes::highContrastWhite() << true;
        QTest::newRow("black on yellow, light base")
            << desktop(0xffd500, Qt::black, 0xfff8d0) << true;
        QTest::newRow("black on yellow, dark base") << palettes::yellow() << false;
        QTest::newRow("grey on white, black base")
            << desktop(Qt::white, 0x747474, Qt::black) << false;
        QTest::newRow("black on white, base too dark to be tinted")
            << desktop(Qt::white, Qt::black, 0x777777) << false;
        QTest::newRow("white on blue, white base") << palettes::blue() << false;
        QTest::newRow("white on red, white base") << palettes::red() << false;
        QTest::newRow("less readable on the base than on the window") << palettes::cream() << false;
    }

    void surfaceIsTheBaseWhereTextIsReadableOnIt() {
        QFETCH(const QPalette, palette);
        QFETCH(const bool, isBase);
        const QColor surface = platform::look::fillColor(palette, Fill::Surface);
        QCOMPARE(surface == palette.color(QPalette::Base), isBase);
    }

    void everyStateHasMoreOfTheAccent_data() {
        palettes::addAll();
        // Text would be readable on rows in the window's own colour, but not on lighter ones.
        QTest::newRow("white on grey") << desktop(0x585858, Qt::white, Qt::white);
    }

    void everyStateHasMoreOfTheAccent() {
        QFETCH(const QPalette, palette);
        const auto stepsFromAccent = [&](Fill fill) {
            const QColor color = platform::look::fillColor(palette, fill);
            const QColor accent = platform::look::accent(palette);
            return qAbs(color.red() - accent.red()) + qAbs(color.green() - accent.green()) +
                   qAbs(color.blue() - accent.blue());
        };
        QVERIFY(stepsFromAccent(Fill::Surface) > stepsFromAccent(Fill::Hovered));
        QVERIFY(stepsFromAccent(Fill::Hovered) > stepsFromAccent(Fill::Prominent));
        QVERIFY(stepsFromAccent(Fill::Prominent) > stepsFromAccent(Fill::Pressed));
        QCOMPARE(stepsFromAccent(Fill::Accent), 0);
        QVERIFY(stepsFromAccent(Fill::HoveredAccent) > 0);
        // The raised surface is told from the window, unless that is as white as can be.
        QVERIFY(windowOf(palette) == Qt::white ||
                platform::look::fillColor(palette, Fill::Surface) != windowOf(palette));
    }

    void hairlineIsSeenOnlyWhenLookedForOrWithHighContrast_data() {
        palettes::addAll();
        QTest::newRow("black on nearly white") << desktop(0xf8f8f8, Qt::black, Qt::white);
    }

    void hairlineIsSeenOnlyWhenLookedForOrWithHighContrast() {
        QFETCH(const QPalette, palette);
        const QColor hairline = platform::look::hairline(palette);
        const bool isHigh = usualContrast(palette) >= 20;
        for (const QColor &fill : fillsOf(palette)) {
            QVERIFY(hairline != fill);
            QVERIFY2(isHigh ? contrast(hairline, fill) >= 3 : contrast(hairline, fill) < 2,
                     qPrintable(fill.name()));
        }
    }

    void textIsThePalettesOwnWhereItIsReadable_data() { palettes::addAll(); }

    void textIsThePalettesOwnWhereItIsReadable() {
        QFETCH(const QPalette, palette);
        const QColor own = palette.color(QPalette::WindowText);
        bool isReadable = true;
        for (const QColor &fill : fillsOf(palette)) {
            isReadable = isReadable && contrast(own, fill) >= qMin(4.5, usualContrast(palette));
        }
        QCOMPARE(platform::look::text(palette) == own, isReadable);
    }

    void fadedTextIsNoStrongerThanNeeded() {
        const QPalette palette = palettes::cream();
        const QColor ink = platform::look::fadedText(palette);
        QVERIFY(ink != platform::look::text(palette));
        const QColor window = windowOf(palette);
        QVERIFY(contrast(blended(ink, window), window) < 3.3);
    }

    void fadedTextStandsOnAFillWhereNoInkWouldDo() {
        for (const QPalette &palette : {palettes::blue(), palettes::red()}) {
            const QColor window = windowOf(palette);
            QVERIFY(contrast(blended(Qt::white, window), window) < 3);
            const QColor fill = platform::look::fillColor(palette, Fill::Faded);
            QCOMPARE(fill.alpha(), 255);
            QVERIFY(contrast(Qt::white, fill) > contrast(Qt::white, window));
        }
    }

    void transparentTextIsTakenAsItIsSeen() {
        const QPalette solid = desktop(Qt::white, 0x666666, Qt::white);
        const QPalette transparent = desktop(Qt::white, QColor(0, 0, 0, 0x99), Qt::white);
        QCOMPARE(drawn(platform::look::text(transparent)), drawn(platform::look::text(solid)));
        QVERIFY(contrast(platform::look::hairline(transparent), Qt::white) < 2);
    }

    void stateOfTheWindowIsFollowed() {
        QPalette palette = palettes::highContrastWhite();
        palette.setColor(QPalette::Inactive, QPalette::Window, Qt::black);
        palette.setColor(QPalette::Inactive, QPalette::WindowText, Qt::white);
        palette.setColor(QPalette::Disabled, QPalette::WindowText, 0xe0e0e0);
        palette.setCurrentColorGroup(QPalette::Active);
        QCOMPARE(platform::look::text(palette), QColor(Qt::black));
        palette.setCurrentColorGroup(QPalette::Inactive);
        QCOMPARE(platform::look::text(palette), QColor(Qt::white));
        // What is disabled fades as a whole.
        palette.setCurrentColorGroup(QPalette::Disabled);
        QCOMPARE(platform::look::text(palette), QColor(Qt::black));
    }

    void changeIsFollowed() {
        QPalette palette = palettes::highContrastBlack();
        const QPalette another = palettes::highContrastWhite();
        QCOMPARE(platform::look::text(palette), QColor(Qt::white));
        QCOMPARE(platform::look::text(another), QColor(Qt::black));
        QCOMPARE(platform::look::text(palette), QColor(Qt::white));
        palette.setColor(QPalette::WindowText, 0xeeeeee);
        QCOMPARE(platform::look::text(palette), QColor(0xeeeeee));
    }
};

ZORVAN_TEST(tst_palette)
#include "tst_palette.moc"
