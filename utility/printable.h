/// Tests for text that can be shown as it is.
#pragma once

#include <string>

#include "core/buffer.h"

namespace mox {

/// True when s is not empty and each of its bytes is a printable ASCII character: 0x20 (blank) to
/// 0x7E (tilde), whatever the locale.
bool IsStringPrintable(const std::string& s);

/// The same for the bytes of a buffer, which must not be a counting cursor.
bool IsBufferPrintable(const qel::Buffer& b);

}  // namespace mox
