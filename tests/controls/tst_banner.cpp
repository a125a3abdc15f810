#include <QTest>

#include "controls/banner.h"
#include "controls/imagelabel.h"
#include "look/image.h"
#include "look/palette.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/testmain.h"
#include "windowing/outlets.h"

using namespace Qt::StringLiterals;

using platform::Banner;

namespace {

/// A banner with a picture in its middle.
struct ShownBanner {
    Banner banner;
    platform::ImageLabel image{&banner};

    ShownBanner() {
        banner.resize(300, 200);
        image.setLines(4);
        image.resize(image.sizeHint());
        image.move(banner.rect().center() - image.rect().center());
        image.setImage(platform::look::imageNamed(u"checkmark.png"_s));
    }

    QImage picture() {
        QImage picture(banner.size(), QImage::Format_RGB32);
        picture.fill(banner.palette().color(QPalette::Window));
        banner.render(&picture);
        return picture;
    }
    int pixels(const QColor &color) { return drawing::pixels(picture(), color); }
    int area() const { return banner.width() * banner.height(); }
};

}  // namespace

class tst_banner final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() { QApplication::setPalette(palette_); }

    void isQuietAtFirst() {
        const Banner banner;
        QCOMPARE(banner.tone(), Banner::Tone::Neutral);
    }

    void toneIsSeenInBackgroundAndPicture_data() { drawing::addPalettes(); }

    void toneIsSeenInBackgroundAndPicture() {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        ShownBanner shown;
        const QColor accent = platform::look::accent(palette);
        const QColor onAccent = platform::look::onAccent(palette);

        shown.banner.setTone(Banner::Tone::Neutral);
        QCOMPARE(shown.pixels(accent), 0);

        shown.banner.setTone(Banner::Tone::Positive);
        const int positive = shown.pixels(accent);
        QVERIFY2(positive > 0, "a positive banner has no picture in the accent");
        QVERIFY2(positive < shown.area() / 4, "a positive banner is filled with the accent");

        shown.banner.setTone(Banner::Tone::Festive);
        QVERIFY2(shown.pixels(accent) > shown.area() / 4, "a festive banner is not on the accent");
        QVERIFY2(shown.pixels(onAccent) > 0, "its picture is not in the colour for the accent");
        shown.image.setImage(QIcon());
        QCOMPARE(shown.pixels(onAccent), 0);
    }

    void tonesAreToldApart() {
        ShownBanner shown;
        shown.image.setImage(QIcon());
        QList<QRgb> backgrounds;
        for (const auto tone :
             {Banner::Tone::Neutral, Banner::Tone::Positive, Banner::Tone::Festive}) {
            shown.banner.setTone(tone);
            backgrounds << optics::mainColor(shown.picture());
        }
        QVERIFY(backgrounds[0] != backgrounds[1]);
        QVERIFY(backgrounds[0] != backgrounds[2]);
        QVERIFY(backgrounds[1] != backgrounds[2]);
    }

    void onlyTheFestiveBannerHasRays() {
        ShownBanner shown;
        shown.image.setImage(QIcon());
        // Counts the changes of colour along the middle row, away from the edges.
        const auto changes = [&] {
            const QImage picture = shown.picture();
            const QRgb background = optics::mainColor(picture);
            const int y = picture.height() / 2;
            int turns = 0;
            for (int x = picture.width() / 10; x < picture.width() * 9 / 10; ++x) {
                // Only the main colour is compared: where it meets another, the edge is
                // antialiased.
                turns +=
                    (picture.pixel(x, y) == background) != (picture.pixel(x - 1, y) == background)
                        ? 1
                        : 0;
            }
            return turns;
        };
        for (const auto tone : {Banner::Tone::Neutral, Banner::Tone::Positive}) {
            shown.banner.setTone(tone);
            QCOMPARE(changes(), 0);
        }
        shown.banner.setTone(Banner::Tone::Festive);
        QVERIFY2(changes() >= 4, qPrintable(u"only %1 edges of rays"_s.arg(changes())));
    }

    void newToneIsDrawnAtOnce() {
        ShownBanner shown;
        shown.banner.show();
        QVERIFY(QTest::qWaitForWindowExposed(&shown.banner));
        const drawing::Paints banner(shown.banner);
        const drawing::Paints image(shown.image);
        QCoreApplication::processEvents();
        const int before = banner.count();
        const int imageBefore = image.count();
        shown.banner.setTone(Banner::Tone::Festive);
        QVERIFY(QTest::qWaitFor([&] { return banner.count() > before; }));
        QVERIFY(QTest::qWaitFor([&] { return image.count() > imageBefore; }));
    }

    void pictureOffABannerIsDrawnInTheAccent() {
        QWidget elsewhere;
        platform::ImageLabel image(&elsewhere);
        image.setLines(4);
        image.resize(image.sizeHint());
        image.setImage(platform::look::imageNamed(u"checkmark.png"_s));
        QVERIFY(drawing::pixels(image, platform::look::accent(image.palette())) > 0);
    }

    void pictureFillsItsLabel() {
        platform::ImageLabel image;
        image.setLines(4);
        image.resize(image.sizeHint());
        const QImage empty = image.grab().toImage();
        image.setImage(platform::look::imageNamed(u"checkmark.png"_s));
        const QImage full = image.grab().toImage();
        QCOMPARE(full.width(), qRound(image.width() * image.devicePixelRatioF()));
        int first = full.width();
        int last = 0;
        for (int x = 0; x < full.width(); ++x) {
            for (int y = 0; y < full.height(); ++y) {
                if (full.pixel(x, y) != empty.pixel(x, y)) {
                    first = qMin(first, x);
                    last = x;
                }
            }
        }
        QVERIFY2(last - first > full.width() * 9 / 10 && last - first < full.width(),
                 qPrintable(
                     u"drawn from %1 to %2 of %3 pixels"_s.arg(first).arg(last).arg(full.width())));
    }

    void noPictureIsDrawnAsNothing() {
        for (const auto tone :
             {Banner::Tone::Neutral, Banner::Tone::Positive, Banner::Tone::Festive}) {
            ShownBanner shown;
            shown.banner.setTone(tone);
            shown.image.setImage(QIcon());
            const QImage empty = shown.picture();
            shown.image.hide();
            QCOMPARE(shown.picture(), empty);
        }
    }

 private:
    QPalette palette_ = QApplication::palette();
};

ZORVAN_TEST(tst_banner)
#include "tst_banner.moc"
