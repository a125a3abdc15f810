#include <QTest>

#include "controls/levelindicator.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

using Writes = QList<store::Write>;

class tst_progressstore final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void theFirstMainMenuSeedsThenGreetsThenShowsLevels() {
        store::fill({{u"quiz1"_s, u"3"_s}});
        store::Contents storeAtTheGreeting;
        alerts_->answer(u"OK"_s, [&] { storeAtTheGreeting = store::contents(); });
        const auto menu = openMainMenu();
        QCOMPARE(storeAtTheGreeting, store::seeded());
        QCOMPARE(store::writes(), seedWrites_);
        QCOMPARE(desk::control<platform::LevelIndicator>(menu->window(), u"progressbarMain"_s)
                     .doubleValue(),
                 0.0);
    }

    void anyFirstRunValueCountsAsSeeded() {
        for (const QString &value : {u"false"_s, u"true"_s, u"0"_s, u""_s}) {
            store::fill({{u"firstRun"_s, value}});
            openMainMenu();
            QCOMPARE(store::writes(), Writes());
        }
    }

    void clearingWithNoChangesNothing() {
        alerts_->answer(u"No"_s);
        clear();
        QCOMPARE(store::writes(), Writes());
    }

    void clearingWithYesResetsAllButTheTiming() {
        store::fill({{u"currentTest"_s, u"4"_s},
                     {u"currentStatus"_s, u"pass"_s},
                     {u"quiz4"_s, u"x"_s},
                     {u"quiz7"_s, u"3"_s},
                     {u"timedQuizzes"_s, u"yes"_s}});
        store::Contents cleared = store::seeded();
        cleared.insert(u"timedQuizzes"_s, u"yes"_s);
        store::Contents storeAtTheReport;
        alerts_->answer(u"Yes"_s);
        alerts_->answer(u"OK"_s, [&] { storeAtTheReport = store::contents(); });
        clear();
        QCOMPARE(storeAtTheReport, cleared);
        QCOMPARE(store::writes(), seedWrites_);
    }

 private:
    static std::shared_ptr<MainMenu> openMainMenu() {
        auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
        menu->showWindow();
        return menu;
    }

    /// Asks the settings to clear the progress.
    static void clear() {
        const auto settings = platform::makeController<SettingsController>(u"Settings"_s);
        settings->showWindow();
        settings->resetProgress();
    }

    const Writes seedWrites_{{u"currentTest"_s, u"0"_s},   {u"quiz1"_s, u"0"_s},
                             {u"quiz2"_s, u"0"_s},         {u"quiz3"_s, u"0"_s},
                             {u"quiz4"_s, u"0"_s},         {u"quiz5"_s, u"0"_s},
                             {u"quiz6"_s, u"0"_s},         {u"quiz7"_s, u"0"_s},
                             {u"currentStatus"_s, u"0"_s}, {u"firstRun"_s, u"false"_s}};
};

ZORVAN_TEST(tst_progressstore)
#include "tst_progressstore.moc"
