#include <functional>

#include <QAccessible>
#include <QFontDatabase>
#include <QMainWindow>
#include <QTest>

#include "controls/textlabel.h"
#include "support/desk.h"
#include "support/drawing.h"
#include "support/optics.h"
#include "support/testmain.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

using platform::TextLabel;

class tst_textlabel final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyCharacterIsDrawn_data() {
        // Each text would show less, or nothing, if it were taken for markup or a mnemonic.
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("otherwise");
        QTest::newRow("ampersand") << u"&"_s << u""_s;
        QTest::newRow("two ampersands") << u"&&"_s << u"&"_s;
        QTest::newRow("mnemonic") << u"C &Perl"_s << u"C Perl"_s;
        QTest::newRow("markup") << u"<b></b>"_s << u""_s;
        QTest::newRow("entity") << u"&lt;"_s << u"<"_s;
        QTest::newRow("comment") << u"<?php ?>"_s << u""_s;
    }

    void everyCharacterIsDrawn() {
        QFETCH(const QString, text);
        QFETCH(const QString, otherwise);
        TextLabel label;
        label.setStringValue(text);
        TextLabel lesser;
        lesser.setStringValue(otherwise);
        QVERIFY(ink(drawn(label)) > ink(drawn(lesser)));
        QVERIFY(label.sizeHint().width() > lesser.sizeHint().width());
    }

    void textIsPlainAndSpokenAsItIs() {
        TextLabel label;
        label.setStringValue(u"C & <b>Perl</b>"_s);
        QCOMPARE(label.textFormat(), Qt::PlainText);
        QCOMPARE(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name),
                 u"C & <b>Perl</b>"_s);
    }

    void textColourAndAlphaAreDrawn() {
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

    void verdictIsReadable_data() {
        QTest::addColumn<QColor>("windowColour");
        QTest::newRow("light") << QColor(0xef, 0xef, 0xef);
        QTest::newRow("white") << QColor(Qt::white);
        QTest::newRow("dark") << QColor(0x20, 0x20, 0x20);
        QTest::newRow("black") << QColor(Qt::black);
    }

    void verdictIsReadable() {
        QFETCH(const QColor, windowColour);
        QMainWindow window;
        platform::layoutNamed(u"MainTest"_s)(window);
        window.setPalette(QPalette(windowColour));
        auto &status = desk::control<TextLabel>(&window, u"lblStatus"_s);
        status.setTextColor(Qt::white);
        status.setStringValue(QString());
        status.resize(status.sizeHint().expandedTo({80, 24}));
        const QColor background = status.grab().toImage().pixelColor(status.rect().center());
        QVERIFY2(contrast(background, Qt::white) >= 4.5, qPrintable(background.name()));
    }

    void roomForLinesIsKeptWhateverTheText() {
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

    void roomForTheWidestTextIsKeptWhateverTheDigits_data() {
        QTest::addColumn<QString>("family");
        // In some fonts the digits have different widths.
        for (const QString &family : QFontDatabase::families(QFontDatabase::Latin)) {
            QTest::newRow(qUtf8Printable(family)) << family;
        }
    }

    void roomForTheWidestTextIsKeptWhateverTheDigits() {
        QFETCH(const QString, family);
        TextLabel label;
        label.setFont(QFont(family));
        label.setProperty("widestText", u"11 of 11 passes"_s);
        const int room = label.sizeHint().width();
        for (const QChar digit : QStringView(u"0123456789")) {
            const QString text = u"%1%1 of %1%1 passes"_s.arg(digit);
            const double needed = QFontMetricsF(label.font()).horizontalAdvance(text);
            QVERIFY2(room >= needed,
                     qPrintable(u"room for %1 pixels, \"%2\" needs %3"_s.arg(room).arg(
                         text, QString::number(needed))));
            label.setStringValue(text);
            QCOMPARE(label.sizeHint().width(), room);
        }
        label.setStringValue(QString());
        QCOMPARE(label.sizeHint().width(), room);
    }

    void roomForCharactersAddsToTheWidestText() {
        TextLabel label;
        label.setProperty("widestText", u"Mastered"_s);
        const int room = label.sizeHint().width();
        QVERIFY(room >= label.fontMetrics().horizontalAdvance(u"Mastered"_s));
        label.setCharacters(10);
        const double more = 5.55 * label.font().pointSizeF() * label.logicalDpiY() / 72;
        QVERIFY2(
            qAbs(label.sizeHint().width() - room - more) <= 1,
            qPrintable(
                u"%1 pixels more, wanted %2"_s.arg(label.sizeHint().width() - room).arg(more)));
    }

    void linesStandApartAsTheLeadingSays() {
        TextLabel label;
        label.setStringValue(u"one\ntwo"_s);
        const auto distance = [&] {
            label.resize(label.sizeHint());
            const QList<optics::Text> lines = optics::texts(label);
            return lines.at(1).place.top() - lines.at(0).place.top();
        };
        const int usual = distance();
        const int height = label.sizeHint().height();
        label.setProperty("lineHeight", 2.0);
        QVERIFY2(qAbs(distance() - 2 * usual) <= 2 * optics::ratio,
                 qPrintable(u"lines stand %1 apart, usually %2"_s.arg(distance()).arg(usual)));
        QCOMPARE(label.sizeHint().height(), 2 * height);
        QCOMPARE(label.heightForWidth(400), 2 * height);
    }

    void secondaryTextIsFainter_data() { drawing::addPalettes(); }

    void secondaryTextIsFainter() {
        QFETCH(const QPalette, palette);
        TextLabel label;
        label.setPalette(palette);
        label.setStringValue(u"19 questions"_s);
        label.resize(label.sizeHint());
        const auto contrast = [&] {
            return optics::inkContrast(optics::picture(label).pixels,
                                       optics::picture(label, {.texts = true}).pixels,
                                       QRect(QPoint(), label.size() * optics::ratio))
                .value_or(0);
        };
        const double usual = contrast();
        label.setProperty("secondary", true);
        QVERIFY2(contrast() < 0.9 * usual,
                 qPrintable(u"%1 to 1, usual text %2 to 1"_s.arg(contrast()).arg(usual)));
        // A colour that was set explicitly stays.
        label.setTextColor(palette.color(QPalette::WindowText));
        QCOMPARE(contrast(), usual);
    }

    void textStandsWhereItIsAligned_data() {
        QTest::addColumn<Qt::Alignment>("alignment");
        QTest::addColumn<double>("left");
        QTest::addColumn<double>("top");
        QTest::newRow("left") << Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter) << 0.0 << 0.5;
        QTest::newRow("middle") << Qt::Alignment(Qt::AlignCenter) << 0.5 << 0.5;
        QTest::newRow("right") << Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter) << 1.0 << 0.5;
        QTest::newRow("top") << Qt::Alignment(Qt::AlignLeft | Qt::AlignTop) << 0.0 << 0.0;
    }

    void textStandsWhereItIsAligned() {
        QFETCH(const Qt::Alignment, alignment);
        QFETCH(const double, left);
        QFETCH(const double, top);
        TextLabel label;
        label.setAlignment(alignment);
        label.setStringValue(u"00:15"_s);
        label.resize(300, 90);
        const QList<optics::Text> texts = optics::texts(label);
        QCOMPARE(texts.size(), 1);
        const QSize room = label.size() * optics::ratio - texts.first().place.size();
        constexpr double slack = 2 * optics::ratio;
        QVERIFY2(qAbs(texts.first().place.left() - left * room.width()) <= slack &&
                     qAbs(texts.first().place.top() - top * room.height()) <= slack,
                 qPrintable(u"at %1, %2 with %3, %4 to spare"_s.arg(texts.first().place.left())
                                .arg(texts.first().place.top())
                                .arg(room.width())
                                .arg(room.height())));
    }

    void textStandsOffTheEndsOfItsBand() {
        TextLabel label;
        label.setStringValue(u"correct"_s);
        const QSize plain = label.sizeHint();
        label.setBand(true);
        label.resize(label.sizeHint());
        QVERIFY(label.width() > plain.width());
        QVERIFY(label.height() > plain.height());
        // If its ends leave too little room for one line, the text takes two.
        label.setStringValue(u"the right answer"_s);
        label.setWordWrap(true);
        const int line = label.fontMetrics().horizontalAdvance(label.text());
        QVERIFY(label.heightForWidth(line + 1) > label.heightForWidth(2 * line));
        label.setStringValue(u"correct"_s);
        label.setWordWrap(false);
        const QRect place = optics::texts(label).constFirst().place;
        QVERIFY2(place.left() >= place.height() / 2 &&
                     label.width() * optics::ratio - place.right() >= place.height() / 2,
                 qPrintable(u"from %1 to %2 of %3"_s.arg(place.left())
                                .arg(place.right())
                                .arg(label.width() * optics::ratio)));
    }

    void textIsSetAgainWhateverChanges_data() {
        using Change = std::function<void(TextLabel &)>;
        QTest::addColumn<Change>("change");
        const auto row = [](const char *name, const Change &change) {
            QTest::newRow(name) << change;
        };
        row("text",
            [](TextLabel &label) { label.setStringValue(u"Another text,\nof two lines"_s); });
        row("font", [](TextLabel &label) {
            QFont font = label.font();
            font.setPointSizeF(1.5 * font.pointSizeF());
            label.setFont(font);
        });
        row("wrapping", [](TextLabel &label) { label.setWordWrap(false); });
        row("alignment", [](TextLabel &label) { label.setAlignment(Qt::AlignRight); });
        row("line height", [](TextLabel &label) { label.setProperty("lineHeight", 1.5); });
        row("width", [](TextLabel &label) { label.resize(150, 200); });
    }

    void textIsSetAgainWhateverChanges() {
        QFETCH(const std::function<void(TextLabel &)>, change);
        const auto prepare = [](TextLabel &label) {
            label.setStringValue(u"A text that is long enough for a second line\n$a = 'code';"_s);
            label.setWordWrap(true);
            label.resize(250, 200);
        };
        TextLabel label;
        prepare(label);
        const QImage before = label.grab().toImage();
        change(label);
        const QImage after = label.grab().toImage();
        QVERIFY(after != before);

        TextLabel fresh;
        prepare(fresh);
        change(fresh);
        QCOMPARE(label.sizeHint(), fresh.sizeHint());
        QCOMPARE(label.heightForWidth(150), fresh.heightForWidth(150));
        QCOMPARE(after, fresh.grab().toImage());
    }

 private:
    /// The share of the picture that differs from its corner.
    static double ink(const QImage &picture) {
        const QRgb background = picture.pixel(0, 0);
        int inked = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                inked += picture.pixel(x, y) != background ? 1 : 0;
            }
        }
        return double(inked) / (picture.width() * picture.height());
    }

    static QImage drawn(TextLabel &label) {
        label.resize(400, 40);
        return label.grab().toImage();
    }

    static double contrast(const QColor &a, const QColor &b) {
        const auto luminance = [](const QColor &color) {
            const auto linear = [](double channel) {
                return channel <= 0.04045 ? channel / 12.92
                                          : std::pow((channel + 0.055) / 1.055, 2.4);
            };
            return 0.2126 * linear(double(color.redF())) + 0.7152 * linear(double(color.greenF())) +
                   0.0722 * linear(double(color.blueF()));
        };
        const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
        return (lighter + 0.05) / (darker + 0.05);
    }
};

ZORVAN_TEST(tst_textlabel)
#include "tst_textlabel.moc"
