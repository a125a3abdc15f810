#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QScrollArea>

#include "support/optics.h"

/// The texts in a window, as they are drawn.
namespace texts {

inline QString withoutBlanks(QString text) {
    return text.remove(u' ').remove(u'\n');
}

inline QRect placeOn(const QWidget &surface, const QWidget &widget) {
    const QRect place(widget.mapTo(&surface, QPoint()), widget.size());
    return {place.topLeft() * optics::ratio, place.size() * optics::ratio};
}

/// Adds a flaw for each control that does not show its whole text.
inline void findMissing(QStringList &flaws, const QWidget &surface,
                        const QList<optics::Text> &drawn) {
    for (const QWidget *control : surface.findChildren<QWidget *>()) {
        const bool isButton = qobject_cast<const QAbstractButton *>(control) != nullptr;
        const bool isLabel = qobject_cast<const QLabel *>(control) != nullptr;
        if (!control->isVisibleTo(&surface) || !(isButton || isLabel)) {
            continue;
        }
        QString text = control->property("text").toString();
        if (isButton) {
            text.remove(u'&');
        }
        const QRect place = placeOn(surface, *control);
        QString shown;
        for (const optics::Text &part : drawn) {
            shown += place.contains(part.place.center()) ? part.text : QString();
        }
        if (withoutBlanks(shown) != withoutBlanks(text)) {
            flaws << QStringLiteral("\"%1\" is shown as \"%2\"").arg(text, shown);
        }
    }
}

/// What makes texts on the surface hard to read.
inline QStringList flawsOn(QWidget &surface) {
    const QList<optics::Text> drawn = optics::texts(surface);
    QStringList flaws;
    for (auto text = drawn.begin(); text != drawn.end(); ++text) {
        if (!text->whole) {
            flaws << QStringLiteral("\"%1\" is cut off").arg(text->text);
        }
        // Rounded up to whole pixels, a text's place may reach into the next line.
        const QRect place = text->place.adjusted(2, 2, -2, -2);
        for (auto other = std::next(text); other != drawn.end(); ++other) {
            if (place.intersects(other->place)) {
                flaws << QStringLiteral("\"%1\" lies on \"%2\"").arg(text->text, other->text);
            }
        }
    }
    findMissing(flaws, surface, drawn);
    return flaws;
}

/// What makes the window's texts hard to read; empty if nothing does.
inline QString flaws(QWidget &window) {
    QStringList flaws;
    const auto areas = window.findChildren<QScrollArea *>();
    for (QScrollArea *area : areas) {
        flaws << flawsOn(*area->widget());
        area->hide();
    }
    flaws << flawsOn(window);
    for (QScrollArea *area : areas) {
        area->show();
    }
    return flaws.join(u'\n');
}

}  // namespace texts
