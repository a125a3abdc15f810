#include "controls/actionrow.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QPainter>

#include "controls/levelindicator.h"
#include "controls/textlabel.h"
#include "look/focus.h"
#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

using namespace Qt::StringLiterals;

namespace platform {

ActionRow::ActionRow(QWidget *parent) : QWidget(parent) {
    setAttribute(Qt::WA_Hover);
}

const ActionRow &ActionRow::around(const QWidget &part) {
    for (const QWidget *parent = part.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (const auto *row = qobject_cast<const ActionRow *>(parent)) {
            return *row;
        }
    }
    qFatal("\"%s\" does not stand in a row", qUtf8Printable(part.objectName()));
}

void ActionRow::setState(RowState state, const QString &words) {
    state_ = state;
    if (words_ != nullptr) {
        words_->setStringValue(words);
        describeOnce();
    }
    update();
}

bool ActionRow::isHovered() const {
    return button_->isEnabled() && underMouse();
}

bool ActionRow::event(QEvent *event) {
    switch (event->type()) {
        case QEvent::Polish:
            adoptParts();
            break;
        case QEvent::HoverEnter:
        case QEvent::HoverLeave:
            update();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

void ActionRow::adoptParts() {
    button_ = findChild<QAbstractButton *>();
    if (button_ == nullptr) {
        qFatal("The row \"%s\" has no button to press", qUtf8Printable(objectName()));
    }
    button_->installEventFilter(this);
    connect(button_, &QAbstractButton::pressed, this, qOverload<>(&ActionRow::update));
    connect(button_, &QAbstractButton::released, this, qOverload<>(&ActionRow::update));

    const QList<TextLabel *> labels = findChildren<TextLabel *>();
    if (!labels.isEmpty()) {
        const auto name = [button = button_](const QString &text) {
            button->setAccessibleName(
                u"%1: %2"_s.arg(button->text(), text.isEmpty() ? u"empty"_s : text));
        };
        name(labels.first()->text());
        connect(labels.first(), &TextLabel::stringValueChanged, button_, name);
    }
    words_ = labels.value(1);
    level_ = findChild<LevelIndicator *>();
    if (level_ != nullptr) {
        connect(level_, &LevelIndicator::valueInWordsChanged, this, &ActionRow::describeOnce);
        describeOnce();
    }
}

void ActionRow::describeOnce() {
    // Only after both the level and the words are set: a screen reader reads out each change.
    QMetaObject::invokeMethod(this, &ActionRow::describe, Qt::QueuedConnection);
}

void ActionRow::describe() {
    QStringList parts;
    if (level_ != nullptr) {
        parts << level_->valueInWords();
    }
    if (words_ != nullptr && !words_->text().isEmpty()) {
        parts << words_->text().toLower();
    }
    if (const QString words = parts.join(u", "_s); words != button_->accessibleDescription()) {
        button_->setAccessibleDescription(words);
    }
}

bool ActionRow::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
        case QEvent::FocusIn:
        case QEvent::FocusOut:
        case QEvent::EnabledChange:
            update();
            break;
        default:
            break;
    }
    return QWidget::eventFilter(watched, event);
}

void ActionRow::mousePressEvent(QMouseEvent *event) {
    button_->setDown(button_->isEnabled() && event->button() == Qt::LeftButton);
    update();
}

void ActionRow::mouseDoubleClickEvent(QMouseEvent *event) {
    // A double-click is one press: its second click must not open a second window.
    event->accept();
}

void ActionRow::mouseReleaseEvent(QMouseEvent *event) {
    const bool pressed = button_->isDown();
    button_->setDown(false);
    update();
    if (pressed && rect().contains(event->position().toPoint())) {
        button_->click();
    }
}

void ActionRow::paintEvent(QPaintEvent *) {
    look::Fill fill = look::Fill::Surface;
    look::Border border = look::Border::Hairline;
    switch (state_) {
        case RowState::Open:
            if (!button_->isEnabled()) {
                fill = look::Fill::Faded;
            }
            break;
        case RowState::Done:
            break;
        case RowState::Next:
            fill = look::Fill::Prominent;
            break;
        case RowState::Right:
            fill = look::Fill::Prominent;
            border = look::Border::Accent;
            break;
        case RowState::Wrong:
        case RowState::Other:
            fill = look::Fill::Faded;
            break;
    }
    // Only the fill changes: the border belongs to the focus.
    if (button_->isDown()) {
        fill = look::Fill::Pressed;
    } else if (isHovered()) {
        fill = state_ == RowState::Next ? look::Fill::Pressed : look::Fill::Hovered;
    }
    if (look::showsFocus(button_)) {
        border = look::Border::Focus;
    }
    QPainter painter(this);
    look::paintPanel(painter, palette(),
                     {.rect = rect(), .unit = look::unit(*this), .fill = fill, .border = border});
}

}  // namespace platform
