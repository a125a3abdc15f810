#pragma once

#include <optional>

#include <QFont>
#include <QImage>
#include <QList>

class QWidget;

/// What can be seen of a window. Everything is measured in pixels, on two pictures that differ in
/// one thing only: the picture without it shows its background.
namespace optics {

/// Device pixels per pixel of a picture: enough for the thinnest stroke to have a core that is
/// free of antialiasing.
inline constexpr int ratio = 2;

/// A text as it is drawn, line by line.
struct Text {
    QString text;
    QFont font;
    /// In the picture's own pixels.
    QRect place;
    /// Whether nothing of it is clipped.
    bool whole;
};

struct Picture {
    QImage pixels;
    QList<Text> texts;
};

/// What a picture leaves out.
struct Without {
    bool texts = false;
    /// A control that does not draw itself; its children stay.
    QWidget *control = nullptr;
};

/// A picture of the widget, which is a window, or of a part of it.
Picture picture(QWidget &window, const QRect &area, const Without &without = {});
Picture picture(QWidget &window, const Without &without = {});

/// The texts on the widget, without a picture of it.
QList<Text> texts(QWidget &widget);

/// The contrast of two colours after WCAG 2, from 1 to 21.
double contrast(QRgb one, QRgb other);

/// The median contrast of what was added within `place`, where it covers its background. Nothing if
/// nothing was added.
std::optional<double> inkContrast(const QImage &with, const QImage &without, const QRect &place);

/// The contrast of an added shape's edge or fill, or of an added ring, on the worst of its four
/// sides.
std::optional<double> shapeContrast(const QImage &with, const QImage &without);

/// The colour that most of the picture's pixels have.
QRgb mainColor(const QImage &picture);

}  // namespace optics
