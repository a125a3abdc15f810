#include <array>

#include <QLabel>
#include <QToolTip>

#include "controls/rowbutton.h"
#include "controls/textlabel.h"
#include "look/states.h"
#include "resources/resources.h"
#include "shell/controllertable.h"

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

QImage picture(QWidget &widget) {
    return widget.grab().toImage();
}

}  // namespace

/// Code reads from left to right, even if the desktop's language does not.
class tst_direction final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init();
    void cleanup();

    void label_data();
    void label();
    void answerInTheQuiz_data();
    void answerInTheQuiz();
    void alert_data();
    void alert();
    void toolTip_data();
    void toolTip();

 private:
    static void addTexts();
    static void expectSame(QLabel &label, const Texts &texts);
};

void tst_direction::init() {
    store::fill(store::seeded());
}

void tst_direction::cleanup() {
    desk::clear();
}

void tst_direction::addTexts() {
    QTest::addColumn<QString>("text");
    for (const QString &text : {u"( 3 <> 4 )"_s, u".php"_s, u"$a = 3;"_s}) {
        QTest::newRow(qPrintable(text)) << text;
    }
}

Texts fetchTexts() {
    QFETCH(const QString, text);
    constexpr QChar leftToRight(0x202d);
    constexpr QChar end(0x202c);
    return {text, leftToRight + text + end};
}

void tst_direction::expectSame(QLabel &label, const Texts &texts) {
    QVERIFY(label.isLeftToRight());
    const QImage drawn = picture(label);
    label.setText(texts.held);
    label.resize(drawn.deviceIndependentSize().toSize());
    QCOMPARE(drawn, picture(label));
}

void tst_direction::label_data() {
    addTexts();
}

void tst_direction::label() {
    const Texts texts = fetchTexts();
    platform::TextLabel label;
    label.setStringValue(texts.text);
    label.resize(200, 40);
    expectSame(label, texts);
}

void tst_direction::answerInTheQuiz_data() {
    addTexts();
}

void tst_direction::answerInTheQuiz() {
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

void tst_direction::alert_data() {
    addTexts();
}

void tst_direction::alert() {
    const Texts texts = fetchTexts();
    Alerts alerts;
    alerts.answer(u"OK"_s, [&] {
        expectSame(labelOf(*QApplication::activeModalWidget(), texts.text), texts);
    });
    platform::Alert(texts.text, {.defaultButton = u"OK"_s}).runModal(nullptr);
    QVERIFY(alerts.verify());
}

void tst_direction::toolTip_data() {
    addTexts();
}

void tst_direction::toolTip() {
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

int main(int argc, char **argv) {
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    installResources();
    fillControllerTable();
    // As on a desktop whose language is written from right to left.
    std::array<char, 9> reverse{"-reverse"};
    std::array<char *, 3> arguments{argv[0], reverse.data(), nullptr};
    int count = 2;
    const platform::Application application(count, arguments.data());
    tst_direction test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_direction.moc"
