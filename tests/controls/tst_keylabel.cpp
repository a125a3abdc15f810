#include <QTest>

#include "controls/keylabel.h"
#include "support/drawing.h"
#include "support/inkcontrast.h"
#include "support/optics.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::KeyLabel;

namespace {

/// Where the upper edge of a key ends, from there to the left (-1) or to the right (1).
int endOfEdge(const QImage &shapes, int x, int step) {
    while (shapes.rect().contains(x, 1) && shapes.pixel(x, 1) != shapes.pixel(0, 0)) {
        x += step;
    }
    return x;
}

}  // namespace

class tst_keylabel final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyKeyHasAnEdgeAroundIt_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("keysInBrackets");
        const auto row = [](const QString &text, const QString &keysInBrackets) {
            QTest::addRow("%s", qUtf8Printable(text)) << text << keysInBrackets;
        };
        row(u"Return"_s, u"[Return]"_s);
        row(u"A, B, C or F1, F2"_s, u"[A], [B], [C] or [F1], [F2]"_s);
        row(u"Tab, Shift+Tab"_s, u"[Tab], [Shift]+[Tab]"_s);
        row(u"Ctrl+1 to Ctrl+7"_s, u"[Ctrl]+[1] to [Ctrl]+[7]"_s);
        row(u"Ctrl+comma"_s, u"[Ctrl]+[comma]"_s);
    }

    void everyKeyHasAnEdgeAroundIt() {
        QFETCH(const QString, text);
        KeyLabel label;
        label.setText(text);
        label.resize(label.sizeHint());
        QVERIFY(label.minimumSizeHint().width() >= label.width());
        const QImage shapes = optics::picture(label, {.texts = true}).pixels;
        QString drawn;
        int end = 0;
        for (const optics::Text &piece : optics::texts(label)) {
            QVERIFY2(piece.whole, qPrintable(u"\"%1\" is clipped"_s.arg(piece.text)));
            QVERIFY2(piece.place.left() >= end - optics::ratio,
                     qPrintable(u"\"%1\" lies on the text before it"_s.arg(piece.text)));
            end = piece.place.right();
            const int middle = piece.place.center().x();
            const int left = piece.place.left() - endOfEdge(shapes, middle, -1);
            const int right = endOfEdge(shapes, middle, 1) - end;
            const bool isKey = left > 0 && right > 0;
            QVERIFY2(
                !isKey || qAbs(left - right) <= 2 * optics::ratio,
                qPrintable(u"\"%1\" stands %2 from the left and %3 from the right"_s.arg(piece.text)
                               .arg(left)
                               .arg(right)));
            drawn += isKey ? u"[%1]"_s.arg(piece.text) : piece.text;
        }
        QTEST(drawn, "keysInBrackets");
    }

    void keysOfOneLetterAreEquallyWide() {
        KeyLabel label;
        QCOMPARE(label.sizeHint().width(), 0);
        label.setText(u"A"_s);
        const int width = label.sizeHint().width();
        label.setText(u"I"_s);
        QCOMPARE(label.sizeHint().width(), width);
    }

    void whatStandsBetweenKeysIsFainter_data() { drawing::addPalettes(); }

    void whatStandsBetweenKeysIsFainter() {
        QFETCH(const QPalette, palette);
        KeyLabel label;
        label.setPalette(palette);
        label.setText(u"Shift or Shift"_s);
        label.resize(label.sizeHint());
        const QList<double> contrasts = inkContrasts(label);
        QCOMPARE(contrasts.size(), 3);
        QVERIFY(contrasts[1] < 0.9 * contrasts[0]);
    }
};

ZORVAN_TEST(tst_keylabel)
#include "tst_keylabel.moc"
