#include "platform/theme.h"

#include <array>

#include <QFontInfo>
#include <QFontMetricsF>
#include <QLayout>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QWidget>

#include "platform/rowbutton.h"

namespace platform::theme {

namespace {

struct TextStyle {
    const char16_t *name;
    double size;
    QFont::Weight weight;
};

constexpr std::array textStyles{
    TextStyle{u"title", 1.6, QFont::DemiBold},
    TextStyle{u"heading", 1.15, QFont::DemiBold},
    TextStyle{u"question", 1.3, QFont::Normal},
    TextStyle{u"caption", 0.9, QFont::Normal},
};

bool isDark(const QPalette &palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

/// `ground` with a share of `colour`.
QColor tint(const QColor &ground, const QColor &colour, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(ground.redF(), colour.redF()),
                            mix(ground.greenF(), colour.greenF()),
                            mix(ground.blueF(), colour.blueF()));
}

/// The window's colour with a share of its text's.
QColor tint(const QPalette &palette, float share) {
    return tint(palette.color(QPalette::Window),
                palette.color(QPalette::Active, QPalette::WindowText), share);
}

void scaleText(QWidget &widget) {
    const QString name = widget.property("textStyle").toString();
    for (const TextStyle &style : textStyles) {
        if (name == QStringView(style.name)) {
            QFont font = widget.font();
            // The desktop may have set the font in pixels.
            font.setPointSizeF(QFontInfo(font).pointSizeF() * style.size);
            font.setWeight(style.weight);
            widget.setFont(font);
        }
    }
}

}  // namespace

QColor accent(const QPalette &palette) {
    return isDark(palette) ? QColor(0x9d, 0xb2, 0xff) : QColor(0x3a, 0x55, 0xc4);
}

QColor onAccent(const QPalette &palette) {
    return isDark(palette) ? QColor(0x12, 0x18, 0x33) : QColor(Qt::white);
}

QColor surface(const QPalette &palette) {
    return isDark(palette) ? tint(palette, 0.06F) : palette.color(QPalette::Base);
}

QColor prominentSurface(const QPalette &palette) {
    return tint(surface(palette), accent(palette), 0.12F);
}

QColor hairline(const QPalette &palette) {
    return tint(palette, 0.18F);
}

QColor outline(const QPalette &palette) {
    return tint(palette, 0.55F);
}

QColor band(const QPalette &palette) {
    return isDark(palette) ? QColor(0x41, 0x50, 0x96) : QColor(0x2b, 0x35, 0x63);
}

double unit(const QWidget &widget) {
    return QFontMetricsF(widget.font()).height() / 2;
}

QPen focusPen(const QPalette &palette) {
    return {accent(palette), 2.5};
}

void paintPanel(QWidget &widget, const QColor &ground, Edge edge) {
    const QPalette &palette = widget.palette();
    QPen pen(hairline(palette), 1);
    if (edge == Edge::Focused) {
        pen = focusPen(palette);
    } else if (edge == Edge::Lit) {
        pen = QPen(accent(palette), 1.5);
    }
    QPainter painter(&widget);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(ground);
    const double inset = pen.widthF() / 2;
    const double radius = unit(widget) * 1.25;
    painter.drawRoundedRect(QRectF(widget.rect()).adjusted(inset, inset, -inset, -inset), radius,
                            radius);
}

void dress(QWidget &window) {
    const double scale = unit(window) / 8;
    for (QLayout *layout : window.findChildren<QLayout *>()) {
        layout->setContentsMargins((QMarginsF(layout->contentsMargins()) * scale).toMargins());
        layout->setSpacing(qRound(layout->spacing() * scale));
    }
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        scaleText(*widget);
        if (widget->property("keepsRoom").toBool()) {
            QSizePolicy policy = widget->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            widget->setSizePolicy(policy);
        }
        if (const int characters = widget->property("widest").toInt(); characters > 0) {
            widget->setMaximumWidth(characters * widget->fontMetrics().averageCharWidth());
        }
        if (qobject_cast<QAbstractButton *>(widget) != nullptr) {
            widget->setMinimumHeight(
                qMax(qRound(smallestTarget * unit(window)), widget->sizeHint().height()));
        }
        if (auto *button = qobject_cast<QPushButton *>(widget);
            button != nullptr && qobject_cast<RowButton *>(widget) == nullptr) {
            button->setMinimumWidth(button->sizeHint().width() + qRound(2 * unit(window)));
        }
    }
    for (QScrollArea *area : window.findChildren<QScrollArea *>()) {
        // What was measured before it was dressed is measured anew.
        for (QWidget *widget : area->findChildren<QWidget *>()) {
            widget->updateGeometry();
        }
        // It scrolls up and down only: a line is never cut off.
        area->setMinimumWidth(area->widget()->minimumSizeHint().width() +
                              area->verticalScrollBar()->sizeHint().width());
        area->verticalScrollBar()->setAccessibleName(area->accessibleName());
    }
}

}  // namespace platform::theme
