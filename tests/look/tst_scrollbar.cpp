#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>

#include "support/optics.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// A scroll bar of 500 pixels for a page that is five times as long as its visible part.
class ShownBar final : public QScrollBar {
 public:
    explicit ShownBar(Qt::Orientation orientation) : QScrollBar(orientation) {
        setRange(0, 400);
        setPageStep(100);
        const int across = sizeHint().expandedTo({16, 16}).boundedTo({24, 24}).width();
        // Some systems give a window with a frame a least width.
        setWindowFlag(Qt::FramelessWindowHint);
        resize(isUpright() ? QSize(across, 500) : QSize(500, across));
        show();
    }

    QRect part(QStyle::SubControl part) const {
        QStyleOptionSlider option;
        initStyleOption(&option);
        return style()->subControlRect(QStyle::CC_ScrollBar, &option, part, this);
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
        return isUpright() ? QPoint(width() / 2, along) : QPoint(along, height() / 2);
    }

 private:
    bool isUpright() const { return orientation() == Qt::Vertical; }
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
        bar_.emplace(orientation);
    }

    void sliderGoesFromEndToEnd() {
        QCOMPARE(bar_->part(QStyle::SC_ScrollBarGroove), bar_->rect());
        QVERIFY(bar_->part(QStyle::SC_ScrollBarAddLine).isEmpty());
        QVERIFY(bar_->part(QStyle::SC_ScrollBarSubLine).isEmpty());
        for (const auto &[value, start] : {std::pair{0, 0}, {200, 200}, {400, 400}}) {
            bar_->setValue(value);
            QCOMPARE(bar_->start(QStyle::SC_ScrollBarSubPage), 0);
            QCOMPARE(bar_->end(QStyle::SC_ScrollBarSubPage), start);
            QCOMPARE(bar_->start(QStyle::SC_ScrollBarSlider), start);
            QCOMPARE(bar_->end(QStyle::SC_ScrollBarSlider), start + 100);
            QCOMPARE(bar_->start(QStyle::SC_ScrollBarAddPage), start + 100);
            QCOMPARE(bar_->end(QStyle::SC_ScrollBarAddPage), 500);
        }
    }

    void sliderIsAsLongAsItsShare() {
        QCOMPARE(bar_->sliderLength(), 100);
        bar_->setRange(0, 100);
        QCOMPARE(bar_->sliderLength(), 250);
        bar_->setRange(0, 0);
        QCOMPARE(bar_->sliderLength(), 500);
    }

    void sliderOfALongPageCanStillBeHeld() {
        bar_->setRange(0, 100000);
        QVERIFY(bar_->sliderLength() >= bar_->fontMetrics().height());
        bar_->setValue(100000);
        QCOMPARE(bar_->end(QStyle::SC_ScrollBarSlider), 500);
    }

    void clickBesideTheSliderTurnsAPage() {
        // At the very ends, where arrows would be.
        QTest::mouseClick(&*bar_, Qt::LeftButton, {}, bar_->at(498));
        QTest::mouseClick(&*bar_, Qt::LeftButton, {}, bar_->at(498));
        QCOMPARE(bar_->value(), 200);
        QTest::mouseClick(&*bar_, Qt::LeftButton, {}, bar_->at(1));
        QCOMPARE(bar_->value(), 100);
    }

    void sliderIsDrawnWhereItIs() {
        bar_->setValue(200);
        const QImage picture = bar_->grab().toImage();
        const QColor background = bar_->palette().color(QPalette::Window);
        const auto isDrawn = [&](int along) {
            return optics::contrast(picture.pixel(bar_->at(along)), background.rgb()) >= 3;
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
    std::optional<ShownBar> bar_;
};

ZORVAN_TEST(tst_scrollbar)
#include "tst_scrollbar.moc"
