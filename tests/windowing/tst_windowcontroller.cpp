#include <stdexcept>
#include <vector>

#include <QTest>

#include "probe.h"
#include "support/eventloop.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "system/exception.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

class tst_windowcontroller final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        WindowTest::init();
        Probe::provideLayout();
    }

    void windowIsBuiltWhenItIsFirstShown() {
        const auto probe = Probe::make();
        probe->close();
        QVERIFY(probe->window() == nullptr);
        probe->showWindow();
        platform::Window *window = probe->window();
        QVERIFY(window->isVisible());
        QCOMPARE(window->objectName(), u"Probe"_s);
        window->close();
        QVERIFY(!window->isVisible());
        probe->showWindow();
        QVERIFY(window->isVisible());
        QCOMPARE(probe->window(), window);
    }

    void windowIsOnScreenAtLoadOnlyWhereItsLayoutSaysSo() {
        for (const bool visibleAtLoad : {false, true}) {
            Probe::provideLayout([visibleAtLoad](QMainWindow &window) {
                window.setProperty("visibleAtLoad", visibleAtLoad);
            });
            const auto probe = Probe::make();
            std::optional<bool> visible;
            probe->whenLoaded = [&](const Probe &loaded) {
                visible = loaded.window()->isVisible();
            };
            probe->showWindow();
            QCOMPARE(visible, visibleAtLoad);
            QVERIFY(probe->window()->isVisible());
        }
    }

    void failedLoadLeavesNoWindowAndMayBeTriedAgain() {
        Probe::provideLayout(
            [](QMainWindow &window) { window.setProperty("visibleAtLoad", true); });
        const auto probe = Probe::make();
        probe->whenLoaded = [](Probe &) { throw std::runtime_error("not now"); };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, probe->showWindow());
        QVERIFY(probe->window() == nullptr);
        QVERIFY(desk::windows(u"Probe"_s).isEmpty());
        QCOMPARE(probe.use_count(), 1);
        QCOMPARE(probe->asked, 0);

        probe->whenLoaded = {};
        probe->showWindow();
        QVERIFY(probe->window()->isVisible());
    }

    void controllersCloseDoesNotAsk() {
        const auto probe = Probe::open();
        probe->agrees = false;
        probe->close();
        QCOMPARE(probe->asked, 0);
        QVERIFY(!probe->window()->isVisible());
        // When the user closes the window next, it asks again.
        probe->showWindow();
        QVERIFY(!probe->window()->close());
        QCOMPARE(probe->asked, 1);
    }

    void escapeAsksOnlyWhereTheLayoutSaysSo() {
        for (const bool escapeCloses : {false, true}) {
            Probe::provideLayout([escapeCloses](QMainWindow &window) {
                window.setProperty("escapeCloses", escapeCloses);
            });
            const auto probe = Probe::open();
            probe->agrees = false;
            QVERIFY(QTest::qWaitForWindowActive(probe->window()));
            QTest::keyClick(probe->window()->windowHandle(), Qt::Key_Escape);
            QCOMPARE(probe->asked, escapeCloses ? 1 : 0);
            QVERIFY(probe->window()->isVisible());
            probe->agrees = true;
            QTest::keyClick(probe->window()->windowHandle(), Qt::Key_Escape);
            QCOMPARE(probe->window()->isVisible(), !escapeCloses);
        }
    }

    void controllerLivesWhileItIsHeldOrOnScreen() {
        auto held = Probe::open();
        const QPointer<Probe> probe = held.get();
        const QPointer<platform::Window> window = probe->window();
        held->close();
        desk::freeUnused();
        QVERIFY(probe);
        held->showWindow();
        held.reset();
        desk::freeUnused();
        QVERIFY(probe && window);
        window->close();
        desk::freeUnused();
        QVERIFY(!probe);
        QVERIFY(!window);

        const QPointer<Probe> neverShown = Probe::make().get();
        desk::freeUnused();
        QVERIFY(!neverShown);
    }

    void methodGoesOnAfterItClosedItsWindow() {
        bool survived = false;
        const QPointer<Probe> probe = Probe::open().get();
        probe->whenActing = [&](Probe &self) {
            self.close();
            survived = !probe.isNull();
        };
        const platform::Window *window = probe->window();
        QCOMPARE(eventloop::run([window] { desk::click(window, u"btnAct"_s); }),
                 eventloop::StillRunning);
        QVERIFY(survived);
        QVERIFY(!probe);
    }

    void exceptionOfAnActionIsLoggedInOneLine() {
        const std::vector<std::pair<QString, void (*)(Probe &)>> faults{
            {u"of the platform"_s,
             [](Probe &) { throw platform::Exception(u"of the platform"_s); }},
            {u"two lines"_s, [](Probe &) { throw std::runtime_error("two\nlines"); }},
            {u"exception of an unknown class"_s, [](Probe &) { throw 7; }},
        };
        const auto probe = Probe::open();
        for (const auto &[message, fault] : faults) {
            probe->whenActing = fault;
            StandardError standardError;
            desk::click(probe->window(), u"btnAct"_s);
            const QStringList lines = standardError.lines();
            QVERIFY2(lines.size() == 1 && lines.first().contains(message),
                     qPrintable(lines.join(u'\n')));
        }
        QVERIFY(probe->window()->isVisible());
    }

    void exceptionOfTheCloseGuardKeepsTheWindow() {
        const auto probe = Probe::open();
        probe->whenAsked = [] { throw std::runtime_error("guard"); };
        StandardError standardError;
        QVERIFY(!probe->window()->close());
        QCOMPARE(standardError.lines().filter(u"guard"_s).size(), 1);
        probe->whenAsked = {};
    }

    void unknownNamesRaiseAndTellWhichThereAre() {
        QCOMPARE(messageOf([] { platform::makeController<Probe>(u"Prob"_s); }),
                 u"No layout \"Prob\"; there are: Help, MainLayout, MainMenu, MainTest, Probe, "
                 "QuizComplete, Settings, progress"_s);
        QCOMPARE(messageOf([] { platform::openWindow(u"Nowhere"_s); }),
                 u"No controller \"Nowhere\"; there are: MainMenu"_s);
    }
};

ZORVAN_TEST(tst_windowcontroller)
#include "tst_windowcontroller.moc"
