#pragma once

#include "controls/textlabel.h"

namespace platform {

/// A question: its first line is prose; every line below is code, which is set in the desktop's
/// fixed font, in the size of the text around, and stands on a panel.
class QuestionLabel final : public TextLabel {
    Q_OBJECT

 public:
    using TextLabel::TextLabel;

 protected:
    Typesetting::Source source() const override;
    void paintBehind(QPainter &painter, const Typesetting &typesetting) const override;

 private:
    QFont codeFont() const;
};

}  // namespace platform
