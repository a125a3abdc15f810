#include <QTest>

#include "controls/banner.h"
#include "controls/imagelabel.h"
#include "look/image.h"
#include "look/palette.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::Banner;
using platform::ImageLabel;
using platform::look::imageNamed;
using Tone = Banner::Tone;

namespace {

/// A banner with a picture in its middle.
struct ShownBanner {
    Banner banner;
    ImageLabel image{&banner};

    ShownBanner() {
        banner.resize(300, 200);
        image.setLines(4);
        image.resize(image.sizeHint());
        image.move(banner.rect().center() - image.rect().center());
        image.setImage(imageNamed(u"checkmark.png"_s));
    }

    QImage picture(Tone tone) {
        banner.setTone(tone);
        return banner.grab().toImage();
    }
};

/// The share of the picture that is in its main colour.
double shareOfMainColor(const QImage &picture) {
    return double(drawing::pixels(picture, optics::mainColor(picture))) /
           (picture.width() * picture.height());
}

}  // namespace

/// Banners and the pictures on them.
class tst_banner final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void toneIsSeenInBackgroundAndPicture_data() { drawing::addPalettes(); }

    void toneIsSeenInBackgroundAndPicture() {
        QFETCH(const QPalette, palette);
        ShownBanner shown;
        QCOMPARE(shown.banner.tone(), Tone::Neutral);
        shown.banner.setPalette(palette);
        const QColor accent = platform::look::accent(palette);
        const QColor onAccent = platform::look::onAccent(palette);

        const QImage neutral = shown.picture(Tone::Neutral);
        const QImage positive = shown.picture(Tone::Positive);
        const QImage festive = shown.picture(Tone::Festive);
        QCOMPARE(drawing::pixels(neutral, accent), 0);
        QVERIFY2(drawing::pixels(positive, accent) > 0, "the picture is not in the accent");
        QVERIFY(optics::mainColor(positive) != optics::mainColor(neutral));
        QVERIFY(optics::mainColor(positive) != accent.rgb());
        QCOMPARE(optics::mainColor(festive), accent.rgb());
        QVERIFY2(drawing::pixels(festive, onAccent) > 0, "the picture is lost on the accent");
        QVERIFY2(shareOfMainColor(festive) < 0.9, "there are no rays");
        QVERIFY(shareOfMainColor(neutral) > 0.9 && shareOfMainColor(positive) > 0.9);
    }

    void newToneIsDrawnAtOnce() {
        Banner empty;
        ShownBanner shown;
        empty.show();
        shown.banner.show();
        QVERIFY(QTest::qWaitForWindowExposed(&empty));
        QVERIFY(QTest::qWaitForWindowExposed(&shown.banner));
        QCoreApplication::processEvents();
        const drawing::Paints banner(empty);
        const drawing::Paints image(shown.image);
        empty.setTone(Tone::Festive);
        shown.banner.setTone(Tone::Festive);
        QTRY_VERIFY(banner.count() > 0);
        QTRY_VERIFY(image.count() > 0);
    }

    void picturesAreToldApartAndTakenAway() {
        for (const Tone tone : {Tone::Neutral, Tone::Positive, Tone::Festive}) {
            ShownBanner shown;
            const QImage check = shown.picture(tone);
            shown.image.setImage(imageNamed(u"blankcheckmark.png"_s));
            const QImage blank = shown.picture(tone);
            shown.image.setImage(QIcon());
            const QImage empty = shown.picture(tone);
            QVERIFY(check != blank);
            QVERIFY(check != empty);
            QVERIFY(blank != empty);
            shown.image.hide();
            QCOMPARE(shown.picture(tone), empty);
        }
    }

    void pictureOffABannerFillsItsLabelInTheAccent() {
        ImageLabel image;
        image.setLines(4);
        image.resize(image.sizeHint());
        QCOMPARE(image.width(), image.height());
        const QImage empty = image.grab().toImage();
        image.setImage(imageNamed(u"checkmark.png"_s));
        const QImage full = image.grab().toImage();
        QCOMPARE(full.width(), qRound(image.width() * image.devicePixelRatioF()));
        QVERIFY(drawing::pixels(full, platform::look::accent(image.palette())) > 0);
        int first = full.width();
        int last = 0;
        for (int x = 0; x < full.width(); ++x) {
            const QRect column(x, 0, 1, full.height());
            if (full.copy(column) != empty.copy(column)) {
                first = qMin(first, x);
                last = x;
            }
        }
        QVERIFY(last - first > full.width() * 9 / 10);
    }
};

ZORVAN_TEST(tst_banner)
#include "tst_banner.moc"
