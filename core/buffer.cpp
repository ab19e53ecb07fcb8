#include "core/buffer.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>

#include "core/c_library.h"
#include "core/result_codes.h"

namespace qel {

// Like iovec, one class views const and mutable bytes; the caller must not write to const ones.
Buffer::Buffer(const void* address, unsigned long length)
    : data(const_cast<void*>(address)), size(length) {}

unsigned long Buffer::Set(unsigned long length, const void* src) {
    if (length != size) return ERROR_SIZE;
    // memmove must not get null pointers, even for size 0.
    if (length != 0) ::memmove(data, src, length);
    return SUCCESS;
}

unsigned long Buffer::Save(const char* path) const {
    ::FILE* const file = qel::fopen(path, "wb");
    if (file == nullptr) return ERROR_WRITE;
    // Unbuffered, so that errors show in fwrite and not in fclose.
    ::setvbuf(file, nullptr, _IONBF, 0);
    const bool written = size == 0 || ::fwrite(data, size, 1, file) == 1;
    ::fclose(file);
    return written ? SUCCESS : ERROR_WRITE;
}

void Buffer::FillRand() {
    auto* const bytes = static_cast<unsigned char*>(data);
    std::generate_n(bytes, size, [] { return static_cast<unsigned char>(::rand()); });
}

void Buffer::Wipe(unsigned long length, void* address) {
    if (length == 0) return;
    // Through a volatile pointer the compiler cannot optimize the calls away.
    void* (*volatile const fill)(void*, int, size_t) = ::memset;
    for (const int pattern : {0x00, 0xFF, 0xAA}) fill(address, pattern, length);
}

void Buffer::Reverse(void* address, unsigned long length) {
    auto* const bytes = static_cast<unsigned char*>(address);
    std::reverse(bytes, bytes + length);
}

}  // namespace qel
