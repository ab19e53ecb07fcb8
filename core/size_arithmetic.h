/// Sums and products of sizes that stop at the largest size instead of wrapping round, and texts of
/// such sizes. Private to this library.
///
/// No heap grants the largest size, so that a size that does not fit 64 bits ends like one that
/// memory cannot hold: ERROR_MEM.
#pragma once

#include <exception>
#include <limits>
#include <string>

#include "core/exception.h"
#include "core/result_codes.h"

namespace qel {

inline constexpr unsigned long maxSize = std::numeric_limits<unsigned long>::max();

constexpr unsigned long SaturatingAdd(unsigned long left, unsigned long right) {
    return left > maxSize - right ? maxSize : left + right;
}

constexpr unsigned long SaturatingMultiply(unsigned long left, unsigned long right) {
    return right != 0 && left > maxSize / right ? maxSize : left * right;
}

/// A text of this many characters, to be written over. Throws Exception(ERROR_MEM) when the heap
/// refuses it or no string can be that long.
inline std::string MakeString(unsigned long size) try {
    return std::string(size, '\0');
} catch (const std::exception&) {
    throw Exception(ERROR_MEM);
}

}  // namespace qel
