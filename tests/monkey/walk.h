#pragma once

#include <iterator>
#include <optional>

#include <QCryptographicHash>
#include <QPointer>
#include <QRandomGenerator>

#include "monkey/account.h"
#include "monkey/liveprogram.h"

class QAbstractButton;
class QMenu;
class QMessageBox;

/// A learner who takes the given number of steps at random, in one session of the program after
/// another. After each step the walk checks everything that must always hold; if something does
/// not, the process ends with what was found, what was wanted and how to repeat the walk.
class Walk final : public QObject {
    Q_OBJECT

 public:
    Walk(quint32 seed, int steps, bool verbose);

    void run();
    QString summary() const;
    /// A hash of all steps and of what was seen after each.
    QString digest() const;
    const Account &account() const { return account_; }

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    enum class Intent { Wander, Pass, Fail, LetTimePass, CloseAll };

    // The session.
    void runSession();
    void prepareStore();
    void expectEverything();
    bool takeStep(const std::function<void()> &step);
    void windowAppears(platform::Window &window);

    // The steps.
    void act();
    bool pursueIntent();
    void clickAnything();
    void clickAnywhere();
    void typeAnything();
    void useMenu();
    void useOpenMenu(QWidget &menu);
    void leaveBlockingMenu(QMenu &menu);
    void closeOne();
    void activateOne();
    void letSecondsPass(int seconds);
    void changeDesktop();
    void editStore();

    // The alerts.
    void answerAlert(QMessageBox &box);
    void tryInVain(const QMessageBox &box);

    // Mouse, keyboard and windows.
    QList<QWidget *> windows() const;
    QWidget &anyWindow();
    QWidget &activated(QWidget &window);
    void click(QWidget &window, const QPoint &at, bool twice = false);
    void clickControl(QWidget &control);
    void type(QKeyCombination key, bool held = false);
    static void press(QKeyCombination key, const QString &text, bool repetition);
    void activateLikeAWindowManager();
    int below(int limit) { return random_.bounded(limit); }
    bool oneIn(int chances) { return below(chances) == 0; }
    template <class List>
    auto &&pick(List &&list) {
        return *std::next(list.begin(), below(int(list.size())));
    }

    // The checks after each step.
    QString state() const;
    void check();
    void checkStore();
    void checkProgress(const store::Contents &now);
    void checkClocks();
    void checkFocus();
    void checkWindows();
    void checkErrors();
    void say(const QString &words);
    void want(bool holds, const QString &found, const QString &wanted);
    [[noreturn]] void fail(const QString &found, const QString &wanted);

    quint32 seed_;
    int steps_;
    bool verbose_;
    QRandomGenerator random_;
    WrittenErrors errors_;
    std::unique_ptr<LiveProgram> program_;
    Account account_;
    QCryptographicHash digest_{QCryptographicHash::Sha1};

    int step_ = 0;
    QStringList lastSteps_;
    Intent intent_ = Intent::Wander;
    /// The windows in the order of their last use, the latest last.
    QList<QPointer<QWidget>> used_;

    // What happened in this step.
    bool cleared_ = false;
    bool timeWasUp_ = false;
    int resultsOpened_ = 0;

    store::Contents before_;
};
