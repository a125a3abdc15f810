#pragma once

class AppDelegate;
class Dice;
class Hands;
class Intents;
class Journal;
class MenuUse;
class QWidget;
class Seam;
class World;

/// Chooses the steps of a walk.
class Steps final {
 public:
    Steps(Journal &journal, Dice &dice, Seam &seam, Hands &hands, World &world, MenuUse &menus,
          Intents &intents)
        : journal_(journal),
          dice_(dice),
          seam_(seam),
          hands_(hands),
          world_(world),
          menus_(menus),
          intents_(intents) {}

    void take(AppDelegate &delegate);
    /// No control does this, but whatever quiz the store names has to be taken as it comes.
    void openQuizOfStore(AppDelegate &delegate);

 private:
    void clickAnything();
    void clickAnywhere();
    void typeAnything();
    void useSettings();
    void clickAButton(QWidget &window);
    void closeOne();
    void activateOne();

    Journal &journal_;
    Dice &dice_;
    Seam &seam_;
    Hands &hands_;
    World &world_;
    MenuUse &menus_;
    Intents &intents_;
};
