#include "platform/buttonrow.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QPainter>

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
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool focused = button_->hasFocus();
    const bool lit = button_->isEnabled() && underMouse();
    const double radius = theme::unit(*this) * 1.25;
    QPen edge(theme::hairline(palette()), 1);
    if (focused) {
        edge = QPen(theme::accent(palette()), 2.5);
    } else if (lit) {
        edge = QPen(theme::accent(palette()), 1.5);
    }
    const double inset = edge.widthF() / 2;
    painter.setPen(edge);
    painter.setBrush(prominent_ ? theme::prominentSurface(palette()) : theme::surface(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

}  // namespace platform
