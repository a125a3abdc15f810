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
template <class Control>
void findMissing(QStringList &flaws, const QWidget &surface, const QList<optics::Text> &drawn,
                 QString (*textOf)(const Control &)) {
    for (const Control *control : surface.findChildren<Control *>()) {
        if (!control->isVisibleTo(&surface)) {
            continue;
        }
        const QRect place = placeOn(surface, *control);
        QString shown;
        for (const optics::Text &text : drawn) {
            shown += place.contains(text.place.center()) ? text.text : QString();
        }
        if (withoutBlanks(shown) != withoutBlanks(textOf(*control))) {
            flaws << QStringLiteral("\"%1\" is shown as \"%2\"").arg(textOf(*control), shown);
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
    findMissing<QLabel>(flaws, surface, drawn, [](const QLabel &label) { return label.text(); });
    findMissing<QAbstractButton>(flaws, surface, drawn, [](const QAbstractButton &button) {
        return button.text().remove(u'&');
    });
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
