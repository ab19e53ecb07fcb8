/// What the fuzz targets share: the entry that each defines, called with one input at a time by
/// libFuzzer or, over files, by replay.cpp, and the check that ends the process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline void Require(bool holds, const char* statement) {
    if (holds) return;
    std::fprintf(stderr, "This does not hold: %s\n", statement);
    std::abort();
}
