#pragma once

#include <memory>

#include <QSet>

#include "monkey/alertanswers.h"
#include "monkey/dice.h"
#include "monkey/hands.h"
#include "monkey/intents.h"
#include "monkey/journal.h"
#include "monkey/liveprogram.h"
#include "monkey/lookout.h"
#include "monkey/menus.h"
#include "monkey/seam.h"
#include "monkey/steps.h"
#include "monkey/world.h"

/// A learner who takes the given number of steps at random, in one session of the program after
/// another, with a model of the program beside it. After each step both have to be the same.
class Walk final : public QObject {
    Q_OBJECT

 public:
    Walk(quint32 seed, int steps, bool verbose);

    void run();
    /// What the model knows and the walk has not met.
    QStringList missing() const;

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    void runSession();
    void beginModel(quint32 seed);
    bool takeStep(const std::function<void()> &step);
    void compare();

    int steps_;
    QSet<QString> happened_;
    Journal journal_;
    Dice dice_;
    Seam seam_{journal_};
    Hands hands_{journal_, dice_, seam_};
    Lookout lookout_{journal_, hands_};
    World world_{journal_, dice_, seam_, hands_};
    MenuUse menus_{journal_, dice_, hands_};
    Intents intents_{journal_, dice_, seam_, hands_, world_};
    Steps choice_{journal_, dice_, seam_, hands_, world_, menus_, intents_};
    AlertAnswers alertAnswers_{journal_, dice_, seam_, hands_, world_, lookout_};
    std::unique_ptr<LiveProgram> program_;
};
