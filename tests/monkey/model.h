#pragma once

#include <functional>
#include <optional>

#include <QSet>
#include <QStringList>

#include "support/store.h"

/// A second, plain account of what the program does: which windows are open, what each of them
/// shows, what the store holds. It shares no code with the program.
namespace model {

/// What can be seen of a control; a control uses the part that suits its kind.
struct Control {
    bool hidden = false;
    bool enabled = true;
    QString text = {};
    double alpha = 1;
    bool white = false;
    double value = 0;
    int maximum = 0;
    bool on = false;
    QString image = {};
    bool operator==(const Control &) const = default;
};

struct Window {
    /// The layout and how many windows of it were loaded up to this one, such as "MainTest 2".
    QString name = {};
    QString layout = {};
    /// Loaded, but perhaps not on screen yet.
    bool loading = true;
    QMap<QString, Control> controls = {};
};

struct Alert {
    QString message;
    /// The default button first.
    QStringList buttons;
    /// The name of the window that it belongs to.
    QString owner;
};

/// What all quiz windows share.
struct Run {
    QStringList questionOrder = {};
    int questionIndex = 0;
    int questionCount = 0;
    int correctCount = 0;
    int correctAnswerNumber = 0;
    std::optional<QString> currentTestId = {};
    int minutesLeft = 0;
    int secondsLeft = 0;
    float scoreRatio = 0;
    float progressRatio = 0;
};

struct Quiz {
    QString id;
    QString name;
    int first;
    int last;
    int questionCount;
};

/// The quiz of that id, or null.
const Quiz *quizOf(const std::optional<QString> &id);

/// The names of the controls that the program writes to, by layout.
const QMap<QString, QStringList> &outlets();

class Program final {
 public:
    using Layouts = QMap<QString, Window>;
    using Random = std::function<quint32()>;

    /// All that can happen, in words.
    static const QStringList &events();

    /// `layouts` are the windows as nobody has written to them yet.
    Program(Layouts layouts, Random random, store::Contents store);

    // What the learner, the clock and others do.
    void start();
    void pressInMenuBar(const QString &action);
    void press(const QString &window, const QString &action);
    void closeWindow(const QString &window);
    void tick();
    void answer(const QString &button);
    /// Of whatever quiz the store names.
    void openQuiz();
    void editStore(const store::Contents &store) { store_ = store; }

    // What follows from it.
    const store::Contents &store() const { return store_; }
    const Run &run() const { return run_; }
    /// The open windows, in the order in which they were loaded.
    const QList<Window> &windows() const { return windows_; }
    bool isOpen(const QString &window) const;
    int countOpen(const QString &layout) const;
    bool clockRuns() const { return !clockOf_.isEmpty(); }
    /// The alert that waits for its answer.
    const std::optional<Alert> &alert() const { return alert_; }
    bool hasEnded() const { return ended_; }

    /// Which of the events() have happened.
    const QSet<QString> &met() const { return met_; }
    void object(const QString &objection) { objections_ << objection; }

    // What came up since the last call.
    QList<store::Write> takeWrites() { return std::exchange(writes_, {}); }
    QStringList takeLog() { return std::exchange(log_, {}); }
    /// What happened though it cannot happen.
    QStringList takeObjections() { return std::exchange(objections_, {}); }

 private:
    using Then = std::function<void()>;

    Window *find(const QString &name);
    Control &control(const QString &window, const QString &name);
    QString load(const QString &layout);
    void show(const QString &window);
    void close(const QString &window);
    void ask(const Alert &alert, std::function<void(bool byDefault)> then);
    void write(const QString &key, const QString &value);
    void happened(const QString &event) { met_ << event; }

    void openMainMenu(const Then &then = {});
    void seed();
    void fillMainMenu(const QString &menu);
    void openProgress();
    void openSettings();
    void showTimed(const QString &settings, bool timed);
    void startQuiz(const QString &id);
    void resetProgress(const QString &settings);
    void quit(QStringList quizzesToAsk);
    void openResults(const Then &then);
    void fillResults(const QString &results);
    /// Under that quiz's key, from 0 to 3; nothing for anything else.
    std::optional<int> passCount(const QString &id) const;

    // The quiz window.
    void loadCurrentTest(const QString &quiz);
    void shuffleQuestions(const Quiz &quiz);
    void setUpQuestion(const QString &quiz);
    void startClock(const QString &quiz);
    void pressInQuiz(const QString &quiz, const QString &action);
    void select(const QString &quiz, int answer);
    void grade(const QString &quiz, bool right);
    void goOn(const QString &quiz);
    void endQuiz(const QString &quiz);
    void raisePassCount(const QString &id);
    void timeIsUp();
    void askToClose(const QString &quiz, const Then &closed = {});

    Layouts layouts_;
    Random random_;
    store::Contents store_;
    Run run_;
    /// The quiz window whose clock runs; empty if none does.
    QString clockOf_;
    QList<Window> windows_;
    QMap<QString, int> loaded_;
    std::optional<Alert> alert_;
    std::function<void(bool byDefault)> afterAlert_;
    bool ended_ = false;
    QList<store::Write> writes_;
    QStringList log_;
    QSet<QString> met_;
    QStringList objections_;
};

}  // namespace model
