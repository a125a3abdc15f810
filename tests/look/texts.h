#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyleOptionButton>

#include "platform/rowbutton.h"

/// The texts in a window, and where they are drawn.
namespace texts {

struct Text {
    QString text;
    /// What it is drawn on: the window, or what a scroll area in it scrolls.
    const QWidget *surface;
    /// What it takes of the surface.
    QRect place;
    bool cutOff;
};

inline const QWidget *surfaceOf(const QWidget &widget) {
    const QWidget *surface = &widget;
    while (!surface->isWindow()) {
        const QWidget *parent = surface->parentWidget();
        const auto *area =
            parent == nullptr ? nullptr : qobject_cast<const QScrollArea *>(parent->parentWidget());
        if (area != nullptr && area->widget() == surface) {
            break;
        }
        surface = parent;
    }
    return surface;
}

/// `place` is in the widget's own coordinates, and so is `room`.
inline Text textOn(const QWidget &widget, const QString &text, const QRect &place,
                   const QRect &room) {
    const QWidget *surface = surfaceOf(widget);
    return {text, surface, place.translated(widget.mapTo(surface, QPoint())),
            place.width() > room.width() || place.height() > room.height()};
}

inline Text textOf(const QLabel &label) {
    const QRect room = label.contentsRect();
    const int flags = int(label.alignment()) | (label.wordWrap() ? Qt::TextWordWrap : 0);
    return textOn(label, label.text(), label.fontMetrics().boundingRect(room, flags, label.text()),
                  room);
}

/// Where a button puts its text.
struct Lettering {
    QRect room;
    Qt::Alignment alignment;
};

inline Lettering letteringOf(const QAbstractButton &button) {
    const Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
    if (qobject_cast<const platform::RowButton *>(&button) != nullptr) {
        return {button.rect(), button.property("badge").toBool() ? Qt::AlignCenter : left};
    }
    const bool radio = qobject_cast<const QRadioButton *>(&button) != nullptr;
    QStyleOptionButton option;
    option.initFrom(&button);
    const QRect room = button.style()->subElementRect(
        radio ? QStyle::SE_RadioButtonContents : QStyle::SE_PushButtonContents, &option, &button);
    return {room, radio ? left : Qt::AlignCenter};
}

inline Text textOf(const QAbstractButton &button) {
    const auto [room, alignment] = letteringOf(button);
    const int flags = int(alignment) | Qt::TextShowMnemonic;
    return textOn(button, button.text(),
                  button.fontMetrics().boundingRect(room, flags, button.text()), room);
}

template <class Control>
void addTexts(QList<Text> &texts, const QWidget &window) {
    for (const Control *control : window.findChildren<Control *>()) {
        if (control->isVisible() && !control->text().isEmpty()) {
            texts << textOf(*control);
        }
    }
}

/// The texts that are shown.
inline QList<Text> in(const QWidget &window) {
    QList<Text> texts;
    addTexts<QLabel>(texts, window);
    addTexts<QAbstractButton>(texts, window);
    return texts;
}

/// What keeps somebody from reading the texts; empty where nothing does.
inline QString flaws(const QWidget &window) {
    QStringList flaws;
    const QList<Text> texts = in(window);
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        if (text->cutOff) {
            flaws << QStringLiteral("\"%1\" is cut off").arg(text->text);
        }
        if (!text->surface->rect().contains(text->place)) {
            flaws << QStringLiteral("\"%1\" leaves the window").arg(text->text);
        }
        for (auto other = std::next(text); other != texts.end(); ++other) {
            if (text->surface == other->surface && text->place.intersects(other->place)) {
                flaws << QStringLiteral("\"%1\" lies on \"%2\"").arg(text->text, other->text);
            }
        }
    }
    return flaws.join(u'\n');
}

}  // namespace texts
