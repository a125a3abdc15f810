#include <QLabel>
#include <QToolTip>

#include "controls/rowbutton.h"
#include "controls/textlabel.h"
#include "support/states.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// A text that means something else from right to left, and the same text kept left to right.
struct Texts {
    QString text;
    QString held;
};

QLabel &labelOf(const QWidget &surface, const QString &text) {
    for (QLabel *label : surface.findChildren<QLabel *>()) {
        if (label->text() == text) {
            return *label;
        }
    }
    qFatal("Nothing says \"%s\"", qUtf8Printable(text));
}

Texts fetchTexts() {
    QFETCH(const QString, text);
    constexpr QChar leftToRight(0x202d);
    constexpr QChar end(0x202c);
    return {text, leftToRight + text + end};
}

QImage picture(QWidget &widget) {
    return widget.grab().toImage();
}

}  // namespace

/// Code reads from left to right, even if the desktop's language does not.
class tst_direction final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() { store::fill(store::seeded()); }

    void cleanup() { desk::clear(); }

    void label_data() { addTexts(); }

    void label() {
        const Texts texts = fetchTexts();
        platform::TextLabel label;
        label.setStringValue(texts.text);
        label.resize(200, 40);
        expectSame(label, texts);
    }

    void answerInTheQuiz_data() { addTexts(); }

    void answerInTheQuiz() {
        const Texts texts = fetchTexts();
        states::quiz(u"1"_s)([&](QWidget &window) {
            auto &answer = desk::control<platform::TextLabel>(&window, u"lblAnswer1"_s);
            answer.setStringValue(texts.text);
            QCoreApplication::processEvents();
            expectSame(answer, texts);
            // The letter comes before the text.
            const QWidget &letter = desk::control(&window, u"btnAnswer1"_s);
            QVERIFY(letter.mapTo(&window, QPoint()).x() < answer.mapTo(&window, QPoint()).x());
        });
    }

    void alert_data() { addTexts(); }

    void alert() {
        const Texts texts = fetchTexts();
        Alerts alerts;
        alerts.answer(u"OK"_s, [&] {
            expectSame(labelOf(*QApplication::activeModalWidget(), texts.text), texts);
        });
        platform::Alert(texts.text, {.defaultButton = u"OK"_s}).runModal(nullptr);
        QVERIFY(alerts.verify());
    }

    void toolTip_data() { addTexts(); }

    void toolTip() {
        const Texts texts = fetchTexts();
        QToolTip::showText(QPoint(20, 20), texts.text);
        QLabel *tip = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible() && widget->inherits("QTipLabel")) {
                tip = qobject_cast<QLabel *>(widget);
            }
        }
        QVERIFY(tip != nullptr);
        expectSame(*tip, texts);
        QToolTip::hideText();
    }

 private:
    static void addTexts() {
        QTest::addColumn<QString>("text");
        for (const QString &text : {u"( 3 <> 4 )"_s, u".php"_s, u"$a = 3;"_s}) {
            QTest::newRow(qPrintable(text)) << text;
        }
    }

    static void expectSame(QLabel &label, const Texts &texts) {
        QVERIFY(label.isLeftToRight());
        const QImage drawn = picture(label);
        label.setText(texts.held);
        label.resize(drawn.deviceIndependentSize().toSize());
        QCOMPARE(drawn, picture(label));
    }
};

ZORVAN_TEST(tst_direction)
#include "tst_direction.moc"
