#pragma once

#include <QWidget>

class QLabel;

namespace platform {

/// Controls that belong together. To a screen reader a section is a group whose name is the text in
/// it, except for text in an ActionRow or in a section within it: on entering the group the user
/// hears what it is about before the focused control. A section that takes the focus itself, so
/// that its text can be reached with the keyboard, shows the focus.
class Section final : public QWidget {
    Q_OBJECT
    /// Draws a panel that sets the section apart.
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
