#include "look/palette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace platform::look {

namespace {

// Contrasts, from 1 to 21.
constexpr double readable = 4.5;
constexpr double visible = 3;
/// Enough for thin lines; more would make them louder than the text.
constexpr double outlined = 3.3;
/// The opacity is rounded when it is drawn.
constexpr double readableAtHalfOpacity = 3.1;
/// The band says nothing by itself, and every window leaves it as much.
constexpr double setOff = 1.6;
/// Of text on its window, where the palette is meant to have as much as there can be.
constexpr double high = 20;

constexpr float hoveredShare = 0.09F;
constexpr float prominentShare = 0.12F;
constexpr float pressedShare = 0.16F;

/// The share of light of each of a channel's levels: a power, and slow to compute.
const std::array<double, 256> &linearLevels() {
    static const std::array levels = [] {
        std::array<double, 256> table{};
        for (std::size_t level = 0; level < table.size(); ++level) {
            const double share = double(level) / 255;
            table.at(level) =
                share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        }
        return table;
    }();
    return levels;
}

double luminance(const QColor &color) {
    const std::array<double, 256> &levels = linearLevels();
    const QRgba64 drawn = color.rgba64();
    return 0.2126 * levels.at(drawn.red8()) + 0.7152 * levels.at(drawn.green8()) +
           0.0722 * levels.at(drawn.blue8());
}

double contrast(const QColor &one, const QColor &other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// `base` with a share of `colour`.
QColor tint(const QColor &base, const QColor &colour, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(base.redF(), colour.redF()), mix(base.greenF(), colour.greenF()),
                            mix(base.blueF(), colour.blueF()));
}

/// As it is seen on that background.
QColor opaque(const QColor &color, const QColor &background) {
    return color.alpha() == 255 ? color : tint(background, color, color.alphaF());
}

/// The first colour on the way from one to the other that is enough; the other if none is.
template <class Enough>
QColor moved(const QColor &from, const QColor &to, Enough enough) {
    if (enough(from)) {
        return from;
    }
    // What is measured is what is drawn, in eight bits.
    const auto at = [&](float share) { return QColor(tint(from, to, share).rgba64().toArgb32()); };
    constexpr int steps = 8;
    float tooLittle = 0;
    float much = 1;
    for (int step = 0; step < steps; ++step) {
        const float middle = (tooLittle + much) / 2;
        (enough(at(middle)) ? much : tooLittle) = middle;
    }
    return at(much);
}

/// What a palette has for us, and what that demands.
struct Given {
    QColor window;
    QColor base;
    QColor text;
    bool isDark;
    /// The ends of the way on which text is moved away from the window, or the window from it.
    QColor strongest;
    QColor opposite;
    /// What text must have; less only if the palette has less.
    double wanted;

    Given(const QPalette &palette, QPalette::ColorGroup group)
        : window(palette.color(group, QPalette::Window)),
          base(palette.color(group, QPalette::Base)),
          text(opaque(palette.color(group, QPalette::WindowText), window)),
          isDark(luminance(text) > luminance(window)),
          strongest(isDark ? Qt::white : Qt::black),
          opposite(isDark ? Qt::black : Qt::white),
          wanted(qMin(contrast(text, window), readable)) {}
};

QColor surfaceOf(const Given &given) {
    // Even held down it must leave room for every other colour.
    const auto isGround = [&](const QColor &color) {
        return contrast(given.strongest, tint(color, given.strongest, pressedShare)) >=
               given.wanted;
    };
    if (!given.isDark && contrast(given.text, given.base) >= given.wanted && isGround(given.base)) {
        return given.base;
    }
    const QColor raised = given.isDark ? tint(given.window, given.text, 0.06F)
                                       : tint(given.window, given.opposite, 0.5F);
    const QColor sunken = tint(given.window, given.opposite, 0.06F);
    return isGround(raised) ? raised : moved(sunken, given.opposite, isGround);
}

QColor accentOn(const QColor &surface, const Given &given) {
    const QColor blue = given.isDark ? QColor(0x9d, 0xb2, 0xff) : QColor(0x3a, 0x55, 0xc4);
    return moved(blue, given.strongest, [&](const QColor &color) {
        const QColor pressed = tint(surface, color, pressedShare);
        return contrast(color, given.window) >= visible && contrast(color, pressed) >= visible;
    });
}

bool isReadableAtHalfOpacity(const QColor &text, const QColor &ground) {
    return contrast(tint(ground, text, disabledOpacity), ground) >= readableAtHalfOpacity;
}

QColor fadedGroundOf(const Given &given) {
    return moved(given.window, given.opposite, [&](const QColor &ground) {
        return isReadableAtHalfOpacity(given.strongest, ground);
    });
}

QColor bandOn(const Given &given) {
    const QColor usual = given.isDark ? QColor(0x41, 0x50, 0x96) : QColor(0x2b, 0x35, 0x63);
    return moved(usual, Qt::black,
                 [&](const QColor &color) { return contrast(color, given.window) >= setOff; });
}

/// Every colour that is derived from a palette.
struct Colors {
    QColor surface;
    QColor accent;
    QColor onAccent;
    QColor text;
    QColor secondaryText;
    QColor outline;
    QColor hairline;
    QColor faded;
    QColor fadedText;
    QColor band;

    explicit Colors(const Given &given);
    QColor tinted(float share) const { return tint(surface, accent, share); }
};

Colors::Colors(const Given &given)
    : surface(surfaceOf(given)),
      accent(accentOn(surface, given)),
      onAccent(given.isDark ? QColor(0x12, 0x18, 0x33) : QColor(Qt::white)),
      band(bandOn(given)) {
    const std::array fills{given.window, surface, tinted(hoveredShare), tinted(prominentShare),
                           tinted(pressedShare)};
    const QColor nearest = *std::ranges::min_element(
        fills, {}, [&](const QColor &fill) { return contrast(given.strongest, fill); });
    const auto has = [&](double wanted) {
        return
            [&nearest, wanted](const QColor &color) { return contrast(color, nearest) >= wanted; };
    };
    text = moved(given.text, given.strongest, has(given.wanted));
    secondaryText = moved(tint(given.window, given.text, 0.76F), text, has(given.wanted));
    const bool isHigh = contrast(given.text, given.window) >= high;
    hairline = tint(given.window, given.text, isHigh ? 0.6F : 0.16F);
    outline = moved(hairline, given.strongest, has(outlined));
    hairline = isHigh ? outline : hairline;

    const QColor fadedGround = fadedGroundOf(given);
    faded = fadedGround == given.window ? QColor(Qt::transparent) : fadedGround;
    fadedText = moved(text, given.strongest, [&](const QColor &color) {
        return isReadableAtHalfOpacity(color, fadedGround);
    });
}

/// Those of the last palette are kept: a window asks for them many times each time it is drawn.
const Colors &colorsOf(const QPalette &palette) {
    // What is disabled fades as a whole, on a window that does not.
    const QPalette::ColorGroup group = palette.currentColorGroup() == QPalette::Disabled
                                           ? QPalette::Active
                                           : palette.currentColorGroup();
    static std::pair last(palette.cacheKey(), group);
    static Colors colors(Given(palette, group));
    if (const std::pair now(palette.cacheKey(), group); now != last) {
        last = now;
        colors = Colors(Given(palette, group));
    }
    return colors;
}

}  // namespace

QColor accent(const QPalette &palette) {
    return colorsOf(palette).accent;
}

QColor onAccent(const QPalette &palette) {
    return colorsOf(palette).onAccent;
}

QColor text(const QPalette &palette) {
    return colorsOf(palette).text;
}

QColor secondaryText(const QPalette &palette) {
    return colorsOf(palette).secondaryText;
}

QColor fadedText(const QPalette &palette) {
    return colorsOf(palette).fadedText;
}

QColor outline(const QPalette &palette) {
    return colorsOf(palette).outline;
}

QColor hairline(const QPalette &palette) {
    return colorsOf(palette).hairline;
}

QColor fillColor(const QPalette &palette, Fill fill) {
    const Colors &colors = colorsOf(palette);
    switch (fill) {
        case Fill::None:
            break;
        case Fill::Window:
            return palette.color(QPalette::Window);
        case Fill::Faded:
            return colors.faded;
        case Fill::Surface:
            return colors.surface;
        case Fill::Hovered:
            return colors.tinted(hoveredShare);
        case Fill::Prominent:
            return colors.tinted(prominentShare);
        case Fill::Pressed:
            return colors.tinted(pressedShare);
        case Fill::Accent:
            return colors.accent;
        case Fill::HoveredAccent:
            return tint(colors.accent, colors.onAccent, hoveredShare);
        case Fill::Outline:
            return colors.outline;
        case Fill::Band:
            return colors.band;
    }
    return Qt::transparent;
}

}  // namespace platform::look
