#include "platform/textlabel.h"

#include <cmath>
#include <memory>
#include <vector>

#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>
#include <QTextLayout>

#include "platform/theme.h"

using namespace Qt::StringLiterals;

namespace platform {

/// The text as it is set in lines.
struct TextLabel::Setting {
    std::vector<std::unique_ptr<QTextLayout>> paragraphs;
    /// The panel around the lines of code; empty where there are none.
    QRectF code;
    double width = 0;
    double height = 0;

    void add(const QString &text, const QFont &font, const QTextOption &option, double leading,
             double left, double room) {
        auto paragraph = std::make_unique<QTextLayout>(text, font);
        paragraph->setTextOption(option);
        paragraph->beginLayout();
        for (QTextLine line = paragraph->createLine(); line.isValid();
             line = paragraph->createLine()) {
            line.setLineWidth(room);
            // Whole pixels: every line is as sharp as the first.
            line.setPosition({left, height});
            height += std::round(line.height() * leading);
            width = qMax(width, left + std::ceil(line.naturalTextWidth()));
        }
        paragraph->endLayout();
        paragraphs.push_back(std::move(paragraph));
    }
};

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

double TextLabel::baseUnit() const {
    return theme::unit(*window());
}

QMargins TextLabel::padding() const {
    const int side = qRound(theme::bandSideMargin * baseUnit());
    return band_ ? QMargins(side, 0, side, 0) : QMargins();
}

QFont TextLabel::codeFont() const {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch()) {
        // A desktop that names none.
        font.setFamily(u"monospace"_s);
    }
    font.setPointSizeF(QFontInfo(window()->font()).pointSizeF());
    return font;
}

TextLabel::Setting TextLabel::typeset(double width) const {
    QTextOption option(alignment() & Qt::AlignHorizontal_Mask);
    option.setWrapMode(wordWrap() ? QTextOption::WordWrap : QTextOption::NoWrap);
    const QStringList lines = text().split(u'\n');
    const qsizetype firstOfCode = codeBelow_ ? 1 : lines.size();

    Setting setting;
    for (const QString &line : lines.first(firstOfCode)) {
        setting.add(line, font(), option, leading_, 0, width);
    }
    if (firstOfCode < lines.size()) {
        const double side = theme::codeSideMargin * baseUnit();
        const double end = std::round(theme::codeEndMargin * baseUnit());
        setting.height += end;
        const double top = setting.height;
        setting.height += end;
        const QFont code = codeFont();
        for (const QString &line : lines.sliced(firstOfCode)) {
            setting.add(line, code, option, leading_, side, width - 2 * side);
        }
        setting.height += end;
        setting.code = QRectF(0, top, width, setting.height - top);
    }
    return setting;
}

QSize TextLabel::textSize(double width) const {
    const Setting setting = typeset(width);
    return QSizeF(std::ceil(setting.width), setting.height).toSize();
}

int TextLabel::keptWidth() const {
    const QFontMetricsF metrics(font());
    double digit = 0;
    for (const QChar each : QStringView(u"0123456789")) {
        digit = qMax(digit, metrics.horizontalAdvance(each));
    }
    double width = characters_ * metrics.averageCharWidth();
    for (const QChar each : widestText_) {
        width += each.isDigit() ? digit : metrics.horizontalAdvance(each);
    }
    return int(std::ceil(width));
}

QSize TextLabel::sizeHint() const {
    const int kept = keptWidth();
    QSize size = textSize(kept > 0 ? kept : QWIDGETSIZE_MAX);
    if (kept > 0) {
        size.setWidth(kept);
    }
    if (lines_ > 0) {
        size.setHeight(lines_ * fontMetrics().lineSpacing());
    }
    size = size.grownBy(padding());
    return band_ ? size.expandedTo({0, qRound(theme::smallestTarget * baseUnit())}) : size;
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
    QPainter painter(this);
    if (band_) {
        theme::paintPanel(painter, palette(),
                          {.rect = rect(),
                           .unit = baseUnit(),
                           .radius = theme::controlRadius,
                           .ground = theme::Ground::Band,
                           .edge = theme::Edge::None});
    }
    const QRectF place = contentsRect().marginsRemoved(padding());
    const Setting setting = typeset(place.width());
    double top = place.top();
    if (alignment().testFlag(Qt::AlignVCenter)) {
        top += std::round((place.height() - setting.height) / 2);
    }
    painter.translate(place.left(), top);
    painter.setOpacity(alphaValue_);
    if (!setting.code.isEmpty()) {
        theme::paintPanel(painter, palette(), {.rect = setting.code, .unit = baseUnit()});
    }
    const QColor ink = textColor_.isValid() ? textColor_
                       : secondary_         ? theme::secondaryText(palette())
                                            : palette().color(foregroundRole());
    painter.setPen(ink);
    for (const auto &paragraph : setting.paragraphs) {
        paragraph->draw(&painter, {});
    }
}

}  // namespace platform
