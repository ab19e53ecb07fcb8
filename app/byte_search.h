/// Substring search, and buffers as std::string_view.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/buffer.h"

/// Returns a view of the buffer's bytes. Invalid once the buffer is resized or destroyed.
std::string_view AsStringView(const qel::Buffer& buffer);

/// Returns text.find(wanted, from), usually several times faster when the match is far away. find
/// stops at every occurrence of the first byte, and in XML "<" is everywhere; this search first
/// filters, a block at a time, on the two bytes of wanted that are rarest in a sample of the text.
std::size_t FindBytes(std::string_view text, std::string_view wanted, std::size_t from);
