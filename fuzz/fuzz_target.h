/// The entry point that each fuzz target defines, called by libFuzzer or by replay.cpp, and
/// Require, which checks a property.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline void Require(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "Property violated: %s\n", property);
    std::abort();
}
