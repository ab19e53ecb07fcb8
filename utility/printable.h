/// Tests for printable ASCII text.
#pragma once

#include <string>

#include "core/buffer.h"

namespace mox {

/// Returns whether s is not empty and each of its bytes is printable ASCII: 0x20 (space) to 0x7E
/// (tilde), whatever the locale.
bool IsStringPrintable(const std::string& s);

/// The same for the bytes of a buffer, which must not be a counting cursor.
bool IsBufferPrintable(const qel::Buffer& b);

}  // namespace mox
