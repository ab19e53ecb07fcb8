#include "core/buffer_dynamic.h"

#include <stdio.h>
#include <stdlib.h>

#include "core/buffer_shifting.h"
#include "core/c_library.h"
#include "core/exception.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"

namespace qel {

namespace {

/// Load, for an open file.
unsigned long ReadWhole(::FILE* file, BufferDynamic& buffer) {
    if (::fseek(file, 0, SEEK_END) != 0) return ERROR_IO;
    const long end = ::ftell(file);
    if (end < 0) return ERROR_IO;
    if (end == 0) {
        buffer.Destroy();
        return SUCCESS;
    }
    if (::fseek(file, 0, SEEK_SET) != 0) return ERROR_IO;
    const auto length = static_cast<unsigned long>(end);
    if (const unsigned long result = buffer.Alloc(length)) return result;
    return ::fread(buffer.GetData(), length, 1, file) == 1 ? SUCCESS : ERROR_READ;
}

}  // namespace

BufferDynamic::BufferDynamic(unsigned long length) {
    ThrowUnlessSuccess(BufferDynamic::Alloc(length));
}

BufferDynamic::BufferDynamic(const Buffer& source) : BufferDynamic(source.GetSize()) {
    Buffer::Set(source.GetSize(), source.GetData());
}

BufferDynamic::BufferDynamic(const BufferDynamic& source)
    : BufferDynamic(static_cast<const Buffer&>(source)) {}

BufferDynamic& BufferDynamic::operator=(const Buffer& source) {
    ThrowUnlessSuccess(Set(source.GetSize(), source.GetData()));
    return *this;
}

BufferDynamic& BufferDynamic::operator=(const BufferDynamic& source) {
    return *this = static_cast<const Buffer&>(source);
}

BufferDynamic::~BufferDynamic() { BufferDynamic::Destroy(); }

unsigned long BufferDynamic::Set(unsigned long length, const void* src) {
    if (length != size) {
        if (const unsigned long result = Alloc(length)) return result;
    }
    return Buffer::Set(length, src);
}

unsigned long BufferDynamic::Set(const std::string& text) {
    return Set(text.length(), text.data());
}

unsigned long BufferDynamic::Alloc(unsigned long length) {
    void* const block = ::malloc(length);
    // malloc(0) may return null.
    if (block == nullptr && length != 0) return ERROR_MEM;
    // Only now, so that the old contents survive a failure.
    Destroy();
    data = block;
    size = length;
    return SUCCESS;
}

unsigned long BufferDynamic::Realloc(unsigned long length) {
    // realloc(p, 0) differs between systems.
    if (length == 0) {
        Destroy();
        return SUCCESS;
    }
    if (length == size) return SUCCESS;
    void* const block = ::realloc(data, length);
    if (block == nullptr) return ERROR_MEM;
    data = block;
    size = length;
    return SUCCESS;
}

void BufferDynamic::Destroy() { ::free(Detach()); }

void* BufferDynamic::Detach() {
    void* const block = data;
    data = nullptr;
    size = 0;
    return block;
}

unsigned long BufferDynamic::AppendBuffer(const Buffer& tail) {
    const unsigned long oldSize = size;
    const unsigned long newSize = SaturatingAdd(oldSize, tail.GetSize());
    if (const unsigned long result = Realloc(newSize)) return result;
    // Reads tail's size again: appending a buffer to itself fails here, instead of reading past its
    // end.
    BufferShifting end(*this);
    if (const unsigned long result = end.Shift(oldSize)) return result;
    return end.SetBufferAndShift(tail);
}

unsigned long BufferDynamic::Load(const char* path) {
    ::FILE* const file = qel::fopen(path, "rb");
    if (file == nullptr) return ERROR_FILE_OPEN;
    // Unbuffered: one read straight into the block, without an extra copy.
    ::setvbuf(file, nullptr, _IONBF, 0);
    const unsigned long result = ReadWhole(file, *this);
    ::fclose(file);
    return result;
}

}  // namespace qel
