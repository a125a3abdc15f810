#pragma once

#include <iterator>

#include <QRandomGenerator>

/// The choices of a walk.
class Dice final {
 public:
    explicit Dice(quint32 seed) : random_(seed) {}

    quint32 number() { return random_.generate(); }
    int below(int limit) { return random_.bounded(limit); }
    bool oneIn(int chances) { return below(chances) == 0; }
    template <class List>
    auto &&pick(List &&list) {
        return *std::next(list.begin(), below(int(list.size())));
    }

 private:
    QRandomGenerator random_;
};
