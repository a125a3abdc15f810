#include <QScrollBar>
#include <QTest>

#include "controls/scrollarea.h"
#include "support/testmain.h"

/// There is a line at an edge if there is more beyond it.
class tst_scrollarea final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        area_ = std::make_unique<platform::ScrollArea>();
        page_ = new QWidget;
        page_->setFixedHeight(300);
        area_->setWidget(page_);
        area_->setWidgetResizable(true);
        area_->resize(200, 100);
        area_->show();
        QVERIFY(QTest::qWaitForWindowExposed(area_.get()));
    }

    void cleanup() { area_.reset(); }

    void lineTellsThatThereIsMore() {
        QScrollBar &bar = *area_->verticalScrollBar();
        expectLines(false, true);
        bar.setValue(bar.maximum() / 2);
        expectLines(true, true);
        bar.setValue(bar.maximum());
        expectLines(true, false);
    }

    void noLineIsLeftOnceAllIsShown() {
        for (const int scrolled : {0, 10}) {
            page_->setFixedHeight(300);
            QTRY_COMPARE(area_->verticalScrollBar()->maximum(), 200);
            area_->verticalScrollBar()->setValue(scrolled);
            page_->setFixedHeight(50);
            QTRY_COMPARE(area_->verticalScrollBar()->maximum(), 0);
            expectLines(false, false);
        }
    }

    void lineStaysAtTheEdge() {
        area_->resize(260, 140);
        expectLines(false, true);
        page_->setFixedHeight(400);
        QTRY_COMPARE(area_->verticalScrollBar()->maximum(), 260);
        expectLines(false, true);
    }

    void lineTakesNoRoomAndNoPress() {
        QCOMPARE(area_->viewport()->height(), area_->height());
        const QPoint lowest(area_->viewport()->width() / 2, area_->height() - 1);
        QVERIFY(area_->childAt(lowest) == page_);
    }

 private:
    void expectLines(bool above, bool below) {
        const QImage picture = area_->grab().toImage();
        const int last = area_->viewport()->width() - 1;
        for (const int x : {0, last / 2, last}) {
            const QRgb page = picture.pixel(x, picture.height() / 2);
            QCOMPARE(picture.pixel(x, 0) != page, above);
            QCOMPARE(picture.pixel(x, picture.height() - 1) != page, below);
            QCOMPARE(picture.pixel(x, 1), page);
            QCOMPARE(picture.pixel(x, picture.height() - 2), page);
        }
    }

    std::unique_ptr<platform::ScrollArea> area_;
    QWidget *page_ = nullptr;
};

ZORVAN_TEST(tst_scrollarea)
#include "tst_scrollarea.moc"
