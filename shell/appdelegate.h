#pragma once

#include <memory>

#include <QObject>

class Help;
class MainMenu;
class MainTest;
class progress;
class SettingsController;

/// Does what the menu bar's items ask for, and opens the first window.
class AppDelegate final : public QObject {
    Q_OBJECT

 public:
    AppDelegate();
    ~AppDelegate() override;

    std::shared_ptr<MainMenu> theMainMenu;
    std::shared_ptr<SettingsController> theSettings;
    /// Never set: the progress window opens only from the main menu.
    std::shared_ptr<progress> theProgress;
    std::shared_ptr<MainTest> theMainTest;
    std::shared_ptr<Help> theHelp;

    void applicationDidFinishLaunching();

    Q_INVOKABLE void GoMainMenu() { ShowMainMenu(); }
    Q_INVOKABLE void goPreferences();
    Q_INVOKABLE void GoTest1() { AssignTest(1); }
    Q_INVOKABLE void GoTest2() { AssignTest(2); }
    Q_INVOKABLE void GoTest3() { AssignTest(3); }
    Q_INVOKABLE void GoTest4() { AssignTest(4); }
    Q_INVOKABLE void GoTest5() { AssignTest(5); }
    Q_INVOKABLE void GoTest6() { AssignTest(6); }
    Q_INVOKABLE void GoTest7() { AssignTest(7); }
    Q_INVOKABLE void ShowHelp();

    void ShowMainMenu();
    void ShowMainTest();
    /// Starts the quiz of that number.
    void AssignTest(int quizNumber);
};
