#include <algorithm>
#include <array>
#include <cmath>

#include <QHash>

#include "support/optics.h"

namespace optics {

namespace {

const QRgb *row(const QImage &picture, int y) {
    return reinterpret_cast<const QRgb *>(picture.constScanLine(y));
}

bool changed(const QImage &with, const QImage &without, const QPoint &at) {
    return row(with, at.y())[at.x()] != row(without, at.y())[at.x()];
}

/// Visits each pixel that differs.
template <class Visit>
void visitChanged(const QImage &with, const QImage &without, const QRect &place, Visit visit) {
    const int width = place.width();
    for (int y = place.top(); y <= place.bottom(); ++y) {
        const QRgb *const ink = row(with, y) + place.left();
        const QRgb *const background = row(without, y) + place.left();
        // Most rows are the same and can be skipped as a whole.
        if (std::equal(ink, ink + width, background)) {
            continue;
        }
        for (int x = 0; x < width; ++x) {
            if (ink[x] != background[x]) {
                visit(QPoint(place.left() + x, y));
            }
        }
    }
}

double luminance(QRgb color) {
    static const auto linear = [] {
        std::array<double, 256> table{};
        for (std::size_t level = 0; level < table.size(); ++level) {
            const double share = double(level) / 255;
            table.at(level) =
                share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        }
        return table;
    }();
    const auto of = [](int level) { return linear.at(static_cast<std::size_t>(level)); };
    return 0.2126 * of(qRed(color)) + 0.7152 * of(qGreen(color)) + 0.0722 * of(qBlue(color));
}

/// The part of the pictures that differs.
QRect changedBox(const QImage &with, const QImage &without) {
    QRect box;
    visitChanged(with, without, with.rect(), [&](const QPoint &at) { box |= QRect(at, at); });
    return box;
}

/// The best contrast on the way from the middle of a side of the box to the centre.
double contrastOfSide(const QImage &with, const QImage &without, const QRect &box,
                      const QPoint &inwards) {
    const int steps = (inwards.x() == 0 ? box.height() : box.width()) / 2;
    double best = 1;
    for (int step = 0; step <= steps; ++step) {
        const QPoint at = box.center() - inwards * step;
        if (with.valid(at)) {
            best = qMax(best, contrast(with.pixel(at), without.pixel(at)));
        }
    }
    return best;
}

}  // namespace

double contrast(QRgb one, QRgb other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

std::optional<double> inkContrast(const QImage &with, const QImage &without, const QRect &place) {
    const auto covers = [&](const QPoint &at) {
        return changed(with, without, at + QPoint(1, 0)) &&
               changed(with, without, at - QPoint(1, 0)) &&
               changed(with, without, at + QPoint(0, 1)) &&
               changed(with, without, at - QPoint(0, 1));
    };
    QList<double> contrasts;
    visitChanged(with, without, place & with.rect().adjusted(1, 1, -1, -1), [&](const QPoint &at) {
        if (covers(at)) {
            contrasts << contrast(with.pixel(at), without.pixel(at));
        }
    });
    if (contrasts.isEmpty()) {
        return std::nullopt;
    }
    const auto median = contrasts.begin() + contrasts.size() / 2;
    std::nth_element(contrasts.begin(), median, contrasts.end());
    return *median;
}

std::optional<double> shapeContrast(const QImage &with, const QImage &without) {
    const QRect box = changedBox(with, without);
    if (box.isEmpty()) {
        return std::nullopt;
    }
    double worst = contrastOfSide(with, without, box, {1, 0});
    for (const QPoint &inwards : {QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
        worst = qMin(worst, contrastOfSide(with, without, box, inwards));
    }
    return worst;
}

QRgb mainColor(const QImage &picture) {
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[row(picture, y)[x]];
        }
    }
    int most = 0;
    QRgb main = 0;
    for (auto count = counts.begin(); count != counts.end(); ++count) {
        if (*count > most) {
            most = *count;
            main = count.key();
        }
    }
    return main;
}

}  // namespace optics
