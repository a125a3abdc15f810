#pragma once

#include <QScrollArea>

class QFrame;

namespace platform {

/// A scroll area without a frame. A line at its upper or lower edge tells that there is more beyond
/// it.
class ScrollArea final : public QScrollArea {
    Q_OBJECT

 public:
    explicit ScrollArea(QWidget *parent = nullptr);

 protected:
    void resizeEvent(QResizeEvent *event) override;

 private:
    void showEdges();

    QFrame *upperEdge_;
    QFrame *lowerEdge_;
};

}  // namespace platform
