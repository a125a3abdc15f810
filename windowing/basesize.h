#pragma once

#include <QObject>

namespace platform {

/// Keeps the base size of windows at their size. On a screen that scales by a fraction Qt has the
/// window manager resize windows in steps, which count from the base size; from zero, a step would
/// end below the least size. To be installed as the application's event filter.
class BaseSize final : public QObject {
    Q_OBJECT

 public:
    using QObject::QObject;

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

}  // namespace platform
