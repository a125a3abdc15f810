#pragma once

#include <QDialog>
#include <QDialogButtonBox>

class QIcon;
class QPushButton;

namespace platform {

class TextLabel;

/// A dialog with a message in plain text and buttons in the desktop's order. It is as large as its
/// content. Return presses the focused button; Escape, or closing the dialog, presses the button
/// with the reject role, or else the default one. Copying copies the message.
class MessageBox final : public QDialog {
    Q_OBJECT

 public:
    /// If `informativeText` is empty, it takes no room.
    MessageBox(const QString &text, const QString &informativeText, QWidget *parent);

    QString text() const;
    QString informativeText() const;

    /// Shows a picture in front of the message.
    void setIcon(const QIcon &icon, const QString &accessibleName);

    /// Adds a button that ends the dialog with that result. The first is the default one.
    void addButton(const QString &text, QDialogButtonBox::ButtonRole role, int result);
    QPushButton *defaultButton() const { return defaultButton_; }

    void reject() override;

 protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;

 private:
    TextLabel *text_;
    TextLabel *informativeText_;
    QDialogButtonBox *buttonBox_;
    QPushButton *defaultButton_ = nullptr;
    QPushButton *escapeButton_ = nullptr;
};

}  // namespace platform
