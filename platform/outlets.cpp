#include "platform/outlets.h"

#include <QAccessible>
#include <QFile>
#include <QHash>

#include "platform/keys.h"
#include "platform/log.h"

using namespace Qt::StringLiterals;

namespace platform {

OutletBase::OutletBase(WindowController &controller, const char *name) : name_(name) {
    controller.declareOutlet(*this);
}

void OutletBase::setHidden(bool hidden) const {
    if (QWidget *widget = control()) {
        widget->setHidden(hidden);
    }
}

void OutletBase::setEnabled(bool enabled) const {
    if (QWidget *widget = control()) {
        widget->setEnabled(enabled);
    }
}

void OutletBase::setAccessibleName(const QString &name) const {
    if (QWidget *widget = control()) {
        widget->setAccessibleName(name);
    }
}

QString OutletBase::accessibleName() const {
    const QWidget *widget = control();
    return widget == nullptr ? QString() : widget->accessibleName();
}

void OutletBase::setAccessibleDescription(const QString &description) const {
    if (QWidget *widget = control()) {
        widget->setAccessibleDescription(description);
    }
}

void OutletBase::setFocus() const {
    if (QWidget *widget = control()) {
        widget->setFocus(Qt::OtherFocusReason);
    }
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

QString TextField::stringValue() const {
    return get() == nullptr ? QString() : get()->text();
}

void TextField::setStringValue(const QString &text) const {
    if (TextLabel *label = get()) {
        label->setStringValue(text);
    }
}

void TextField::setTextColor(const QColor &color) const {
    if (TextLabel *label = get()) {
        label->setTextColor(color);
    }
}

void TextField::setAlphaValue(double alpha) const {
    if (TextLabel *label = get()) {
        label->setAlphaValue(alpha);
    }
}

void Button::setKeyEquivalent(const QString &key) const {
    QAbstractButton *button = get();
    if (button == nullptr) {
        return;
    }
    QList<QKeySequence> keys{QKeySequence(key)};
    if (key == u"\r") {
        keys = {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)};
    }
    addKeys(*button, keys);
}

void ButtonCell::setState(int state) const {
    if (QRadioButton *button = get()) {
        button->setChecked(state == 1);
    }
}

void LevelOutlet::setDoubleValue(double value) const {
    if (LevelIndicator *indicator = get()) {
        indicator->setDoubleValue(value);
    }
}

void LevelOutlet::setMaxValue(double maximum) const {
    if (LevelIndicator *indicator = get()) {
        indicator->setMaxValue(maximum);
    }
}

void ImageView::setImage(const QIcon &image) const {
    if (ImageLabel *view = get()) {
        view->setImage(image);
    }
}

void Row::setStanding(Standing standing) const {
    if (ButtonRow *row = get()) {
        row->setStanding(standing);
    }
}

void StageOutlet::setMood(Stage::Mood mood) const {
    if (Stage *stage = get()) {
        stage->setMood(mood);
    }
}

QIcon imageNamed(const QString &fileName) {
    const QString path = u"images:"_s + fileName;
    if (!QFile::exists(path)) {
        return {};
    }
    // One for each name: what the toolkit has scaled it keeps for the picture that it came from.
    static QHash<QString, QIcon> images;
    QIcon &image = images[fileName];
    if (image.isNull()) {
        image = QIcon(path);
    }
    return image;
}

}  // namespace platform
