#include <QTest>

#include "look/palette.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;
using platform::look::Fill;

namespace {

double contrast(const QColor &one, const QColor &other) {
    return optics::contrast(one.rgb(), other.rgb());
}

}  // namespace

/// The colours of the look, on a light and on a dark desktop.
class tst_palette final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase_data() { drawing::addPalettes(); }

    void accentIsBlue() {
        const QColor accent = platform::look::accent(palette());
        QVERIFY2(accent.hue() > 220 && accent.hue() < 235, qPrintable(accent.name()));
        QVERIFY2(accent.hslSaturationF() > 0.5F, qPrintable(accent.name()));
        QVERIFY(contrast(accent, palette().color(QPalette::Window)) >= 4.5);
        QVERIFY(contrast(accent, platform::look::onAccent(palette())) >= 4.5);
    }

    void everyColourIsSeenOnEveryFill() {
        const QColor hairline = platform::look::hairline(palette());
        for (const QColor &fill :
             {palette().color(QPalette::Window), fillColor(Fill::Surface), fillColor(Fill::Hovered),
              fillColor(Fill::Prominent), fillColor(Fill::Pressed)}) {
            QVERIFY2(contrast(platform::look::secondaryText(palette()), fill) >= 4.5,
                     qPrintable(fill.name()));
            QVERIFY2(contrast(platform::look::outline(palette()), fill) >= 3,
                     qPrintable(fill.name()));
            QVERIFY2(contrast(platform::look::accent(palette()), fill) >= 3,
                     qPrintable(fill.name()));
            // It is seen only when looked for.
            QVERIFY2(contrast(hairline, fill) < 2 && hairline != fill, qPrintable(fill.name()));
        }
    }

    void everyStateHasMoreOfTheAccent() {
        const auto stepsFromAccent = [](Fill fill) {
            const QColor color = fillColor(fill);
            const QColor accent = platform::look::accent(palette());
            return qAbs(color.red() - accent.red()) + qAbs(color.green() - accent.green()) +
                   qAbs(color.blue() - accent.blue());
        };
        QVERIFY(stepsFromAccent(Fill::Surface) > stepsFromAccent(Fill::Hovered));
        QVERIFY(stepsFromAccent(Fill::Hovered) > stepsFromAccent(Fill::Prominent));
        QVERIFY(stepsFromAccent(Fill::Prominent) > stepsFromAccent(Fill::Pressed));
        QCOMPARE(stepsFromAccent(Fill::Accent), 0);
        QVERIFY(fillColor(Fill::HoveredAccent) != fillColor(Fill::Accent));
        // The raised surface is told from the window.
        QVERIFY(fillColor(Fill::Surface) != palette().color(QPalette::Window));
    }

 private:
    static QPalette palette() {
        QFETCH_GLOBAL(QPalette, palette);
        return palette;
    }
    static QColor fillColor(Fill fill) { return platform::look::fillColor(palette(), fill); }
};

ZORVAN_TEST(tst_palette)
#include "tst_palette.moc"
