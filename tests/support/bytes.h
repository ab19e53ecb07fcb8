#pragma once

#include <string>

#include "core/buffer_dynamic.h"

inline qel::Buffer View(const std::string& bytes) { return {bytes.data(), bytes.size()}; }

inline std::string Bytes(const qel::Buffer& buffer) {
    return {static_cast<const char*>(buffer.GetData()), buffer.GetSize()};
}
