/// Saturating arithmetic for sizes, and strings of such sizes. Private to this library.
///
/// An allocation of the largest size always fails, so an overflow ends in ERROR_MEM.
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

/// Returns a string of this size, to be overwritten; throws Exception(ERROR_MEM) on failure.
inline std::string MakeString(unsigned long size) try {
    return std::string(size, '\0');
} catch (const std::exception&) {
    throw Exception(ERROR_MEM);
}

}  // namespace qel
