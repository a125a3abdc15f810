#include "controls/textlabel.h"

#include <cmath>
#include <utility>
#include <vector>

#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>
#include <QTextLayout>

#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

using namespace Qt::StringLiterals;

namespace platform {

/// The text as it is set in lines.
struct TextLabel::Setting {
    /// What it follows from, but for the width.
    struct Source {
        QString text;
        QFont font;
        /// Fonts of one size in points are equal at every resolution.
        int dotsPerInch;
        QTextOption::WrapMode wrapMode;
        Qt::Alignment alignment;
        double lineHeight;
        /// Whether all lines but the first are code.
        bool hasCode;
        QFont codeFont;
        double unit;

        bool operator==(const Source &) const = default;
    };

    explicit Setting(Source from);

    /// Sets the lines in that width, where they are not.
    void fit(double newRoom);

    Source source;
    std::vector<std::unique_ptr<QTextLayout>> paragraphs;
    double room = -1;
    /// The panel around the lines of code; empty where there are none.
    QRectF code;
    double width = 0;
    double height = 0;

 private:
    void breakLines(QTextLayout &paragraph, double left, double lineRoom);
};

TextLabel::Setting::Setting(Source from) : source(std::move(from)) {
    QTextOption option(source.alignment);
    option.setWrapMode(source.wrapMode);
    for (const QString &line : source.text.split(u'\n')) {
        const bool isCode = source.hasCode && !paragraphs.empty();
        auto paragraph =
            std::make_unique<QTextLayout>(line, isCode ? source.codeFont : source.font);
        paragraph->setTextOption(option);
        // Its glyphs are chosen once, however often it is measured and drawn.
        paragraph->setCacheEnabled(true);
        paragraphs.push_back(std::move(paragraph));
    }
}

void TextLabel::Setting::fit(double newRoom) {
    if (room == newRoom) {
        return;
    }
    room = newRoom;
    code = QRectF();
    width = 0;
    height = 0;
    const std::size_t firstOfCode = source.hasCode ? 1 : paragraphs.size();
    for (std::size_t i = 0; i < firstOfCode; ++i) {
        breakLines(*paragraphs[i], 0, room);
    }
    if (source.hasCode) {
        const double side = look::codeSideMargin * source.unit;
        const double end = std::round(look::codeEndMargin * source.unit);
        height += end;
        const double top = height;
        height += end;
        for (std::size_t i = firstOfCode; i < paragraphs.size(); ++i) {
            breakLines(*paragraphs[i], side, room - 2 * side);
        }
        height += end;
        code = QRectF(0, top, room, height - top);
    }
}

void TextLabel::Setting::breakLines(QTextLayout &paragraph, double left, double lineRoom) {
    paragraph.beginLayout();
    for (QTextLine line = paragraph.createLine(); line.isValid(); line = paragraph.createLine()) {
        line.setLineWidth(lineRoom);
        // Whole pixels: every line is as sharp as the first.
        line.setPosition({left, height});
        height += std::round(line.height() * source.lineHeight);
        width = qMax(width, left + std::ceil(line.naturalTextWidth()));
    }
    paragraph.endLayout();
}

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

TextLabel::~TextLabel() = default;

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
    return look::unit(*window());
}

QMargins TextLabel::padding() const {
    const int side = qRound(look::bandSideMargin * baseUnit());
    return band_ ? QMargins(side, 0, side, 0) : QMargins();
}

QFont TextLabel::codeFont() const {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch()) {
        // A desktop that names none.
        font.setFamily(u"monospace"_s);
    }
    look::setSize(font, window()->font());
    return font;
}

const TextLabel::Setting &TextLabel::typeset(double width) const {
    const bool hasCode = codeBelow_ && text().contains(u'\n');
    Setting::Source source{.text = text(),
                           .font = font(),
                           .dotsPerInch = logicalDpiY(),
                           .wrapMode = wordWrap() ? QTextOption::WordWrap : QTextOption::NoWrap,
                           .alignment = alignment() & Qt::AlignHorizontal_Mask,
                           .lineHeight = lineHeight_,
                           .hasCode = hasCode,
                           .codeFont = hasCode ? codeFont() : font(),
                           .unit = hasCode ? baseUnit() : 0};
    if (!setting_ || setting_->source != source) {
        setting_ = std::make_unique<Setting>(std::move(source));
    }
    setting_->fit(width);
    return *setting_;
}

QSize TextLabel::textSize(double width) const {
    const Setting &setting = typeset(width);
    return QSizeF(std::ceil(setting.width), setting.height).toSize();
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

QSize TextLabel::sizeHint() const {
    const int kept = keptWidth();
    QSize size = textSize(kept > 0 ? kept : QWIDGETSIZE_MAX);
    if (kept > 0) {
        size.setWidth(kept);
    }
    if (lines_ > 0) {
        // A user's style sheet may have changed the sizes that they were counted with.
        size.setHeight(qMax(size.height(), lines_ * fontMetrics().lineSpacing()));
    }
    size = size.grownBy(padding());
    return band_ ? size.expandedTo({0, qRound(look::smallestTarget * baseUnit())}) : size;
}

QSize TextLabel::minimumSizeHint() const {
    return sizeHint();
}

int TextLabel::heightForWidth(int width) const {
    const QMargins margins = padding();
    const int height = textSize(width - margins.left() - margins.right()).grownBy(margins).height();
    return lines_ > 0 ? qMax(height, lines_ * fontMetrics().lineSpacing()) : height;
}

void TextLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    if (band_) {
        look::paintPanel(painter, palette(),
                         {.rect = rect(),
                          .unit = baseUnit(),
                          .radius = look::controlRadius,
                          .fill = look::Fill::Band,
                          .border = look::Border::None});
    }
    const QRectF place = contentsRect().marginsRemoved(padding());
    const Setting &setting = typeset(place.width());
    double top = place.top();
    if (alignment().testFlag(Qt::AlignVCenter)) {
        top += std::round((place.height() - setting.height) / 2);
    }
    painter.translate(place.left(), top);
    painter.setOpacity(alphaValue_);
    if (!setting.code.isEmpty()) {
        look::paintPanel(painter, palette(), {.rect = setting.code, .unit = baseUnit()});
    }
    const QColor ink = textColor_.isValid() ? textColor_
                       : secondary_         ? look::secondaryText(palette())
                                            : palette().color(foregroundRole());
    painter.setPen(ink);
    for (const auto &paragraph : setting.paragraphs) {
        paragraph->draw(&painter, {});
    }
}

}  // namespace platform
