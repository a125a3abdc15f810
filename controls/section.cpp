#include "controls/section.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>

#include "controls/actionrow.h"
#include "controls/textlabel.h"
#include "look/focus.h"
#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

using namespace Qt::StringLiterals;

namespace platform {

Section::Section(QWidget *parent) : QWidget(parent) {}

bool Section::event(QEvent *event) {
    switch (event->type()) {
        case QEvent::Polish:
            followLabels();
            break;
        case QEvent::Show:
            describe();
            break;
        case QEvent::FocusIn:
            scrollIntoView();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

QList<QLabel *> Section::labels() const {
    QList<QLabel *> labels = findChildren<QLabel *>();
    labels.removeIf([this](const QLabel *label) {
        const QWidget *parent = label->parentWidget();
        while (parent != this && qobject_cast<const Section *>(parent) == nullptr &&
               qobject_cast<const ActionRow *>(parent) == nullptr) {
            parent = parent->parentWidget();
        }
        return parent != this || label->isHidden();
    });
    // A label that is a value's caption is left out: the value's name begins with it.
    QStringList captions;
    for (const QLabel *label : std::as_const(labels)) {
        const auto *value = qobject_cast<const TextLabel *>(label);
        if (value != nullptr && !value->caption().isEmpty()) {
            captions << value->caption();
        }
    }
    labels.removeIf([&](const QLabel *label) { return captions.contains(label->text()); });
    return labels;
}

void Section::followLabels() {
    for (const QLabel *label : labels()) {
        if (const auto *text = qobject_cast<const TextLabel *>(label)) {
            connect(text, &TextLabel::stringValueChanged, this, &Section::describe);
        }
    }
}

void Section::describe() {
    QString name;
    for (const QLabel *label : labels()) {
        const QString text =
            label->accessibleName().isEmpty() ? label->text() : label->accessibleName();
        if (!name.isEmpty()) {
            name += u".?!:"_s.contains(name.back()) ? u" "_s : u". "_s;
        }
        name += text;
    }
    setAccessibleName(name);
}

void Section::scrollIntoView() {
    // By itself the scroll area does this only if the focus moves within it.
    for (QWidget *parent = parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(parent)) {
            area->ensureWidgetVisible(this);
            // If the section is too high to be shown whole, show its top, where the heading is.
            const QPoint top = mapTo(area->widget(), QPoint(0, 0));
            area->ensureVisible(top.x(), top.y(), 0, 0);
        }
    }
}

void Section::paintEvent(QPaintEvent *) {
    const bool focus = look::showsFocus(this);
    if (panel_ || focus) {
        QPainter painter(this);
        look::paintPanel(painter, palette(),
                         {.rect = rect(),
                          .unit = look::unit(*this),
                          .fill = panel_ ? look::Fill::Surface : look::Fill::None,
                          .border = focus ? look::Border::Focus : look::Border::Hairline});
    }
}

}  // namespace platform
