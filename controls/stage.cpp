#include "controls/stage.h"

#include <QPainter>
#include <QPainterPath>

#include "look/theme.h"

namespace platform {

Stage::Stage(QWidget *parent) : QWidget(parent) {}

void Stage::setMood(Mood mood) {
    mood_ = mood;
    update();
}

QColor Stage::inkAt(const QWidget &part) {
    const auto *stage = qobject_cast<const Stage *>(part.parentWidget());
    if (stage == nullptr || stage->mood_ == Mood::Glad) {
        return theme::accent(part.palette());
    }
    return stage->mood_ == Mood::Festive ? theme::onAccent(part.palette())
                                         : theme::secondaryText(part.palette());
}

void Stage::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    theme::Panel panel{.rect = rect(), .unit = theme::unit(*this)};
    switch (mood_) {
        case Mood::Quiet:
            break;
        case Mood::Glad:
            panel.ground = theme::Ground::Prominent;
            break;
        case Mood::Festive:
            panel.ground = theme::Ground::Accent;
            panel.edge = theme::Edge::None;
            break;
    }
    theme::paintPanel(painter, palette(), panel);
    if (mood_ == Mood::Festive) {
        paintRays(painter);
    }
}

void Stage::paintRays(QPainter &painter) const {
    constexpr int rays = 36;
    constexpr double turn = 360.0 / rays;
    const double radius = theme::panelRadius * theme::unit(*this);
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
    // Pictures have holes: nothing shines through.
    for (const QWidget *part : findChildren<QWidget *>()) {
        QPainterPath halo;
        halo.addEllipse(part->geometry());
        shape -= halo;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(shape & light, theme::groundColor(palette(), theme::Ground::LitAccent));
}

}  // namespace platform
