#include "controls/keylabel.h"

#include <cmath>

#include <QPainter>
#include <QRegularExpression>

#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

using namespace Qt::StringLiterals;

namespace platform {

/// A key, or the text between two keys.
struct KeyLabel::Piece {
    QString text;
    bool isKey = false;
    double left = 0;
    double width = 0;
};

KeyLabel::KeyLabel(QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QList<KeyLabel::Piece> KeyLabel::pieces() const {
    static const QRegularExpression pattern(u", | or | to |\\+|[^,+ ]+"_s);
    const double padding = look::unit(*this) * look::keyPadding;
    const double narrowest = look::unit(*this) * look::keyHeight;
    const double gap = look::unit(*this) * look::keyGap;
    QList<Piece> pieces;
    double left = 0;
    for (const auto &match : pattern.globalMatch(text())) {
        Piece piece{.text = match.captured()};
        piece.isKey = !piece.text.contains(u' ') && piece.text != u"+";
        piece.left = left;
        piece.width = QFontMetricsF(font()).horizontalAdvance(piece.text);
        piece.width = piece.isKey ? qMax(std::ceil(piece.width + 2 * padding), narrowest)
                                  : std::ceil(piece.width + gap);
        left += piece.width;
        pieces << piece;
    }
    return pieces;
}

QSize KeyLabel::sizeHint() const {
    const QList<Piece> all = pieces();
    const double width = all.isEmpty() ? 0 : all.last().left + all.last().width;
    return {int(std::ceil(width)), qRound(look::unit(*this) * look::keyHeight)};
}

QSize KeyLabel::minimumSizeHint() const {
    return sizeHint();
}

void KeyLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    for (const Piece &piece : pieces()) {
        const QRectF place(piece.left, 0, piece.width, height());
        if (piece.isKey) {
            look::paintPanel(painter, palette(),
                             {.rect = place,
                              .unit = look::unit(*this),
                              .radius = look::keyRadius,
                              .border = look::Border::Outline});
        }
        painter.setPen(piece.isKey ? look::text(palette()) : look::secondaryText(palette()));
        painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, piece.text);
    }
}

}  // namespace platform
