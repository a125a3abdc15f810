#include <QDir>
#include <QProcess>
#include <QTest>

#include "comparison.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

/// Every window looks like the pictures that are kept of it.
class tst_pictures final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() {
        for (const QDir &folder : {taken_, differences_}) {
            QVERIFY(QDir(folder).removeRecursively());
            QVERIFY(folder.mkpath(u"."_s));
        }
        QProcess take;
        take.setProcessChannelMode(QProcess::MergedChannels);
        take.start(QStringLiteral(TAKE_PICTURES), {QStringLiteral(PICTURES), taken_.path()});
        constexpr int longest = 50'000;
        QVERIFY2(take.waitForFinished(longest), qPrintable(take.errorString()));
        QVERIFY2(take.exitStatus() == QProcess::NormalExit && take.exitCode() == 0,
                 take.readAll().constData());

        QVERIFY(!font(kept_).isEmpty());
        if (font(taken_) != font(kept_)) {
            qWarning(
                "Drawn with %s, while those that are kept were drawn with %s: of each picture only "
                "the size is compared",
                font(taken_).constData(), font(kept_).constData());
        }
    }

    void everyWindowLooksAsInItsPicture_data() {
        QTest::addColumn<QString>("name");
        QStringList names = kept_.entryList({u"*.png"_s}) + taken_.entryList({u"*.png"_s});
        names.removeDuplicates();
        QVERIFY(!names.isEmpty());
        for (const QString &name : std::as_const(names)) {
            QTest::newRow(qPrintable(name)) << name;
        }
    }

    void everyWindowLooksAsInItsPicture() {
        QFETCH(const QString, name);
        QVERIFY2(kept_.exists(name), "It is not among the pictures that are kept");
        QVERIFY2(taken_.exists(name), "It is kept, and nothing takes it");

        const int density = name.contains(u"@2x") ? 2 : 1;
        const QImage kept = load(kept_.filePath(name), density);
        const QImage taken = load(taken_.filePath(name), density);
        QVERIFY(!kept.isNull() && !taken.isNull());
        const Comparison comparison(kept, taken, density == 2 ? doubleDensity : normalDensity);

        const QSize off = taken.size() - kept.size();
        if (font(taken_) != font(kept_)) {
            QVERIFY2(std::abs(off.width()) * 10 <= kept.width() &&
                         std::abs(off.height()) * 10 <= kept.height(),
                     qPrintable(u"It is %1 x %2, kept %3 x %4"_s.arg(taken.width())
                                    .arg(taken.height())
                                    .arg(kept.width())
                                    .arg(kept.height())));
            return;
        }
        constexpr int pixelsOff = 4;
        const bool sameSize =
            std::abs(off.width()) <= pixelsOff && std::abs(off.height()) <= pixelsOff;
        if (sameSize && comparison.isWithinTolerance()) {
            return;
        }
        const QRect spot = comparison.largestSpot();
        const QString message =
            u"It is %1 x %2, kept %3 x %4; %5 of %6 cells differ, %7 of them within %8 x %9 pixels "
            "at (%10, %11); see %12. docs/screenshots/take keeps what is meant to be new."_s
                .arg(taken.width())
                .arg(taken.height())
                .arg(kept.width())
                .arg(kept.height())
                .arg(comparison.differentCells())
                .arg(comparison.cells())
                .arg(comparison.cellsInLargestSpot())
                .arg(spot.width())
                .arg(spot.height())
                .arg(spot.x())
                .arg(spot.y())
                .arg(evidence(name, comparison.marked()));
        QFAIL(qPrintable(message));
    }

 private:
    /// The font that the pictures in that folder are drawn with.
    static QByteArray font(const QDir &folder) {
        QFile file(folder.filePath(u"font.txt"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
    }

    /// Scaled down to logical pixels.
    static QImage load(const QString &file, int density) {
        const QImage picture(file);
        return picture.convertToFormat(QImage::Format_RGB32)
            .scaled(picture.size() / density, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }

    QString evidence(const QString &name, const QImage &marked) const {
        const QString base = differences_.absoluteFilePath(name.chopped(4));
        QFile::copy(kept_.filePath(name), base + u"-kept.png"_s);
        QFile::copy(taken_.filePath(name), base + u"-taken.png"_s);
        marked.save(base + u"-marked.png"_s);
        return base + u"-*.png"_s;
    }

    const QDir kept_{QStringLiteral(KEPT_PICTURES)};
    const QDir taken_{QStringLiteral(OUTPUT_FOLDER "/taken")};
    const QDir differences_{QStringLiteral(OUTPUT_FOLDER "/differences")};
};

ZORVAN_TEST(tst_pictures)
#include "tst_pictures.moc"
