#include "look/palette.h"

namespace platform::look {

namespace {

bool isDark(const QPalette &palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

/// `base` with a share of `colour`.
QColor tint(const QColor &base, const QColor &colour, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(base.redF(), colour.redF()), mix(base.greenF(), colour.greenF()),
                            mix(base.blueF(), colour.blueF()));
}

/// The window's colour with a share of its text colour.
QColor tint(const QPalette &palette, float share) {
    return tint(palette.color(QPalette::Window),
                palette.color(QPalette::Active, QPalette::WindowText), share);
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

QColor hairline(const QPalette &palette) {
    return tint(palette, 0.16F);
}

QColor fillColor(const QPalette &palette, Fill fill) {
    const QColor surface = isDark(palette) ? tint(palette, 0.06F) : palette.color(QPalette::Base);
    switch (fill) {
        case Fill::None:
            break;
        case Fill::Window:
            return palette.color(QPalette::Window);
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

}  // namespace platform::look
