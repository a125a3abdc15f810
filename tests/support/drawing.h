#pragma once

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QTest>
#include <QWidget>

/// What a test draws, and what it looks for in the picture.
namespace drawing {

/// A dark desktop's colours.
inline QPalette darkPalette() {
    QPalette dark(QColor(0x2d, 0x2e, 0x32));
    const QColor text(0xec, 0xec, 0xee);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::BrightText, QPalette::ToolTipText}) {
        dark.setColor(role, text);
        dark.setColor(QPalette::Disabled, role, QColor(0x8a, 0x8b, 0x90));
    }
    dark.setColor(QPalette::Base, QColor(0x22, 0x23, 0x26));
    dark.setColor(QPalette::ToolTipBase, QColor(0x22, 0x23, 0x26));
    return dark;
}

/// Adds a column `palette` with rows light and dark.
inline void addPalettes() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QApplication::palette();
    QTest::newRow("dark") << darkPalette();
}

/// How many pixels of exactly that colour the picture has.
inline int pixels(const QImage &picture, const QColor &color) {
    int pixels = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            pixels += picture.pixelColor(x, y) == color ? 1 : 0;
        }
    }
    return pixels;
}

/// How many pixels of exactly that colour the widget draws.
inline int pixels(QWidget &widget, const QColor &color) {
    return pixels(widget.grab().toImage(), color);
}

/// Counts how often a control has been drawn since this object was created.
class Paints final : public QObject {
 public:
    explicit Paints(QObject &control) { control.installEventFilter(this); }
    int count() const { return count_; }

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        count_ += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

 private:
    int count_ = 0;
};

}  // namespace drawing
