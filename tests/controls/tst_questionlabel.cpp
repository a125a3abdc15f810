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
        QVERIFY(!QFontInfo(lines.at(0).font).fixedPitch());
        for (const int line : {1, 2, 3, 4}) {
            QVERIFY(QFontInfo(lines.at(line).font).fixedPitch());
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
        const QImage panel = optics::picture(label, {.texts = true}).pixels;
        const QColor base = label.palette().color(QPalette::Base);
        const QList<optics::Text> lines = optics::texts(label);
        const QRect question = lines.at(0).place;
        const QRect code = lines.at(1).place;
        QCOMPARE(panel.pixelColor(question.center()), base);
        QVERIFY2(panel.pixelColor(code.center()) != base, "the code has no panel");
        // There is a gap between the panel's edge and the code, and between question and panel.
        QVERIFY(code.left() > question.left());
        QVERIFY(code.top() - question.bottom() > question.height() / 2);

        label.setStringValue(u"What does this print?"_s);
        QCOMPARE(optics::mainColor(optics::picture(label, {.texts = true}).pixels), base.rgb());
    }

    void codeHasTheSizeOfTheTextAround() {
        QWidget window;
        QuestionLabel label(&window);
        // Neither is the default size of the font for code.
        window.setFont(QFont(window.font().family(), 18));
        label.setFont(QFont(window.font().family(), 36));
        label.setStringValue(u"What does this print?\necho 1;"_s);
        label.resize(label.sizeHint());
        const QList<optics::Text> lines = optics::texts(label);
        QCOMPARE(lines.at(0).font.pointSizeF(), 36.0);
        QCOMPARE(lines.at(1).font.pointSizeF(), 18.0);
    }
};

ZORVAN_TEST(tst_questionlabel)
#include "tst_questionlabel.moc"
