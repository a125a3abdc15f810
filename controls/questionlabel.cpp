#include "controls/questionlabel.h"

#include <QFontDatabase>
#include <QFontInfo>

#include "look/metrics.h"
#include "look/painting.h"

using namespace Qt::StringLiterals;

namespace platform {

QFont QuestionLabel::codeFont() const {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
#ifdef Q_OS_WIN
    // What Qt takes for the system's fixed font has thin lines, made for printers.
    font.setFamilies(QStringList{u"Consolas"_s} + font.families());
#endif
    if (!QFontInfo(font).fixedPitch()) {
        // The desktop names no fixed-width font.
        font.setFamily(u"monospace"_s);
    }
    look::setSize(font, window()->font());
    return font;
}

Typesetting::Source QuestionLabel::source() const {
    Typesetting::Source source = TextLabel::source();
    if (source.text.contains(u'\n')) {
        source.code = {.font = codeFont(),
                       .sideMargin = look::codeSideMargin * baseUnit(),
                       .endMargin = look::codeEndMargin * baseUnit()};
    }
    return source;
}

QMargins QuestionLabel::padding() const {
    const int margin = qRound(look::questionMargin * baseUnit());
    return {margin, margin, margin, margin};
}

void QuestionLabel::paintBackground(QPainter &painter) const {
    look::paintPanel(painter, palette(), {.rect = rect(), .unit = baseUnit()});
}

void QuestionLabel::paintBehind(QPainter &painter, const Typesetting &typesetting) const {
    if (!typesetting.codePanel().isEmpty()) {
        look::paintPanel(painter, palette(),
                         {.rect = typesetting.codePanel(),
                          .unit = baseUnit(),
                          .radius = look::controlRadius,
                          .fill = look::Fill::Window});
    }
}

}  // namespace platform
