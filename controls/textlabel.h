#pragma once

#include <optional>

#include <QColor>
#include <QLabel>

#include "controls/typesetting.h"

namespace platform {

/// Plain text, drawn exactly as it is. It can keep room for a given number of lines and characters
/// whatever it shows, so that nothing around it moves when its text changes.
class TextLabel : public QLabel {
    Q_OBJECT
    /// The intended width of a line, in characters as look::characterWidth() measures them; 0
    /// leaves it to the text.
    Q_PROPERTY(int characters READ characters WRITE setCharacters)
    /// A text that there is always room for, with any other digits in place of its own.
    Q_PROPERTY(QString widestText MEMBER widestText_)
    /// How many lines there is always room for; 0 leaves it to the text.
    Q_PROPERTY(int lines READ lines WRITE setLines)
    /// Makes the lines about equally long, instead of the last one shorter: the text is only as
    /// wide as the number of lines allows.
    Q_PROPERTY(bool balanced READ balanced WRITE setBalanced)
    /// The line spacing, as a multiple of the font's own.
    Q_PROPERTY(double lineHeight MEMBER lineHeight_)
    /// What the text is a value of, for a screen reader: "Score" makes the name "Score: 67 %".
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
    /// Draws the text in the fainter colour of text that explains other text.
    Q_PROPERTY(bool secondary MEMBER secondary_)
    /// Draws a dark band behind the text, which should then be white.
    Q_PROPERTY(bool band READ band WRITE setBand)

 public:
    explicit TextLabel(QWidget *parent = nullptr);

    int characters() const { return characters_; }
    void setCharacters(int characters);
    int lines() const { return lines_; }
    void setLines(int lines);
    bool balanced() const { return balanced_; }
    void setBalanced(bool balanced);
    const QString &caption() const { return caption_; }
    void setCaption(const QString &caption);
    bool band() const { return band_; }
    void setBand(bool band);

    /// A colour that does not depend on the palette; an invalid one follows the palette.
    void setTextColor(const QColor &color);
    /// 1.0 is opaque, 0.0 invisible.
    void setAlphaValue(double alpha);
    QColor textColor() const { return textColor_; }
    double alphaValue() const { return alphaValue_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

 public Q_SLOTS:
    void setStringValue(const QString &text);

 Q_SIGNALS:
    void stringValueChanged(const QString &text);

 protected:
    void paintEvent(QPaintEvent *event) override;

    /// The text to set in lines, and how.
    virtual Typesetting::Source source() const;
    /// Between the edges and the text, in pixels.
    virtual QMargins padding() const;
    /// Called before anything else is drawn.
    virtual void paintBackground(QPainter &painter) const;
    /// Called before the text is drawn, with the text's top left corner as the origin.
    virtual void paintBehind(QPainter &, const Typesetting &) const {}
    /// The unit of the surrounding text, whatever the size of this one.
    double baseUnit() const;

 private:
    void describe();
    int keptWidth() const;
    int keptHeight() const;
    const Typesetting &typeset(double width) const;
    QSize textSize(double width) const;
    int balancedWidth(int widest) const;

    int characters_ = 0;
    int lines_ = 0;
    bool balanced_ = false;
    double lineHeight_ = 1;
    bool secondary_ = false;
    bool band_ = false;
    QString widestText_;
    QString caption_;
    QColor textColor_;
    double alphaValue_ = 1.0;
    /// The last one, because it is asked for again and again.
    mutable std::optional<Typesetting> typesetting_;
};

}  // namespace platform
