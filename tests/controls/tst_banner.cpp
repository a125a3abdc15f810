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

/// A stage with a picture in its middle.
struct ShownStage {
    Banner stage;
    platform::ImageLabel image{&stage};

    ShownStage() {
        stage.resize(300, 200);
        image.setLines(4);
        image.resize(image.sizeHint());
        image.move(stage.rect().center() - image.rect().center());
        image.setImage(platform::look::imageNamed(u"checkmark.png"_s));
    }

    QImage picture() {
        QImage picture(stage.size(), QImage::Format_RGB32);
        picture.fill(stage.palette().color(QPalette::Window));
        stage.render(&picture);
        return picture;
    }
    int pixels(const QColor &color) { return drawing::pixels(picture(), color); }
    int area() const { return stage.width() * stage.height(); }
};

}  // namespace

class tst_banner final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup();

    void isQuietAtFirst();
    void moodIsSeenInGroundAndPicture_data();
    void moodIsSeenInGroundAndPicture();
    void moodsAreToldApart();
    void onlyTheFestiveStageHasRays();
    void newMoodIsDrawnAtOnce();
    void pictureOffTheStageIsDrawnInTheAccent();
    void pictureFillsItsLabel();
    void noPictureIsDrawnAsNothing();

 private:
    QPalette palette_ = QApplication::palette();
};

void tst_banner::cleanup() {
    QApplication::setPalette(palette_);
}

void tst_banner::isQuietAtFirst() {
    const Banner stage;
    QCOMPARE(stage.tone(), Banner::Tone::Neutral);
}

void tst_banner::moodIsSeenInGroundAndPicture_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QApplication::palette();
    QTest::newRow("dark") << drawing::darkPalette();
}

void tst_banner::moodIsSeenInGroundAndPicture() {
    QFETCH(const QPalette, palette);
    QApplication::setPalette(palette);
    ShownStage shown;
    const QColor accent = platform::look::accent(palette);
    const QColor onAccent = platform::look::onAccent(palette);

    shown.stage.setTone(Banner::Tone::Neutral);
    QCOMPARE(shown.pixels(accent), 0);

    shown.stage.setTone(Banner::Tone::Positive);
    const int glad = shown.pixels(accent);
    QVERIFY2(glad > 0, "a glad stage has no picture in the accent");
    QVERIFY2(glad < shown.area() / 4, "a glad stage is filled with the accent");

    shown.stage.setTone(Banner::Tone::Festive);
    QVERIFY2(shown.pixels(accent) > shown.area() / 4, "a festive stage is not on the accent");
    QVERIFY2(shown.pixels(onAccent) > 0, "its picture is not in the colour for the accent");
    shown.image.setImage(QIcon());
    QCOMPARE(shown.pixels(onAccent), 0);
}

void tst_banner::moodsAreToldApart() {
    ShownStage shown;
    shown.image.setImage(QIcon());
    QList<QRgb> grounds;
    for (const auto tone : {Banner::Tone::Neutral, Banner::Tone::Positive, Banner::Tone::Festive}) {
        shown.stage.setTone(tone);
        grounds << optics::mainColor(shown.picture());
    }
    QVERIFY(grounds[0] != grounds[1]);
    QVERIFY(grounds[0] != grounds[2]);
    QVERIFY(grounds[1] != grounds[2]);
}

void tst_banner::onlyTheFestiveStageHasRays() {
    ShownStage shown;
    shown.image.setImage(QIcon());
    // Along the middle, well within the panel.
    const auto changes = [&] {
        const QImage picture = shown.picture();
        const QRgb ground = optics::mainColor(picture);
        const int y = picture.height() / 2;
        int turns = 0;
        for (int x = picture.width() / 10; x < picture.width() * 9 / 10; ++x) {
            // Of the two grounds, whatever their shared edges are mixed to.
            turns += (picture.pixel(x, y) == ground) != (picture.pixel(x - 1, y) == ground) ? 1 : 0;
        }
        return turns;
    };
    for (const auto tone : {Banner::Tone::Neutral, Banner::Tone::Positive}) {
        shown.stage.setTone(tone);
        QCOMPARE(changes(), 0);
    }
    shown.stage.setTone(Banner::Tone::Festive);
    QVERIFY2(changes() >= 4, qPrintable(u"only %1 edges of rays"_s.arg(changes())));
}

void tst_banner::newMoodIsDrawnAtOnce() {
    ShownStage shown;
    shown.stage.show();
    QVERIFY(QTest::qWaitForWindowExposed(&shown.stage));
    const drawing::Paints stage(shown.stage);
    const drawing::Paints image(shown.image);
    QCoreApplication::processEvents();
    const int before = stage.count();
    const int imageBefore = image.count();
    shown.stage.setTone(Banner::Tone::Festive);
    QVERIFY(QTest::qWaitFor([&] { return stage.count() > before; }));
    QVERIFY(QTest::qWaitFor([&] { return image.count() > imageBefore; }));
}

void tst_banner::pictureOffTheStageIsDrawnInTheAccent() {
    QWidget elsewhere;
    platform::ImageLabel image(&elsewhere);
    image.setLines(4);
    image.resize(image.sizeHint());
    image.setImage(platform::look::imageNamed(u"checkmark.png"_s));
    QVERIFY(drawing::pixels(image, platform::look::accent(image.palette())) > 0);
}

void tst_banner::pictureFillsItsLabel() {
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
    QVERIFY2(
        last - first > full.width() * 9 / 10 && last - first < full.width(),
        qPrintable(u"drawn from %1 to %2 of %3 pixels"_s.arg(first).arg(last).arg(full.width())));
}

void tst_banner::noPictureIsDrawnAsNothing() {
    for (const auto tone : {Banner::Tone::Neutral, Banner::Tone::Positive, Banner::Tone::Festive}) {
        ShownStage shown;
        shown.stage.setTone(tone);
        shown.image.setImage(QIcon());
        const QImage empty = shown.picture();
        shown.image.hide();
        QCOMPARE(shown.picture(), empty);
    }
}

ZORVAN_TEST_MAIN(tst_banner)
#include "tst_banner.moc"
