#pragma once

#include <optional>

#include <QFont>
#include <QImage>
#include <QList>

class QWidget;

/// What can be seen of a window. Everything is measured on pixels: on two pictures that differ in
/// one thing only, so that the one shows what the other's thing was drawn upon.
namespace optics {

/// Device pixels per pixel of a picture: enough for the thinnest stroke to have a core that is
/// free of antialiasing.
inline constexpr int ratio = 3;

/// A text as it is drawn, line by line.
struct Text {
    QString text;
    QFont font;
    /// In the picture's own pixels.
    QRect place;
    /// Nothing of it is clipped.
    bool whole;
};

struct Picture {
    QImage pixels;
    QList<Text> texts;
};

/// What a picture leaves out.
struct Without {
    bool texts = false;
    /// What this control itself draws; its children stay.
    QWidget *control = nullptr;
};

/// A picture of the widget, which is a window, or of a part of it.
Picture picture(QWidget &window, const QRect &area, const Without &without = {});
Picture picture(QWidget &window, const Without &without = {});

/// What is written on the widget, without a picture of it.
QList<Text> texts(QWidget &widget);

/// The contrast of two colours after WCAG 2, from 1 to 21.
double contrast(QRgb one, QRgb other);

/// The contrast of what was added within `place`: the usual one where it covers its background.
/// Nothing where nothing was added.
std::optional<double> inkContrast(const QImage &with, const QImage &without, const QRect &place);

/// The contrast of an added shape's edge or fill, on the worst of its four sides.
std::optional<double> shapeContrast(const QImage &with, const QImage &without);

/// The contrast of an added ring on the worst of its four sides: to what was there before it, or
/// to what it has within or around it, whichever is least.
std::optional<double> ringContrast(const QImage &with, const QImage &without);

/// The contrast of an added mark: of its main colour to the background and, where it has two, of
/// the one to the other.
std::optional<double> markContrast(const QImage &with, const QImage &without);

/// The contrast of the faintest of the pieces that were added along a picture's middle row.
std::optional<double> piecesContrast(const QImage &with, const QImage &without);

/// The colour that most of the picture's pixels have.
QRgb mainColor(const QImage &picture);

}  // namespace optics
