#pragma once

#include <QList>
#include <QMainWindow>
#include <QPointer>

class QScrollArea;

namespace platform {

/// Who answers for a window.
class WindowDelegate {
 public:
    virtual ~WindowDelegate() = default;
    /// Asked when the user closes the window; false keeps it open.
    virtual bool windowShouldClose() = 0;
    /// Told after the window was allowed to close, before it is freed.
    virtual void windowDidClose() = 0;
};

/// A top-level window that a layout fills. A layout whose root carries the property
/// "escapeCloses" makes a window that Escape closes.
class Window final : public QMainWindow {
    Q_OBJECT

 public:
    explicit Window(WindowDelegate &delegate);

    /// Those on screen, in the order in which they were opened.
    static QList<QPointer<Window>> onScreen();
    /// Of those, the one that appeared or had the keyboard last, a minimised one only where all
    /// are; null where none is on screen.
    static Window *inFront();

    /// Closes the window without asking the delegate.
    void closeUnasked();
    /// Asks the delegate.
    bool mayClose();
    /// Whether it ever had the keyboard.
    bool hasBeenActive() const { return hasBeenActive_; }
    /// Brings a window that was used before to the front again; one that is only just appearing
    /// does so by itself.
    void comeForward();
    /// Lets the content scroll where the screen is too small for it. To be called before the window
    /// is shown.
    void fitToScreen();
    /// Follows a content that has grown or shrunk as a whole. A window that somebody has resized
    /// does not become smaller.
    void fitToContent();

 protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

 private:
    /// Around the content, once it scrolls.
    QScrollArea *scrollArea() const;
    /// To show all of the content.
    QSize neededSize() const;
    /// Within the frame that a window manager adds.
    QSize roomOnScreen() const;
    bool isLargerThan(const QSize &room) const;
    QSize scrolledSize() const;
    void letContentScroll();
    void takeTurn();

    WindowDelegate &delegate_;
    bool unasked_ = false;
    bool hasBeenActive_ = false;
    /// The turns at which it was first shown, and last came to the front.
    int opened_ = 0;
    int turn_ = 0;
    /// As large as it made itself.
    QSize fitted_;
};

}  // namespace platform
