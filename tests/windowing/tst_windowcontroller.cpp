#include <stdexcept>

#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QVBoxLayout>

#include "look/image.h"
#include "resources/resources.h"
#include "shell/controllertable.h"
#include "support/eventloop.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "system/exception.h"
#include "windowing/controllers.h"
#include "windowing/outlets.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

namespace {

// Global, because they are read when the windows are gone.
int built = 0;                  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
bool survivedItsClose = false;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

QPushButton *addButton(QMainWindow &window, const QString &name, const QString &action) {
    auto *button = new QPushButton(name, window.centralWidget());
    button->setObjectName(name);
    button->setProperty("action", action);
    window.centralWidget()->layout()->addWidget(button);
    return button;
}

template <class Control>
Control *addOutlet(QMainWindow &window, const QString &name) {
    auto *control = new Control(window.centralWidget());
    control->setObjectName(name);
    window.centralWidget()->layout()->addWidget(control);
    return control;
}

/// The layout "Probe", with every outlet and action of the class below.
void buildProbe(QMainWindow &window) {
    ++built;
    window.setObjectName(u"Probe"_s);
    auto *content = new QWidget(&window);
    new QVBoxLayout(content);
    window.setCentralWidget(content);
    addOutlet<platform::TextLabel>(window, u"lblText"_s);
    addOutlet<platform::LevelIndicator>(window, u"levelBar"_s);
    addOutlet<platform::ImageLabel>(window, u"imgMark"_s);
    addOutlet<QRadioButton>(window, u"radio"_s);
    addButton(window, u"btnCount"_s, u"count"_s);
    addButton(window, u"btnClose"_s, u"closeAndGoOn"_s);
    addButton(window, u"btnThrow"_s, u"throwUp"_s);
}

}  // namespace

class Probe final : public platform::WindowController {
    Q_OBJECT

 public:
    using WindowController::WindowController;

    platform::TextOutlet lblText{*this, "lblText"};
    platform::LevelOutlet levelBar{*this, "levelBar"};
    platform::ImageOutlet imgMark{*this, "imgMark"};
    platform::RadioOutlet radio{*this, "radio"};
    platform::ButtonOutlet btnCount{*this, "btnCount"};

    int counted = 0;
    int asked = 0;
    bool agrees = true;
    std::function<void()> fault;
    std::function<void(Probe &)> whenLoaded;

    Q_INVOKABLE void count() { ++counted; }
    Q_INVOKABLE void closeAndGoOn() {
        const QPointer<Probe> self = this;
        close();
        survivedItsClose = !self.isNull();
    }
    Q_INVOKABLE void throwUp() { fault(); }

    bool windowShouldClose() override {
        ++asked;
        if (fault) {
            fault();
        }
        return agrees;
    }

 protected:
    void windowDidLoad() override {
        if (whenLoaded) {
            whenLoaded(*this);
        }
    }
};

class tst_windowcontroller final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        WindowTest::init();
        built = 0;
        platform::layouts()[u"Probe"_s] = buildProbe;
    }

    void unknownLayoutRaisesAndNamesThoseThereAre() {
        const QString message = messageOf([] { platform::makeController<Probe>(u"Prob"_s); });
        QCOMPARE(message,
                 u"No layout \"Prob\"; there are: Help, MainLayout, MainMenu, MainTest, Probe, "
                 "QuizComplete, Settings, progress"_s);
    }

    void windowIsBuiltWhenItIsFirstShown() {
        const auto probe = makeProbe();
        QCOMPARE(built, 0);
        QVERIFY(probe->window() == nullptr);
        probe->showWindow();
        QCOMPARE(built, 1);
        platform::Window *window = probe->window();
        QVERIFY(window->isVisible());
        QCOMPARE(window->objectName(), u"Probe"_s);
        probe->showWindow();
        QCOMPARE(built, 1);
        QCOMPARE(probe->window(), window);

        window->close();
        QVERIFY(!window->isVisible());
        probe->showWindow();
        QVERIFY(window->isVisible());
        QCOMPARE(built, 1);
    }

    void outletsAreFilledWhenTheWindowDidLoad() {
        const auto probe = makeProbe();
        probe->whenLoaded = [](Probe &loaded) {
            loaded.lblText.setStringValue(u"filled"_s);
            loaded.levelBar.setMaxValue(4);
            loaded.levelBar.setDoubleValue(2);
            loaded.radio.setState(1);
            loaded.imgMark.setImage(platform::look::imageNamed(u"checkmark.png"_s));
            loaded.btnCount.setEnabled(false);
        };
        probe->showWindow();
        const platform::Window *window = probe->window();
        QCOMPARE(desk::text(window, u"lblText"_s), u"filled"_s);
        const auto &level = desk::control<platform::LevelIndicator>(window, u"levelBar"_s);
        QCOMPARE(level.maximum(), 4.0);
        QCOMPARE(level.doubleValue(), 2.0);
        QVERIFY(desk::control<QRadioButton>(window, u"radio"_s).isChecked());
        QVERIFY(!desk::control<platform::ImageLabel>(window, u"imgMark"_s).image().isNull());
        QVERIFY(!desk::control(window, u"btnCount"_s).isEnabled());
    }

    void windowIsOnScreenAtLoadOnlyWhereItsLayoutSaysSo_data() {
        QTest::addColumn<bool>("visibleAtLoad");
        QTest::newRow("visible at load") << true;
        QTest::newRow("as usual") << false;
    }

    void windowIsOnScreenAtLoadOnlyWhereItsLayoutSaysSo() {
        QFETCH(const bool, visibleAtLoad);
        if (visibleAtLoad) {
            alterLayout([](QMainWindow &window) { window.setProperty("visibleAtLoad", true); });
        }
        const auto probe = makeProbe();
        std::optional<bool> visible;
        probe->whenLoaded = [&](const Probe &loaded) { visible = loaded.window()->isVisible(); };
        probe->showWindow();
        QCOMPARE(visible, visibleAtLoad);
        QVERIFY(probe->window()->isVisible());
    }

    void buttonsAndMenuItemsCallTheirAction() {
        alterLayout([](QMainWindow &window) {
            window.menuBar()
                ->addMenu(u"Menu"_s)
                ->addAction(u"Count"_s)
                ->setProperty("action", u"count"_s);
        });
        const auto probe = openProbe();
        desk::click(probe->window(), u"btnCount"_s);
        QCOMPARE(probe->counted, 1);
        probe->window()->menuBar()->actions().first()->menu()->actions().first()->trigger();
        QCOMPARE(probe->counted, 2);
    }

    void unknownActionRaisesAndIsNamed_data() {
        QTest::addColumn<bool>("menuItem");
        QTest::newRow("of a button") << false;
        QTest::newRow("of a menu item") << true;
    }

    void unknownActionRaisesAndIsNamed() {
        QFETCH(const bool, menuItem);
        alterLayout([menuItem](QMainWindow &window) {
            if (menuItem) {
                QAction *item = window.menuBar()->addMenu(u"Menu"_s)->addAction(u"Wrong"_s);
                item->setObjectName(u"wrong"_s);
                item->setProperty("action", u"noSuchAction"_s);
            } else {
                addButton(window, u"wrong"_s, u"noSuchAction"_s);
            }
        });
        const QString message = messageOf([] { openProbe(); });
        QVERIFY2(message.contains(u"\"noSuchAction\""), qUtf8Printable(message));
        QVERIFY2(message.contains(u"\"wrong\""), qUtf8Printable(message));
        QVERIFY2(message.contains(u"Probe"), qUtf8Printable(message));
        QVERIFY(desk::windows(u"Probe"_s).isEmpty());
    }

    void failedLoadLeavesNoWindowAndMayBeTriedAgain() {
        alterLayout([](QMainWindow &window) { window.setProperty("visibleAtLoad", true); });
        const auto probe = makeProbe();
        probe->whenLoaded = [](Probe &) { throw std::runtime_error("not now"); };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, probe->showWindow());
        QVERIFY(probe->window() == nullptr);
        QVERIFY(desk::windows(u"Probe"_s).isEmpty());
        QCOMPARE(probe->asked, 0);

        probe->whenLoaded = {};
        probe->showWindow();
        QVERIFY(probe->window()->isVisible());
    }

    void missingOutletIsReportedInOneLine() {
        alterLayout([](QMainWindow &window) {
            desk::control(&window, u"lblText"_s).setObjectName(u"lblTxet"_s);
        });
        StandardError standardError;
        openProbe();
        const QStringList lines = standardError.lines();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first(),
                 u"The layout \"Probe\" has no platform::TextLabel named \"lblText\"; there are: "
                 u"lblTxet, "
                 "levelBar, imgMark, radio, btnCount, btnClose, btnThrow"_s);
    }

    void everyUnknownPropertyIsReportedInOneLine() {
        alterLayout([](QMainWindow &window) {
            window.setProperty("escapesClose", true);
            desk::control(&window, u"lblText"_s).setProperty("keepRoom", true);
            desk::control(&window, u"imgMark"_s).setProperty("keepsRoom", true);
        });
        StandardError standardError;
        openProbe();
        const QString line =
            u"The layout \"Probe\" gives \"%1\" the unknown property \"%2\"; there are: action, "
            "shortcuts, escapeCloses, visibleAtLoad, listsWindows, textStyle, spacing, keepsRoom, widest"_s;
        QCOMPARE(standardError.lines(), QStringList({line.arg(u"Probe"_s, u"escapesClose"_s),
                                                     line.arg(u"lblText"_s, u"keepRoom"_s)}));
    }

    void outletOfAnotherClassIsMissing() {
        alterLayout([](QMainWindow &window) {
            desk::control(&window, u"levelBar"_s).setObjectName(QString());
            addButton(window, u"levelBar"_s, u"count"_s);
        });
        StandardError standardError;
        const auto probe = openProbe();
        probe->levelBar.setHidden(true);
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY2(standardError.lines().constFirst().contains(u"platform::LevelIndicator"),
                 qUtf8Printable(standardError.lines().constFirst()));
        QVERIFY(desk::isShown(probe->window(), u"levelBar"_s));
    }

    void writesToAMissingOutletDoNothing() {
        alterLayout([](QMainWindow &window) {
            for (QWidget *widget : window.centralWidget()->findChildren<QWidget *>()) {
                widget->setObjectName(QString());
            }
        });
        StandardError standardError;
        QTest::failOnWarning(QRegularExpression(u"QObject::connect"_s));
        const auto probe = openProbe();
        QCOMPARE(standardError.lines().size(), 5);
        probe->lblText.setStringValue(u"text"_s);
        probe->lblText.setTextColor(Qt::white);
        probe->lblText.setAlphaValue(0.5);
        probe->lblText.setHidden(true);
        probe->levelBar.setDoubleValue(1);
        probe->levelBar.setMaxValue(2);
        probe->radio.setState(1);
        probe->imgMark.setImage(platform::look::imageNamed(u"checkmark.png"_s));
        probe->imgMark.setAccessibleName(u"mark"_s);
        probe->btnCount.setEnabled(false);
        probe->btnCount.setKeyEquivalent(u"\r"_s);
        probe->btnCount.setAccessibleDescription(u"count"_s);
        probe->btnCount.setFocus();
        probe->btnCount.announce(u"count"_s);

        QCOMPARE(probe->lblText.stringValue(), QString());
        QCOMPARE(standardError.lines().size(), 5);
        for (const QWidget *widget : probe->window()->centralWidget()->findChildren<QWidget *>()) {
            QVERIFY(widget->isVisible() && widget->isEnabled());
            QVERIFY(widget->accessibleDescription().isEmpty());
        }
        QVERIFY(!probe->window()->findChild<QRadioButton *>()->isChecked());
    }

    void usersCloseAsksTheController() {
        const auto probe = openProbe();
        probe->agrees = false;
        QVERIFY(!probe->window()->close());
        QCOMPARE(probe->asked, 1);
        QVERIFY(probe->window()->isVisible());
        probe->agrees = true;
        QVERIFY(probe->window()->close());
        QCOMPARE(probe->asked, 2);
        QVERIFY(!probe->window()->isVisible());
    }

    void controllersCloseDoesNotAsk() {
        const auto probe = openProbe();
        probe->agrees = false;
        probe->close();
        QCOMPARE(probe->asked, 0);
        QVERIFY(!probe->window()->isVisible());
        // When the user closes the window next, it asks again.
        probe->showWindow();
        QVERIFY(!probe->window()->close());
        QCOMPARE(probe->asked, 1);
    }

    void quitAsksTheControllerOnce() {
        const auto probe = makeProbe();
        probe->showWindow();
        QCOMPARE(eventloop::run([] { QCoreApplication::quit(); }), 0);
        QCOMPARE(probe->asked, 1);
        QVERIFY(!probe->window()->isVisible());
    }

    void closeBeforeTheFirstShowLoadsNothing() {
        const auto probe = makeProbe();
        probe->close();
        QCOMPARE(built, 0);
        QVERIFY(probe->window() == nullptr);
        QCOMPARE(probe->asked, 0);
    }

    void closedControllerThatNobodyHoldsIsFreed() {
        QPointer<Probe> probe = openProbe().get();
        const QPointer<platform::Window> window = probe->window();
        desk::freeUnused();
        QVERIFY(probe && window);
        window->close();
        desk::freeUnused();
        QVERIFY(!probe);
        QVERIFY(!window);

        probe = openProbe().get();
        probe->close();
        desk::freeUnused();
        QVERIFY(!probe);

        // Nothing keeps a controller that was never shown.
        probe = makeProbe().get();
        desk::freeUnused();
        QVERIFY(!probe);
    }

    void heldControllerOutlivesItsWindow() {
        auto held = openProbe();
        const QPointer<Probe> probe = held.get();
        held->window()->close();
        desk::freeUnused();
        QVERIFY(probe);
        held.reset();
        desk::freeUnused();
        QVERIFY(!probe);
    }

    void replacedControllerLivesUntilItsWindowCloses() {
        auto property = openProbe();
        const QPointer<Probe> first = property.get();
        property = openProbe();
        desk::freeUnused();
        QVERIFY(first);
        desk::click(first->window(), u"btnCount"_s);
        QCOMPARE(first->counted, 1);
        QCOMPARE(property->counted, 0);
        first->window()->close();
        desk::freeUnused();
        QVERIFY(!first);
        QVERIFY(property->window()->isVisible());
    }

    void methodGoesOnAfterItClosedItsWindow() {
        survivedItsClose = false;
        const QPointer<Probe> probe = openProbe().get();
        const platform::Window *window = probe->window();
        QCOMPARE(eventloop::run([window] { desk::click(window, u"btnClose"_s); }),
                 eventloop::StillRunning);
        QVERIFY(survivedItsClose);
        QVERIFY(!probe);
    }

    void exceptionOfAnActionIsLoggedInOneLine_data() {
        QTest::addColumn<QString>("thrown");
        QTest::addColumn<QString>("expected");
        QTest::newRow("the platform's") << u"platform"_s << u"of the platform"_s;
        QTest::newRow("another") << u"standard"_s << u"two lines"_s;
        QTest::newRow("no exception at all") << u"number"_s << u"exception of an unknown class"_s;
    }

    void exceptionOfAnActionIsLoggedInOneLine() {
        QFETCH(const QString, thrown);
        QFETCH(const QString, expected);
        const auto probe = openProbe();
        probe->fault = [&] {
            if (thrown == u"platform") {
                throw platform::Exception(u"of the platform"_s);
            }
            if (thrown == u"standard") {
                throw std::runtime_error("two\nlines");
            }
            throw 7;
        };
        StandardError standardError;
        desk::click(probe->window(), u"btnThrow"_s);
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY2(standardError.lines().constFirst().contains(expected),
                 qUtf8Printable(standardError.lines().constFirst()));

        // The program goes on.
        QVERIFY(probe->window()->isVisible());
        desk::click(probe->window(), u"btnCount"_s);
        QCOMPARE(probe->counted, 1);
        QCOMPARE(standardError.lines().size(), 1);
        probe->fault = {};
    }

    void exceptionOfTheCloseGuardKeepsTheWindow() {
        const auto probe = openProbe();
        probe->fault = [] { throw std::runtime_error("guard"); };
        StandardError standardError;
        QVERIFY(!probe->window()->close());
        QVERIFY(probe->window()->isVisible());
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY(standardError.lines().constFirst().contains(u"guard"));
        probe->fault = {};
    }

    void escapeClosesOnlyWhereTheLayoutSaysSo() {
        const auto stays = openProbe();
        QVERIFY(QTest::qWaitForWindowActive(stays->window()));
        QTest::keyClick(stays->window()->windowHandle(), Qt::Key_Escape);
        QVERIFY(stays->window()->isVisible());

        alterLayout([](QMainWindow &window) { window.setProperty("escapeCloses", true); });
        const auto closes = openProbe();
        QVERIFY(QTest::qWaitForWindowActive(closes->window()));
        QTest::keyClick(closes->window()->windowHandle(), Qt::Key_Escape);
        QVERIFY(!closes->window()->isVisible());
        QVERIFY(stays->window()->isVisible());
    }

    void escapeAsksTheController() {
        alterLayout([](QMainWindow &window) { window.setProperty("escapeCloses", true); });
        const auto probe = openProbe();
        probe->agrees = false;
        QVERIFY(QTest::qWaitForWindowActive(probe->window()));
        QTest::keyClick(probe->window()->windowHandle(), Qt::Key_Escape);
        QCOMPARE(probe->asked, 1);
        QVERIFY(probe->window()->isVisible());
    }

    void returnPressesTheButtonInFocus_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void returnPressesTheButtonInFocus() {
        QFETCH(const Qt::Key, key);
        const auto probe = openProbe();
        QVERIFY(QTest::qWaitForWindowActive(probe->window()));
        probe->btnCount.setFocus();
        QTest::keyClick(probe->window()->windowHandle(), key);
        QCOMPARE(probe->counted, 1);
    }

    void heldReturnPressesNothing() {
        const auto probe = openProbe();
        QVERIFY(QTest::qWaitForWindowActive(probe->window()));
        probe->btnCount.setFocus();
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
        QCoreApplication::sendEvent(probe->window()->windowHandle(), &held);
        QCOMPARE(probe->counted, 0);
    }

    void controllersAreOpenedByName() {
        platform::controllers()[u"Opened"_s] = [] { return makeProbe(); };
        platform::openWindow(u"Opened"_s);
        platform::Window *window = desk::window(u"Probe"_s);
        QVERIFY(window != nullptr);
        const QPointer<platform::Window> kept = window;
        window->close();
        desk::freeUnused();
        QVERIFY(!kept);
        platform::controllers().erase(u"Opened"_s);
    }

    void unknownControllerRaises() {
        const QString message = messageOf([] { platform::openWindow(u"Nowhere"_s); });
        QCOMPARE(message, u"No controller \"Nowhere\"; there are: MainMenu"_s);
    }

 private:
    static std::shared_ptr<Probe> makeProbe() {
        return platform::makeController<Probe>(u"Probe"_s);
    }

    static std::shared_ptr<Probe> openProbe() {
        auto probe = makeProbe();
        probe->showWindow();
        return probe;
    }

    /// Has "Probe" built with that alteration of its window.
    static void alterLayout(std::function<void(QMainWindow &)> alteration) {
        static std::function<void(QMainWindow &)> current;
        current = std::move(alteration);
        platform::layouts()[u"Probe"_s] = [](QMainWindow &window) {
            buildProbe(window);
            current(window);
        };
    }

    /// The message of the exception that `body` throws; empty if it throws none.
    static QString messageOf(const std::function<void()> &body) {
        try {
            body();
        } catch (const platform::Exception &exception) {
            return QString::fromUtf8(exception.what());
        }
        return {};
    }
};

ZORVAN_TEST(tst_windowcontroller)
#include "tst_windowcontroller.moc"
