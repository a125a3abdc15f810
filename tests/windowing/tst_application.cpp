#include <QTest>

#include "support/optics.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_application final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void windowIconIsDrawnForEverySizeADesktopAsksFor() {
        const QIcon icon = QApplication::windowIcon();
        const QList<int> wanted{16, 24, 32, 48, 64, 128};
        QCOMPARE(icon.availableSizes().size(), wanted.size());
        for (const int size : wanted) {
            QVERIFY(icon.availableSizes().contains(QSize(size, size)));
            QCOMPARE(icon.pixmap(size).toImage(),
                     QPixmap::fromImage(QImage(iconFile(size))).toImage());
        }
    }

    void everyIconFillsItsSize() {
        for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
            const QImage icon(iconFile(size));
            QCOMPARE(icon.size(), QSize(size, size));
            QCOMPARE(qAlpha(icon.pixel(0, 0)), 0);
            int inked = 0;
            for (int y = 0; y < size; ++y) {
                for (int x = 0; x < size; ++x) {
                    inked += qAlpha(icon.pixel(x, y)) > 127 ? 1 : 0;
                }
            }
            QVERIFY2(inked > size * size / 2, qPrintable(iconFile(size)));
        }
    }

    void smallIconsStandOutOnLightAndDarkPanels() {
        // The darkest of the light panels and the lightest of the dark ones.
        const QList<QRgb> panels{0xffeff0f1, 0xff31363b};
        for (const int size : {16, 24, 32}) {
            const QImage icon(iconFile(size));
            for (const QPoint &at : edge(icon)) {
                QCOMPARE(qAlpha(icon.pixel(at)), 255);
                for (const QRgb panel : panels) {
                    const double contrast = optics::contrast(icon.pixel(at), panel);
                    QVERIFY2(contrast >= 3,
                             qPrintable(u"%1: %2"_s.arg(iconFile(size)).arg(contrast)));
                }
            }
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
    /// What is outermost on the straight middle of each side.
    static QList<QPoint> edge(const QImage &icon) {
        const int last = icon.width() - 1;
        QList<QPoint> points;
        for (int along = icon.width() / 4; along <= last - icon.width() / 4; ++along) {
            points << QPoint(along, 0) << QPoint(along, last) << QPoint(0, along)
                   << QPoint(last, along);
        }
        return points;
    }

    static QString iconFile(int size) {
        return QStringLiteral(RESOURCES "/icons/zorvan-%1.png").arg(size);
    }
};

ZORVAN_TEST(tst_application)
#include "tst_application.moc"
