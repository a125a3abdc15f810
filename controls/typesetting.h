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

/// A text set in lines. Its glyphs are chosen once, however often it is measured and drawn.
class Typesetting final {
 public:
    /// How lines of code are set.
    struct Code {
        QFont font;
        /// Between the panel and what is around and in it, in pixels.
        double sideMargin = 0;
        double endMargin = 0;

        bool operator==(const Code &) const = default;
    };

    /// What a typesetting follows from, but for the width.
    struct Source {
        QString text;
        QFont font;
        /// Fonts of one size in points are equal at every resolution.
        int dotsPerInch = 0;
        QTextOption::WrapMode wrapMode = QTextOption::NoWrap;
        Qt::Alignment alignment;
        /// As a multiple of the font's own.
        double lineHeight = 1;
        /// Where every line below the first is code.
        std::optional<Code> code;

        bool operator==(const Source &) const = default;
    };

    explicit Typesetting(Source source);

    const Source &source() const { return source_; }
    /// Breaks the lines to that width in pixels, where they are not yet.
    void fit(double width);

    /// The width of the longest line, and the height of all, in pixels.
    double naturalWidth() const { return naturalWidth_; }
    double height() const { return height_; }
    /// The panel around the code; empty where there is none.
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
