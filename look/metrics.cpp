#include "look/metrics.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QStyleOption>
#include <QWidget>

namespace platform::look {

double unit(const QWidget &widget) {
    return QFontMetricsF(widget.font()).height() / 2;
}

double unit(const QStyleOption &option) {
    return option.fontMetrics.height() / 2.0;
}

double characterWidth(const QFont &font) {
    const double em = QFontInfo(font).pointSizeF() * QFontMetricsF(font).fontDpi() / 72;
    return qMax(0.0, em * 0.555);
}

void setSize(QFont &font, const QFont &other, double times) {
    // QFontInfo also knows a size that the desktop has set in pixels. Without any fonts there is no
    // size at all.
    if (const double points = QFontInfo(other).pointSizeF(); points > 0) {
        font.setPointSizeF(points * times);
    }
}

}  // namespace platform::look
