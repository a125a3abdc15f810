#include <QAccessible>
#include <QTest>

#include "platform/layouts.h"
#include "platform/levelindicator.h"
#include "platform/windowcontroller.h"
#include "shell/mainmenu.h"
#include "support/desk.h"
#include "support/store.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::LevelIndicator;

class tst_levelindicator final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup();

    void nameSaysTheValueInWords();
    void nameFollowsTheMaximum();
    void valueInWordsFollowsTheValue();
    void mainMenuSaysEveryLevelInWords();
    void filledSegmentsAreToldApart_data();
    void filledSegmentsAreToldApart();
};

void tst_levelindicator::cleanup() {
    desk::clear();
}

void tst_levelindicator::nameSaysTheValueInWords() {
    LevelIndicator indicator;
    indicator.setCaption(u"Variables"_s);
    indicator.setCounted(u"passes"_s);
    indicator.setMaxValue(3);
    const auto name = [&] {
        return QAccessible::queryAccessibleInterface(&indicator)->text(QAccessible::Name);
    };
    QCOMPARE(name(), u"Variables, 0 of 3 passes"_s);
    indicator.setDoubleValue(2);
    QCOMPARE(name(), u"Variables, 2 of 3 passes"_s);
    QCOMPARE(indicator.doubleValue(), 2.0);
}

void tst_levelindicator::nameFollowsTheMaximum() {
    LevelIndicator indicator;
    indicator.setCaption(u"Progress"_s);
    indicator.setCounted(u"questions"_s);
    indicator.setDoubleValue(0);
    indicator.setMaxValue(14);
    QCOMPARE(indicator.accessibleName(), u"Progress, 0 of 14 questions"_s);
    QCOMPARE(indicator.maxValue(), 14.0);
    indicator.setMaxValue(0);
    QCOMPARE(indicator.maxValue(), 0.0);
}

void tst_levelindicator::valueInWordsFollowsTheValue() {
    LevelIndicator indicator;
    indicator.setCaption(u"Progress"_s);
    indicator.setCounted(u"questions"_s);
    indicator.setMaxValue(14);
    QCOMPARE(indicator.valueInWords(), u"0 of 14 questions"_s);
    QStringList told;
    connect(&indicator, &LevelIndicator::valueInWordsChanged, this,
            [&](const QString &words) { told << words; });
    indicator.setDoubleValue(3);
    QCOMPARE(indicator.valueInWords(), u"3 of 14 questions"_s);
    indicator.setMaxValue(19);
    QCOMPARE(indicator.valueInWords(), u"3 of 19 questions"_s);
    QCOMPARE(told, QStringList({u"3 of 14 questions"_s, u"3 of 19 questions"_s}));
}

void tst_levelindicator::mainMenuSaysEveryLevelInWords() {
    store::fill({{u"firstRun"_s, u"false"_s}, {u"quiz2"_s, u"2"_s}, {u"quiz7"_s, u"3"_s}});
    const auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
    menu->showWindow();
    const auto name = [&](const QString &outlet) {
        return desk::control(menu->window(), outlet).accessibleName();
    };
    QCOMPARE(name(u"progressbarQuiz1"_s), u"Terminology, 0 of 3 passes"_s);
    QCOMPARE(name(u"progressbarQuiz2"_s), u"Variables, 2 of 3 passes"_s);
    QCOMPARE(name(u"progressbarQuiz7"_s), u"Main Test, 3 of 3 passes"_s);
    QVERIFY2(name(u"progressbarMain"_s).endsWith(u"5 of 21 passes"),
             qUtf8Printable(name(u"progressbarMain"_s)));
    const auto description = [&](const QString &button) {
        return desk::control(menu->window(), button).accessibleDescription();
    };
    QCOMPARE(description(u"btnQuiz1"_s), u"0 of 3 passes"_s);
    QCOMPARE(description(u"btnQuiz2"_s), u"2 of 3 passes"_s);
    QCOMPARE(description(u"btnQuiz7"_s), u"3 of 3 passes"_s);
}

void tst_levelindicator::filledSegmentsAreToldApart_data() {
    QTest::addColumn<int>("value");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("two") << 2;
    QTest::newRow("all") << 3;
}

void tst_levelindicator::filledSegmentsAreToldApart() {
    QFETCH(const int, value);
    LevelIndicator indicator;
    indicator.setMaxValue(3);
    indicator.resize(300, 20);
    const auto segments = [&] {
        const QImage picture = indicator.grab().toImage();
        return QList<QRgb>{picture.pixel(50, 10), picture.pixel(150, 10), picture.pixel(250, 10)};
    };
    const QRgb missing = segments().first();
    indicator.setDoubleValue(3);
    const QRgb filled = segments().last();
    QVERIFY(filled != missing);
    indicator.setDoubleValue(value);
    QList<QRgb> expected(3, missing);
    std::fill_n(expected.begin(), value, filled);
    QCOMPARE(segments(), expected);
}

ZORVAN_TEST_MAIN(tst_levelindicator)
#include "tst_levelindicator.moc"
