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

constexpr auto Open = RowState::Open;
constexpr auto Next = RowState::Next;
constexpr auto Done = RowState::Done;

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
        text.setStringValue(u"19 questions"_s);
        level.setCounted(u"passes"_s);
        level.setMaximum(3);
    }
};

using Levels = std::array<int, 3>;

/// A window with a list of three steps and another control.
struct Steps {
    QWidget window;
    platform::StepList list{&window};
    std::array<Step, 3> steps{Step(list), Step(list), Step(list)};
    QPushButton another{u"another"_s, &window};

    explicit Steps(const Levels &levels) {
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
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("The window of the steps is not active");
        }
    }

    void fill(const Levels &levels) {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            steps.at(i).level.setDoubleValue(levels.at(i));
        }
        QCoreApplication::processEvents();
    }
    QList<RowState> states() const {
        return {steps[0].row.state(), steps[1].row.state(), steps[2].row.state()};
    }
    bool hasFocus(int step) const {
        return window.focusWidget() == &steps.at(std::size_t(step - 1)).button;
    }
};

}  // namespace

class tst_steplist final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void firstStepThatIsNotFullComesNext_data() {
        QTest::addColumn<Levels>("levels");
        QTest::addColumn<QList<RowState>>("states");
        QTest::newRow("none begun") << Levels{0, 0, 0} << QList{Next, Open, Open};
        QTest::newRow("first almost full") << Levels{2, 0, 0} << QList{Next, Open, Open};
        QTest::newRow("first full") << Levels{3, 1, 2} << QList{Done, Next, Open};
        QTest::newRow("full out of turn") << Levels{1, 3, 0} << QList{Next, Done, Open};
        QTest::newRow("only the last left") << Levels{3, 3, 0} << QList{Done, Done, Next};
        QTest::newRow("all full") << Levels{3, 3, 3} << QList{Done, Done, Done};
    }

    void firstStepThatIsNotFullComesNext() {
        QFETCH(const Levels, levels);
        QFETCH(const QList<RowState>, states);
        const Steps shown(levels);
        QCOMPARE(shown.states(), states);
        const qsizetype next = states.indexOf(Next);
        QVERIFY2(next < 0 || shown.hasFocus(int(next) + 1), "What is next has not got the focus");
    }

    void stepsFollowTheirLevels() {
        Steps shown({3, 0, 0});
        shown.fill({3, 1, 3});
        QCOMPARE(shown.states(), QList({Done, Next, Done}));
        shown.fill({0, 0, 0});
        QCOMPARE(shown.states(), QList({Next, Open, Open}));
        shown.fill({3, 0, 0});
        shown.steps[0].level.setMaximum(4);
        QCOMPARE(shown.states(), QList({Next, Open, Open}));
    }

    void stateIsSaidInWordsWithTheLevel() {
        Steps shown({0, 0, 0});
        shown.fill({3, 1, 0});
        QStringList words;
        QStringList descriptions;
        for (const Step &step : shown.steps) {
            words << step.words.text();
            descriptions << step.button.accessibleDescription();
            QCOMPARE(step.text.text(), u"19 questions"_s);
        }
        QCOMPARE(words, QStringList({u"Mastered"_s, u"Next"_s, QString()}));
        QCOMPARE(descriptions, QStringList({u"3 of 3 passes, mastered"_s, u"1 of 3 passes, next"_s,
                                            u"0 of 3 passes"_s}));
    }

    void focusFollowsWhatComesNext() {
        Steps shown({0, 0, 0});
        shown.fill({3, 0, 0});
        QVERIFY(shown.hasFocus(2));
        shown.fill({3, 3, 0});
        QVERIFY(shown.hasFocus(3));
        shown.fill({3, 3, 3});
        QVERIFY(shown.hasFocus(3));
        shown.fill({3, 3, 2});
        shown.fill({0, 0, 0});
        QVERIFY(shown.hasFocus(1));
    }

    void focusStaysWhereTheLearnerPutIt() {
        Steps shown({2, 0, 0});
        for (QWidget *chosen : std::initializer_list<QWidget *>{
                 &shown.another, &shown.steps[0].button, &shown.steps[2].button}) {
            shown.fill({3, 0, 0});
            chosen->setFocus();
            shown.fill({3, 1, 0});
            QCOMPARE(shown.window.focusWidget(), chosen);
            shown.fill({3, 3, 3});
            QCOMPARE(shown.window.focusWidget(), chosen);
        }
    }
};

ZORVAN_TEST(tst_steplist)
#include "tst_steplist.moc"
