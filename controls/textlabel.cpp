#include "controls/textlabel.h"

#include <cmath>
#include <utility>

#include <QPainter>

#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

double widestDigit(const QFontMetricsF &metrics) {
    double width = 0;
    for (const QChar digit : QStringView(u"0123456789")) {
        width = qMax(width, metrics.horizontalAdvance(digit));
    }
    return width;
}

}  // namespace

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

void TextLabel::setBalanced(bool balanced) {
    balanced_ = balanced;
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

double TextLabel::baseUnit() const {
    return look::unit(*window());
}

QMargins TextLabel::padding() const {
    const int side = qRound(look::bandSideMargin * baseUnit());
    return band_ ? QMargins(side, 0, side, 0) : QMargins();
}

Typesetting::Source TextLabel::source() const {
    return {.text = text(),
            .font = font(),
            .dotsPerInch = logicalDpiY(),
            .wrapMode = wordWrap() ? QTextOption::WordWrap : QTextOption::NoWrap,
            .alignment = alignment() & Qt::AlignHorizontal_Mask,
            .lineHeight = lineHeight_,
            .code = {}};
}

const Typesetting &TextLabel::typeset(double width) const {
    if (Typesetting::Source now = source(); !typesetting_ || typesetting_->source() != now) {
        typesetting_.emplace(std::move(now));
    }
    typesetting_->fit(width);
    return *typesetting_;
}

QSize TextLabel::textSize(double width) const {
    const Typesetting &set = typeset(width);
    return QSizeF(std::ceil(set.naturalWidth()), set.height()).toSize();
}

int TextLabel::keptWidth() const {
    if (characters_ == 0 && widestText_.isEmpty()) {
        return 0;
    }
    const QFontMetricsF metrics(font());
    double width = characters_ * look::characterWidth(font());
    for (const QChar each : widestText_) {
        width += each.isDigit() ? widestDigit(metrics) : metrics.horizontalAdvance(each);
    }
    return int(std::ceil(width));
}

int TextLabel::keptHeight() const {
    return lines_ * int(std::ceil(QFontMetricsF(font()).height() * lineHeight_));
}

int TextLabel::balancedWidth(int widest) const {
    const int height = textSize(widest).height();
    int tooNarrow = 0;
    int wideEnough = widest;
    while (wideEnough - tooNarrow > 1) {
        const int middle = (tooNarrow + wideEnough) / 2;
        (textSize(middle).height() > height ? tooNarrow : wideEnough) = middle;
    }
    return wideEnough;
}

QSize TextLabel::sizeHint() const {
    const int kept = keptWidth();
    QSize size = textSize(kept > 0 ? kept : QWIDGETSIZE_MAX);
    if (kept > 0) {
        size.setWidth(balanced_ ? balancedWidth(kept) : kept);
    }
    // A user's style sheet may have other font sizes than the lines were counted with.
    size.setHeight(qMax(size.height(), keptHeight()));
    size = size.grownBy(padding());
    return band_ ? size.expandedTo({0, qRound(look::smallestTarget * baseUnit())}) : size;
}

QSize TextLabel::minimumSizeHint() const {
    return sizeHint();
}

int TextLabel::heightForWidth(int width) const {
    const QMargins margins = padding();
    const int height = textSize(width - margins.left() - margins.right()).height();
    return qMax(height, keptHeight()) + margins.top() + margins.bottom();
}

void TextLabel::paintBackground(QPainter &painter) const {
    if (band_) {
        look::paintPanel(painter, palette(),
                         {.rect = rect(),
                          .unit = baseUnit(),
                          .radius = look::controlRadius,
                          .fill = look::Fill::Band,
                          .border = look::Border::None});
    }
}

void TextLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    paintBackground(painter);
    const QRectF place = contentsRect().marginsRemoved(padding());
    const int width = balanced_ ? balancedWidth(int(place.width())) : int(place.width());
    const Typesetting &set = typeset(width);
    double left = place.left();
    if (alignment().testFlag(Qt::AlignHCenter)) {
        left += std::round((place.width() - width) / 2);
    }
    double top = place.top();
    if (alignment().testFlag(Qt::AlignVCenter)) {
        top += std::round((place.height() - set.height()) / 2);
    }
    painter.translate(left, top);
    painter.setOpacity(alphaValue_);
    paintBehind(painter, set);
    const QColor ink = textColor_.isValid() ? textColor_
                       : alphaValue_ < 1    ? look::fadedText(palette())
                       : secondary_         ? look::secondaryText(palette())
                                            : look::text(palette());
    painter.setPen(ink);
    set.draw(painter);
}

}  // namespace platform
