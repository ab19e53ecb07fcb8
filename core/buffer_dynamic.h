/// qel::BufferDynamic: a buffer that owns its bytes, one block of the heap.
///
/// The size is always the length of the owned block. Blocks come from malloc and realloc and go
/// back through free. Operations that return a result code leave the buffer as it was when they
/// fail, save where their comment says otherwise. Set, the decoders, Load and AppendBuffer change
/// the block only through the virtual Alloc, Realloc and Destroy.
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

    /// A new block of length bytes whose contents are undefined.
    /// Throws qel::Exception(ERROR_MEM) when the heap refuses.
    explicit BufferDynamic(unsigned long length);

    /// A new block that holds a copy of the source's bytes.
    /// Throws qel::Exception(ERROR_MEM) when the heap refuses.
    explicit BufferDynamic(const Buffer& source);

    /// The same.
    BufferDynamic(const BufferDynamic& source);

    /// As Set with the source's bytes; a result code other than SUCCESS is thrown as
    /// qel::Exception.
    BufferDynamic& operator=(const Buffer& source);

    /// The same. A buffer can be assigned to itself.
    BufferDynamic& operator=(const BufferDynamic& source);

    ~BufferDynamic() override;

    /// Replaces the contents by a copy of length bytes at src; allocates only when length is not
    /// the current size. Only when it is may src lie in this buffer's own block. ERROR_MEM when the
    /// heap refuses.
    unsigned long Set(unsigned long length, const void* src) override;

    /// As above with the characters of text, without the terminating NUL.
    unsigned long Set(const std::string& text);

    /// Replaces the contents by the bytes of hexadecimal text, which must not stand in this
    /// buffer's block; allocates only when their number is not the current size. ERROR_DATA when
    /// text is malformed (see the static FromHex), ERROR_MEM when the heap refuses.
    unsigned long FromHex(const char* text) override;

    /// The same with length characters of base64 text (see the static FromBase64); allocates
    /// always.
    unsigned long FromBase64(const char* text, unsigned long length) override;

    using Buffer::FromBase64;
    using Buffer::FromHex;

    /// Replaces the block by a new one of length bytes whose contents are undefined. For a length
    /// of 0 the address may be null or not. ERROR_MEM when the heap refuses.
    virtual unsigned long Alloc(unsigned long length);

    /// Resizes the block to length bytes, keeping as many leading ones as fit; what is added is
    /// undefined. 0 empties the buffer; the current size leaves the block alone. ERROR_MEM when the
    /// heap refuses.
    virtual unsigned long Realloc(unsigned long length);

    /// Releases the block: null address, size 0.
    virtual void Destroy();

    /// Hands the block to the caller, who releases it with free, and leaves the buffer empty. The
    /// result is null for a buffer without a block.
    void* Detach();

    /// Adds a copy of tail's bytes at the end. tail must neither be this buffer (ERROR_SIZE, with
    /// the buffer grown, unless it is empty) nor view its bytes. ERROR_MEM when the heap refuses or
    /// the sum of the two sizes does not fit 64 bits.
    unsigned long AppendBuffer(const Buffer& tail);

    /// Replaces the contents by the whole file at path; an empty file empties the buffer.
    /// ERROR_FILE_OPEN when it cannot be opened, ERROR_IO when its size cannot be found, ERROR_MEM
    /// when the heap refuses that size, ERROR_READ when fewer bytes could be read: only then is the
    /// buffer changed, to the file's size with undefined contents. Never throws.
    unsigned long Load(const char* path);
};

}  // namespace qel
