#include <array>
#include <cmath>

#include <QAccessible>
#include <QTest>

#include "controls/levelindicator.h"
#include "look/palette.h"
#include "shell/mainmenu.h"
#include "support/desk.h"
#include "support/drawing.h"
#include "support/store.h"
#include "support/testmain.h"
#include "windowing/layouts.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

using platform::LevelIndicator;

namespace {

/// An indicator somewhere in a window.
class ShownIndicator final {
 public:
    ShownIndicator(int segments, const QPoint &place, int moreWidth) {
        indicator_.setMaximum(segments);
        const QSize least = indicator_.minimumSizeHint();
        indicator_.setGeometry(QRect(place, QSize(least.width() + moreWidth, least.height())));
        window_.resize(indicator_.geometry().bottomRight().x() + 9, least.height() + 30);
        window_.show();
    }

    double ratio() const { return window_.devicePixelRatioF(); }
    int segments() const { return indicator_.maximum(); }

    /// The window as it is on the screen.
    QImage picture(double value) {
        indicator_.setDoubleValue(value);
        return window_.grab().toImage();
    }
    /// The same, enlarged so that even thin strokes have a core without antialiasing.
    QImage largePicture(double value) {
        indicator_.setDoubleValue(value);
        QImage picture(window_.size() * 8, QImage::Format_RGB32);
        picture.setDevicePixelRatio(8);
        window_.render(&picture);
        return picture;
    }
    /// The row of pixels that goes through the middle of the segments.
    QList<QRgb> middleRow(const QImage &picture) const {
        const double middle = indicator_.y() + indicator_.height() / 2.0;
        const int y = int(middle * picture.devicePixelRatioF());
        QList<QRgb> row;
        for (int x = 0; x < picture.width(); ++x) {
            row << picture.pixel(x, y);
        }
        return row;
    }
    /// The rows of pixels that the indicator covers.
    std::pair<int, int> rows() const {
        return {int(std::ceil(indicator_.y() * ratio())),
                int((indicator_.y() + indicator_.height()) * ratio())};
    }
    QString name() const {
        return u"%1 segments, %2 wide at %3, %4, for a screen of ratio %5"_s.arg(segments())
            .arg(indicator_.width())
            .arg(indicator_.x())
            .arg(indicator_.y())
            .arg(ratio());
    }

 private:
    QWidget window_;
    LevelIndicator indicator_{&window_};
};

bool alike(QRgb one, QRgb other) {
    constexpr int shade = 16;
    return qAbs(qRed(one) - qRed(other)) <= shade && qAbs(qGreen(one) - qGreen(other)) <= shade &&
           qAbs(qBlue(one) - qBlue(other)) <= shade;
}

/// A stretch of pixels in a row.
struct Segment {
    qsizetype first;
    qsizetype size;
};

/// Where the row differs from its first pixel.
QList<Segment> segmentsIn(const QList<QRgb> &row) {
    QList<Segment> segments;
    for (qsizetype x = 1; x < row.size(); ++x) {
        if (row[x] == row[0]) {
            continue;
        }
        if (row[x - 1] == row[0]) {
            segments << Segment{x, 0};
        }
        ++segments.last().size;
    }
    return segments;
}

/// The colours of a large picture's row, without those of antialiased edges.
QList<QRgb> colorsOf(const QList<QRgb> &row) {
    QList<QRgb> colors;
    for (qsizetype x = 2; x < row.size(); ++x) {
        if (row[x] == row[x - 1] && row[x] == row[x - 2] && !colors.contains(row[x])) {
            colors << row[x];
        }
    }
    return colors;
}

}  // namespace

class tst_levelindicator final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() {
        desk::clear();
        QApplication::setPalette(light_);
    }

    void nameSaysTheValueInWords() {
        LevelIndicator indicator;
        indicator.setCaption(u"Variables"_s);
        indicator.setCounted(u"passes"_s);
        indicator.setMaximum(3);
        const auto name = [&] {
            return QAccessible::queryAccessibleInterface(&indicator)->text(QAccessible::Name);
        };
        QCOMPARE(name(), u"Variables, 0 of 3 passes"_s);
        indicator.setDoubleValue(2);
        QCOMPARE(name(), u"Variables, 2 of 3 passes"_s);
        QCOMPARE(indicator.doubleValue(), 2.0);
        indicator.setCounted(u"marks"_s);
        QCOMPARE(name(), u"Variables, 2 of 3 marks"_s);
    }

    void fewSegmentsAreWide() {
        LevelIndicator few;
        few.setMaximum(3);
        LevelIndicator many;
        many.setMaximum(21);
        const double wide = few.sizeHint().width() / 3.0;
        const double narrow = many.sizeHint().width() / 21.0;
        QVERIFY2(wide > 1.3 * narrow,
                 qPrintable(u"One of 3 segments is %1 pixels wide, one of 21 is %2"_s.arg(wide).arg(
                     narrow)));
    }

    void segmentsReachFromEdgeToEdge() {
        LevelIndicator indicator;
        indicator.setMaximum(3);
        indicator.setDoubleValue(3);
        indicator.resize(100, indicator.minimumSizeHint().height());
        const QImage picture = indicator.grab().toImage();
        const auto inTheMiddleAt = [&](int x) {
            return picture.pixelColor(x, picture.height() / 2);
        };
        const QColor accent = platform::look::accent(indicator.palette());
        QCOMPARE(inTheMiddleAt(0), accent);
        QCOMPARE(inTheMiddleAt(picture.width() - 1), accent);
    }

    void nameFollowsTheMaximum() {
        LevelIndicator indicator;
        indicator.setCaption(u"Progress"_s);
        indicator.setCounted(u"questions"_s);
        indicator.setDoubleValue(0);
        indicator.setMaximum(14);
        QCOMPARE(indicator.accessibleName(), u"Progress, 0 of 14 questions"_s);
        QCOMPARE(indicator.maximum(), 14);
        indicator.setMaximum(0);
        QCOMPARE(indicator.maximum(), 0);
    }

    void valueInWordsFollowsTheValue() {
        LevelIndicator indicator;
        indicator.setCaption(u"Progress"_s);
        indicator.setCounted(u"questions"_s);
        indicator.setMaximum(14);
        QCOMPARE(indicator.valueInWords(), u"0 of 14 questions"_s);
        QStringList told;
        connect(&indicator, &LevelIndicator::valueInWordsChanged, this,
                [&](const QString &words) { told << words; });
        indicator.setDoubleValue(3);
        QCOMPARE(indicator.valueInWords(), u"3 of 14 questions"_s);
        indicator.setMaximum(19);
        QCOMPARE(indicator.valueInWords(), u"3 of 19 questions"_s);
        QCOMPARE(told, QStringList({u"3 of 14 questions"_s, u"3 of 19 questions"_s}));
    }

    void mainMenuSaysEveryLevelInWords() {
        store::fill({{u"firstRun"_s, u"false"_s}, {u"quiz2"_s, u"2"_s}, {u"quiz7"_s, u"3"_s}});
        const auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
        menu->showWindow();
        const auto name = [&](const QString &outlet) {
            return desk::control(menu->window(), outlet).accessibleName();
        };
        QCOMPARE(name(u"progressbarQuiz1"_s), u"Terminology, 0 of 3 passes"_s);
        QCOMPARE(name(u"progressbarQuiz2"_s), u"Variables, 2 of 3 passes"_s);
        QCOMPARE(name(u"progressbarQuiz7"_s), u"Main Test, 3 of 3 passes"_s);
        QVERIFY2(name(u"progressbarMain"_s).endsWith(u"5 of 21 passes"),
                 qUtf8Printable(name(u"progressbarMain"_s)));
        QCoreApplication::processEvents();
        const auto description = [&](const QString &button) {
            return desk::control(menu->window(), button).accessibleDescription();
        };
        QCOMPARE(description(u"btnQuiz1"_s), u"0 of 3 passes, next"_s);
        QCOMPARE(description(u"btnQuiz2"_s), u"2 of 3 passes"_s);
        QCOMPARE(description(u"btnQuiz7"_s), u"3 of 3 passes, mastered"_s);
    }

    void filledSegmentsAreToldApart_data() {
        QTest::addColumn<int>("value");
        QTest::newRow("none") << 0;
        QTest::newRow("one") << 1;
        QTest::newRow("two") << 2;
        QTest::newRow("all") << 3;
    }

    void filledSegmentsAreToldApart() {
        QFETCH(const int, value);
        LevelIndicator indicator;
        indicator.setMaximum(3);
        indicator.resize(300, 20);
        const auto segments = [&] {
            const QImage picture = indicator.grab().toImage();
            return QList<QRgb>{picture.pixel(50, 10), picture.pixel(150, 10),
                               picture.pixel(250, 10)};
        };
        const QRgb missing = segments().constFirst();
        indicator.setDoubleValue(3);
        const QRgb filled = segments().constLast();
        QVERIFY(filled != missing);
        QCOMPARE(QColor(filled), platform::look::accent(indicator.palette()));
        indicator.setDoubleValue(value);
        QList<QRgb> expected(3, missing);
        std::fill(expected.begin(), expected.begin() + value, filled);
        QCOMPARE(segments(), expected);
    }

    void segmentsAreSharp_data() { addPlaces(); }

    void segmentsAreSharp() {
        QFETCH(const int, segments);
        QFETCH(const QPoint, place);
        QFETCH(const int, moreWidth);
        ShownIndicator shown(segments, place, moreWidth);
        QCOMPARE(shown.ratio(), qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s).toDouble());
        QStringList flaws;
        for (const int value : {segments, segments / 2, 0}) {
            const QList<QRgb> colors = colorsOf(shown.middleRow(shown.largePicture(value)));
            flaws << blurIn(shown, shown.middleRow(shown.picture(value)), colors);
        }
        flaws << unevennessOf(shown, segmentsIn(shown.middleRow(shown.picture(segments))));
        flaws.removeAll(QString());
        QVERIFY2(flaws.isEmpty(), qPrintable(flaws.join(u'\n')));
    }

    void filledIsToldFromEmptyWithoutColour_data() { addPlaces(); }

    void filledIsToldFromEmptyWithoutColour() {
        QFETCH(const int, segments);
        QFETCH(const QPoint, place);
        QFETCH(const int, moreWidth);
        for (const QPalette &palette : {light_, drawing::darkPalette()}) {
            QApplication::setPalette(palette);
            ShownIndicator shown(segments, place, moreWidth);
            QCOMPARE(shown.ratio(), qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s).toDouble());
            const auto strength = [&](QRgb color, QRgb background) {
                return qAbs(qGray(color) - qGray(background));
            };
            // A threshold at which both kinds of segments are black, neither lost in the
            // background.
            int threshold = 255;
            for (const int value : {segments, 0}) {
                const QList<QRgb> row = shown.middleRow(shown.largePicture(value));
                int strongest = 0;
                for (const QRgb color : colorsOf(row)) {
                    strongest = qMax(strongest, strength(color, row[0]));
                }
                threshold = qMin(threshold, strongest / 2);
            }
            const QList<Segment> places = segmentsIn(shown.middleRow(shown.picture(segments)));
            QVERIFY2(places.size() == segments,
                     qPrintable(
                         u"%1: %2 segments are told apart"_s.arg(shown.name()).arg(places.size())));
            const QImage picture = shown.picture(1);
            const auto isBlack = [&](qsizetype x, int y) {
                return strength(picture.pixel(int(x), y), picture.pixel(0, 0)) > threshold;
            };
            const qsizetype width = qMin(places.first().size, places.last().size);
            const auto [top, bottom] = shown.rows();
            int different = 0;
            for (int y = top; y < bottom; ++y) {
                for (qsizetype x = 0; x < width; ++x) {
                    if (isBlack(places.first().first + x, y) !=
                        isBlack(places.last().first + x, y)) {
                        ++different;
                    }
                }
            }
            const double share = double(different) / double(width * (bottom - top));
            QVERIFY2(share > 0.1,
                     qPrintable(u"%1: in black and white, a filled segment differs from "
                                "an empty one in only %2 %"_s.arg(shown.name())
                                    .arg(100 * share)));
        }
    }

 private:
    static void addPlaces() {
        QTest::addColumn<int>("segments");
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<int>("moreWidth");
        for (const int segments : {3, 21, 30}) {
            for (const int x : {0, 7, 10, 13}) {
                for (const int moreWidth : {0, 1, 2, 7, 50, 101}) {
                    QTest::addRow("%d segments at %d, %d wider", segments, x, moreWidth)
                        << segments << QPoint(x + 1, x + 2) << moreWidth;
                }
            }
        }
    }

    static QString blurIn(const ShownIndicator &shown, const QList<QRgb> &row,
                          const QList<QRgb> &colors) {
        QStringList columns;
        for (qsizetype x = 0; x < row.size(); ++x) {
            const auto isLikeThis = [&](QRgb color) { return alike(color, row[x]); };
            if (std::none_of(colors.begin(), colors.end(), isLikeThis)) {
                columns << QString::number(x);
            }
        }
        return columns.isEmpty()
                   ? QString()
                   : u"%1: partly covered columns %2"_s.arg(shown.name(), columns.join(u' '));
    }

    static QString unevennessOf(const ShownIndicator &shown, const QList<Segment> &segments) {
        if (segments.size() != shown.segments()) {
            return u"%1: %2 segments are told apart"_s.arg(shown.name()).arg(segments.size());
        }
        QStringList widths;
        QStringList gaps;
        for (qsizetype segment = 0; segment < segments.size(); ++segment) {
            widths << QString::number(segments[segment].size);
            if (segment > 0) {
                const Segment &before = segments[segment - 1];
                gaps << QString::number(segments[segment].first - before.first - before.size);
            }
        }
        const auto [narrowest, widest] = std::minmax_element(
            segments.begin(), segments.end(),
            [](const auto &one, const auto &other) { return one.size < other.size; });
        QString unevenness;
        if (widest->size - narrowest->size > 1) {
            unevenness = u"%1: segments of %2 pixels"_s.arg(shown.name(), widths.join(u' '));
        }
        if (gaps.count(gaps.first()) != gaps.size()) {
            unevenness += u"%1: gaps of %2 pixels"_s.arg(shown.name(), gaps.join(u' '));
        }
        return unevenness;
    }

    QPalette light_ = QApplication::palette();
};

ZORVAN_TEST(tst_levelindicator)
#include "tst_levelindicator.moc"
