#include "platform/textlabel.h"

#include <QStylePainter>

#include "platform/theme.h"

using namespace Qt::StringLiterals;

namespace platform {

TextLabel::TextLabel(QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void TextLabel::setCharacters(int characters) {
    characters_ = characters;
    updateGeometry();
}

void TextLabel::setLines(int lines) {
    lines_ = lines;
    updateGeometry();
}

void TextLabel::setCaption(const QString &caption) {
    caption_ = caption;
    describe();
}

void TextLabel::setBand(bool band) {
    band_ = band;
    updateGeometry();
}

void TextLabel::setStringValue(const QString &text) {
    setText(text);
    describe();
    Q_EMIT stringValueChanged(text);
}

void TextLabel::describe() {
    if (!caption_.isEmpty()) {
        setAccessibleName(u"%1: %2"_s.arg(caption_, text()));
    }
}

void TextLabel::setTextColor(const QColor &color) {
    textColor_ = color;
    update();
}

void TextLabel::setAlphaValue(double alpha) {
    alphaValue_ = alpha;
    update();
}

QMargins TextLabel::padding() const {
    const int unit = qRound(theme::unit(*this));
    return band_ ? QMargins(unit * 2, unit / 2, unit * 2, unit / 2) : QMargins();
}

int TextLabel::textFlags() const {
    return static_cast<int>(alignment()) | (wordWrap() ? Qt::TextWordWrap : 0);
}

QSize TextLabel::textSize(int width) const {
    return fontMetrics()
        .boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), textFlags(), text())
        .size();
}

QSize TextLabel::sizeHint() const {
    const int widest = characters_ * fontMetrics().averageCharWidth();
    QSize size = textSize(characters_ > 0 ? widest : QWIDGETSIZE_MAX);
    if (characters_ > 0) {
        size.setWidth(widest);
    }
    size.setHeight(lines_ > 0 ? lines_ * fontMetrics().lineSpacing() : size.height());
    return size.grownBy(padding());
}

QSize TextLabel::minimumSizeHint() const {
    return sizeHint();
}

int TextLabel::heightForWidth(int width) const {
    if (lines_ > 0) {
        return sizeHint().height();
    }
    const QMargins margins = padding();
    return textSize(width - margins.left() - margins.right()).grownBy(margins).height();
}

void TextLabel::paintEvent(QPaintEvent *) {
    QStylePainter painter(this);
    QPalette colors = palette();
    if (band_) {
        const double radius = theme::unit(*this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::band(colors));
        painter.drawRoundedRect(rect(), radius, radius);
    }
    if (textColor_.isValid()) {
        colors.setColor(foregroundRole(), textColor_);
    }
    painter.setOpacity(alphaValue_);
    painter.drawItemText(contentsRect().marginsRemoved(padding()), textFlags(), colors, isEnabled(),
                         text(), foregroundRole());
}

}  // namespace platform
