#include <QAccessible>
#include <QFontDatabase>
#include <QMainWindow>
#include <QTest>

#include "controls/textlabel.h"
#include "support/desk.h"
#include "support/drawing.h"
#include "support/inkcontrast.h"
#include "support/optics.h"
#include "support/testmain.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

using platform::TextLabel;

class tst_textlabel final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void textIsDrawnAndSpokenToTheCharacter() {
        // Each text would show less, or nothing, if it were taken for markup or a mnemonic.
        for (const QString &text :
             {u"&"_s, u"&&"_s, u"C &Perl"_s, u"<b></b>"_s, u"&lt;"_s, u"<?php ?>"_s}) {
            TextLabel label;
            label.setStringValue(text);
            label.resize(label.sizeHint());
            const QList<optics::Text> drawn = optics::texts(label);
            QCOMPARE(drawn.size(), 1);
            QCOMPARE(drawn.first().text, text);
            QVERIFY2(drawn.first().whole, qPrintable(text + u" is clipped"_s));
            QCOMPARE(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name), text);
        }
    }

    void textColourAndAlphaAreDrawn() {
        TextLabel label;
        label.setStringValue(u"verdict"_s);
        const double usual = contrast(label);
        label.setTextColor(Qt::white);
        QVERIFY(contrast(label) < 0.5 * usual);
        label.setTextColor(QColor());
        QCOMPARE(contrast(label), usual);
        label.setAlphaValue(0.5);
        const double half = contrast(label);
        QVERIFY(half < 0.5 * usual && half > 2);
        label.setAlphaValue(0.0);
        QCOMPARE(contrast(label), 0.0);
    }

    void secondaryTextIsFainter_data() { drawing::addPalettes(); }

    void secondaryTextIsFainter() {
        QFETCH(const QPalette, palette);
        TextLabel label;
        label.setPalette(palette);
        label.setStringValue(u"19 questions"_s);
        const double usual = contrast(label);
        label.setProperty("secondary", true);
        QVERIFY(contrast(label) < 0.9 * usual);
        // A colour that was set explicitly stays.
        label.setTextColor(palette.color(QPalette::WindowText));
        QCOMPARE(contrast(label), usual);
    }

    void verdictIsReadableOnEveryWindow() {
        for (const QColor &window : {QColor(Qt::white), QColor(0xef, 0xef, 0xef),
                                     QColor(0x20, 0x20, 0x20), QColor(Qt::black)}) {
            QMainWindow quiz;
            platform::layoutNamed(u"MainTest"_s)(quiz);
            quiz.setPalette(QPalette(window));
            auto &verdict = desk::control<TextLabel>(&quiz, u"lblStatus"_s);
            verdict.setTextColor(Qt::white);
            verdict.setStringValue(u"correct"_s);
            QVERIFY2(contrast(verdict) >= 4.5, qPrintable(window.name()));
        }
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

    void roomForTheWidestTextIsKeptWhateverTheDigits() {
        // In some fonts the digits have different widths.
        for (const QString &family : QFontDatabase::families(QFontDatabase::Latin)) {
            TextLabel label;
            label.setFont(QFont(family));
            label.setProperty("widestText", u"11 of 11 passes"_s);
            const int room = label.sizeHint().width();
            for (const QChar digit : QStringView(u"0123456789")) {
                const QString text = u"%1%1 of %1%1 passes"_s.arg(digit);
                const double needed = QFontMetricsF(label.font()).horizontalAdvance(text);
                QVERIFY2(room >= needed, qPrintable(family + u": "_s + text));
                label.setStringValue(text);
                QCOMPARE(label.sizeHint().width(), room);
            }
            label.setCharacters(10);
            QVERIFY(label.sizeHint().width() > room);
        }
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
        QVERIFY(qAbs(distance() - 2 * usual) <= 2 * optics::ratio);
        QCOMPARE(label.sizeHint().height(), 2 * height);
        QCOMPARE(label.heightForWidth(400), 2 * height);
    }

    void textStandsWhereItIsAligned() {
        const auto roomAround = [](Qt::Alignment alignment) {
            TextLabel label;
            label.setAlignment(alignment);
            label.setStringValue(u"00:15"_s);
            label.resize(300, 90);
            const QRect place = optics::texts(label).constFirst().place;
            const QSize size = label.size() * optics::ratio;
            return QMargins(place.left(), place.top(), size.width() - place.right(),
                            size.height() - place.bottom());
        };
        constexpr int slack = 2 * optics::ratio;
        const QMargins left = roomAround(Qt::AlignLeft | Qt::AlignVCenter);
        QVERIFY(left.left() <= slack && qAbs(left.top() - left.bottom()) <= slack);
        QVERIFY(roomAround(Qt::AlignRight | Qt::AlignVCenter).right() <= slack);
        const QMargins centre = roomAround(Qt::AlignCenter);
        QVERIFY(qAbs(centre.left() - centre.right()) <= slack);
        QVERIFY(roomAround(Qt::AlignLeft | Qt::AlignTop).top() <= slack);
    }

    void balancedLinesAreAboutEquallyLong() {
        TextLabel label;
        label.setWordWrap(true);
        label.setCharacters(30);
        label.setStringValue(u"So many words that two more do not fit on it"_s);
        const int usual = label.sizeHint().width();
        const auto lines = [&] {
            label.resize(label.sizeHint());
            return optics::texts(label);
        };
        const auto lastWidth = [&] {
            const QList<optics::Text> drawn = lines();
            return double(drawn.constLast().place.width()) / drawn.constFirst().place.width();
        };
        QCOMPARE(lines().size(), 2);
        QVERIFY(lastWidth() < 0.67);
        label.setBalanced(true);
        QCOMPARE(lines().size(), 2);
        QVERIFY(lastWidth() > 0.67);
        QVERIFY(label.sizeHint().width() < usual);

        // They stay so in a wider label, and in its middle.
        label.setAlignment(Qt::AlignHCenter);
        label.resize(2 * usual, label.height());
        const QList<optics::Text> wide = optics::texts(label);
        QCOMPARE(wide.size(), 1);
        QVERIFY(qAbs(wide.first().place.center().x() - label.width()) <= 2);
    }

    void textStandsOffTheEndsOfItsBand() {
        TextLabel label;
        label.setStringValue(u"the right answer"_s);
        const QSize plain = label.sizeHint();
        label.setBand(true);
        label.resize(label.sizeHint());
        QVERIFY(label.height() > plain.height());
        const QRect place = optics::texts(label).constFirst().place;
        const int end = label.width() * optics::ratio;
        QVERIFY2(
            place.left() >= place.height() / 2 && end - place.right() >= place.height() / 2,
            qPrintable(u"from %1 to %2 of %3"_s.arg(place.left()).arg(place.right()).arg(end)));
        // If its ends leave too little room for one line, the text takes two.
        label.setWordWrap(true);
        QVERIFY(label.heightForWidth(plain.width() + 1) > label.heightForWidth(2 * plain.width()));
    }

    void textIsSetAgainWhateverChanges() {
        const QList<std::pair<const char *, void (*)(TextLabel &)>> changes{
            {"text", [](TextLabel &label) { label.setStringValue(u"Another,\nof two lines"_s); }},
            {"font", [](TextLabel &label) { label.setFont(QFont(label.font().family(), 30)); }},
            {"wrapping", [](TextLabel &label) { label.setWordWrap(false); }},
            {"alignment", [](TextLabel &label) { label.setAlignment(Qt::AlignRight); }},
            {"line height", [](TextLabel &label) { label.setProperty("lineHeight", 1.5); }},
            {"width", [](TextLabel &label) { label.resize(150, 200); }},
        };
        for (const auto &[name, change] : changes) {
            TextLabel label;
            TextLabel fresh;
            for (TextLabel *each : {&label, &fresh}) {
                each->setStringValue(u"A text that is long enough for two lines\nand more"_s);
                each->setWordWrap(true);
                each->resize(200, 200);
            }
            const QImage before = label.grab().toImage();
            change(label);
            change(fresh);
            QVERIFY2(label.grab().toImage() != before, name);
            QVERIFY2(label.grab().toImage() == fresh.grab().toImage(), name);
            QVERIFY2(label.sizeHint() == fresh.sizeHint(), name);
        }
    }

 private:
    static double contrast(TextLabel &label) {
        label.resize(label.sizeHint());
        return inkContrasts(label).value(0);
    }
};

ZORVAN_TEST(tst_textlabel)
#include "tst_textlabel.moc"
