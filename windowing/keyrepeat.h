#pragma once

#include <QObject>

class QKeyEvent;

namespace platform {

/// Keeps a key that is held down from acting more than once. On X11 a repetition is a release and
/// a press with the same timestamp. Qt takes it for another press if it reads the two at different
/// times, or if another window takes the focus between them. To be installed as the application's
/// event filter.
class KeyRepeat final : public QObject {
    Q_OBJECT

 public:
    using QObject::QObject;

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    bool isUnmarkedRepetition(const QKeyEvent &press) const;

    quint32 releasedKey_ = 0;
    quint64 releasedAt_ = 0;  // in milliseconds
};

}  // namespace platform
