#include "windowing/outlet.h"

#include <QAccessible>

#include "system/log.h"

using namespace Qt::StringLiterals;

namespace platform {

void OutletOwner::fillOutlets(const QWidget &window) const {
    for (OutletBase *outlet : outlets_) {
        outlet->fill(window);
    }
}

OutletBase::OutletBase(OutletOwner &owner, const char *name) : name_(name) {
    owner.declareOutlet(*this);
}

void OutletBase::setHidden(bool hidden) const {
    tell(&QWidget::setHidden, hidden);
}

void OutletBase::setEnabled(bool enabled) const {
    tell(&QWidget::setEnabled, enabled);
}

QString OutletBase::accessibleName() const {
    return control_.isNull() ? QString() : control_->accessibleName();
}

void OutletBase::setAccessibleName(const QString &name) const {
    tell(&QWidget::setAccessibleName, name);
}

void OutletBase::setAccessibleDescription(const QString &description) const {
    tell(&QWidget::setAccessibleDescription, description);
}

void OutletBase::setFocus() const {
    tell(qOverload<Qt::FocusReason>(&QWidget::setFocus), Qt::OtherFocusReason);
}

void OutletBase::announce([[maybe_unused]] const QString &text) const {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (QWidget *widget = control()) {
        QAccessibleAnnouncementEvent event(widget, text);
        QAccessible::updateAccessibility(&event);
    }
#endif
}

void OutletBase::reportMissing(const QWidget &window, const char *type) const {
    QStringList there;
    for (const QWidget *child : window.findChildren<QWidget *>()) {
        if (!child->objectName().isEmpty() && !child->objectName().startsWith(u"qt_")) {
            there << child->objectName();
        }
    }
    log(u"The layout \"%1\" has no %2 named \"%3\"; there are: %4"_s.arg(
        window.objectName(), QString::fromLatin1(type), name(), there.join(u", "_s)));
}

}  // namespace platform
