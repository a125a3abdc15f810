#pragma once

#include <memory>

#include "windowing/outlets.h"
#include "windowing/windowcontroller.h"

class MainTest;
class progress;
class SettingsController;

/// The main menu window: the seven quizzes with their levels, and the way to every other window.
class MainMenu final : public platform::WindowController {
    Q_OBJECT

 public:
    explicit MainMenu(const QString &layoutName);
    ~MainMenu() override;

    platform::LevelOutlet progressbarQuiz1{*this, "progressbarQuiz1"};
    platform::LevelOutlet progressbarQuiz2{*this, "progressbarQuiz2"};
    platform::LevelOutlet progressbarQuiz3{*this, "progressbarQuiz3"};
    platform::LevelOutlet progressbarQuiz4{*this, "progressbarQuiz4"};
    platform::LevelOutlet progressbarQuiz5{*this, "progressbarQuiz5"};
    platform::LevelOutlet progressbarQuiz6{*this, "progressbarQuiz6"};
    platform::LevelOutlet progressbarQuiz7{*this, "progressbarQuiz7"};
    platform::LevelOutlet progressbarMain{*this, "progressbarMain"};
    std::shared_ptr<MainTest> theTestScreen;
    std::shared_ptr<SettingsController> settingsController;
    std::shared_ptr<progress> progressController;

    Q_INVOKABLE void showPreferences();
    Q_INVOKABLE void showProgress();
    Q_INVOKABLE void goTest1() { AssignTest(1); }
    Q_INVOKABLE void goTest2() { AssignTest(2); }
    Q_INVOKABLE void goTest3() { AssignTest(3); }
    Q_INVOKABLE void goTest4() { AssignTest(4); }
    Q_INVOKABLE void goTest5() { AssignTest(5); }
    Q_INVOKABLE void goTest6() { AssignTest(6); }
    Q_INVOKABLE void goTest7() { AssignTest(7); }
    Q_INVOKABLE void refreshProgress() { SetProgressBars(); }

    /// Seeds the store and greets the learner if the store has not been seeded yet.
    void FirstRunCheck();
    void SetProgressBars();
    /// Starts the quiz of that number; this window stays open behind it.
    void AssignTest(int quizNumber);

 protected:
    void windowDidLoad() override;
};
