#include <array>

#include <QHBoxLayout>
#include <QPushButton>
#include <QTest>

#include "controls/actionrow.h"
#include "controls/levelindicator.h"
#include "controls/rowbutton.h"
#include "controls/steplist.h"
#include "controls/textlabel.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::RowState;

namespace {

/// A row of the list: its button, what the button starts, its state in words, its level.
struct Step {
    platform::ActionRow row;
    platform::RowButton button{u"step"_s, &row};
    platform::TextLabel text{&row};
    platform::TextLabel words{&row};
    platform::LevelIndicator level{&row};

    explicit Step(QWidget &list) : row(&list) {
        auto *inRow = new QHBoxLayout(&row);
        for (QWidget *part : std::array<QWidget *, 4>{&button, &text, &words, &level}) {
            inRow->addWidget(part);
        }
        level.setCounted(u"passes"_s);
        level.setMaximum(3);
    }
};

/// A window with a list of three steps and another control.
struct Steps {
    QWidget window;
    platform::StepList list{&window};
    std::array<Step, 3> steps{Step(list), Step(list), Step(list)};
    QPushButton another{u"another"_s, &window};

    explicit Steps(const QList<double> &levels) {
        auto *inList = new QVBoxLayout(&list);
        for (Step &step : steps) {
            inList->addWidget(&step.row);
        }
        auto *inWindow = new QVBoxLayout(&window);
        inWindow->addWidget(&list);
        inWindow->addWidget(&another);
        list.setProperty("next", u"Next"_s);
        list.setProperty("done", u"Mastered"_s);
        fill(levels);
    }

    void fill(const QList<double> &levels) {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            steps.at(i).level.setDoubleValue(levels.at(qsizetype(i)));
        }
    }
    bool show() {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
    QList<RowState> states() const {
        QList<RowState> states;
        for (const Step &step : steps) {
            states << step.row.state();
        }
        return states;
    }
    QStringList words() const {
        QStringList words;
        for (const Step &step : steps) {
            words << step.words.text();
        }
        return words;
    }
    QStringList descriptions() const {
        QCoreApplication::processEvents();
        QStringList descriptions;
        for (const Step &step : steps) {
            descriptions << step.button.accessibleDescription();
        }
        return descriptions;
    }
    /// The number of the step that has the focus; 0 if the focus is elsewhere.
    int focused() const {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            if (window.focusWidget() == &steps.at(i).button) {
                return int(i) + 1;
            }
        }
        return 0;
    }
};

}  // namespace

class tst_steplist final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void firstStepThatIsNotFullComesNext_data() {
        QTest::addColumn<QList<double>>("levels");
        QTest::addColumn<QList<RowState>>("states");
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QStringList>("descriptions");
        constexpr auto open = RowState::Open;
        constexpr auto next = RowState::Next;
        constexpr auto done = RowState::Done;
        QTest::newRow("none begun")
            << QList<double>{0, 0, 0} << QList{next, open, open} << QStringList{u"Next"_s, {}, {}}
            << QStringList{u"0 of 3 passes, next"_s, u"0 of 3 passes"_s, u"0 of 3 passes"_s};
        QTest::newRow("first almost full")
            << QList<double>{2, 0, 0} << QList{next, open, open} << QStringList{u"Next"_s, {}, {}}
            << QStringList{u"2 of 3 passes, next"_s, u"0 of 3 passes"_s, u"0 of 3 passes"_s};
        QTest::newRow("first full") << QList<double>{3, 1, 2} << QList{done, next, open}
                                    << QStringList{u"Mastered"_s, u"Next"_s, {}}
                                    << QStringList{u"3 of 3 passes, mastered"_s,
                                                   u"1 of 3 passes, next"_s, u"2 of 3 passes"_s};
        QTest::newRow("full out of turn")
            << QList<double>{1, 3, 0} << QList{next, done, open}
            << QStringList{u"Next"_s, u"Mastered"_s, {}}
            << QStringList{u"1 of 3 passes, next"_s, u"3 of 3 passes, mastered"_s,
                           u"0 of 3 passes"_s};
        QTest::newRow("only the last left")
            << QList<double>{3, 3, 0} << QList{done, done, next}
            << QStringList{u"Mastered"_s, u"Mastered"_s, u"Next"_s}
            << QStringList{u"3 of 3 passes, mastered"_s, u"3 of 3 passes, mastered"_s,
                           u"0 of 3 passes, next"_s};
        QTest::newRow("all full") << QList<double>{3, 3, 3} << QList{done, done, done}
                                  << QStringList(3, u"Mastered"_s)
                                  << QStringList(3, u"3 of 3 passes, mastered"_s);
    }

    void firstStepThatIsNotFullComesNext() {
        QFETCH(const QList<double>, levels);
        QFETCH(const QList<RowState>, states);
        QFETCH(const QStringList, words);
        QFETCH(const QStringList, descriptions);
        Steps steps(levels);
        QVERIFY(steps.show());
        QCOMPARE(steps.states(), states);
        QCOMPARE(steps.words(), words);
        QCOMPARE(steps.descriptions(), descriptions);
    }

    void stepsFollowTheirLevels() {
        Steps steps({0, 0, 0});
        QVERIFY(steps.show());
        steps.fill({3, 1, 3});
        QCOMPARE(steps.states(), QList({RowState::Done, RowState::Next, RowState::Done}));
        QCOMPARE(steps.words(), QStringList({u"Mastered"_s, u"Next"_s, u"Mastered"_s}));
        steps.fill({0, 0, 0});
        QCOMPARE(steps.states(), QList({RowState::Next, RowState::Open, RowState::Open}));
        QCOMPARE(steps.words(), QStringList({u"Next"_s, {}, {}}));
        QCOMPARE(steps.descriptions(),
                 QStringList({u"0 of 3 passes, next"_s, u"0 of 3 passes"_s, u"0 of 3 passes"_s}));
    }

    void stepsFollowTheirMaximum() {
        Steps steps({3, 0, 0});
        QVERIFY(steps.show());
        QCOMPARE(steps.steps[0].row.state(), RowState::Done);
        steps.steps[0].level.setMaximum(4);
        QCOMPARE(steps.states(), QList({RowState::Next, RowState::Open, RowState::Open}));
    }

    void whatComesNextHasTheFocus_data() {
        QTest::addColumn<QList<double>>("levels");
        QTest::addColumn<int>("focused");
        QTest::newRow("the first") << QList<double>{0, 0, 0} << 1;
        QTest::newRow("the second") << QList<double>{3, 2, 0} << 2;
        QTest::newRow("the last") << QList<double>{3, 3, 0} << 3;
    }

    void whatComesNextHasTheFocus() {
        QFETCH(const QList<double>, levels);
        Steps steps(levels);
        QVERIFY(steps.show());
        QTEST(steps.focused(), "focused");
    }

    void focusFollowsWhatComesNext() {
        Steps steps({0, 0, 0});
        QVERIFY(steps.show());
        steps.fill({3, 0, 0});
        QCOMPARE(steps.focused(), 2);
        steps.fill({3, 3, 0});
        QCOMPARE(steps.focused(), 3);
        steps.fill({0, 0, 0});
        QCOMPARE(steps.focused(), 1);
    }

    void focusStaysWhereTheLearnerPutIt_data() {
        QTest::addColumn<int>("step");
        QTest::newRow("another control") << 0;
        QTest::newRow("a step that was next") << 1;
        QTest::newRow("a step that comes later") << 3;
    }

    void focusStaysWhereTheLearnerPutIt() {
        QFETCH(const int, step);
        Steps steps({2, 0, 0});
        QVERIFY(steps.show());
        steps.fill({3, 0, 0});
        QWidget &chosen = step == 0 ? static_cast<QWidget &>(steps.another)
                                    : steps.steps.at(std::size_t(step - 1)).button;
        chosen.setFocus();
        steps.fill({3, 1, 0});
        QCOMPARE(steps.window.focusWidget(), &chosen);
        steps.fill({0, 0, 0});
        QCOMPARE(steps.window.focusWidget(), &chosen);
    }

    void sameLevelsMoveNoFocus() {
        Steps steps({3, 1, 0});
        QVERIFY(steps.show());
        steps.another.setFocus();
        steps.fill({3, 1, 0});
        QCOMPARE(steps.window.focusWidget(), &steps.another);
    }

    void focusStaysWhenAllIsDone() {
        Steps steps({3, 3, 2});
        QVERIFY(steps.show());
        steps.fill({3, 3, 3});
        QCOMPARE(steps.focused(), 3);
    }
};

ZORVAN_TEST(tst_steplist)
#include "tst_steplist.moc"
