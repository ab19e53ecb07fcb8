#include "core/buffer_shifting.h"

#include <string.h>

#include "core/c_library.h"
#include "core/result_codes.h"

namespace qel {

BufferShifting::BufferShifting(const void* address, unsigned long length)
    : Buffer(address, length) {}

BufferShifting::BufferShifting(const Buffer& block) : Buffer(block) {}

unsigned long BufferShifting::Shift(unsigned long count) {
    if (count > size) return ERROR_SIZE;
    size -= count;
    if (data != nullptr) data = static_cast<unsigned char*>(data) + count;
    return SUCCESS;
}

unsigned long BufferShifting::SetBufferAndShift(unsigned long count, const void* src) {
    // Shift also does the bounds check.
    void* const position = data;
    const unsigned long result = Shift(count);
    if (result == SUCCESS && position != nullptr && count != 0) ::memmove(position, src, count);
    return result;
}

unsigned long BufferShifting::SetBufferAndShift(const Buffer& source) {
    return SetBufferAndShift(source.GetSize(), source.GetData());
}

unsigned long BufferShifting::SetStringAndShift(const char* text) {
    return SetBufferAndShift(qel::strlen(text), text);
}

unsigned long BufferShifting::GetAndShift(unsigned long count, void* dst) {
    const void* const position = data;
    const unsigned long result = Shift(count);
    if (result == SUCCESS && count != 0) ::memmove(dst, position, count);
    return result;
}

}  // namespace qel
