#include "core/buffer.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>

#include "core/c_library.h"
#include "core/result_codes.h"

namespace qel {

// One class views both constant and other bytes, as iovec does; who writes is the caller's choice.
Buffer::Buffer(const void* address, unsigned long length)
    : data(const_cast<void*>(address)), size(length) {}

unsigned long Buffer::Set(unsigned long length, const void* src) {
    if (length != size) return ERROR_SIZE;
    // memmove takes no null pointers, not even for no bytes.
    if (length != 0) ::memmove(data, src, length);
    return SUCCESS;
}

unsigned long Buffer::Save(const char* path) const {
    ::FILE* const file = qel::fopen(path, "wb");
    if (file == nullptr) return ERROR_WRITE;
    // A stream with a buffer would accept the bytes now and fail only in fclose, unseen.
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
    // Behind a volatile pointer the compiler must expect any function, so it can drop no pass.
    void* (*volatile const fill)(void*, int, size_t) = ::memset;
    for (const int pattern : {0x00, 0xFF, 0xAA}) fill(address, pattern, length);
}

void Buffer::Reverse(void* address, unsigned long length) {
    auto* const bytes = static_cast<unsigned char*>(address);
    std::reverse(bytes, bytes + length);
}

}  // namespace qel
