/// Bytes seen as text, and plain search in them.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/buffer.h"

/// The bytes of a buffer, which has to outlive the result.
std::string_view AsStringView(const qel::Buffer& buffer);

/// What text.find(wanted, from) gives, but several times faster where the match is far away.
///
/// std::string_view::find looks closer wherever the first byte stands, and in XML "<" is
/// everywhere. Here two bytes of wanted that seem to be rare in the text have to be in their places
/// first, which is compared for a block of places at a time.
std::size_t FindBytes(std::string_view text, std::string_view wanted, std::size_t from);
