#include <algorithm>

#include <QTest>

#include "controls/levelindicator.h"
#include "look/palette.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::LevelIndicator;

namespace {

/// An indicator somewhere in a window.
struct ShownIndicator {
    QWidget window;
    LevelIndicator indicator{&window};

    ShownIndicator(int segments, int x, int moreWidth) {
        indicator.setMaximum(segments);
        const QSize size = indicator.minimumSizeHint() + QSize(moreWidth, 0);
        indicator.setGeometry(QRect(QPoint(x + 1, x + 2), size));
        window.resize(x + 10 + size.width(), size.height() + 30);
    }

    /// The lengths of the stretches of one colour along the middle of the segments.
    QList<int> stretches(double value) {
        indicator.setDoubleValue(value);
        const QImage picture = window.grab().toImage();
        const int y = qRound(indicator.geometry().center().y() * picture.devicePixelRatioF());
        QList<int> lengths;
        for (int x = 0; x < picture.width(); ++x) {
            if (x == 0 || picture.pixel(x, y) != picture.pixel(x - 1, y)) {
                lengths << 0;
            }
            ++lengths.last();
        }
        return lengths;
    }
};

int spread(const QList<int> &values) {
    const auto [least, most] = std::ranges::minmax(values);
    return most - least;
}

}  // namespace

class tst_levelindicator final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void nameSaysTheValueInWords() {
        LevelIndicator indicator;
        QStringList told;
        connect(&indicator, &LevelIndicator::valueInWordsChanged, this,
                [&](const QString &words) { told << words; });
        indicator.setCaption(u"Variables"_s);
        indicator.setCounted(u"passes"_s);
        indicator.setMaximum(3);
        QCOMPARE(indicator.accessibleName(), u"Variables, 0 of 3 passes"_s);
        told.clear();
        indicator.setDoubleValue(2);
        QCOMPARE(indicator.accessibleName(), u"Variables, 2 of 3 passes"_s);
        QCOMPARE(indicator.valueInWords(), u"2 of 3 passes"_s);
        indicator.setDoubleValue(2);
        indicator.setMaximum(14);
        QCOMPARE(told, QStringList({u"2 of 3 passes"_s, u"2 of 14 passes"_s}));
        indicator.setCounted(u"questions"_s);
        QCOMPARE(indicator.accessibleName(), u"Variables, 2 of 14 questions"_s);
    }

    void fewSegmentsAreWide() {
        LevelIndicator few;
        few.setMaximum(3);
        LevelIndicator many;
        many.setMaximum(21);
        const double wide = few.sizeHint().width() / 3.0;
        const double narrow = many.sizeHint().width() / 21.0;
        QVERIFY(wide > 1.3 * narrow);
    }

    void asManySegmentsAreFilledAsTheLevelSays() {
        LevelIndicator indicator;
        indicator.setMaximum(3);
        indicator.resize(300, 20);
        const QRgb filled = platform::look::accent(indicator.palette()).rgb();
        for (const int value : {0, 1, 2, 3}) {
            indicator.setDoubleValue(value);
            const QImage picture = indicator.grab().toImage();
            for (const int segment : {0, 1, 2}) {
                const int middle = 50 + 100 * segment;
                QCOMPARE(picture.pixel(middle, 10) == filled, segment < value);
                // A filled segment is high, an empty one a line, whatever its colour.
                QVERIFY(picture.pixel(middle, 10) != picture.pixel(middle, 1) || segment < value);
                QCOMPARE(picture.pixel(middle, 1) == filled, segment < value);
            }
        }
        // From edge to edge.
        const QImage picture = indicator.grab().toImage();
        QCOMPARE(picture.pixel(0, 10), filled);
        QCOMPARE(picture.pixel(picture.width() - 1, 10), filled);
    }

    void segmentsAreSharpAndEven() {
        for (const int segments : {3, 21, 30}) {
            for (const int x : {0, 7, 10, 13}) {
                for (const int moreWidth : {0, 1, 2, 7, 50, 101}) {
                    ShownIndicator shown(segments, x, moreWidth);
                    QCOMPARE(shown.window.devicePixelRatioF(),
                             qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s).toDouble());
                    for (const int value : {segments, segments / 2, 0}) {
                        const QByteArray name = u"%1 of %2 segments at %3, %4 wider"_s.arg(value)
                                                    .arg(segments)
                                                    .arg(x)
                                                    .arg(moreWidth)
                                                    .toUtf8();
                        const QList<int> stretches = shown.stretches(value);
                        // An edge that is not sharp would be a stretch of its own.
                        QVERIFY2(stretches.size() == 2 * segments + 1, name);
                        QList<int> widths;
                        QList<int> gaps;
                        for (int segment = 0; segment < segments; ++segment) {
                            widths << stretches[2 * segment + 1];
                            gaps << stretches[2 * segment + 2];
                        }
                        gaps.removeLast();
                        QVERIFY2(spread(widths) <= 1, name);
                        QVERIFY2(spread(gaps) == 0, name);
                    }
                }
            }
        }
    }
};

ZORVAN_TEST(tst_levelindicator)
#include "tst_levelindicator.moc"
