#pragma once

#include "support/optics.h"

/// The contrast of each text that a widget draws to its background; 0 if it cannot be seen.
inline QList<double> inkContrasts(QWidget &widget) {
    const optics::Picture with = optics::picture(widget);
    const QImage without = optics::picture(widget, {.texts = true}).pixels;
    QList<double> contrasts;
    for (const optics::Text &text : with.texts) {
        contrasts << optics::inkContrast(with.pixels, without, text.place).value_or(0);
    }
    return contrasts;
}
