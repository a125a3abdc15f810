#include <QTest>

#include "controls/keylabel.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::KeyLabel;

namespace {

/// A stretch of columns, in the picture's pixels.
struct Stretch {
    int first;
    int last;
};

/// Where a row of the picture differs from its background.
QList<Stretch> stretches(const QImage &picture, int y) {
    const QRgb background = picture.pixel(0, 0);
    QList<Stretch> found;
    for (int x = 1; x < picture.width(); ++x) {
        if (picture.pixel(x, y) == background) {
            continue;
        }
        if (found.isEmpty() || found.last().last != x - 1) {
            found << Stretch{x, x};
        }
        found.last().last = x;
    }
    return found;
}

/// A label at its preferred size, and what it draws.
struct ShownLabel {
    KeyLabel label;
    QList<optics::Text> texts;
    QImage shapes;
    /// The upper edges of the keys.
    QList<Stretch> edges;

    explicit ShownLabel(const QString &text) {
        label.setText(text);
        label.resize(label.sizeHint());
        texts = optics::texts(label);
        shapes = optics::picture(label, {.texts = true}).pixels;
        edges = stretches(shapes, 1);
    }

    /// The edge above that text; null if there is none.
    const Stretch *edgeAbove(const optics::Text &text) const {
        const int middle = text.place.center().x();
        for (const Stretch &edge : edges) {
            if (edge.first <= middle && middle <= edge.last) {
                return &edge;
            }
        }
        return nullptr;
    }
};

}  // namespace

class tst_keylabel final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() { QApplication::setPalette(palette_); }

    void keysAreToldFromWhatStandsBetweenThem_data() { addTexts(); }

    void keysAreToldFromWhatStandsBetweenThem() {
        QFETCH(const QString, text);
        const ShownLabel shown(text);
        QStringList pieces;
        QStringList keys;
        for (const optics::Text &piece : shown.texts) {
            pieces << piece.text;
            if (shown.edgeAbove(piece) != nullptr) {
                keys << piece.text;
            }
        }
        QTEST(pieces, "pieces");
        QTEST(keys, "keys");
        QCOMPARE(shown.edges.size(), keys.size());
    }

    void nothingIsCutOff_data() { addTexts(); }

    void nothingIsCutOff() {
        QFETCH(const QString, text);
        const ShownLabel shown(text);
        int end = 0;
        for (const optics::Text &piece : shown.texts) {
            QVERIFY2(piece.whole, qPrintable(u"\"%1\" is clipped"_s.arg(piece.text)));
            QVERIFY2(
                piece.place.left() >= end - optics::ratio,
                qPrintable(u"\"%1\" begins at %2, the piece before it ends at %3"_s.arg(piece.text)
                               .arg(piece.place.left())
                               .arg(end)));
            end = piece.place.right();
        }
        // All texts end with a key, so its right edge is the last thing drawn.
        const QList<Stretch> across = stretches(shown.shapes, shown.shapes.height() / 2);
        QVERIFY(!across.isEmpty());
        QVERIFY2(across.last().last > end,
                 qPrintable(u"the last key's right edge is at %1, its text ends at %2"_s
                                .arg(across.last().last)
                                .arg(end)));
        QVERIFY(across.last().last >= shown.shapes.width() - 2 * optics::ratio);
        QVERIFY(shown.label.minimumSizeHint().width() >= shown.label.sizeHint().width());
    }

    void everyKeyStandsWithinItsEdge_data() { addTexts(); }

    void everyKeyStandsWithinItsEdge() {
        QFETCH(const QString, text);
        const ShownLabel shown(text);
        for (const optics::Text &piece : shown.texts) {
            const Stretch *edge = shown.edgeAbove(piece);
            if (edge == nullptr) {
                continue;
            }
            const int left = piece.place.left() - edge->first;
            const int right = edge->last - piece.place.right();
            QVERIFY2(
                qAbs(left - right) <= 2 * optics::ratio,
                qPrintable(u"\"%1\" stands %2 from the left and %3 from the right"_s.arg(piece.text)
                               .arg(left)
                               .arg(right)));
            QVERIFY2(edge->last - edge->first > piece.place.height() / 2,
                     qPrintable(u"the key \"%1\" is only %2 wide"_s.arg(piece.text)
                                    .arg(edge->last - edge->first)));
        }
    }

    void sizeFollowsTheText() {
        KeyLabel label;
        QCOMPARE(label.sizeHint().width(), 0);
        label.setText(u"Tab"_s);
        const int tab = label.sizeHint().width();
        QVERIFY(tab > label.fontMetrics().horizontalAdvance(u"Tab"_s));
        label.setText(u"Tab, Tab"_s);
        QVERIFY(label.sizeHint().width() >
                2 * tab + label.fontMetrics().horizontalAdvance(u", "_s));
        label.setText(u"A"_s);
        const int letter = label.sizeHint().width();
        label.setText(u"I"_s);
        // All keys with a single letter are equally wide.
        QCOMPARE(label.sizeHint().width(), letter);
    }

    void whatStandsBetweenKeysIsFainter_data() { drawing::addPalettes(); }

    void whatStandsBetweenKeysIsFainter() {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        KeyLabel label;
        label.setText(u"Shift or Shift"_s);
        label.resize(label.sizeHint());
        const optics::Picture with = optics::picture(label);
        const QImage without = optics::picture(label, {.texts = true}).pixels;
        QCOMPARE(with.texts.size(), 3);
        const auto contrast = [&](int piece) {
            return optics::inkContrast(with.pixels, without, with.texts.at(piece).place)
                .value_or(0);
        };
        QVERIFY2(contrast(1) < 0.9 * contrast(0),
                 qPrintable(u"a key: %1 to 1, what stands between: %2 to 1"_s.arg(contrast(0))
                                .arg(contrast(1))));
    }

 private:
    static void addTexts() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("pieces");
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("one") << u"Return"_s << QStringList{u"Return"_s} << QStringList{u"Return"_s};
        QTest::newRow("a letter") << u"A"_s << QStringList{u"A"_s} << QStringList{u"A"_s};
        QTest::newRow("a number") << u"F1"_s << QStringList{u"F1"_s} << QStringList{u"F1"_s};
        QTest::newRow("either, or")
            << u"A, B, C or 1, 2, 3"_s
            << QStringList{u"A"_s, u", "_s, u"B"_s, u", "_s, u"C"_s, u" or "_s,
                           u"1"_s, u", "_s, u"2"_s, u", "_s, u"3"_s}
            << QStringList{u"A"_s, u"B"_s, u"C"_s, u"1"_s, u"2"_s, u"3"_s};
        QTest::newRow("together") << u"Tab, Shift+Tab"_s
                                  << QStringList{u"Tab"_s, u", "_s, u"Shift"_s, u"+"_s, u"Tab"_s}
                                  << QStringList{u"Tab"_s, u"Shift"_s, u"Tab"_s};
        QTest::newRow("from, to") << u"Ctrl+1 to Ctrl+7"_s
                                  << QStringList{u"Ctrl"_s, u"+"_s, u"1"_s, u" to "_s,
                                                 u"Ctrl"_s, u"+"_s, u"7"_s}
                                  << QStringList{u"Ctrl"_s, u"1"_s, u"Ctrl"_s, u"7"_s};
        QTest::newRow("in words") << u"Ctrl+comma"_s << QStringList{u"Ctrl"_s, u"+"_s, u"comma"_s}
                                  << QStringList{u"Ctrl"_s, u"comma"_s};
    }

    QPalette palette_ = QApplication::palette();
};

ZORVAN_TEST(tst_keylabel)
#include "tst_keylabel.moc"
