#pragma once

#include <QObject>

class Dice;
class Hands;
class Journal;
class Lookout;
class QMessageBox;
class Seam;
class World;

/// Answers each alert as soon as it is on screen, in one of the ways that a learner has.
class AlertAnswers final : public QObject {
    Q_OBJECT

 public:
    AlertAnswers(Journal &journal, Dice &dice, Seam &seam, Hands &hands, World &world,
                 Lookout &lookout)
        : journal_(journal),
          dice_(dice),
          seam_(seam),
          hands_(hands),
          world_(world),
          lookout_(lookout) {}

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    void answer(QMessageBox &box);
    /// Presses a button and returns the text of the one that this way of answering means.
    QString answerIn(const QString &way, QMessageBox &box);
    void tryInVain(const QMessageBox &box);

    Journal &journal_;
    Dice &dice_;
    Seam &seam_;
    Hands &hands_;
    World &world_;
    Lookout &lookout_;
};
