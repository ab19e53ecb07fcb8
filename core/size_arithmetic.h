/// Sums and products of sizes that stop at the largest size instead of wrapping round. Private to
/// this library.
///
/// No heap grants the largest size, so that a size that does not fit 64 bits ends like one that
/// memory cannot hold: ERROR_MEM.
#pragma once

#include <limits>

namespace qel {

inline constexpr unsigned long largestSize = std::numeric_limits<unsigned long>::max();

constexpr unsigned long SaturatingAdd(unsigned long left, unsigned long right) {
    return left > largestSize - right ? largestSize : left + right;
}

constexpr unsigned long SaturatingMultiply(unsigned long left, unsigned long right) {
    return right != 0 && left > largestSize / right ? largestSize : left * right;
}

}  // namespace qel
