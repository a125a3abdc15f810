#pragma once

#include <QList>
#include <QMainWindow>
#include <QPointer>

class QScrollArea;

namespace platform {

/// Decides whether a window may close, and learns when it has.
class WindowDelegate {
 public:
    virtual ~WindowDelegate() = default;
    /// Asked when the user closes the window; false keeps it open.
    virtual bool windowShouldClose() = 0;
    /// Called after the window was allowed to close, before it is freed.
    virtual void windowDidClose() = 0;
};

/// A top-level window that a layout fills. Escape closes it if the root of the layout has the
/// property "escapeCloses".
class Window final : public QMainWindow {
    Q_OBJECT

 public:
    explicit Window(WindowDelegate &delegate);

    /// The windows on screen, in the order in which they were opened.
    static QList<QPointer<Window>> onScreen();
    /// The window on screen that appeared or had the keyboard last, a minimised one only if all
    /// are; null if none is on screen.
    static Window *inFront();

    /// Closes the window without asking the delegate.
    void closeUnasked();
    /// Asks the delegate whether the window may close.
    bool mayClose();
    /// Whether the window has ever had the keyboard.
    bool hasBeenActive() const { return hasBeenActive_; }
    /// Brings a window that has been used before back to the front. One that is just appearing
    /// comes to the front by itself.
    void comeForward();
    /// Lets the content scroll if the screen is too small for it. To be called before the window is
    /// shown.
    void fitToScreen();
    /// Adapts the size of the window after its content has grown or shrunk as a whole. A window
    /// that the user has resized does not become smaller.
    void fitToContent();

 protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

 private:
    /// The scroll area around the content; null until the content scrolls.
    QScrollArea *scrollArea() const;
    /// The size that shows all of the content.
    QSize neededSize() const;
    /// The room on screen within the frame that a window manager adds.
    QSize roomOnScreen() const;
    bool isLargerThan(const QSize &room) const;
    QSize scrolledSize() const;
    void letContentScroll();
    void takeTurn();

    WindowDelegate &delegate_;
    bool unasked_ = false;
    bool hasBeenActive_ = false;
    /// The turns at which the window was first shown and last came to the front.
    int opened_ = 0;
    int turn_ = 0;
    /// The size that the window last gave itself.
    QSize fitted_;
};

}  // namespace platform
