#include "support/optics.h"

#include <QEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace optics {

namespace {

/// Draws on an image what a widget draws and lists the texts; can leave the texts out.
class Engine final : public QPaintEngine {
 public:
    Engine(QSize size, QImage &image, bool drawsTexts)
        : QPaintEngine(AllFeatures), bounds_({}, size), image_(image), drawsTexts_(drawsTexts) {}

    const QList<Text> &texts() const { return texts_; }

    bool begin(QPaintDevice *) override { return painter_.begin(&image_); }
    bool end() override { return painter_.end(); }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState &) override {}

    using QPaintEngine::drawPolygon;
    void drawPath(const QPainterPath &path) override { adopt().drawPath(path); }
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override {
        if (mode == PolylineMode) {
            adopt().drawPolyline(points, count);
        } else {
            adopt().drawPolygon(points, count,
                                mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
        }
    }
    void drawPixmap(const QRectF &target, const QPixmap &pixmap, const QRectF &source) override {
        adopt().drawPixmap(target, pixmap, source);
    }
    void drawTextItem(const QPointF &baseline, const QTextItem &item) override {
        list(baseline, item);
        if (drawsTexts_) {
            adopt().drawTextItem(baseline, item);
        }
    }

 private:
    /// The painter on the image, in the state of the painter that the widget draws with.
    QPainter &adopt() {
        const QPainter &source = *painter();
        painter_.setTransform(source.deviceTransform());
        painter_.setClipping(false);
        if (source.hasClipping()) {
            painter_.setClipPath(source.clipPath());
        }
        if (const QRegion widget = systemClip(); !widget.isEmpty()) {
            painter_.resetTransform();
            painter_.setClipRegion(widget, Qt::IntersectClip);
            painter_.setTransform(source.deviceTransform());
        }
        painter_.setPen(source.pen());
        painter_.setBrush(source.brush());
        painter_.setBrushOrigin(source.brushOrigin());
        painter_.setOpacity(source.opacity());
        painter_.setCompositionMode(source.compositionMode());
        painter_.setRenderHints(painter_.renderHints(), false);
        painter_.setRenderHints(source.renderHints());
        return painter_;
    }

    void list(const QPointF &baseline, const QTextItem &item) {
        if (item.text().trimmed().isEmpty()) {
            return;
        }
        const QRectF box(baseline.x(), baseline.y() - item.ascent(), item.width(),
                         item.ascent() + item.descent());
        // Rounding errors may make the box a little too large.
        constexpr double hair = 0.25;
        const QRect place = painter()
                                ->deviceTransform()
                                .mapRect(box)
                                .adjusted(hair, hair, -hair, -hair)
                                .toAlignedRect();
        const QRect visible = place & systemClip().boundingRect() & bounds_;
        if (!visible.isEmpty()) {
            texts_ << Text{item.text(), item.font(), visible, visible == place};
        }
    }

    QRect bounds_;
    QImage &image_;
    bool drawsTexts_;
    QList<Text> texts_;
    QPainter painter_;
};

/// What a widget is rendered on; the image itself only states the size and the resolution.
class Canvas final : public QImage {
 public:
    Canvas(const QWidget &widget, QSize size, QImage &target, bool drawsTexts)
        : QImage(size * ratio, Format_RGB32), engine_(size * ratio, target, drawsTexts) {
        constexpr double inchesInAMetre = 1 / 0.0254;
        setDevicePixelRatio(ratio);
        setDotsPerMeterX(qRound(widget.logicalDpiX() * inchesInAMetre));
        setDotsPerMeterY(qRound(widget.logicalDpiY() * inchesInAMetre));
    }

    QPaintEngine *paintEngine() const override { return &engine_; }
    const QList<Text> &texts() const { return engine_.texts(); }

 private:
    mutable Engine engine_;
};

/// Keeps a control from drawing itself while this object exists.
class Unpainted final : public QObject {
 public:
    explicit Unpainted(QWidget *control) {
        if (control != nullptr) {
            control->installEventFilter(this);
        }
    }
    bool eventFilter(QObject *, QEvent *event) override { return event->type() == QEvent::Paint; }
};

}  // namespace

Picture picture(QWidget &window, const QRect &area, const Without &without) {
    QImage pixels(area.size() * ratio, QImage::Format_RGB32);
    pixels.fill(Qt::black);
    Canvas canvas(window, area.size(), pixels, !without.texts);
    const Unpainted unpainted(without.control);
    window.render(&canvas, {}, area);
    return {pixels, canvas.texts()};
}

Picture picture(QWidget &window, const Without &without) {
    return picture(window, window.rect(), without);
}

QList<Text> texts(QWidget &widget) {
    // Nothing else is looked at.
    QImage spot(1, 1, QImage::Format_RGB32);
    Canvas canvas(widget, widget.size(), spot, false);
    widget.render(&canvas);
    return canvas.texts();
}

}  // namespace optics
