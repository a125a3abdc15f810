#include "content/shuffle.h"

#include <QRandomGenerator>

namespace content {

std::uint32_t systemRandom() {
    return QRandomGenerator::global()->generate();
}

void shuffle(QStringList &list, const RandomSource &random) {
    for (qsizetype i = 0; i < list.size(); ++i) {
        const auto remaining = static_cast<std::uint64_t>(list.size() - i);
        const std::uint64_t draw = random();
        list.swapItemsAt(i, i + static_cast<qsizetype>(draw % remaining));
    }
}

}  // namespace content
