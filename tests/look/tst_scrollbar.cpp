#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>

#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// A scroll bar of 500 pixels for a page that is five times as long as its visible part.
struct ShownBar {
    QScrollBar bar;

    explicit ShownBar(Qt::Orientation orientation) : bar(orientation) {
        bar.setRange(0, 400);
        bar.setPageStep(100);
        const int across = bar.sizeHint().expandedTo({16, 16}).boundedTo({24, 24}).width();
        bar.resize(isUpright() ? QSize(across, 500) : QSize(500, across));
        bar.show();
    }

    bool isUpright() const { return bar.orientation() == Qt::Vertical; }
    QRect part(QStyle::SubControl part) const {
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.subControls = QStyle::SC_All;
        option.orientation = bar.orientation();
        option.minimum = bar.minimum();
        option.maximum = bar.maximum();
        option.sliderPosition = bar.sliderPosition();
        option.sliderValue = bar.value();
        option.pageStep = bar.pageStep();
        if (!isUpright()) {
            option.state |= QStyle::State_Horizontal;
        }
        return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar);
    }
    int start(QStyle::SubControl control) const {
        return isUpright() ? part(control).top() : part(control).left();
    }
    int end(QStyle::SubControl control) const {
        return 1 + (isUpright() ? part(control).bottom() : part(control).right());
    }
    int sliderLength() const {
        return end(QStyle::SC_ScrollBarSlider) - start(QStyle::SC_ScrollBarSlider);
    }
    QPoint at(int along) const {
        return isUpright() ? QPoint(bar.width() / 2, along) : QPoint(along, bar.height() / 2);
    }
};

}  // namespace

/// A scroll bar has no arrows: its slider goes from end to end.
class tst_scrollbar final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase_data() {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::newRow("upright") << Qt::Vertical;
        QTest::newRow("across") << Qt::Horizontal;
    }

    void init() {
        QFETCH_GLOBAL(const Qt::Orientation, orientation);
        shown_.emplace(orientation);
    }

    void sliderGoesFromEndToEnd() {
        QCOMPARE(shown_->part(QStyle::SC_ScrollBarGroove), shown_->bar.rect());
        QVERIFY(shown_->part(QStyle::SC_ScrollBarAddLine).isEmpty());
        QVERIFY(shown_->part(QStyle::SC_ScrollBarSubLine).isEmpty());
        for (const auto &[value, start] : {std::pair{0, 0}, {200, 200}, {400, 400}}) {
            shown_->bar.setValue(value);
            QCOMPARE(shown_->start(QStyle::SC_ScrollBarSubPage), 0);
            QCOMPARE(shown_->end(QStyle::SC_ScrollBarSubPage), start);
            QCOMPARE(shown_->start(QStyle::SC_ScrollBarSlider), start);
            QCOMPARE(shown_->end(QStyle::SC_ScrollBarSlider), start + 100);
            QCOMPARE(shown_->start(QStyle::SC_ScrollBarAddPage), start + 100);
            QCOMPARE(shown_->end(QStyle::SC_ScrollBarAddPage), 500);
        }
    }

    void sliderIsAsLongAsItsShare() {
        QCOMPARE(shown_->sliderLength(), 100);
        shown_->bar.setRange(0, 100);
        QCOMPARE(shown_->sliderLength(), 250);
        shown_->bar.setRange(0, 0);
        QCOMPARE(shown_->sliderLength(), 500);
    }

    void sliderOfALongPageCanStillBeHeld() {
        shown_->bar.setRange(0, 100000);
        QVERIFY(shown_->sliderLength() >= shown_->bar.fontMetrics().height());
        shown_->bar.setValue(100000);
        QCOMPARE(shown_->end(QStyle::SC_ScrollBarSlider), 500);
    }

    void clickBesideTheSliderTurnsAPage() {
        // At the very ends, where arrows would be.
        QTest::mouseClick(&shown_->bar, Qt::LeftButton, {}, shown_->at(498));
        QTest::mouseClick(&shown_->bar, Qt::LeftButton, {}, shown_->at(498));
        QCOMPARE(shown_->bar.value(), 200);
        QTest::mouseClick(&shown_->bar, Qt::LeftButton, {}, shown_->at(1));
        QCOMPARE(shown_->bar.value(), 100);
    }

    void sliderIsDrawnWhereItIs() {
        shown_->bar.setValue(200);
        const QImage picture = shown_->bar.grab().toImage();
        const QColor background = shown_->bar.palette().color(QPalette::Window);
        const auto isDrawn = [&](int along) {
            return picture.pixelColor(shown_->at(along)) != background;
        };
        // Its ends are round.
        for (const auto &[along, drawn] : {std::pair{0, false},
                                           {184, false},
                                           {216, true},
                                           {250, true},
                                           {284, true},
                                           {316, false},
                                           {499, false}}) {
            QVERIFY2(isDrawn(along) == drawn, qPrintable(QString::number(along)));
        }
    }

 private:
    std::optional<ShownBar> shown_;
};

ZORVAN_TEST(tst_scrollbar)
#include "tst_scrollbar.moc"
