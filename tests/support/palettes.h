#pragma once

#include "support/drawing.h"

/// The desktops' colours in which everything has to be readable.
namespace palettes {

struct Named {
    const char *name;
    QPalette palette;
};

/// What is on a background, and the background.
struct Pair {
    QRgb text;
    QRgb background;
};

inline QPalette of(const Pair &window, const Pair &base, const Pair &button,
                   const Pair &highlight) {
    QPalette palette(button.background, window.background);
    palette.setColor(QPalette::WindowText, window.text);
    palette.setColor(QPalette::Base, base.background);
    palette.setColor(QPalette::Text, base.text);
    palette.setColor(QPalette::ButtonText, button.text);
    palette.setColor(QPalette::Highlight, highlight.background);
    palette.setColor(QPalette::HighlightedText, highlight.text);
    return palette;
}

inline QPalette highContrastBlack() {
    constexpr Pair text{0xffffff, 0x000000};
    return of(text, text, text, {0x000000, 0x1aebff});
}

inline QPalette highContrastWhite() {
    constexpr Pair text{0x000000, 0xffffff};
    return of(text, text, text, {0xffffff, 0x37006e});
}

/// Its own text has 4.1 to 1 on the window, and less on its other colours.
inline QPalette cream() {
    constexpr Pair text{0x657b83, 0xeee8d5};
    return of({0x657b83, 0xfdf6e3}, text, text, {0xfdf6e3, 0x268bd2});
}

/// Its own text has 4.1 to 1 on the window, and less on lighter colours.
inline QPalette dusk() {
    constexpr Pair text{0x78898b, 0x001e26};
    return of({0x78898b, 0x002b36}, text, text, {0x002b36, 0x2aa198});
}

/// The window's text cannot be seen on the base.
inline QPalette strong(QRgb window) {
    constexpr Pair text{0x000000, 0xffffff};
    return of({0xffffff, window}, text, {0x000000, 0xd4d0c8}, {0x000000, 0xffd700});
}

inline QPalette blue() {
    return strong(0x2060c0);
}

/// So bright that white at half opacity has less than 3 to 1.
inline QPalette red() {
    return strong(0xc00000);
}

inline QPalette yellow() {
    constexpr Pair text{0xffffff, 0x303030};
    return of({0x000000, 0xffd500}, text, text, {0xffffff, 0x0000c0});
}

inline QList<Named> all() {
    return {{"light", QApplication::palette()},
            {"dark", drawing::darkPalette()},
            {"high contrast black", highContrastBlack()},
            {"high contrast white", highContrastWhite()},
            {"cream", cream()},
            {"dusk", dusk()},
            {"blue", blue()},
            {"red", red()},
            {"yellow", yellow()}};
}

/// Adds a column `palette` with a row for each of them.
inline void addAll() {
    QTest::addColumn<QPalette>("palette");
    for (const auto &[name, palette] : all()) {
        QTest::newRow(name) << palette;
    }
}

}  // namespace palettes
