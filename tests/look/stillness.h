#pragma once

#include <cmath>
#include <cstdlib>

#include <QAbstractButton>
#include <QImage>
#include <QLabel>
#include <QMap>
#include <QPainter>
#include <QPixmap>
#include <QScrollArea>

#include "controls/textlabel.h"

/// Where things are in a window. The first look at each is remembered; every later look returns
/// what has moved since, which is empty if nothing has.
namespace stillness {

/// The widget's name after its parents' names.
inline QString pathOf(const QWidget &widget) {
    const QString name = widget.objectName().isEmpty()
                             ? QString::fromLatin1(widget.metaObject()->className())
                             : widget.objectName();
    return widget.isWindow() ? name
                             : QStringLiteral("%1/%2").arg(pathOf(*widget.parentWidget()), name);
}

inline QString inWords(const QRect &place) {
    return QStringLiteral("%1 x %2 at (%3, %4)")
        .arg(place.width())
        .arg(place.height())
        .arg(place.x())
        .arg(place.y());
}

inline QString inWords(const QPointF &point) {
    return QStringLiteral("at (%1, %2)").arg(point.x(), 0, 'f', 2).arg(point.y(), 0, 'f', 2);
}

inline QString inWords(const QPoint &point) {
    return QStringLiteral("at (%1, %2)").arg(point.x()).arg(point.y());
}

template <class Place>
bool same(const Place &one, const Place &other) {
    return one == other;
}

/// In another opacity, the middle of the same letters shifts by less than this.
inline bool same(const QPointF &one, const QPointF &other) {
    constexpr double shade = 0.3;
    return std::abs(one.x() - other.x()) < shade && std::abs(one.y() - other.y()) < shade;
}

template <class Place>
class Memory final {
 public:
    void see(const QString &what, const Place &place) {
        const auto known = places_.constFind(what);
        if (known == places_.constEnd()) {
            places_[what] = place;
        } else if (!same(*known, place)) {
            moved_ << QStringLiteral("%1 was %2, is %3").arg(what, inWords(*known), inWords(place));
        }
    }

    /// What has moved in this look.
    QString moved(const QString &moment) {
        QString moved = moved_.isEmpty() ? QString()
                                         : QStringLiteral("%1: %2").arg(
                                               moment, moved_.join(QStringLiteral("\n")));
        moved_.clear();
        return moved;
    }

    qsizetype size() const { return places_.size(); }

 private:
    QMap<QString, Place> places_;
    QStringList moved_;
};

/// The widget's window, or the content of the scroll area that the widget is in.
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

/// The geometry of every widget that is shown.
class Controls final {
 public:
    QString look(const QWidget &window, const QString &moment) {
        places_.see(pathOf(window), window.rect());
        QStringList seen;
        for (const QWidget *widget : window.findChildren<QWidget *>()) {
            if (!widget->isVisible() || widget->window() != &window) {
                continue;
            }
            QString path = pathOf(*widget);
            // Some of Qt's own widgets have no name.
            while (seen.contains(path)) {
                path += u'\'';
            }
            seen << path;
            // A widget that was only scrolled has not moved.
            const QPoint corner = widget->mapTo(surfaceOf(*widget), QPoint());
            places_.see(path, QRect(corner, widget->size()));
        }
        return places_.moved(moment);
    }

    qsizetype size() const { return places_.size(); }

 private:
    Memory<QRect> places_;
};

/// The pixels that the texts of a window are drawn in: those that change when the texts are taken
/// away. It does not matter what draws them, in which colour and on which background.
class Ink final {
 public:
    explicit Ink(QWidget &window) : window_(window), picture_(pictureOf(window)) {
        for (QLabel *label : window.findChildren<QLabel *>()) {
            takeNote(*label, label->text());
        }
        for (QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
            takeNote(*button, button->text());
        }
        // The texts are back before anything is laid out again.
        for (const Text &text : texts_) {
            write(*text.widget, QString());
        }
        bare_ = pictureOf(window);
        for (const Text &text : texts_) {
            write(*text.widget, text.text);
        }
    }

    struct Text {
        QWidget *widget;
        QString text;
    };
    const QList<Text> &texts() const { return texts_; }
    /// The window without its texts, but with everything else that depends on them.
    QImage stage() const {
        QImage stage = picture_;
        QPainter painter(&stage);
        for (const Text &text : texts_) {
            const QRect place = placeOf(*text.widget);
            painter.drawImage(place, bare_, place);
        }
        return stage;
    }

    /// The middle of a text's ink; (-1, -1) if there is none.
    QPointF middleOf(const QWidget &widget) const {
        QPointF sum;
        double ink = 0;
        const QRect place = placeOf(widget);
        for (int y = place.top(); y <= place.bottom(); ++y) {
            const auto *with = reinterpret_cast<const QRgb *>(picture_.constScanLine(y));
            const auto *without = reinterpret_cast<const QRgb *>(bare_.constScanLine(y));
            for (int x = place.left(); x <= place.right(); ++x) {
                if (with[x] != without[x]) {
                    const double here = difference(with[x], without[x]);
                    sum += QPointF(x, y) * here;
                    ink += here;
                }
            }
        }
        return ink > 0 ? sum / ink : QPointF(-1, -1);
    }

    /// The left end and the top of a text's first letter, which is `letterWidth` wide.
    QPoint startOf(const QWidget &widget, int letterWidth) const {
        const QRect place = placeOf(widget);
        const QPoint down(0, 1);
        const QPoint right(1, 0);
        QPoint start = firstInk(place.topLeft(), right, place.width(), down, place.height());
        start.setY(place.top());
        start = firstInk(start, down, place.height(), right, letterWidth / 2);
        // Another line may begin further left.
        start.setX(place.left());
        return firstInk(start, right, place.width(), down, letterWidth / 2);
    }

 private:
    static QImage pictureOf(QWidget &window) {
        return window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    void takeNote(QWidget &widget, const QString &text) {
        if (widget.isVisible() && widget.window() == &window_ && !text.isEmpty()) {
            texts_.append({&widget, text});
        }
    }

    static void write(QWidget &widget, const QString &text) {
        if (auto *ours = qobject_cast<platform::TextLabel *>(&widget)) {
            ours->setStringValue(text);
        } else if (auto *label = qobject_cast<QLabel *>(&widget)) {
            label->setText(text);
        } else if (auto *button = qobject_cast<QAbstractButton *>(&widget)) {
            button->setText(text);
        }
    }

    QRect placeOf(const QWidget &widget) const {
        return QRect(widget.mapTo(&window_, QPoint()), widget.size()) & picture_.rect();
    }

    static int difference(QRgb one, QRgb other) {
        return std::abs(qRed(one) - qRed(other)) + std::abs(qGreen(one) - qGreen(other)) +
               std::abs(qBlue(one) - qBlue(other));
    }

    /// The beginning of the first line with ink in it; `step` leads from one line to the next.
    QPoint firstInk(QPoint from, QPoint step, int steps, QPoint along, int length) const {
        for (int line = 0; line < steps; ++line, from += step) {
            for (int i = 0; i < length; ++i) {
                const QPoint point = from + along * i;
                if (picture_.valid(point) && picture_.pixel(point) != bare_.pixel(point)) {
                    return from;
                }
            }
        }
        return {-1, -1};
    }

    const QWidget &window_;
    QList<Text> texts_;
    QImage picture_;
    QImage bare_;
};

/// Where two pictures of the window differ, and which control is there.
inline QString differenceOf(const QWidget &window, const QImage &picture, const QImage &known,
                            const QString &moment) {
    if (picture == known) {
        return {};
    }
    if (picture.size() != known.size()) {
        return QStringLiteral("%1: the window has another size").arg(moment);
    }
    QRect different;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != known.pixel(x, y)) {
                different |= QRect(x, y, 1, 1);
            }
        }
    }
    const QWidget *child = window.childAt(different.center());
    return QStringLiteral("%1: another picture in %2, %3")
        .arg(moment, inWords(different), pathOf(child == nullptr ? window : *child));
}

/// Where the texts have their ink.
class Writing final {
 public:
    /// Looks at each text; the same text in the same control must not move.
    QString look(const Ink &ink, const QString &moment) {
        for (const Ink::Text &text : ink.texts()) {
            middles_.see(QStringLiteral("\"%1\" in %2").arg(text.text, pathOf(*text.widget)),
                         ink.middleOf(*text.widget));
        }
        return middles_.moved(moment);
    }

    /// Looks at the start of a text; other texts with the same first letter must start there too.
    QString lookAtStart(const Ink &ink, const QLabel &label, const QString &moment) {
        const QString text = label.text();
        const int width = label.fontMetrics().horizontalAdvance(text.first(1));
        starts_.see(QStringLiteral("\"%1\" at the start of %2").arg(text.first(1), pathOf(label)),
                    ink.startOf(label, width));
        return starts_.moved(moment);
    }

 private:
    Memory<QPointF> middles_;
    Memory<QPoint> starts_;
};

}  // namespace stillness
