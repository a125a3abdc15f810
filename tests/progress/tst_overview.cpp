#include <QTest>

#include "controls/levelindicator.h"
#include "progress/progress.h"
#include "shell/mainmenu.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

class tst_overview final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void levelsAndPercentagesFollowTheCounts() {
        store::fill({{u"firstRun"_s, u"false"_s},
                     {u"quiz1"_s, u"1"_s},
                     {u"quiz2"_s, u"2"_s},
                     {u"quiz3"_s, u"3"_s},
                     // No counts, and quiz 6 has none.
                     {u"quiz4"_s, u"4"_s},
                     {u"quiz5"_s, u"one"_s},
                     {u"quiz7"_s, u"3"_s}});
        const auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
        menu->showWindow();
        const QList<double> levels{1, 2, 3, 0, 0, 0, 3};
        for (int quiz = 1; quiz <= 7; ++quiz) {
            QCOMPARE(level(*menu, u"progressbarQuiz%1"_s.arg(quiz)), levels.at(quiz - 1));
        }
        QCOMPARE(level(*menu, u"progressbarMain"_s), 9.0);

        const auto overview = platform::makeController<progress>(u"progress"_s);
        overview->showWindow();
        const QStringList percentages{u"33%"_s, u"67%"_s, u"100%"_s, u"0%"_s, u"0%"_s, u"0%"_s};
        for (int quiz = 1; quiz <= 6; ++quiz) {
            QCOMPARE(desk::text(overview->window(), u"lblQuiz%1Progress"_s.arg(quiz)),
                     percentages.at(quiz - 1));
            QCOMPARE(level(*overview, u"progressbarQuiz%1"_s.arg(quiz)), levels.at(quiz - 1));
        }
    }

    void percentagesAreReadOutAsTheirWindowOpens() {
        store::set(u"quiz1"_s, u"1"_s);
        const auto overview = platform::makeController<progress>(u"progress"_s);
        overview->showWindow();
        overview->window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(overview->window()));
        const auto &panel = desk::control(overview->window(), u"passes"_s);
        QVERIFY(panel.hasFocus());
        QCOMPARE(panel.accessibleName(),
                 u"Terminology: 33%. Variables: 0%. Methods: 0%. Functions: 0%. Structure: 0%. "
                 "Syntax: 0%");
    }

 private:
    static double level(const platform::WindowController &controller, const QString &name) {
        return desk::control<platform::LevelIndicator>(controller.window(), name).doubleValue();
    }
};

ZORVAN_TEST(tst_overview)
#include "tst_overview.moc"
