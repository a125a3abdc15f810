#pragma once

#include <QDebug>
#include <QLabel>
#include <QMap>
#include <QScrollArea>

#include "support/optics.h"
#include "support/states.h"

/// What must not move in a window: its controls, and its texts as long as they are the same.
class Stillness final {
 public:
    /// Remembers where each thing is, and notes what is not where it was.
    void look(QWidget &window, const QString &moment) {
        lookAtControls(window, moment);
        QMap<QString, int> seen;
        for (const optics::Text &text : optics::texts(window)) {
            const QWidget *control = window.childAt(text.place.center() / optics::ratio);
            const auto *label = qobject_cast<const QLabel *>(control);
            // Another text may have the same line elsewhere.
            const QString what = QStringLiteral("\"%1\" of \"%2\" in %3")
                                     .arg(text.text, label == nullptr ? text.text : label->text(),
                                          pathOf(control == nullptr ? window : *control));
            const int times = ++seen[what];
            see(QStringLiteral("%1 (%2)").arg(what).arg(times), text.place, moment);
        }
    }

    /// The same without the texts, which is quicker.
    void lookAtControls(const QWidget &window, const QString &moment) {
        see(pathOf(window), window.rect(), moment);
        QMap<QString, int> seen;
        for (const QWidget *widget : window.findChildren<QWidget *>()) {
            if (widget->isVisible() && widget->window() == &window) {
                const QString path = pathOf(*widget);
                // Some of Qt's own widgets have no name.
                const int times = ++seen[path];
                const QPoint corner = widget->mapTo(surfaceOf(widget), QPoint());
                see(QStringLiteral("%1 (%2)").arg(path).arg(times), {corner, widget->size()},
                    moment);
            }
        }
    }

    /// What has moved, and when; empty if nothing has.
    QString moved() const { return moved_.join(u'\n'); }
    qsizetype seen() const { return places_.size(); }

    /// The widget's name after its parents' names.
    static QString pathOf(const QWidget &widget) {
        const QString name = states::nameOf(widget);
        return widget.isWindow() ? name : pathOf(*widget.parentWidget()) + u'/' + name;
    }

 private:
    /// The widget's window, or the page of the scroll area that the widget is in: a widget that was
    /// only scrolled has not moved.
    static const QWidget *surfaceOf(const QWidget *widget) {
        for (const QWidget *part = widget; !part->isWindow(); part = part->parentWidget()) {
            const auto *area = qobject_cast<const QScrollArea *>(part->parentWidget());
            const QWidget *page = area == nullptr ? nullptr : area->widget();
            if (page != nullptr && (page == widget || page->isAncestorOf(widget))) {
                return page;
            }
        }
        return widget->window();
    }

    void see(const QString &what, const QRect &place, const QString &moment) {
        const auto known = places_.constFind(what);
        if (known != places_.constEnd() && *known != place) {
            moved_ << QStringLiteral("%1: %2 was %3, is %4")
                          .arg(moment, what, QDebug::toString(*known), QDebug::toString(place));
        }
        places_[what] = place;
    }

    QMap<QString, QRect> places_;
    QStringList moved_;
};
