#include "look/theme.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QBackingStore>
#include <QBoxLayout>
#include <QDialog>
#include <QEvent>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGridLayout>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace platform::look {

namespace {

struct TextStyle {
    const char16_t *name;
    double size;
    QFont::Weight weight;
};

// Each step is about 1.17 of the one below.
constexpr std::array textStyles{
    TextStyle{u"title", 1.6, QFont::DemiBold},
    TextStyle{u"question", 1.37, QFont::Normal},
    TextStyle{u"heading", 1.17, QFont::DemiBold},
    TextStyle{u"caption", 0.88, QFont::Normal},
};

/// In units.
struct Spacing {
    const char16_t *name;
    double sideMargin;
    double endMargin;
    double gapAcross;
    double gapDown;
};

constexpr std::array spacings{
    Spacing{u"window", 3, 2.25, 1, 1.8}, Spacing{u"flush", 0, 0, 0, 0},
    Spacing{u"section", 0, 0, 2, 2},     Spacing{u"panel", 2, 2, 2, 1},
    Spacing{u"row", 1.5, 1, 1.5, 0},     Spacing{u"step", 1.5, 0.5, 1.5, 0},
    Spacing{u"list", 0, 0, 1, 0.6},      Spacing{u"page", 2, 2, 0, 0.5},
    Spacing{u"text", 1, 1, 2, 0.8},      Spacing{u"foot", 3, 2, 1, 1},
    Spacing{u"edge", 0, 0, 3, 1},        Spacing{u"", 0, 0, 1, 1},
};

bool isDark(const QPalette &palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

/// `base` with a share of `colour`.
QColor tint(const QColor &base, const QColor &colour, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(base.redF(), colour.redF()), mix(base.greenF(), colour.greenF()),
                            mix(base.blueF(), colour.blueF()));
}

/// The window's colour with a share of its text's.
QColor tint(const QPalette &palette, float share) {
    return tint(palette.color(QPalette::Window),
                palette.color(QPalette::Active, QPalette::WindowText), share);
}

QPen borderPen(const QPalette &palette, Border border, double unit) {
    switch (border) {
        case Border::None:
            break;
        case Border::Hairline:
            return {tint(palette, 0.16F), 1};
        case Border::Outline:
            return {outline(palette), borderWidth * unit};
        case Border::Accent:
            return {accent(palette), borderWidth * unit};
        case Border::Focus:
            return {accent(palette), focusWidth * unit};
    }
    return Qt::NoPen;
}

template <class Entry, std::size_t size>
const Entry *named(const std::array<Entry, size> &entries, const QVariant &name) {
    for (const Entry &entry : entries) {
        if (name.toString() == QStringView(entry.name)) {
            return &entry;
        }
    }
    return nullptr;
}

void scaleText(QWidget &widget) {
    if (const TextStyle *style = named(textStyles, widget.property("textStyle"))) {
        // What it would have without a style of its own.
        widget.setFont(QFont());
        QFont font = widget.font();
        setSize(font, font, style->size);
        font.setWeight(style->weight);
        widget.setFont(font);
    }
}

void setGaps(QLayout &layout, const Spacing &spacing, double unit) {
    const int across = qRound(spacing.gapAcross * unit);
    const int down = qRound(spacing.gapDown * unit);
    if (auto *grid = qobject_cast<QGridLayout *>(&layout)) {
        grid->setHorizontalSpacing(across);
        grid->setVerticalSpacing(down);
    } else if (const auto *box = qobject_cast<QBoxLayout *>(&layout)) {
        const bool isRow = box->direction() == QBoxLayout::LeftToRight;
        layout.setSpacing(isRow ? across : down);
    }
}

void space(const QWidget &widget, double unit) {
    QLayout *layout = widget.layout();
    const bool isDialog = qobject_cast<const QDialog *>(&widget) != nullptr;
    const Spacing *spacing =
        named(spacings, isDialog ? QVariant(u"window"_s) : widget.property("spacing"));
    if (spacing == nullptr || (qobject_cast<QBoxLayout *>(layout) == nullptr &&
                               qobject_cast<QGridLayout *>(layout) == nullptr)) {
        return;
    }
    const int side = qRound(spacing->sideMargin * unit);
    const int end = qRound(spacing->endMargin * unit);
    layout->setContentsMargins(side, end, side, end);
    setGaps(*layout, *spacing, unit);
    for (QLayout *within : layout->findChildren<QLayout *>()) {
        setGaps(*within, *spacing, unit);
    }
    const auto *box = qobject_cast<const QMessageBox *>(&widget);
    auto *grid = qobject_cast<QGridLayout *>(layout);
    if (box != nullptr && grid != nullptr && box->iconPixmap().isNull()) {
        // No icon stands before the text.
        grid->setHorizontalSpacing(0);
    }
}

/// `rect` with its edges on whole pixels of the device.
QRectF snapped(const QPainter &painter, const QRectF &rect) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF there = toDevice.mapRect(rect);
    const QPointF topLeft(qRound(there.left()), qRound(there.top()));
    const QPointF bottomRight(qRound(there.right()), qRound(there.bottom()));
    return toDevice.inverted().mapRect(QRectF(topLeft, bottomRight));
}

/// Dresses a window anew once all that is in it has heard of the change.
class Polisher final : public QObject {
 public:
    Polisher(QWidget &window, std::function<void()> polishedAgain)
        : QObject(&window), window_(window), polishedAgain_(std::move(polishedAgain)) {
        for (const QScreen *screen : QGuiApplication::screens()) {
            connect(screen, &QScreen::logicalDotsPerInchChanged, this, &Polisher::takeUpResolution);
        }
    }

    bool eventFilter(QObject *, QEvent *event) override {
        switch (event->type()) {
            case QEvent::ApplicationFontChange:
            case QEvent::FontChange:
            case QEvent::StyleChange:
                polishSoon();
                break;
            default:
                break;
        }
        return false;
    }

 private:
    /// A window learns by itself only of a resolution that comes with another screen.
    void takeUpResolution() {
        QWindow *handle = window_.windowHandle();
        if (handle == nullptr) {
            return;
        }
        // What the window manager was told is in pixels of the device.
        window_.setBaseSize({});
        window_.setBaseSize(window_.size());
        handle->resize(window_.size());
        if (QBackingStore *store = window_.backingStore()) {
            store->resize(window_.size());
        }
        Q_EMIT handle->screenChanged(handle->screen());
        polishSoon();
    }

    void polishSoon() {
        if (!std::exchange(due_, true)) {
            QMetaObject::invokeMethod(
                this, [this] { polishAgain(); }, Qt::QueuedConnection);
        }
    }

    void polishAgain() {
        due_ = false;
        polish(window_);
        settle();
        if (polishedAgain_) {
            polishedAgain_();
        }
        if (qobject_cast<QMessageBox *>(&window_) != nullptr) {
            // A box takes its size when it is asked to, not when something in it has another.
            settle();
            window_.layout()->invalidate();
            QEvent request(QEvent::LayoutRequest);
            QCoreApplication::sendEvent(&window_, &request);
        }
    }

    /// Has layouts ask anew what they need, from the innermost on.
    void settle() {
        QList<QWidget *> widgets = window_.findChildren<QWidget *>();
        std::ranges::reverse(widgets);
        for (QWidget *widget : std::as_const(widgets)) {
            QCoreApplication::sendPostedEvents(widget, QEvent::LayoutRequest);
        }
    }

    QWidget &window_;
    std::function<void()> polishedAgain_;
    bool due_ = false;
};

void enlargeButton(QAbstractButton &button, double unit) {
    const QSize needed = button.sizeHint();
    button.setMinimumHeight(qMax(qRound(smallestTarget * unit), needed.height()));
    if (qobject_cast<QPushButton *>(&button) != nullptr) {
        button.setMinimumWidth(needed.width() + qRound(3 * unit));
    }
}

}  // namespace

QColor accent(const QPalette &palette) {
    return isDark(palette) ? QColor(0x9d, 0xb2, 0xff) : QColor(0x3a, 0x55, 0xc4);
}

QColor onAccent(const QPalette &palette) {
    return isDark(palette) ? QColor(0x12, 0x18, 0x33) : QColor(Qt::white);
}

QColor secondaryText(const QPalette &palette) {
    return tint(palette, 0.76F);
}

QColor outline(const QPalette &palette) {
    return tint(palette, 0.6F);
}

QColor fillColor(const QPalette &palette, Fill fill) {
    const QColor surface = isDark(palette) ? tint(palette, 0.06F) : palette.color(QPalette::Base);
    switch (fill) {
        case Fill::None:
            break;
        case Fill::Surface:
            return surface;
        case Fill::Hovered:
            return tint(surface, accent(palette), 0.09F);
        case Fill::Prominent:
            return tint(surface, accent(palette), 0.12F);
        case Fill::Pressed:
            return tint(surface, accent(palette), 0.16F);
        case Fill::Accent:
            return accent(palette);
        case Fill::HoveredAccent:
            return tint(accent(palette), onAccent(palette), 0.09F);
        case Fill::Outline:
            return outline(palette);
        case Fill::Band:
            return isDark(palette) ? QColor(0x41, 0x50, 0x96) : QColor(0x2b, 0x35, 0x63);
    }
    return Qt::transparent;
}

double unit(const QWidget &widget) {
    return QFontMetricsF(widget.font()).height() / 2;
}

double characterWidth(const QFont &font) {
    const double em = QFontInfo(font).pointSizeF() * QFontMetricsF(font).fontDpi() / 72;
    return qMax(0.0, em * 0.555);
}

void setSize(QFont &font, const QFont &other, double times) {
    // The desktop may have set the other in pixels; and where there are no fonts, none has a size.
    if (const double points = QFontInfo(other).pointSizeF(); points > 0) {
        font.setPointSizeF(points * times);
    }
}

void paintPanel(QPainter &painter, const QPalette &palette, const Panel &panel) {
    QPen pen = borderPen(palette, panel.border, panel.unit);
    double width = 0;
    if (pen.style() != Qt::NoPen) {
        const double pixel = 1 / painter.deviceTransform().m11();
        const double pixels = pen.widthF() / pixel;
        // Never wider than a border that means something.
        width = qMax(1, panel.border == Border::Hairline ? int(pixels) : qRound(pixels)) * pixel;
        pen.setWidthF(width);
    }
    const QRectF outer = snapped(painter, panel.rect);
    const auto draw = [&](double inset, const QPen &outline, const QBrush &inside) {
        const double radius = panel.radius * panel.unit - inset;
        painter.setPen(outline);
        painter.setBrush(inside);
        painter.drawRoundedRect(outer.adjusted(inset, inset, -inset, -inset), radius, radius);
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (panel.fill == Fill::None) {
        draw(width / 2, pen, Qt::NoBrush);
    } else {
        // One upon the other: to draw a line takes several times as long as to fill.
        if (width > 0) {
            draw(0, Qt::NoPen, pen.color());
        }
        draw(width, Qt::NoPen, fillColor(palette, panel.fill));
    }
    painter.restore();
}

void paintGlyph(QPainter &painter, const QRectF &square, double unit, Glyph glyph,
                const QColor &color) {
    const auto at = [&](double x, double y) {
        return QPointF(square.x() + x * square.width(), square.y() + y * square.height());
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, glyphWidth * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (glyph == Glyph::Tick) {
        const std::array points{at(0.27, 0.53), at(0.43, 0.69), at(0.73, 0.34)};
        painter.drawPolyline(points.data(), int(points.size()));
    } else {
        painter.drawLine(at(0.32, 0.32), at(0.68, 0.68));
        painter.drawLine(at(0.68, 0.32), at(0.32, 0.68));
    }
    painter.restore();
}

void polish(QWidget &window) {
    // A style sheet gives its fonts as it polishes.
    window.ensurePolished();
    const double unit = look::unit(window);
    space(window, unit);
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        scaleText(*widget);
        space(*widget, unit);
        if (widget->property("keepsRoom").toBool()) {
            QSizePolicy policy = widget->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            widget->setSizePolicy(policy);
        }
        if (const int characters = widget->property("widest").toInt(); characters > 0) {
            widget->setMaximumWidth(qRound(characters * characterWidth(widget->font())));
        }
        if (auto *button = qobject_cast<QAbstractButton *>(widget)) {
            enlargeButton(*button, unit);
        }
        // What was measured before is measured anew.
        widget->updateGeometry();
    }
    for (QScrollArea *area : window.findChildren<QScrollArea *>()) {
        if (area->horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff) {
            // It scrolls up and down only: a line is never cut off.
            area->setMinimumWidth(area->widget()->minimumSizeHint().width() +
                                  area->verticalScrollBar()->sizeHint().width());
            area->verticalScrollBar()->setAccessibleName(area->accessibleName());
        }
    }
}

void keepPolished(QWidget &window, std::function<void()> polishedAgain) {
    polish(window);
    window.installEventFilter(new Polisher(window, std::move(polishedAgain)));
}

}  // namespace platform::look
