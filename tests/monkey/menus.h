#pragma once

#include <QObject>

class Dice;
class Hands;
class Journal;
class QMenu;
class QWidget;

/// Uses the menu bar by mouse and by keyboard.
class MenuUse final : public QObject {
    Q_OBJECT

 public:
    MenuUse(Journal &journal, Dice &dice, Hands &hands)
        : journal_(journal), dice_(dice), hands_(hands) {}

    void openOne();
    void useOpen(QWidget &menu);

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    void leaveIfBlocking(QMenu &menu);

    Journal &journal_;
    Dice &dice_;
    Hands &hands_;
};
