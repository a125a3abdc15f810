#include "look/menupainting.h"

#include <QPainter>
#include <QStyleOption>

#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

namespace platform::look {

namespace {

constexpr int textFlags =
    Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextDontClip | Qt::TextSingleLine;

/// Not every desktop gives a menu a shadow, so its lines are stronger than those of a panel.
QColor lineColor(const QPalette &palette) {
    QColor color = outline(palette);
    color.setAlphaF(0.5F);
    return color;
}

bool isSeparator(const QStyleOptionMenuItem &item) {
    return item.menuItemType == QStyleOptionMenuItem::Separator;
}

bool opensMenu(const QStyleOptionMenuItem &item) {
    return item.menuItemType == QStyleOptionMenuItem::SubMenu;
}

/// The room for the mark of a checked item.
double markColumn(const QStyleOptionMenuItem &item) {
    return item.menuHasCheckableItems ? menuMarkSize + menuPadding / 2 : 0;
}

void paintHighlight(QPainter &painter, const QStyleOption &option, const QRectF &rect, Fill fill) {
    Panel highlight = controlPanel(option, rect);
    highlight.fill = fill;
    paintPanel(painter, option.palette, highlight);
}

void paintSeparator(QPainter &painter, const QStyleOptionMenuItem &item) {
    const int side = qRound(menuPadding * look::unit(item));
    painter.fillRect(
        QRect(item.rect.left() + side, item.rect.center().y(), item.rect.width() - 2 * side, 1),
        lineColor(item.palette));
}

}  // namespace

void paintMenuBarItem(QPainter &painter, const QStyleOptionMenuItem &item) {
    if (item.state.testFlag(QStyle::State_Selected)) {
        const bool open = item.state.testFlag(QStyle::State_Sunken);
        paintHighlight(painter, item, item.rect, open ? Fill::Pressed : Fill::Prominent);
    }
    painter.setPen(look::text(item.palette));
    painter.drawText(item.rect, Qt::AlignHCenter | textFlags, item.text);
}

QSize menuBarItemSize(const QStyleOption &item, const QSize &text) {
    const double unit = look::unit(item);
    return {text.width() + qRound(2 * menuBarPadding * unit), qRound(menuBarItemHeight * unit)};
}

QSize menuItemSize(const QStyleOptionMenuItem &item, const QSize &text) {
    const double unit = look::unit(item);
    if (isSeparator(item)) {
        // Qt leaves out an item without a width.
        return {1, qRound(menuSeparatorHeight * unit)};
    }
    const double gap = item.text.contains(u'\t') || opensMenu(item) ? menuShortcutGap : 0;
    const double beside = 2 * (menuInset + menuPadding) + markColumn(item) + gap;
    return {text.width() + qRound(beside * unit), qRound(menuItemHeight * unit)};
}

void paintMenuItem(QPainter &painter, const QStyleOptionMenuItem &item) {
    if (isSeparator(item)) {
        paintSeparator(painter, item);
        return;
    }
    const double unit = look::unit(item);
    const bool enabled = item.state.testFlag(QStyle::State_Enabled);
    const bool selected = enabled && item.state.testFlag(QStyle::State_Selected);
    const double inset = menuInset * unit;
    QRectF rect = QRectF(item.rect).adjusted(inset, 0, -inset, 0);
    if (selected) {
        paintHighlight(painter, item, rect, Fill::Accent);
    }
    rect.adjust(menuPadding * unit, 0, -menuPadding * unit, 0);

    const QColor ink = selected ? onAccent(item.palette) : look::text(item.palette);
    painter.save();
    painter.setOpacity(enabled ? 1 : disabledOpacity);
    const QSizeF markSize = QSizeF(menuMarkSize, menuMarkSize) * unit;
    const double markTop = rect.center().y() - markSize.height() / 2;
    const auto paintMark = [&](double left, Glyph glyph) {
        paintGlyph(painter, {{left, markTop}, markSize}, unit * menuGlyphScale, glyph, ink);
    };
    if (item.checked) {
        paintMark(rect.left(), Glyph::Tick);
    }
    if (opensMenu(item)) {
        paintMark(rect.right() - markSize.width(), Glyph::Chevron);
    }
    painter.setFont(item.font);
    painter.setPen(ink);
    const qsizetype tab = item.text.indexOf(u'\t');
    painter.drawText(rect.adjusted(markColumn(item) * unit, 0, 0, 0), Qt::AlignLeft | textFlags,
                     item.text.left(tab));
    if (tab >= 0) {
        painter.setPen(selected ? ink : secondaryText(item.palette));
        painter.drawText(rect, Qt::AlignRight | textFlags, item.text.mid(tab + 1));
    }
    painter.restore();
}

void paintMenuPanel(QPainter &painter, const QStyleOption &menu) {
    painter.fillRect(menu.rect, fillColor(menu.palette, Fill::Surface));
    painter.save();
    painter.setPen(lineColor(menu.palette));
    painter.drawRect(menu.rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

}  // namespace platform::look
