#pragma once

#include <memory>

#include <QObject>

class QMenu;
class QMenuBar;

namespace platform {

class Window;

/// The menus of the main layout. Their items are in the desktop's own menu bar if it has one, and
/// otherwise in the menu bar of every window.
class Menus final : public QObject {
    Q_OBJECT

 public:
    /// `mainLayout` is the window whose menu bar holds the items. It must outlive this object.
    explicit Menus(Window &mainLayout);
    ~Menus() override;

    /// Gives a window its menu bar, if it needs one and has none yet.
    void provideMenuBar(Window &window);

 private:
    void describe(QMenuBar &menuBar);
    void listWindows(QMenu &menu);
    void forgetAccessibleItems();

    Window &mainLayout_;
    std::unique_ptr<QMenuBar> desktopMenuBar_;
};

}  // namespace platform
