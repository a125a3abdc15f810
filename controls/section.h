#pragma once

#include <QWidget>

class QLabel;

namespace platform {

/// Controls that belong together. To a screen reader it is a group whose name is the text that
/// stands in it, except for texts that belong to an ActionRow or to a group within: whoever enters
/// the group hears what it is about before the control that has the focus. A group that takes the
/// focus itself, so that its text can be reached with the keyboard, shows it.
class Section final : public QWidget {
    Q_OBJECT
    /// Draws the surface that sets the group apart.
    Q_PROPERTY(bool panel MEMBER panel_)

 public:
    explicit Section(QWidget *parent = nullptr);

 protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

 private:
    QList<QLabel *> labels() const;
    void followLabels();
    void describe();
    void scrollIntoView();

    bool panel_ = false;
};

}  // namespace platform
