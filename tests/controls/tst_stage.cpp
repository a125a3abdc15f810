#include <QTest>

#include "controls/imagelabel.h"
#include "controls/stage.h"
#include "look/theme.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/testmain.h"
#include "windowing/outlets.h"

using namespace Qt::StringLiterals;

using platform::Stage;

namespace {

/// A stage with a picture in its middle.
struct ShownStage {
    Stage stage;
    platform::ImageLabel image{&stage};

    ShownStage() {
        stage.resize(300, 200);
        image.setLines(4);
        image.resize(image.sizeHint());
        image.move(stage.rect().center() - image.rect().center());
        image.setImage(platform::imageNamed(u"checkmark.png"_s));
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

class tst_stage final : public QObject {
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

void tst_stage::cleanup() {
    QApplication::setPalette(palette_);
}

void tst_stage::isQuietAtFirst() {
    const Stage stage;
    QCOMPARE(stage.mood(), Stage::Mood::Quiet);
}

void tst_stage::moodIsSeenInGroundAndPicture_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QApplication::palette();
    QTest::newRow("dark") << drawing::darkPalette();
}

void tst_stage::moodIsSeenInGroundAndPicture() {
    QFETCH(const QPalette, palette);
    QApplication::setPalette(palette);
    ShownStage shown;
    const QColor accent = platform::theme::accent(palette);
    const QColor onAccent = platform::theme::onAccent(palette);

    shown.stage.setMood(Stage::Mood::Quiet);
    QCOMPARE(shown.pixels(accent), 0);

    shown.stage.setMood(Stage::Mood::Glad);
    const int glad = shown.pixels(accent);
    QVERIFY2(glad > 0, "a glad stage has no picture in the accent");
    QVERIFY2(glad < shown.area() / 4, "a glad stage is filled with the accent");

    shown.stage.setMood(Stage::Mood::Festive);
    QVERIFY2(shown.pixels(accent) > shown.area() / 4, "a festive stage is not on the accent");
    QVERIFY2(shown.pixels(onAccent) > 0, "its picture is not in the colour for the accent");
    shown.image.setImage(QIcon());
    QCOMPARE(shown.pixels(onAccent), 0);
}

void tst_stage::moodsAreToldApart() {
    ShownStage shown;
    shown.image.setImage(QIcon());
    QList<QRgb> grounds;
    for (const auto mood : {Stage::Mood::Quiet, Stage::Mood::Glad, Stage::Mood::Festive}) {
        shown.stage.setMood(mood);
        grounds << optics::mainColor(shown.picture());
    }
    QVERIFY(grounds[0] != grounds[1]);
    QVERIFY(grounds[0] != grounds[2]);
    QVERIFY(grounds[1] != grounds[2]);
}

void tst_stage::onlyTheFestiveStageHasRays() {
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
    for (const auto mood : {Stage::Mood::Quiet, Stage::Mood::Glad}) {
        shown.stage.setMood(mood);
        QCOMPARE(changes(), 0);
    }
    shown.stage.setMood(Stage::Mood::Festive);
    QVERIFY2(changes() >= 4, qPrintable(u"only %1 edges of rays"_s.arg(changes())));
}

void tst_stage::newMoodIsDrawnAtOnce() {
    ShownStage shown;
    shown.stage.show();
    QVERIFY(QTest::qWaitForWindowExposed(&shown.stage));
    const drawing::Paints stage(shown.stage);
    const drawing::Paints image(shown.image);
    QCoreApplication::processEvents();
    const int before = stage.count();
    const int imageBefore = image.count();
    shown.stage.setMood(Stage::Mood::Festive);
    QVERIFY(QTest::qWaitFor([&] { return stage.count() > before; }));
    QVERIFY(QTest::qWaitFor([&] { return image.count() > imageBefore; }));
}

void tst_stage::pictureOffTheStageIsDrawnInTheAccent() {
    QWidget elsewhere;
    platform::ImageLabel image(&elsewhere);
    image.setLines(4);
    image.resize(image.sizeHint());
    image.setImage(platform::imageNamed(u"checkmark.png"_s));
    QVERIFY(drawing::pixels(image, platform::theme::accent(image.palette())) > 0);
}

void tst_stage::pictureFillsItsLabel() {
    platform::ImageLabel image;
    image.setLines(4);
    image.resize(image.sizeHint());
    const QImage empty = image.grab().toImage();
    image.setImage(platform::imageNamed(u"checkmark.png"_s));
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

void tst_stage::noPictureIsDrawnAsNothing() {
    for (const auto mood : {Stage::Mood::Quiet, Stage::Mood::Glad, Stage::Mood::Festive}) {
        ShownStage shown;
        shown.stage.setMood(mood);
        shown.image.setImage(QIcon());
        const QImage empty = shown.picture();
        shown.image.hide();
        QCOMPARE(shown.picture(), empty);
    }
}

ZORVAN_TEST_MAIN(tst_stage)
#include "tst_stage.moc"
