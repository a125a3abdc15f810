#include <algorithm>

#include <QAccessible>
#include <QTest>

#include "controls/levelindicator.h"
#include "look/palette.h"
#include "shell/mainmenu.h"
#include "support/drawing.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/windowcontroller.h"

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

    /// The row of pixels that goes through the middle of the segments.
    QList<QRgb> middleRow(double value) {
        indicator.setDoubleValue(value);
        const QImage picture = window.grab().toImage();
        const int y = int(indicator.geometry().center().y() * picture.devicePixelRatioF() + 0.5);
        QList<QRgb> row;
        for (int x = 0; x < picture.width(); ++x) {
            row << picture.pixel(x, y);
        }
        return row;
    }
};

bool alike(QRgb one, QRgb other) {
    constexpr int shade = 16;
    return qAbs(qRed(one) - qRed(other)) <= shade && qAbs(qGreen(one) - qGreen(other)) <= shade &&
           qAbs(qBlue(one) - qBlue(other)) <= shade;
}

/// What a row of pixels consists of.
struct Pieces {
    /// The widths of the segments, which differ from the row's first pixel, and of the gaps.
    QList<int> segments;
    QList<int> gaps;
    /// Whether every pixel has one of the row's few expected colours.
    bool sharp = true;
};

Pieces piecesOf(const QList<QRgb> &row, const QList<QRgb> &colors) {
    Pieces pieces;
    bool wasBackground = true;
    int background = 0;
    for (const QRgb pixel : row) {
        pieces.sharp = pieces.sharp && std::ranges::any_of(colors, [pixel](QRgb color) {
                           return alike(color, pixel);
                       });
        const bool isBackground = pixel == row.first();
        if (isBackground) {
            ++background;
        } else if (wasBackground) {
            if (!pieces.segments.isEmpty()) {
                pieces.gaps << background;
            }
            pieces.segments << 1;
            background = 0;
        } else {
            ++pieces.segments.last();
        }
        wasBackground = isBackground;
    }
    return pieces;
}

int spread(const QList<int> &values) {
    const auto [least, most] = std::ranges::minmax(values);
    return most - least;
}

}  // namespace

class tst_levelindicator final : public WindowTest {
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

    void mainMenuSaysEveryLevelInWords() {
        store::set(u"quiz2"_s, u"2"_s);
        store::set(u"quiz7"_s, u"3"_s);
        const auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
        menu->showWindow();
        QCoreApplication::processEvents();
        const auto control = [&](const QString &name) -> QWidget & {
            return desk::control(menu->window(), name);
        };
        QCOMPARE(control(u"progressbarQuiz1"_s).accessibleName(), u"Terminology, 0 of 3 passes"_s);
        QCOMPARE(control(u"progressbarQuiz2"_s).accessibleName(), u"Variables, 2 of 3 passes"_s);
        QCOMPARE(control(u"progressbarQuiz7"_s).accessibleName(), u"Main Test, 3 of 3 passes"_s);
        const QString overall = control(u"progressbarMain"_s).accessibleName();
        QVERIFY2(overall.endsWith(u", 5 of 21 passes"), qPrintable(overall));
        QCOMPARE(control(u"btnQuiz1"_s).accessibleDescription(), u"0 of 3 passes, next"_s);
        QCOMPARE(control(u"btnQuiz7"_s).accessibleDescription(), u"3 of 3 passes, mastered"_s);
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
                    const QPalette palette = shown.window.palette();
                    const QList<QRgb> colors{palette.color(QPalette::Window).rgb(),
                                             platform::look::accent(palette).rgb(),
                                             platform::look::outline(palette).rgb()};
                    for (const int value : {segments, segments / 2, 0}) {
                        const Pieces pieces = piecesOf(shown.middleRow(value), colors);
                        const QByteArray name = u"%1 of %2 segments at %3, %4 wider"_s.arg(value)
                                                    .arg(segments)
                                                    .arg(x)
                                                    .arg(moreWidth)
                                                    .toUtf8();
                        QVERIFY2(pieces.segments.size() == segments, name);
                        QVERIFY2(pieces.sharp, name);
                        QVERIFY2(spread(pieces.segments) <= 1, name);
                        QVERIFY2(spread(pieces.gaps) == 0, name);
                    }
                }
            }
        }
    }
};

ZORVAN_TEST(tst_levelindicator)
#include "tst_levelindicator.moc"
