#include "controls/scrollarea.h"

#include <QPainter>
#include <QScrollBar>

#include "look/palette.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// A line over the content, which takes no room from it.
class Edge final : public QFrame {
 public:
    Edge(const QString &name, QWidget *parent) : QFrame(parent) {
        setObjectName(name);
        setFrameShape(HLine);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

 protected:
    void paintEvent(QPaintEvent *) override {
        QPainter(this).fillRect(rect(), look::hairline(palette()));
    }
};

}  // namespace

ScrollArea::ScrollArea(QWidget *parent)
    : QScrollArea(parent),
      upperEdge_(new Edge(u"upperEdge"_s, this)),
      lowerEdge_(new Edge(u"lowerEdge"_s, this)) {
    setFrameShape(QFrame::NoFrame);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ScrollArea::showEdges);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &ScrollArea::showEdges);
}

void ScrollArea::resizeEvent(QResizeEvent *event) {
    QScrollArea::resizeEvent(event);
    showEdges();
}

void ScrollArea::showEdges() {
    const QRect content = viewport()->geometry();
    upperEdge_->setGeometry(content.left(), content.top(), content.width(), 1);
    lowerEdge_->setGeometry(content.left(), content.bottom(), content.width(), 1);
    const QScrollBar &bar = *verticalScrollBar();
    upperEdge_->setVisible(bar.value() > bar.minimum());
    lowerEdge_->setVisible(bar.value() < bar.maximum());
}

}  // namespace platform
