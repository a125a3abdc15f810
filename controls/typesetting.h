#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QFont>
#include <QRectF>
#include <QString>
#include <QTextLayout>
#include <QTextOption>

class QPainter;

namespace platform {

/// Text set in lines. It is shaped only once, however often it is measured and drawn.
class Typesetting final {
 public:
    /// How lines of code are set.
    struct Code {
        QFont font;
        /// Between the panel and the text around it and in it, in pixels.
        double sideMargin = 0;
        double endMargin = 0;

        bool operator==(const Code &) const = default;
    };

    /// Everything except the width that a typesetting depends on.
    struct Source {
        QString text;
        QFont font;
        /// Compared too, because fonts with the same point size are equal at every resolution.
        int dotsPerInch = 0;
        QTextOption::WrapMode wrapMode = QTextOption::NoWrap;
        Qt::Alignment alignment;
        /// As a multiple of the font's own.
        double lineHeight = 1;
        /// Set if every line below the first is code.
        std::optional<Code> code;

        bool operator==(const Source &) const = default;
    };

    explicit Typesetting(Source source);

    const Source &source() const { return source_; }
    /// Breaks the lines to that width in pixels, unless they already are.
    void fit(double width);

    /// The width of the longest line and the height of all lines, in pixels.
    double naturalWidth() const { return naturalWidth_; }
    double height() const { return height_; }
    /// The panel around the code; empty if there is no code.
    const QRectF &codePanel() const { return codePanel_; }

    void draw(QPainter &painter) const;

 private:
    void breakLines(QTextLayout &paragraph, double left, double width);

    Source source_;
    std::vector<std::unique_ptr<QTextLayout>> paragraphs_;
    double width_ = -1;
    double naturalWidth_ = 0;
    double height_ = 0;
    QRectF codePanel_;
};

}  // namespace platform
