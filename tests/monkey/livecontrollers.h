#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>

#include "windowing/windowcontroller.h"

class AppDelegate;

/// The window controllers of the running program. The program has no list of them: each is met when
/// a window appears, in a property that holds it or as what opens a window by name.
class LiveControllers final : public QObject {
    Q_OBJECT

 public:
    using Controllers = QSet<platform::WindowController *>;

    explicit LiveControllers(AppDelegate &delegate);
    ~LiveControllers() override;

    /// All that have not been freed.
    Controllers all() const;
    /// Those on screen, and those that a property of the delegate or of another one in use holds.
    Controllers used() const;

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    /// The controllers, and those that they and the delegate hold.
    Controllers withHeld(const Controllers &some) const;

    const AppDelegate &delegate_;
    QList<QPointer<platform::WindowController>> met_;
};
