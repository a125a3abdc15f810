#pragma once

#include <QObject>

class QWidget;

namespace platform::look {

/// Whether the widget has the focus and shows it; false if there is no widget.
bool showsFocus(const QWidget *widget);

/// Has windows show the focus from the moment a key is pressed until something is pressed with a
/// pointer: whoever uses the mouse takes a ring for a choice. To be installed as the application's
/// event filter.
class FocusVisibility final : public QObject {
    Q_OBJECT

 public:
    using QObject::QObject;

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    static void setShown(bool shown);
};

}  // namespace platform::look
