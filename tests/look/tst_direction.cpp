#include <QLabel>
#include <QToolTip>

#include "controls/textlabel.h"
#include "support/states.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether the label looks as it does with its text held from left to right.
bool readsFromLeftToRight(QLabel &label) {
    constexpr QChar leftToRight(0x202d);
    constexpr QChar end(0x202c);
    const QImage drawn = label.grab().toImage();
    label.setText(leftToRight + label.text() + end);
    label.resize(drawn.deviceIndependentSize().toSize());
    return label.isLeftToRight() && label.grab().toImage() == drawn;
}

QLabel &labelOf(const QWidget &surface, const QString &text) {
    for (QLabel *label : surface.findChildren<QLabel *>()) {
        if (label->text() == text) {
            return *label;
        }
    }
    qFatal("Nothing says \"%s\"", qUtf8Printable(text));
}

}  // namespace

/// Code reads from left to right, even if the desktop's language does not.
class tst_direction final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void answerInTheQuiz() {
        states::quiz([this](QWidget &window) {
            auto &answer = desk::control<platform::TextLabel>(&window, u"lblAnswer1");
            for (const QString &text : texts_) {
                answer.setStringValue(text);
                QCoreApplication::processEvents();
                QVERIFY2(readsFromLeftToRight(answer), qPrintable(text));
            }
            const QWidget &letter = desk::control(&window, u"btnAnswer1");
            QVERIFY(letter.mapTo(&window, QPoint()).x() < answer.mapTo(&window, QPoint()).x());
        })(states::nothing);
    }

    void alert() {
        for (const QString &text : texts_) {
            alerts_->answer(u"OK"_s, [&] {
                QVERIFY2(readsFromLeftToRight(labelOf(*QApplication::activeModalWidget(), text)),
                         qPrintable(text));
            });
            platform::Alert(text, {.defaultButton = u"OK"_s}).runModal(nullptr);
        }
    }

    void toolTip() {
        for (const QString &text : texts_) {
            QToolTip::showText(QPoint(20, 20), text);
            auto *tip = qobject_cast<QLabel *>(&states::shownWindow("QTipLabel"));
            QVERIFY2(tip != nullptr && readsFromLeftToRight(*tip), qPrintable(text));
            QToolTip::hideText();
        }
    }

 private:
    /// They mean something else from right to left.
    const QStringList texts_{u"( 3 <> 4 )"_s, u".php"_s, u"$a = 3;"_s};
};

ZORVAN_TEST(tst_direction)
#include "tst_direction.moc"
