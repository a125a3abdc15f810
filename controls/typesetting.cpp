#include "controls/typesetting.h"

#include <cmath>
#include <utility>

namespace platform {

Typesetting::Typesetting(Source source) : source_(std::move(source)) {
    QTextOption option(source_.alignment);
    option.setWrapMode(source_.wrapMode);
    for (const QString &line : source_.text.split(u'\n')) {
        const bool isCode = source_.code && !paragraphs_.empty();
        auto paragraph =
            std::make_unique<QTextLayout>(line, isCode ? source_.code->font : source_.font);
        paragraph->setTextOption(option);
        paragraph->setCacheEnabled(true);
        paragraphs_.push_back(std::move(paragraph));
    }
}

void Typesetting::fit(double width) {
    if (width_ == width) {
        return;
    }
    width_ = width;
    naturalWidth_ = 0;
    height_ = 0;
    codePanel_ = QRectF();
    const std::size_t firstOfCode = source_.code ? 1 : paragraphs_.size();
    for (std::size_t i = 0; i < firstOfCode; ++i) {
        breakLines(*paragraphs_[i], 0, width);
    }
    if (source_.code) {
        const double side = source_.code->sideMargin;
        const double end = std::round(source_.code->endMargin);
        height_ += end;
        const double top = height_;
        height_ += end;
        for (std::size_t i = firstOfCode; i < paragraphs_.size(); ++i) {
            breakLines(*paragraphs_[i], side, width - 2 * side);
        }
        height_ += end;
        codePanel_ = QRectF(0, top, width, height_ - top);
    }
}

void Typesetting::breakLines(QTextLayout &paragraph, double left, double width) {
    paragraph.beginLayout();
    for (QTextLine line = paragraph.createLine(); line.isValid(); line = paragraph.createLine()) {
        line.setLineWidth(width);
        // In whole pixels, so that every line is as sharp as the first.
        line.setPosition({left, height_});
        height_ += std::ceil(line.height() * source_.lineHeight);
        naturalWidth_ = qMax(naturalWidth_, left + std::ceil(line.naturalTextWidth()));
    }
    paragraph.endLayout();
}

void Typesetting::draw(QPainter &painter) const {
    for (const auto &paragraph : paragraphs_) {
        paragraph->draw(&painter, {});
    }
}

}  // namespace platform
