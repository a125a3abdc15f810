#include "controls/accessibility.h"

#include <QAccessibleWidget>
#include <QFrame>
#include <QLabel>

#include "controls/actionrow.h"
#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/messagebox.h"
#include "controls/section.h"
#include "controls/textlabel.h"

namespace platform {

namespace {

/// A row's text is in its button's name; as a label of its own it would be read out twice.
class AccessibleActionRow final : public QAccessibleWidget {
 public:
    using QAccessibleWidget::QAccessibleWidget;

    int childCount() const override { return static_cast<int>(controls().size()); }
    QAccessibleInterface *child(int index) const override { return controls().value(index); }
    int indexOfChild(const QAccessibleInterface *child) const override {
        return static_cast<int>(controls().indexOf(child));
    }

 private:
    QList<QAccessibleInterface *> controls() const {
        QList<QAccessibleInterface *> controls;
        for (int index = 0; index < QAccessibleWidget::childCount(); ++index) {
            QAccessibleInterface *child = QAccessibleWidget::child(index);
            if (qobject_cast<TextLabel *>(child->object()) == nullptr) {
                controls << child;
            }
        }
        return controls;
    }
};

/// A level changes while the learner works, and other controls say so in words. So it is a progress
/// bar whose values can be queried, but which reports no changes itself.
class AccessibleLevel final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
    explicit AccessibleLevel(LevelIndicator &level)
        : QAccessibleWidget(&level, QAccessible::ProgressBar), level_(level) {}

    void *interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return level_.doubleValue(); }
    void setCurrentValue(const QVariant &) override {}
    QVariant maximumValue() const override { return double(level_.maximum()); }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return 1.0; }

 private:
    LevelIndicator &level_;
};

bool isPicture(const QLabel &label) {
    return qobject_cast<const ImageLabel *>(&label) != nullptr ||
           (qobject_cast<const TextLabel *>(&label) == nullptr && label.text().isEmpty() &&
            !label.accessibleName().isEmpty());
}

}  // namespace

QAccessibleInterface *describeControl(const QString &, QObject *object) {
    if (auto *section = qobject_cast<Section *>(object)) {
        return new QAccessibleWidget(section, QAccessible::Grouping);
    }
    if (auto *label = qobject_cast<QLabel *>(object); label != nullptr && isPicture(*label)) {
        return new QAccessibleWidget(label, QAccessible::Graphic);
    }
    if (auto *level = qobject_cast<LevelIndicator *>(object)) {
        return new AccessibleLevel(*level);
    }
    if (auto *row = qobject_cast<ActionRow *>(object)) {
        return new AccessibleActionRow(row);
    }
    if (auto *box = qobject_cast<MessageBox *>(object)) {
        return new QAccessibleWidget(box, QAccessible::AlertMessage);
    }
    if (auto *frame = qobject_cast<QFrame *>(object);
        frame != nullptr && frame->frameShape() == QFrame::HLine) {
        return new QAccessibleWidget(frame, QAccessible::Separator);
    }
    return nullptr;
}

}  // namespace platform
