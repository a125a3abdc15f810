#include "windowing/basesize.h"

#include <QEvent>
#include <QWidget>

namespace platform {

bool BaseSize::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Resize && watched->isWidgetType()) {
        if (auto *widget = static_cast<QWidget *>(watched); widget->isWindow()) {
            widget->setBaseSize(widget->size());
        }
    }
    return false;
}

}  // namespace platform
