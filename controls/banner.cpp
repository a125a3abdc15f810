#include "controls/banner.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

#include "controls/imagelabel.h"
#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

namespace platform {

Banner::Banner(QWidget *parent) : QWidget(parent) {}

void Banner::setTone(Tone tone) {
    tone_ = tone;
    colorImages();
    update();
}

bool Banner::event(QEvent *event) {
    if (event->type() == QEvent::Polish || event->type() == QEvent::PaletteChange) {
        colorImages();
    }
    return QWidget::event(event);
}

QColor Banner::imageColor() const {
    switch (tone_) {
        case Tone::Neutral:
            break;
        case Tone::Positive:
            return look::accent(palette());
        case Tone::Festive:
            return look::onAccent(palette());
    }
    return look::secondaryText(palette());
}

void Banner::colorImages() {
    for (ImageLabel *image : findChildren<ImageLabel *>()) {
        image->setColor(imageColor());
    }
}

void Banner::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    look::Panel panel{.rect = rect(), .unit = look::unit(*this)};
    switch (tone_) {
        case Tone::Neutral:
            break;
        case Tone::Positive:
            panel.fill = look::Fill::Prominent;
            break;
        case Tone::Festive:
            panel.fill = look::Fill::Accent;
            panel.border = look::Border::None;
            break;
    }
    look::paintPanel(painter, palette(), panel);
    if (tone_ == Tone::Festive) {
        paintRays(painter);
    }
}

void Banner::paintRays(QPainter &painter) const {
    constexpr int rays = 36;
    constexpr double turn = 360.0 / rays;
    const double radius = look::panelRadius * look::unit(*this);
    // From far below, so that they do not meet behind a picture.
    const QPointF source(rect().center().x(), 2.5 * height());
    const double reach = 3 * (width() + height());
    QPainterPath shape;
    shape.addRoundedRect(rect(), radius, radius);
    QPainterPath light;
    for (int ray = 0; ray < rays; ++ray) {
        light.moveTo(source);
        light.arcTo(QRectF(source.x() - reach, source.y() - reach, 2 * reach, 2 * reach),
                    ray * turn, turn / 2);
        light.closeSubpath();
    }
    // Pictures have holes, through which no ray must be seen.
    for (const QWidget *part : findChildren<QWidget *>()) {
        QPainterPath halo;
        halo.addEllipse(part->geometry());
        shape -= halo;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(shape & light, look::fillColor(palette(), look::Fill::HoveredAccent));
}

}  // namespace platform
