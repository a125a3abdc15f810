#pragma once

#include <algorithm>
#include <cstdlib>

#include <QImage>
#include <QList>
#include <QPainter>
#include <QPoint>
#include <QSet>

/// How much two pictures of the same thing may differ if letters are rasterized differently.
struct Tolerance {
    /// How many pixels things may have moved.
    int slack;
    /// How many cells may differ in one spot.
    int spot;
    /// How many cells in a thousand may differ in all.
    int perMille;
};

/// At normal density letters are fitted to the pixels, which can move the end of a line by a few.
/// At double density they are not, so that smaller differences can be found.
inline constexpr Tolerance normalDensity{2, 20, 25};
inline constexpr Tolerance doubleDensity{1, 2, 4};

/// The differences between a picture that is kept and one that was taken, cell by cell.
class Comparison final {
 public:
    /// Both in logical pixels.
    Comparison(const QImage &kept, const QImage &taken, const Tolerance &tolerance)
        : taken_(taken),
          tolerance_(tolerance),
          cells_(std::min(kept.width(), taken.width()) / cellSide,
                 std::min(kept.height(), taken.height()) / cellSide) {
        for (int y = 0; y < cells_.height(); ++y) {
            for (int x = 0; x < cells_.width(); ++x) {
                different_ << QPoint(x, y);
            }
        }
        const QImage wanted = meansOf(kept, {});
        for (int y = -tolerance.slack; y <= tolerance.slack; ++y) {
            for (int x = -tolerance.slack; x <= tolerance.slack; ++x) {
                const QImage found = meansOf(taken, {x, y});
                different_.removeIf([&](const QPoint &cell) {
                    return alike(wanted.pixel(cell), found.pixel(cell));
                });
            }
        }
        findLargestSpot();
    }

    bool isWithinTolerance() const {
        return spot_.size() <= tolerance_.spot &&
               different_.size() * 1000 <= qsizetype(tolerance_.perMille) * cells();
    }

    int differentCells() const { return int(different_.size()); }
    int cells() const { return cells_.width() * cells_.height(); }
    int cellsInLargestSpot() const { return int(spot_.size()); }
    QRect largestSpot() const {
        QRect place;
        for (const QPoint &cell : spot_) {
            place |= placeOf(cell);
        }
        return place;
    }

    /// The taken picture, paler, with the cells marked that differ.
    QImage marked() const {
        QImage marked = taken_;
        QPainter painter(&marked);
        painter.fillRect(marked.rect(), QColor(255, 255, 255, 128));
        for (const QPoint &cell : different_) {
            painter.fillRect(placeOf(cell), QColor(255, 0, 0, 128));
        }
        return marked;
    }

 private:
    static constexpr int cellSide = 8;

    static QRect placeOf(const QPoint &cell) {
        return {cell * cellSide, QSize(cellSide, cellSide)};
    }

    /// The mean colour of each cell; the first cell begins at `corner`.
    QImage meansOf(const QImage &picture, QPoint corner) const {
        return picture.copy(QRect(corner, cells_ * cellSide))
            .scaled(cells_, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }

    static bool alike(QRgb one, QRgb other) {
        constexpr int shade = 12;
        return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                         std::abs(qBlue(one) - qBlue(other))}) <= shade;
    }

    void findLargestSpot() {
        QSet<QPoint> left = different_;
        while (!left.isEmpty()) {
            QList<QPoint> spot{*left.cbegin()};
            left.remove(spot.first());
            for (qsizetype i = 0; i < spot.size(); ++i) {
                for (int y = -1; y <= 1; ++y) {
                    for (int x = -1; x <= 1; ++x) {
                        const QPoint neighbour = spot[i] + QPoint(x, y);
                        if (left.remove(neighbour)) {
                            spot << neighbour;
                        }
                    }
                }
            }
            if (spot.size() > spot_.size()) {
                spot_ = spot;
            }
        }
    }

    QImage taken_;
    Tolerance tolerance_;
    QSize cells_;
    QSet<QPoint> different_;
    QList<QPoint> spot_;
};
