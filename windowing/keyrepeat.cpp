#include "windowing/keyrepeat.h"

#include <QKeyEvent>

namespace platform {

bool KeyRepeat::eventFilter(QObject *watched, QEvent *event) {
    if (!watched->isWindowType()) {
        return false;
    }
    if (event->type() == QEvent::KeyRelease) {
        const auto &release = static_cast<const QKeyEvent &>(*event);
        releasedKey_ = release.nativeScanCode();
        releasedAt_ = release.timestamp();
    }
    if ((event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) &&
        isUnmarkedRepetition(static_cast<const QKeyEvent &>(*event))) {
        // A key whose override is accepted does not trigger a shortcut.
        event->accept();
        return true;
    }
    return false;
}

bool KeyRepeat::isUnmarkedRepetition(const QKeyEvent &press) const {
    // Keys that pass through a screen reader have lost their timestamp.
    return !press.isAutoRepeat() && releasedKey_ != 0 && press.nativeScanCode() == releasedKey_ &&
           releasedAt_ != 0 && press.timestamp() == releasedAt_;
}

}  // namespace platform
