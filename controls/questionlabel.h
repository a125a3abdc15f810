#pragma once

#include "controls/textlabel.h"

namespace platform {

/// A question on a panel. Its first line is prose; every further line is code, which has a panel of
/// its own, in the desktop's fixed-width font at the size of the surrounding text.
class QuestionLabel final : public TextLabel {
    Q_OBJECT

 public:
    using TextLabel::TextLabel;

 protected:
    Typesetting::Source source() const override;
    QMargins padding() const override;
    void paintBackground(QPainter &painter) const override;
    void paintBehind(QPainter &painter, const Typesetting &typesetting) const override;

 private:
    QFont codeFont() const;
};

}  // namespace platform
