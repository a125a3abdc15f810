#include "windowing/outlets.h"

#include "windowing/shortcuts.h"

namespace platform {

QString TextOutlet::stringValue() const {
    return get() == nullptr ? QString() : get()->text();
}

void TextOutlet::setStringValue(const QString &text) const {
    tell(&TextLabel::setStringValue, text);
}

void TextOutlet::setTextColor(const QColor &color) const {
    tell(&TextLabel::setTextColor, color);
}

void TextOutlet::setAlphaValue(double alpha) const {
    tell(&TextLabel::setAlphaValue, alpha);
}

void ButtonOutlet::setKeyEquivalent(const QString &key) const {
    if (QAbstractButton *button = get()) {
        addShortcuts(*button, key == u"\r" ? QList<QKeySequence>{Qt::Key_Return, Qt::Key_Enter}
                                           : QList<QKeySequence>{QKeySequence(key)});
    }
}

void RadioOutlet::setState(int state) const {
    tell(&QRadioButton::setChecked, state == 1);
}

void LevelOutlet::setDoubleValue(double value) const {
    tell(&LevelIndicator::setDoubleValue, value);
}

void LevelOutlet::setMaxValue(double maximum) const {
    tell(&LevelIndicator::setMaximum, qRound(maximum));
}

void ImageOutlet::setImage(const QIcon &image) const {
    tell(&ImageLabel::setImage, image);
}

void RowOutlet::setState(RowState state) const {
    tell(&ActionRow::setState, state, QString());
}

void BannerOutlet::setTone(Banner::Tone tone) const {
    tell(&Banner::setTone, tone);
}

}  // namespace platform
