#include <QAccessible>
#include <QMainWindow>
#include <QTest>

#include "platform/layouts.h"
#include "platform/textlabel.h"
#include "support/desk.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::TextLabel;

class tst_textlabel final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyCharacterIsDrawn_data();
    void everyCharacterIsDrawn();
    void textIsPlainAndSpokenAsItIs();
    void textColourAndAlphaAreDrawn();
    void verdictIsReadable_data();
    void verdictIsReadable();
    void roomForLinesIsKeptWhateverTheText();

 private:
    /// The share of the picture that differs from its corner.
    static double ink(const QImage &picture);
    static QImage drawn(TextLabel &label);
    static double contrast(const QColor &a, const QColor &b);
};

double tst_textlabel::ink(const QImage &picture) {
    const QRgb ground = picture.pixel(0, 0);
    int inked = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            inked += picture.pixel(x, y) != ground ? 1 : 0;
        }
    }
    return double(inked) / (picture.width() * picture.height());
}

QImage tst_textlabel::drawn(TextLabel &label) {
    label.resize(400, 40);
    return label.grab().toImage();
}

double tst_textlabel::contrast(const QColor &a, const QColor &b) {
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double channel) {
            return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(double(color.redF())) + 0.7152 * linear(double(color.greenF())) +
               0.0722 * linear(double(color.blueF()));
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

void tst_textlabel::everyCharacterIsDrawn_data() {
    // Each text shows less, or nothing, where it is taken for something else.
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("otherwise");
    QTest::newRow("ampersand") << u"&"_s << u""_s;
    QTest::newRow("two ampersands") << u"&&"_s << u"&"_s;
    QTest::newRow("mnemonic") << u"C &Perl"_s << u"C Perl"_s;
    QTest::newRow("markup") << u"<b></b>"_s << u""_s;
    QTest::newRow("entity") << u"&lt;"_s << u"<"_s;
    QTest::newRow("comment") << u"<?php ?>"_s << u""_s;
}

void tst_textlabel::everyCharacterIsDrawn() {
    QFETCH(const QString, text);
    QFETCH(const QString, otherwise);
    TextLabel label;
    label.setStringValue(text);
    TextLabel lesser;
    lesser.setStringValue(otherwise);
    QVERIFY(ink(drawn(label)) > ink(drawn(lesser)));
    QVERIFY(label.sizeHint().width() > lesser.sizeHint().width());
}

void tst_textlabel::textIsPlainAndSpokenAsItIs() {
    TextLabel label;
    label.setStringValue(u"C & <b>Perl</b>"_s);
    QCOMPARE(label.textFormat(), Qt::PlainText);
    QCOMPARE(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name),
             u"C & <b>Perl</b>"_s);
}

void tst_textlabel::textColourAndAlphaAreDrawn() {
    TextLabel label;
    label.setStringValue(u"verdict"_s);
    const QImage usual = drawn(label);
    label.setTextColor(Qt::white);
    QCOMPARE(label.textColor(), QColor(Qt::white));
    QVERIFY(drawn(label) != usual);
    label.setTextColor(QColor());
    QCOMPARE(drawn(label), usual);
    label.setAlphaValue(0.5);
    QCOMPARE(label.alphaValue(), 0.5);
    QVERIFY(drawn(label) != usual);
    label.setAlphaValue(0.0);
    QCOMPARE(ink(drawn(label)), 0.0);
    label.setAlphaValue(1.0);
    QCOMPARE(drawn(label), usual);
}

void tst_textlabel::verdictIsReadable_data() {
    QTest::addColumn<QColor>("windowColour");
    QTest::newRow("light") << QColor(0xef, 0xef, 0xef);
    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("dark") << QColor(0x20, 0x20, 0x20);
    QTest::newRow("black") << QColor(Qt::black);
}

void tst_textlabel::verdictIsReadable() {
    QFETCH(const QColor, windowColour);
    QMainWindow window;
    platform::layoutNamed(u"MainTest"_s)(window);
    window.setPalette(QPalette(windowColour));
    auto &status = desk::control<TextLabel>(&window, u"lblStatus"_s);
    status.setTextColor(Qt::white);
    status.setStringValue(QString());
    status.resize(status.sizeHint().expandedTo({80, 24}));
    const QColor ground = status.grab().toImage().pixelColor(status.rect().center());
    QVERIFY2(contrast(ground, Qt::white) >= 4.5, qPrintable(ground.name()));
}

void tst_textlabel::roomForLinesIsKeptWhateverTheText() {
    TextLabel label;
    label.setWordWrap(true);
    label.setCharacters(20);
    label.setLines(3);
    const QSize room = label.sizeHint();
    for (const QString &text : {u""_s, u"short"_s, u"two\nlines"_s}) {
        label.setStringValue(text);
        QCOMPARE(label.sizeHint(), room);
        QCOMPARE(label.heightForWidth(room.width()), room.height());
    }
}

ZORVAN_TEST_MAIN(tst_textlabel)
#include "tst_textlabel.moc"
