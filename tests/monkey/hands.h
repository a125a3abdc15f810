#pragma once

#include <QKeyCombination>
#include <QList>
#include <QPointer>
#include <QWidget>

class Dice;
class Journal;
class QMenu;
class Seam;

/// The learner's mouse and keyboard, and the windows that they reach.
class Hands {
 public:
    Hands(Journal &journal, Dice &dice, Seam &seam) : journal_(journal), dice_(dice), seam_(seam) {}

    static QString nameOf(const QWidget &widget);
    /// Brings a window to the front if none is, as a desktop does.
    void activateLikeAWindowManager();
    /// Uses a menu that would keep the step from ending.
    void leaveIfBlocking(QMenu &menu);

 protected:
    /// The windows on screen: the program's, alerts and the About box.
    static QList<QWidget *> windows();
    static QList<QWidget *> windowsOf(const QString &layout);
    /// The one in front as a rule, and now and then another.
    QWidget &anyWindow();
    static QWidget &activated(QWidget &window);
    void forgetWindows() { used_.clear(); }

    static void click(QWidget &window, const QPoint &at, bool twice = false);
    void clickAnywhere(QWidget &window);
    void clickControl(QWidget &control);
    void type(QKeyCombination key, bool held = false);
    void close(QWidget &window);

    void openMenu();
    void useOpenMenu(QWidget &menu);

    // NOLINTBEGIN(cppcoreguidelines-non-private-member-variables-in-classes)
    Journal &journal_;
    Dice &dice_;
    Seam &seam_;
    // NOLINTEND(cppcoreguidelines-non-private-member-variables-in-classes)

 private:
    static void press(QKeyCombination key, const QString &text, bool repetition);

    /// The windows in the order of their last use, the latest last.
    QList<QPointer<QWidget>> used_;
};
