/// qel::BufferShifting: a cursor that writes or reads runs of bytes and moves past them.
///
/// It owns nothing; the block under it must outlive it. GetData() is the current position,
/// GetSize() the number of bytes from there to the end of the block. A counting cursor, whose
/// position is null, only checks and counts: it copies nothing and stays null, so that a writer can
/// measure its output before allocating.
///
///     qel::BufferDynamic text(6);
///     qel::BufferShifting cursor(text);
///     cursor.SetStringAndShift("0x");       // the first two bytes
///     cursor.SetBufferAndShift(4, "FEED");  // the other four; GetSize() is now 0
///
/// An operation that needs more bytes than remain returns ERROR_SIZE and changes nothing.
#pragma once

#include "core/buffer.h"

namespace qel {

class BufferShifting : public Buffer {
public:
    /// Starts at address with length bytes remaining; a null address makes a counting cursor.
    BufferShifting(const void* address, unsigned long length);

    /// Starts at the first byte of block.
    explicit BufferShifting(const Buffer& block);

    /// Moves past count bytes.
    unsigned long Shift(unsigned long count);

    /// Writes count bytes from src and moves past them.
    unsigned long SetBufferAndShift(unsigned long count, const void* src);

    /// Writes the bytes of source and moves past them.
    unsigned long SetBufferAndShift(const Buffer& source);

    /// Writes the characters of text, without its terminating NUL, and moves past them.
    unsigned long SetStringAndShift(const char* text);

    /// Reads count bytes into dst and moves past them. Not for a counting cursor, unless count is
    /// 0.
    unsigned long GetAndShift(unsigned long count, void* dst);
};

}  // namespace qel
