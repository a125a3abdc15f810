#include <QMainWindow>
#include <QTest>

#include "controls/actionrow.h"
#include "controls/levelindicator.h"
#include "controls/textlabel.h"
#include "support/desk.h"
#include "support/testmain.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

using platform::RowState;

namespace {

/// The main menu's seven steps, each with three levels, and its other controls. Levels are written
/// as a digit for each step.
struct Steps {
    QMainWindow window;

    explicit Steps(const QString &levels) {
        platform::layoutNamed(u"MainMenu"_s)(window);
        fill(levels);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("The window of the steps is not active");
        }
    }

    void fill(const QString &levels) {
        for (int step = 1; step <= 7; ++step) {
            level(step).setDoubleValue(levels[step - 1].digitValue());
        }
        QCoreApplication::processEvents();
    }

    platform::LevelIndicator &level(int step) const {
        return desk::control<platform::LevelIndicator>(&window, u"progressbarQuiz%1"_s.arg(step));
    }
    QWidget &button(int step) const { return desk::control(&window, u"btnQuiz%1"_s.arg(step)); }
    bool hasFocus(int step) const { return window.focusWidget() == &button(step); }

    QString states() const {
        QStringList states;
        for (const auto *row : window.findChildren<platform::ActionRow *>()) {
            states << (row->state() == RowState::Next   ? u"next"_s
                       : row->state() == RowState::Done ? u"done"_s
                                                        : u"open"_s);
        }
        return states.join(u' ');
    }
};

}  // namespace

class tst_steplist final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void firstStepThatIsNotFullComesNext_data() {
        QTest::addColumn<QString>("states");
        QTest::addColumn<int>("next");
        QTest::newRow("0000000") << u"next open open open open open open"_s << 1;
        QTest::newRow("2000000") << u"next open open open open open open"_s << 1;
        QTest::newRow("3120000") << u"done next open open open open open"_s << 2;
        QTest::newRow("1300003") << u"next done open open open open done"_s << 1;
        QTest::newRow("3333330") << u"done done done done done done next"_s << 7;
        QTest::newRow("3333333") << u"done done done done done done done"_s << 0;
    }

    void firstStepThatIsNotFullComesNext() {
        const Steps steps(QString::fromLatin1(QTest::currentDataTag()));
        QTEST(steps.states(), "states");
        QFETCH(const int, next);
        QVERIFY2(next == 0 || steps.hasFocus(next), "what is next has not got the focus");
    }

    void stepsFollowTheirLevels() {
        Steps steps(u"3000000"_s);
        steps.fill(u"3130000"_s);
        QCOMPARE(steps.states(), u"done next done open open open open"_s);
        steps.fill(u"0000000"_s);
        QCOMPARE(steps.states(), u"next open open open open open open"_s);
        steps.fill(u"3000000"_s);
        steps.level(1).setMaximum(4);
        QCOMPARE(steps.states(), u"next open open open open open open"_s);
    }

    void stepSaysInWordsHowItStands() {
        Steps steps(u"0000000"_s);
        steps.fill(u"3100000"_s);
        const auto said = [&](int step) {
            const auto texts = desk::control(&steps.window, u"rowQuiz%1"_s.arg(step))
                                   .findChildren<platform::TextLabel *>();
            return QStringList{steps.level(step).accessibleName(), texts.at(0)->text(),
                               texts.at(1)->text(), steps.button(step).accessibleDescription()};
        };
        QCOMPARE(said(1), QStringList({u"Terminology, 3 of 3 passes"_s, u"14 questions"_s,
                                       u"Mastered"_s, u"3 of 3 passes, mastered"_s}));
        QCOMPARE(said(2), QStringList({u"Variables, 1 of 3 passes"_s, u"19 questions"_s, u"Next"_s,
                                       u"1 of 3 passes, next"_s}));
        QCOMPARE(said(3), QStringList({u"Methods, 0 of 3 passes"_s, u"10 questions"_s, QString(),
                                       u"0 of 3 passes"_s}));
        QCOMPARE(desk::control(&steps.window, u"progressbarMain"_s).accessibleName(),
                 u"All quizzes, 0 of 21 passes"_s);
    }

    void focusFollowsWhatComesNext() {
        Steps steps(u"0000000"_s);
        steps.fill(u"3000000"_s);
        QVERIFY(steps.hasFocus(2));
        steps.fill(u"3333330"_s);
        QVERIFY(steps.hasFocus(7));
        steps.fill(u"3333333"_s);
        QVERIFY(steps.hasFocus(7));
    }

    void focusStaysWhereTheLearnerPutIt() {
        Steps steps(u"2000000"_s);
        for (QWidget *chosen : {&steps.button(1), &steps.button(3),
                                &desk::control(&steps.window, u"btnSettings"_s)}) {
            steps.fill(u"3000000"_s);
            chosen->setFocus();
            steps.fill(u"3100000"_s);
            QCOMPARE(steps.window.focusWidget(), chosen);
            steps.fill(u"0000000"_s);
            QCOMPARE(steps.window.focusWidget(), chosen);
        }
    }
};

ZORVAN_TEST(tst_steplist)
#include "tst_steplist.moc"
