#pragma once

class Dice;
class Hands;
class Journal;
class Seam;

/// What the learner does not do: time passes, the desktop changes, others write the store.
class World final {
 public:
    World(Journal &journal, Dice &dice, Seam &seam, Hands &hands)
        : journal_(journal), dice_(dice), seam_(seam), hands_(hands) {}

    /// Stops when the time of a quiz is up.
    void letSecondsPass(int seconds);
    void changeDesktop();
    void editStore();
    /// Has the store name a quiz that there is not, or none.
    void spoilChosenQuiz();
    /// Fills the store of a session that is about to start.
    void prepareStore();

 private:
    Journal &journal_;
    Dice &dice_;
    Seam &seam_;
    Hands &hands_;
};
