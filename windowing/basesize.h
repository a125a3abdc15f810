#pragma once

#include <QObject>

namespace platform {

/// Keeps the base size of windows equal to their size. On a screen with a fractional scale, Qt has
/// the window manager resize windows in steps that count from the base size; counted from zero, a
/// step would end below the minimum size. To be installed as the application's event filter.
class BaseSize final : public QObject {
    Q_OBJECT

 public:
    using QObject::QObject;

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

}  // namespace platform
