#include "platform/buttonrow.h"

#include <QAbstractButton>
#include <QMouseEvent>

#include "platform/levelindicator.h"
#include "platform/textlabel.h"
#include "platform/theme.h"

using namespace Qt::StringLiterals;

namespace platform {

ButtonRow::ButtonRow(QWidget *parent) : QWidget(parent) {
    setAttribute(Qt::WA_Hover);
}

bool ButtonRow::event(QEvent *event) {
    if (event->type() == QEvent::Polish) {
        adoptButton();
    }
    return QWidget::event(event);
}

void ButtonRow::adoptButton() {
    button_ = findChild<QAbstractButton *>();
    if (button_ == nullptr) {
        qFatal("The row \"%s\" has no button to press", qUtf8Printable(objectName()));
    }
    button_->installEventFilter(this);
    if (auto *label = findChild<TextLabel *>()) {
        const auto name = [button = button_](const QString &text) {
            button->setAccessibleName(
                u"%1: %2"_s.arg(button->text(), text.isEmpty() ? u"empty"_s : text));
        };
        name(label->text());
        connect(label, &TextLabel::stringValueChanged, button_, name);
    }
    if (const auto *level = findChild<LevelIndicator *>()) {
        button_->setAccessibleDescription(level->valueInWords());
        connect(level, &LevelIndicator::valueInWordsChanged, button_,
                &QAbstractButton::setAccessibleDescription);
    }
}

bool ButtonRow::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
        case QEvent::FocusIn:
        case QEvent::FocusOut:
        case QEvent::EnabledChange:
        case QEvent::HoverEnter:
        case QEvent::HoverLeave:
            update();
            break;
        default:
            break;
    }
    return QWidget::eventFilter(watched, event);
}

void ButtonRow::mousePressEvent(QMouseEvent *event) {
    button_->setDown(button_->isEnabled() && event->button() == Qt::LeftButton);
}

void ButtonRow::mouseDoubleClickEvent(QMouseEvent *event) {
    // A double click is one press: its second half must not open a second window.
    event->accept();
}

void ButtonRow::mouseReleaseEvent(QMouseEvent *event) {
    const bool pressed = button_->isDown();
    button_->setDown(false);
    if (pressed && rect().contains(event->position().toPoint())) {
        button_->click();
    }
}

void ButtonRow::paintEvent(QPaintEvent *) {
    theme::Edge edge = theme::Edge::Resting;
    if (button_->hasFocus()) {
        edge = theme::Edge::Focused;
    } else if (button_->isEnabled() && underMouse()) {
        edge = theme::Edge::Lit;
    }
    theme::paintPanel(
        *this, prominent_ ? theme::prominentSurface(palette()) : theme::surface(palette()), edge);
}

}  // namespace platform
