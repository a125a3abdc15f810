#pragma once

#include <functional>

#include <QSet>

#include "monkey/dice.h"
#include "monkey/journal.h"
#include "monkey/liveprogram.h"
#include "monkey/seam.h"
#include "monkey/steps.h"

/// A learner who takes the given number of steps at random, in one session of the program after
/// another, with a model of the program beside it. After each step both have to be the same.
class Walk final : public QObject {
    Q_OBJECT

 public:
    Walk(quint32 seed, int steps, bool verbose)
        : steps_(steps), journal_(seed, verbose), dice_(seed) {}

    void run();
    /// What the model knows and the walk has not met.
    QStringList missing() const;

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    void runSession();
    void openProgram();
    void endProgram();
    bool takeStep(const std::function<void()> &step);
    void appears(QObject *shown);

    int steps_;
    QSet<QString> met_;
    Journal journal_;
    Dice dice_;
    Seam seam_;
    Steps choice_{journal_, dice_, seam_};
    std::unique_ptr<LiveProgram> program_;
};
