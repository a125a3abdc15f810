#include "support/optics.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QEvent>
#include <QHash>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace optics {

namespace {

enum class Draws { All, ShapesOnly, Nothing };

/// Draws on a picture what a widget draws and lists the texts; can leave the texts out.
class Engine final : public QPaintEngine {
 public:
    Engine(optics::Picture &picture, Draws draws)
        : QPaintEngine(AllFeatures), picture_(picture), draws_(draws) {}

    bool begin(QPaintDevice *) override { return painter_.begin(&picture_.pixels); }
    bool end() override { return painter_.end(); }
    Type type() const override { return User; }

    void updateState(const QPaintEngineState &) override {}

    void drawPath(const QPainterPath &path) override {
        if (draws_ != Draws::Nothing) {
            adopt().drawPath(path);
        }
    }
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override {
        if (draws_ == Draws::Nothing) {
            return;
        }
        if (mode == PolylineMode) {
            adopt().drawPolyline(points, count);
        } else {
            adopt().drawPolygon(points, count,
                                mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
        }
    }
    void drawPolygon(const QPoint *points, int count, PolygonDrawMode mode) override {
        QPaintEngine::drawPolygon(points, count, mode);
    }
    void drawPixmap(const QRectF &target, const QPixmap &pixmap, const QRectF &source) override {
        if (draws_ != Draws::Nothing) {
            adopt().drawPixmap(target, pixmap, source);
        }
    }
    void drawTiledPixmap(const QRectF &target, const QPixmap &pixmap,
                         const QPointF &offset) override {
        if (draws_ != Draws::Nothing) {
            adopt().drawTiledPixmap(target, pixmap, offset);
        }
    }
    void drawImage(const QRectF &target, const QImage &image, const QRectF &source,
                   Qt::ImageConversionFlags flags) override {
        if (draws_ != Draws::Nothing) {
            adopt().drawImage(target, image, source, flags);
        }
    }
    void drawTextItem(const QPointF &baseline, const QTextItem &item) override {
        list(baseline, item);
        if (draws_ == Draws::All) {
            adopt().drawTextItem(baseline, item);
        }
    }

 private:
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
        painter_.setBackground(source.background());
        painter_.setBackgroundMode(source.backgroundMode());
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
        const QRect visible = place & systemClip().boundingRect() & picture_.pixels.rect();
        if (!visible.isEmpty()) {
            picture_.texts << Text{item.text(), item.font(), visible, visible == place};
        }
    }

    optics::Picture &picture_;
    Draws draws_;
    QPainter painter_;
};

class Canvas final : public QPaintDevice {
 public:
    Canvas(Picture &picture, Draws draws, int dotsPerInch)
        : size_(picture.pixels.size()), dotsPerInch_(dotsPerInch), engine_(picture, draws) {}

    QPaintEngine *paintEngine() const override { return &engine_; }

 protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
            case PdmWidth:
                return size_.width();
            case PdmHeight:
                return size_.height();
            case PdmWidthMM:
                return qRound(size_.width() * 25.4 / dotsPerInch_);
            case PdmHeightMM:
                return qRound(size_.height() * 25.4 / dotsPerInch_);
            case PdmNumColors:
                return 0;
            case PdmDepth:
                return 32;
            case PdmDevicePixelRatio:
                return ratio;
            case PdmDevicePixelRatioScaled:
                return qRound(ratio * devicePixelRatioFScale());
            case PdmDpiX:
            case PdmDpiY:
            case PdmPhysicalDpiX:
            case PdmPhysicalDpiY:
                return dotsPerInch_;
            default:
                return QPaintDevice::metric(metric);
        }
    }

 private:
    QSize size_;
    int dotsPerInch_;
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

const QRgb *row(const QImage &picture, int y) {
    return reinterpret_cast<const QRgb *>(picture.constScanLine(y));
}

QRgb colorAt(const QImage &picture, const QPoint &at) {
    return row(picture, at.y())[at.x()];
}

bool changed(const QImage &with, const QImage &without, const QPoint &at) {
    return colorAt(with, at) != colorAt(without, at);
}

/// Most rows of two pictures are the same and can be skipped as a whole.
bool rowChanged(const QImage &with, const QImage &without, int y) {
    return !std::equal(row(with, y), row(with, y) + with.width(), row(without, y));
}

/// Visits each pixel that was changed together with its neighbours: what was added covers its
/// background there.
template <class Visit>
void visitCovered(const QImage &with, const QImage &without, const QRect &place, Visit visit) {
    const QRect inner = place & with.rect().adjusted(1, 1, -1, -1);
    for (int y = inner.top(); y <= inner.bottom(); ++y) {
        if (!rowChanged(with, without, y)) {
            continue;
        }
        const QRgb *const ink = row(with, y);
        const QRgb *const background = row(without, y);
        for (int x = inner.left(); x <= inner.right(); ++x) {
            if (ink[x] != background[x] && ink[x - 1] != background[x - 1] &&
                ink[x + 1] != background[x + 1] && changed(with, without, {x, y - 1}) &&
                changed(with, without, {x, y + 1})) {
                visit(QPoint(x, y));
            }
        }
    }
}

double median(QList<double> values) {
    const auto middle = values.begin() + values.size() / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

QRect changedBox(const QImage &with, const QImage &without) {
    QRect box;
    for (int y = 0; y < with.height(); ++y) {
        if (!rowChanged(with, without, y)) {
            continue;
        }
        const QRgb *const ink = row(with, y);
        const QRgb *const background = row(without, y);
        int first = 0;
        while (ink[first] == background[first]) {
            ++first;
        }
        int last = with.width() - 1;
        while (ink[last] == background[last]) {
            --last;
        }
        box |= QRect(QPoint(first, y), QPoint(last, y));
    }
    return box;
}

using Line = QList<QPoint>;

/// Lines that lead from a side of the box to its middle. They start in the central `share` of that
/// side.
QList<Line> linesFrom(Qt::Edge side, const QRect &box, double share) {
    const bool upright = side == Qt::TopEdge || side == Qt::BottomEdge;
    const bool backwards = side == Qt::RightEdge || side == Qt::BottomEdge;
    const int across = upright ? box.width() : box.height();
    const int depth = upright ? box.height() : box.width();
    QList<Line> lines;
    const int margin = int(across * (1 - share) / 2);
    for (int line = margin; line < across - margin; line += ratio) {
        Line points;
        points.reserve(depth / 2 + 1);
        for (int step = 0; step <= depth / 2; ++step) {
            const int along = backwards ? depth - 1 - step : step;
            points << box.topLeft() + (upright ? QPoint(line, along) : QPoint(along, line));
        }
        lines << points;
    }
    return lines;
}

constexpr std::array sides{Qt::TopEdge, Qt::BottomEdge, Qt::LeftEdge, Qt::RightEdge};

template <class Measure>
double worstSide(const QRect &box, double share, Measure measure) {
    double worst = 21;
    for (const Qt::Edge side : sides) {
        QList<double> contrasts;
        for (const Line &line : linesFrom(side, box, share)) {
            contrasts << measure(line);
        }
        worst = qMin(worst, median(contrasts));
    }
    return worst;
}

double luminance(QRgb color) {
    static const auto linear = [] {
        std::array<double, 256> table{};
        for (std::size_t level = 0; level < table.size(); ++level) {
            const double share = double(level) / 255;
            table.at(level) =
                share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        }
        return table;
    }();
    const auto of = [](int level) { return linear.at(static_cast<std::size_t>(level)); };
    return 0.2126 * of(qRed(color)) + 0.7152 * of(qGreen(color)) + 0.0722 * of(qBlue(color));
}

/// The difference in the channel that differs most.
int difference(QRgb one, QRgb other) {
    return std::max({qAbs(qRed(one) - qRed(other)), qAbs(qGreen(one) - qGreen(other)),
                     qAbs(qBlue(one) - qBlue(other))});
}

/// The contrast of the ring that a line from the outside crosses. The ring is where the pictures
/// differ most.
double ringOnLine(const QImage &with, const QImage &without, const Line &line) {
    const auto change = [&](qsizetype step) {
        return contrast(colorAt(with, line[step]), colorAt(without, line[step]));
    };
    qsizetype core = 0;
    double most = 1;
    for (qsizetype step = 0; step < line.size(); ++step) {
        if (!changed(with, without, line[step])) {
            continue;
        }
        if (const double found = change(step); found > most) {
            most = found;
            core = step;
        }
    }
    const QRgb ring = colorAt(with, line[core]);
    const auto isRing = [&](qsizetype step) {
        return step >= 0 && step < line.size() && changed(with, without, line[step]) &&
               difference(colorAt(with, line[step]), ring) <= 16;
    };
    qsizetype first = core;
    qsizetype last = core;
    QList<double> changes{most};
    while (isRing(first - 1)) {
        changes << change(--first);
    }
    while (isRing(last + 1)) {
        changes << change(++last);
    }
    double least = median(changes);
    // Two steps away, because the ring's edge may be antialiased.
    for (const qsizetype beside : {first - 2, last + 2}) {
        if (beside >= 0 && beside < line.size()) {
            least = qMin(least, contrast(ring, colorAt(with, line[beside])));
        }
    }
    return least;
}

QList<std::pair<int, QRgb>> byFrequency(const QHash<QRgb, int> &counts) {
    QList<std::pair<int, QRgb>> colors;
    for (auto count = counts.begin(); count != counts.end(); ++count) {
        colors.append({*count, count.key()});
    }
    std::ranges::sort(colors, std::greater());
    return colors;
}

}  // namespace

Picture picture(QWidget &window, const QRect &area, const Without &without) {
    Picture taken{QImage(area.size() * ratio, QImage::Format_ARGB32_Premultiplied), {}};
    taken.pixels.fill(Qt::black);
    Canvas canvas(taken, without.texts ? Draws::ShapesOnly : Draws::All, window.logicalDpiX());
    const Unpainted unpainted(without.control);
    window.render(&canvas, {}, area);
    taken.pixels = taken.pixels.convertToFormat(QImage::Format_RGB32);
    return taken;
}

QList<Text> texts(QWidget &widget) {
    Picture blank{QImage(widget.size() * ratio, QImage::Format_Mono), {}};
    Canvas canvas(blank, Draws::Nothing, widget.logicalDpiX());
    widget.render(&canvas);
    return blank.texts;
}

Picture picture(QWidget &window, const Without &without) {
    return picture(window, window.rect(), without);
}

double contrast(QRgb one, QRgb other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

std::optional<double> inkContrast(const QImage &with, const QImage &without, const QRect &place) {
    QList<double> contrasts;
    visitCovered(with, without, place, [&](const QPoint &at) {
        contrasts << contrast(colorAt(with, at), colorAt(without, at));
    });
    return contrasts.isEmpty() ? std::nullopt : std::optional(median(contrasts));
}

std::optional<double> shapeContrast(const QImage &with, const QImage &without) {
    const QRect box = changedBox(with, without);
    if (box.isEmpty()) {
        return std::nullopt;
    }
    return worstSide(box, 0.2, [&](const Line &line) {
        double best = 1;
        for (const QPoint &at : line) {
            best = qMax(best, contrast(colorAt(with, at), colorAt(without, at)));
        }
        return best;
    });
}

std::optional<double> ringContrast(const QImage &with, const QImage &without) {
    const QRect box = changedBox(with, without);
    if (box.isEmpty()) {
        return std::nullopt;
    }
    // Includes some of the surroundings.
    const QRect around = box.adjusted(-ratio, -ratio, ratio, ratio) & with.rect();
    return worstSide(around, 0.5,
                     [&](const Line &line) { return ringOnLine(with, without, line); });
}

std::optional<double> markContrast(const QImage &with, const QImage &without) {
    QHash<QRgb, int> counts;
    QHash<QRgb, double> faintest;
    int all = 0;
    visitCovered(with, without, with.rect(), [&](const QPoint &at) {
        const QRgb color = colorAt(with, at);
        const std::array beside{at + QPoint(1, 0), at - QPoint(1, 0), at + QPoint(0, 1),
                                at - QPoint(0, 1)};
        // Shades between two colours count for neither.
        if (std::ranges::all_of(
                beside, [&](const QPoint &point) { return colorAt(with, point) == color; })) {
            const double found = contrast(color, colorAt(without, at));
            ++all;
            ++counts[color];
            faintest[color] = qMin(faintest.value(color, found), found);
        }
    });
    if (counts.isEmpty()) {
        return std::nullopt;
    }
    const auto colors = byFrequency(counts);
    const QRgb main = colors.first().second;
    // A shade of the main colour is not a second colour.
    const auto second = std::ranges::find_if(colors, [&](const auto &color) {
        return color.first * 20 > all && difference(color.second, main) > 16;
    });
    return second == colors.end() ? faintest[main]
                                  : qMin(faintest[main], contrast(main, second->second));
}

std::optional<double> piecesContrast(const QImage &with, const QImage &without) {
    std::optional<double> faintest;
    double piece = 0;
    const int y = with.height() / 2;
    for (int x = 0; x < with.width(); ++x) {
        if (changed(with, without, {x, y})) {
            piece = qMax(piece, contrast(with.pixel(x, y), without.pixel(x, y)));
        }
        if (piece > 0 && (x + 1 == with.width() || !changed(with, without, {x + 1, y}))) {
            faintest = qMin(faintest.value_or(piece), piece);
            piece = 0;
        }
    }
    return faintest;
}

QRgb mainColor(const QImage &picture) {
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    return byFrequency(counts).constFirst().second;
}

}  // namespace optics
