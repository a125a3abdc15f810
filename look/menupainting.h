#pragma once

#include <QSize>

class QPainter;
class QStyleOption;
class QStyleOptionMenuItem;

/// How menu bars and menus are drawn.
namespace platform::look {

/// The size of an item of the menu bar whose text has the size `text`, in pixels.
QSize menuBarItemSize(const QStyleOption &item, const QSize &text);
void paintMenuBarItem(QPainter &painter, const QStyleOptionMenuItem &item);

/// The size of a menu item, without its shortcut, whose text has the size `text`, in pixels.
QSize menuItemSize(const QStyleOptionMenuItem &item, const QSize &text);
void paintMenuItem(QPainter &painter, const QStyleOptionMenuItem &item);
/// What is behind the items of a menu.
void paintMenuPanel(QPainter &painter, const QStyleOption &menu);

}  // namespace platform::look
