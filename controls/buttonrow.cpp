#include "controls/buttonrow.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QPainter>

#include "controls/levelindicator.h"
#include "controls/textlabel.h"
#include "look/theme.h"

using namespace Qt::StringLiterals;

namespace platform {

ButtonRow::ButtonRow(QWidget *parent) : QWidget(parent) {
    setAttribute(Qt::WA_Hover);
}

const ButtonRow &ButtonRow::around(const QWidget &part) {
    for (const QWidget *parent = part.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (const auto *row = qobject_cast<const ButtonRow *>(parent)) {
            return *row;
        }
    }
    qFatal("\"%s\" does not stand in a row", qUtf8Printable(part.objectName()));
}

void ButtonRow::setStanding(Standing standing, const QString &words) {
    standing_ = standing;
    if (words_ != nullptr) {
        words_->setStringValue(words);
        describeOnce();
    }
    update();
}

bool ButtonRow::isLit() const {
    return button_->isEnabled() && underMouse();
}

bool ButtonRow::event(QEvent *event) {
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

void ButtonRow::adoptParts() {
    button_ = findChild<QAbstractButton *>();
    if (button_ == nullptr) {
        qFatal("The row \"%s\" has no button to press", qUtf8Printable(objectName()));
    }
    button_->installEventFilter(this);
    connect(button_, &QAbstractButton::pressed, this, qOverload<>(&ButtonRow::update));
    connect(button_, &QAbstractButton::released, this, qOverload<>(&ButtonRow::update));

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
        connect(level_, &LevelIndicator::valueInWordsChanged, this, &ButtonRow::describeOnce);
        describeOnce();
    }
}

void ButtonRow::describeOnce() {
    // When level and words are both in place: a screen reader reads each change.
    QMetaObject::invokeMethod(this, &ButtonRow::describe, Qt::QueuedConnection);
}

void ButtonRow::describe() {
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

bool ButtonRow::eventFilter(QObject *watched, QEvent *event) {
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

void ButtonRow::mousePressEvent(QMouseEvent *event) {
    button_->setDown(button_->isEnabled() && event->button() == Qt::LeftButton);
    update();
}

void ButtonRow::mouseDoubleClickEvent(QMouseEvent *event) {
    // A double click is one press: its second half must not open a second window.
    event->accept();
}

void ButtonRow::mouseReleaseEvent(QMouseEvent *event) {
    const bool pressed = button_->isDown();
    button_->setDown(false);
    update();
    if (pressed && rect().contains(event->position().toPoint())) {
        button_->click();
    }
}

void ButtonRow::paintEvent(QPaintEvent *) {
    theme::Ground ground = theme::Ground::Surface;
    theme::Edge edge = theme::Edge::Hairline;
    switch (standing_) {
        case Standing::Open:
            if (!button_->isEnabled()) {
                ground = theme::Ground::None;
            }
            break;
        case Standing::Done:
            break;
        case Standing::Next:
            ground = theme::Ground::Prominent;
            break;
        case Standing::Right:
            ground = theme::Ground::Prominent;
            edge = theme::Edge::Accent;
            break;
        case Standing::Wrong:
        case Standing::Other:
            ground = theme::Ground::None;
            break;
    }
    // The edge stays: it belongs to the focus.
    if (button_->isDown()) {
        ground = theme::Ground::Pressed;
    } else if (isLit()) {
        ground = standing_ == Standing::Next ? theme::Ground::Pressed : theme::Ground::Lit;
    }
    if (button_->hasFocus()) {
        edge = theme::Edge::Focus;
    }
    QPainter painter(this);
    theme::paintPanel(painter, palette(),
                      {.rect = rect(), .unit = theme::unit(*this), .ground = ground, .edge = edge});
}

}  // namespace platform
