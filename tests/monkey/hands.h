#pragma once

#include <QKeyCombination>
#include <QList>
#include <QPointer>
#include <QWidget>

class Dice;
class Journal;
class Seam;

/// The learner's mouse and keyboard, and the windows that they reach.
class Hands final {
 public:
    Hands(Journal &journal, Dice &dice, Seam &seam) : journal_(journal), dice_(dice), seam_(seam) {}

    /// The windows on screen: the program's, alerts and the About box.
    QList<QWidget *> windows() const;
    /// Those of that layout, in the same order in every walk of the same seed.
    QList<QWidget *> windowsOf(const QString &layout) const;
    /// The one in front as a rule, and now and then another.
    QWidget &anyWindow();
    QWidget &activated(QWidget &window);
    void forgetWindows() { used_.clear(); }
    /// Brings a window to the front if none is, as a desktop does.
    void activateLikeAWindowManager();

    static void click(QWidget &window, const QPoint &at, bool twice = false);
    void clickControl(QWidget &control);
    void type(QKeyCombination key, bool held = false);
    void close(QWidget &window);

 private:
    static void press(QKeyCombination key, const QString &text, bool repetition);

    Journal &journal_;
    Dice &dice_;
    Seam &seam_;
    /// The windows in the order of their last use, the latest last.
    QList<QPointer<QWidget>> used_;
};

namespace words {

QString nameOf(QKeyCombination key);
QString nameOf(const QWidget &widget);
/// The action that a control or a menu item asks for; empty if none.
QString actionOf(const QObject &control);

}  // namespace words
