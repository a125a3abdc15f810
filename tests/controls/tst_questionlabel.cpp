#include <QFontDatabase>
#include <QFontInfo>
#include <QTest>

#include "controls/questionlabel.h"
#include "support/optics.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::QuestionLabel;

class tst_questionlabel final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void codeIsOfOneWidthAndKeepsItsBlanks() {
        QuestionLabel label;
        label.setStringValue(u"What does this print?\nwhile ($i) {\n    iiii();\n    MMMM();\n}"_s);
        label.resize(label.sizeHint());
        const QList<optics::Text> lines = optics::texts(label);
        QCOMPARE(lines.size(), 5);
        const QString fixed =
            QFontInfo(QFontDatabase::systemFont(QFontDatabase::FixedFont)).family();
        QVERIFY(QFontInfo(lines.at(0).font).family() != fixed);
        for (const int line : {1, 2, 3, 4}) {
            QCOMPARE(QFontInfo(lines.at(line).font).family(), fixed);
            QVERIFY2(lines.at(line).whole, qPrintable(lines.at(line).text + u" is clipped"_s));
        }
        QCOMPARE(lines.at(2).text, u"    iiii();"_s);
        QCOMPARE(lines.at(3).place.width(), lines.at(2).place.width());
        QCOMPARE(lines.at(2).place.left(), lines.at(1).place.left());
    }

    void codeStandsOnAPanelOfItsOwn() {
        QuestionLabel label;
        label.setStringValue(u"What does this print?\necho 1;"_s);
        label.resize(label.sizeHint() + QSize(60, 0));
        const auto background = [&](const QRect &place) {
            const QImage picture = optics::picture(label, {.texts = true}).pixels;
            return picture.pixelColor(place.center());
        };
        const QList<optics::Text> lines = optics::texts(label);
        const QColor window = label.palette().color(QPalette::Window);
        QCOMPARE(background(lines.at(0).place), window);
        QVERIFY2(background(lines.at(1).place) != window, "the code has no panel");
        // There is a gap between the panel's edge and the code, and between question and panel.
        QVERIFY(lines.at(1).place.left() > lines.at(0).place.left());
        QVERIFY(lines.at(1).place.top() - lines.at(0).place.bottom() >
                lines.at(0).place.height() / 2);

        label.setStringValue(u"What does this print?"_s);
        QCOMPARE(optics::mainColor(optics::picture(label, {.texts = true}).pixels), window.rgb());
    }

    void codeHasTheSizeOfTheTextAround() {
        QWidget window;
        auto *label = new QuestionLabel(&window);
        // Neither size is the default size of the font for code.
        QFont font = window.font();
        font.setPointSizeF(18);
        window.setFont(font);
        QFont large = font;
        large.setPointSizeF(36);
        label->setFont(large);
        label->setStringValue(u"What does this print?\necho 1;"_s);
        label->resize(label->sizeHint());
        const QList<optics::Text> lines = optics::texts(*label);
        QCOMPARE(lines.at(0).font.pointSizeF(), 36.0);
        QCOMPARE(lines.at(1).font.pointSizeF(), 18.0);
    }
};

ZORVAN_TEST(tst_questionlabel)
#include "tst_questionlabel.moc"
