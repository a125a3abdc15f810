#include <QTest>

#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_application final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void windowIconHasEverySizeADesktopAsksFor() {
        QList<int> sizes;
        for (const QSize &size : QApplication::windowIcon().availableSizes()) {
            QCOMPARE(size.width(), size.height());
            sizes << size.width();
        }
        std::sort(sizes.begin(), sizes.end());
        QCOMPARE(sizes, QList<int>({16, 24, 32, 48, 64, 128}));
    }

    void iconOfEachSizeIsDrawnForIt_data() {
        QTest::addColumn<int>("size");
        for (const int size : {16, 24, 32, 48, 64, 128}) {
            QTest::addRow("%d", size) << size;
        }
    }

    void iconOfEachSizeIsDrawnForIt() {
        QFETCH(const int, size);
        const QImage kept(iconFile(size));
        QCOMPARE(kept.size(), QSize(size, size));
        const QImage shown = QApplication::windowIcon().pixmap(size).toImage();
        QCOMPARE(shown, QPixmap::fromImage(kept).toImage());
    }

    void everyIconFillsItsSize() {
        for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
            const QImage icon(iconFile(size));
            QVERIFY2(icon.size() == QSize(size, size),
                     qPrintable(u"zorvan-%1.png is %2 pixels wide"_s.arg(size).arg(icon.width())));
            QCOMPARE(qAlpha(icon.pixel(0, 0)), 0);
            int inked = 0;
            for (int y = 0; y < size; ++y) {
                for (int x = 0; x < size; ++x) {
                    inked += qAlpha(icon.pixel(x, y)) > 127 ? 1 : 0;
                }
            }
            const double share = double(inked) / (size * size);
            QVERIFY2(share > 0.5,
                     qPrintable(u"zorvan-%1.png covers %2 of its square"_s.arg(size).arg(share)));
        }
    }

    void stepsOfAResizeCountFromTheWindowsSize() {
        QWidget window;
        QWidget part(&window);
        part.resize(90, 70);
        window.resize(301, 203);
        window.show();
        QCOMPARE(window.baseSize(), QSize(301, 203));
        QCOMPARE(part.baseSize(), QSize(0, 0));
        window.resize(407, 305);
        QCOMPARE(window.baseSize(), QSize(407, 305));
    }

 private:
    static QString iconFile(int size) {
        return QStringLiteral(RESOURCES "/icons/zorvan-%1.png").arg(size);
    }
};

ZORVAN_TEST(tst_application)
#include "tst_application.moc"
