#pragma once

class Dice;
class Hands;
class Journal;
class QWidget;
class Seam;
class World;

/// What the learner is up to for a while: steps at random alone would seldom end a quiz.
class Intents final {
 public:
    Intents(Journal &journal, Dice &dice, Seam &seam, Hands &hands, World &world)
        : journal_(journal), dice_(dice), seam_(seam), hands_(hands), world_(world) {}

    void forget() { intent_ = Intent::Wander; }
    void meanToCloseEverything();
    /// To be called when a quiz window appears.
    void quizAppears();
    /// Takes a step, unless there is nothing to do.
    bool pursue();

 private:
    enum class Intent { Wander, Pass, Fail, LetTimePass, Juggle, CloseAll };

    bool closeNext();
    QWidget *quizToUse();
    void answerOrGoOn(QWidget &quiz);

    Journal &journal_;
    Dice &dice_;
    Seam &seam_;
    Hands &hands_;
    World &world_;
    Intent intent_ = Intent::Wander;
};
