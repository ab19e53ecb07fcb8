/// qel::BufferDynamic: a buffer that owns its bytes, one heap block.
///
/// The size is always the length of the owned block. Blocks are allocated by malloc and realloc and
/// released by free. Operations that return a result code leave the buffer unchanged on failure,
/// unless their comment says otherwise; ERROR_MEM means out of memory. Set, the decoders, Load and
/// AppendBuffer change the block only through the virtual Alloc, Realloc and Destroy.
///
///     qel::BufferDynamic file;
///     unsigned long result = file.Load("reader.cfg");
///     if (result == qel::SUCCESS) result = file.AppendBuffer(qel::Buffer("#\n", 2));
///     qel::ThrowUnlessSuccess(result);
#pragma once

#include <string>

#include "core/buffer.h"

namespace qel {

class BufferDynamic : public Buffer {
public:
    /// Empty: null address, size 0.
    BufferDynamic() = default;

    /// Allocates length bytes, whose contents are undefined. Throws qel::Exception(ERROR_MEM) when
    /// out of memory.
    explicit BufferDynamic(unsigned long length);

    /// Copies the bytes of source. Throws qel::Exception(ERROR_MEM) when out of memory.
    explicit BufferDynamic(const Buffer& source);

    /// The same.
    BufferDynamic(const BufferDynamic& source);

    /// Set with the bytes of source; throws any failure as qel::Exception.
    BufferDynamic& operator=(const Buffer& source);

    /// The same. Self-assignment is allowed.
    BufferDynamic& operator=(const BufferDynamic& source);

    ~BufferDynamic() override;

    /// Replaces the contents by a copy of length bytes at src. Allocates if length is not the
    /// current size; src must then not point into this buffer. ERROR_MEM.
    unsigned long Set(unsigned long length, const void* src) override;

    /// Set with the characters of text, without the terminating NUL.
    unsigned long Set(const std::string& text);

    /// Replaces the contents by the bytes of hexadecimal text, which must not point into this
    /// buffer; allocates only if their number is not the current size. ERROR_DATA if text is
    /// malformed (see the static FromHex), ERROR_MEM.
    unsigned long FromHex(const char* text) override;

    /// The same for length base64 characters (see the static FromBase64); always allocates twice.
    unsigned long FromBase64(const char* text, unsigned long length) override;

    using Buffer::FromBase64;
    using Buffer::FromHex;

    /// Replaces the block by a new one of length bytes whose contents are undefined. For length 0
    /// the address can be null or not. ERROR_MEM.
    virtual unsigned long Alloc(unsigned long length);

    /// Resizes the block to length bytes, preserving the contents up to the smaller size; added
    /// bytes are undefined. 0 empties the buffer; the current size is a no-op. ERROR_MEM.
    virtual unsigned long Realloc(unsigned long length);

    /// Releases the block: null address, size 0.
    virtual void Destroy();

    /// Transfers ownership of the block to the caller, who releases it with free, and leaves the
    /// buffer empty. Returns null for a buffer without a block.
    void* Detach();

    /// Appends a copy of the bytes of tail, which must neither be this buffer (ERROR_SIZE, with the
    /// buffer grown, unless it is empty) nor view its bytes. ERROR_MEM, also if the sum of the
    /// sizes overflows 64 bits.
    unsigned long AppendBuffer(const Buffer& tail);

    /// Replaces the contents by those of the file at path; an empty file empties the buffer.
    /// ERROR_FILE_OPEN if it cannot be opened, ERROR_IO if its size cannot be determined,
    /// ERROR_MEM, or ERROR_READ if fewer bytes could be read: only then is the buffer changed, to
    /// the file's size with undefined contents. Never throws.
    unsigned long Load(const char* path);
};

}  // namespace qel
