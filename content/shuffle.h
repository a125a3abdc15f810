#pragma once

#include <cstdint>
#include <functional>

#include <QStringList>

namespace content {

/// Draws uniformly distributed unsigned 32-bit numbers.
using RandomSource = std::function<std::uint32_t()>;

/// The platform's generator; it needs no seed.
std::uint32_t systemRandom();

/// Shuffles `list` in place, front to back, with exactly one draw for each entry: the same draws
/// always give the same order.
void shuffle(QStringList &list, const RandomSource &random);

}  // namespace content
