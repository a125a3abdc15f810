#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>

#include "platform/theme.h"
#include "support/drawing.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_style final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup();

    void focusIsDrawnInTheAccentColour_data();
    void focusIsDrawnInTheAccentColour();
    void optionIsPressedAnywhereOnItsRow_data();
    void optionIsPressedAnywhereOnItsRow();

 private:
    QPalette palette_ = QApplication::palette();
};

void tst_style::cleanup() {
    QApplication::setPalette(palette_);
}

void tst_style::focusIsDrawnInTheAccentColour_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<bool>("radio");
    for (const bool radio : {false, true}) {
        const char *control = radio ? "radio button" : "push button";
        QTest::addRow("%s, light", control) << QApplication::palette() << radio;
        QTest::addRow("%s, dark", control) << drawing::darkPalette() << radio;
    }
}

void tst_style::focusIsDrawnInTheAccentColour() {
    QFETCH(const QPalette, palette);
    QFETCH(const bool, radio);
    QApplication::setPalette(palette);
    QWidget window;
    auto *inWindow = new QVBoxLayout(&window);
    QAbstractButton *focused = nullptr;
    QAbstractButton *other = nullptr;
    if (radio) {
        focused = new QRadioButton(u"Untimed"_s, &window);
        other = new QRadioButton(u"Timed"_s, &window);
    } else {
        focused = new QPushButton(u"Progress"_s, &window);
        other = new QPushButton(u"Settings"_s, &window);
    }
    inWindow->addWidget(focused);
    inWindow->addWidget(other);
    focused->setFocus();
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(focused->hasFocus());

    const QColor accent = platform::theme::accent(palette);
    // Above and below the text at least.
    const int enough = 2 * focused->fontMetrics().horizontalAdvance(focused->text());
    QVERIFY(drawing::pixels(*focused, accent) >= enough);
    QCOMPARE(drawing::pixels(*other, accent), 0);

    other->setFocus();
    QCOMPARE(drawing::pixels(*focused, accent), 0);
    QVERIFY(drawing::pixels(*other, accent) > 0);
}

void tst_style::optionIsPressedAnywhereOnItsRow_data() {
    QTest::addColumn<bool>("right");
    QTest::addColumn<bool>("bottom");
    QTest::newRow("top left") << false << false;
    QTest::newRow("top right") << true << false;
    QTest::newRow("bottom left") << false << true;
    QTest::newRow("bottom right") << true << true;
}

void tst_style::optionIsPressedAnywhereOnItsRow() {
    QFETCH(const bool, right);
    QFETCH(const bool, bottom);
    QRadioButton option(u"Timed"_s);
    option.resize(2 * option.sizeHint());
    QTest::mouseClick(&option, Qt::LeftButton, {},
                      QPoint(right ? option.width() - 1 : 0, bottom ? option.height() - 1 : 0));
    QVERIFY(option.isChecked());
}

ZORVAN_TEST_MAIN(tst_style)
#include "tst_style.moc"
