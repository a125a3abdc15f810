#include <QTest>

#include "controls/levelindicator.h"
#include "controls/textlabel.h"
#include "resources/resources.h"
#include "shell/mainmenu.h"
#include "support/learner.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/layouts.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

class tst_overview final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() {
        menu_.reset();
        WindowTest::cleanup();
    }

    void levelsAreReadAfterTheSeeding() {
        store::fill({{u"quiz1"_s, u"3"_s}});
        alerts_->answer(u"OK"_s);
        openBoth();
        QCOMPARE(levels(menu_->window()), QList<double>({0, 0, 0, 0, 0, 0, 0, 0}));
    }

    void levelsAndPercentagesFollowTheCounts() {
        store::set(u"quiz1"_s, u"1"_s);
        store::set(u"quiz2"_s, u"2"_s);
        store::set(u"quiz7"_s, u"3"_s);
        openBoth();
        QCOMPARE(levels(menu_->window()), QList<double>({1, 2, 0, 0, 0, 0, 3, 6}));
        QCOMPARE(percentages(desk::window(u"progress"_s)),
                 QStringList({u"33%"_s, u"67%"_s, u"0%"_s, u"0%"_s, u"0%"_s, u"0%"_s}));
    }

    void allMasteredFillsEveryIndicator() {
        store::fill({{u"firstRun"_s, u"false"_s},
                     {u"quiz1"_s, u"3"_s},
                     {u"quiz2"_s, u"3"_s},
                     {u"quiz3"_s, u"3"_s},
                     {u"quiz4"_s, u"3"_s},
                     {u"quiz5"_s, u"3"_s},
                     {u"quiz6"_s, u"3"_s},
                     {u"quiz7"_s, u"3"_s}});
        openBoth();
        QCOMPARE(levels(menu_->window()), QList<double>({3, 3, 3, 3, 3, 3, 3, 21}));
        QCOMPARE(percentages(desk::window(u"progress"_s)),
                 QStringList({u"100%"_s, u"100%"_s, u"100%"_s, u"100%"_s, u"100%"_s, u"100%"_s}));
    }

    void strangeCountIsLevelZero_data() {
        QTest::addColumn<QString>("count");
        QTest::newRow("beyond three") << u"4"_s;
        QTest::newRow("absent") << QString();
    }

    void strangeCountIsLevelZero() {
        QFETCH(const QString, count);
        store::Contents all = store::seeded();
        all.insert({{u"quiz2"_s, u"1"_s}, {u"quiz3"_s, count}});
        if (count.isNull()) {
            all.remove(u"quiz3"_s);
        }
        store::fill(all);
        const StandardError standardError;
        openBoth();
        QCOMPARE(levels(menu_->window()), QList<double>({0, 1, 0, 0, 0, 0, 0, 1}));
        QCOMPARE(percentages(desk::window(u"progress"_s)),
                 QStringList({u"0%"_s, u"33%"_s, u"0%"_s, u"0%"_s, u"0%"_s, u"0%"_s}));
    }

    void progressWindowOpensWithItsPercentagesReadOut() {
        store::set(u"quiz1"_s, u"1"_s);
        store::set(u"quiz2"_s, u"2"_s);
        openBoth();
        platform::Window *window = desk::window(u"progress"_s);
        auto &panel = desk::control(window, u"passes"_s);
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QVERIFY(panel.hasFocus());
        QCOMPARE(panel.accessibleName(),
                 u"Terminology: 33%. Variables: 67%. Methods: 0%. Functions: 0%. Structure: 0%. "
                 "Syntax: 0%"_s);
    }

    void progressWindowSaysNothingOfQuiz7() {
        store::set(u"quiz7"_s, u"3"_s);
        openBoth();
        int percentTexts = 0;
        for (const QLabel *label : desk::window(u"progress"_s)->findChildren<QLabel *>()) {
            QVERIFY2(!label->objectName().contains(u"Quiz7"), qUtf8Printable(label->objectName()));
            if (label->text().endsWith(u'%')) {
                QCOMPARE(label->text(), u"0%"_s);
                ++percentTexts;
            }
        }
        QCOMPARE(percentTexts, 6);
    }

    void refreshFillsTheOpenMainMenuAgain() {
        openBoth();
        store::set(u"quiz1"_s, u"2"_s);
        store::set(u"quiz7"_s, u"1"_s);
        QCOMPARE(levels(menu_->window()), QList<double>({0, 0, 0, 0, 0, 0, 0, 0}));
        learner::press(menu_->window(), u"refreshProgress"_s);
        QCOMPARE(levels(menu_->window()), QList<double>({2, 0, 0, 0, 0, 0, 1, 3}));
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void absentOutletIsPassedOver() {
        static platform::LayoutBuilder whole = nullptr;
        whole = platform::layoutNamed(u"MainMenu"_s);
        platform::layouts()[u"MainMenu"_s] = [](QMainWindow &window) {
            whole(window);
            desk::control(&window, u"progressbarQuiz2"_s).setObjectName(u"renamed"_s);
        };
        store::fill({{u"firstRun"_s, u"false"_s},
                     {u"quiz1"_s, u"1"_s},
                     {u"quiz2"_s, u"2"_s},
                     {u"quiz3"_s, u"3"_s}});
        const StandardError standardError;
        openBoth();
        const auto level = [this](const QString &name) {
            return desk::control<platform::LevelIndicator>(menu_->window(), name).doubleValue();
        };
        QCOMPARE(level(u"progressbarQuiz1"_s), 1.0);
        QCOMPARE(level(u"renamed"_s), 0.0);
        QCOMPARE(level(u"progressbarQuiz3"_s), 3.0);
        QCOMPARE(level(u"progressbarMain"_s), 6.0);
    }

 private:
    void openBoth() {
        menu_ = platform::makeController<MainMenu>(u"MainMenu"_s);
        menu_->showWindow();
        learner::press(menu_->window(), u"showProgress"_s);
    }

    /// The main menu's indicators, quiz 1 to 7 and then the overall one.
    static QList<double> levels(const platform::Window *menu) {
        QList<double> levels;
        for (const QString &name :
             {u"progressbarQuiz1"_s, u"progressbarQuiz2"_s, u"progressbarQuiz3"_s,
              u"progressbarQuiz4"_s, u"progressbarQuiz5"_s, u"progressbarQuiz6"_s,
              u"progressbarQuiz7"_s, u"progressbarMain"_s}) {
            levels << desk::control<platform::LevelIndicator>(menu, name).doubleValue();
        }
        return levels;
    }

    static QStringList percentages(const platform::Window *window) {
        QStringList texts;
        for (const QString &name :
             {u"lblQuiz1Progress"_s, u"lblQuiz2Progress"_s, u"lblQuiz3Progress"_s,
              u"lblQuiz4Progress"_s, u"lblQuiz5Progress"_s, u"lblQuiz6Progress"_s}) {
            texts << desk::text(window, name);
        }
        return texts;
    }

    std::shared_ptr<MainMenu> menu_;
};

ZORVAN_TEST(tst_overview)
#include "tst_overview.moc"
