#pragma once

#include <string>

#include "core/buffer_dynamic.h"
#include "core/result_codes.h"

inline qel::Buffer View(const std::string& bytes) { return {bytes.data(), bytes.size()}; }

inline std::string Bytes(const qel::Buffer& buffer) {
    return {static_cast<const char*>(buffer.GetData()), buffer.GetSize()};
}

inline std::string BytesFromTo(int first, int last) {
    std::string bytes;
    for (int byte = first; byte <= last; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}

/// A buffer whose Alloc and Realloc fail.
struct FailingBuffer : qel::BufferDynamic {
    using BufferDynamic::BufferDynamic;
    unsigned long Alloc(unsigned long) override { return qel::ERROR_PARAM; }
    unsigned long Realloc(unsigned long) override { return qel::ERROR_DATA; }
};
