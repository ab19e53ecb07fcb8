/// qel::Buffer: a view of bytes that somebody else holds.
///
/// The caller keeps the bytes alive and in place for as long as the view is used; the view neither
/// copies nor releases them. Copying a Buffer copies the view. Sizes are in bytes. Like a pointer
/// that is const itself, a const Buffer still lets its bytes be changed.
#pragma once

namespace qel {

class Buffer {
public:
    /// A view of nothing: null address, size 0.
    Buffer() = default;

    /// A view of length bytes at address. The view may be of constant bytes as long as nothing
    /// that writes is called on it (Set, FillRand).
    Buffer(const void* address, unsigned long length);

    /// A view of the same bytes.
    Buffer(const Buffer&) = default;

    /// Becomes a view of the same bytes; nothing is copied.
    Buffer& operator=(const Buffer&) = default;

    /// Leaves the bytes alone.
    virtual ~Buffer();

    /// Copies length bytes from src over the buffer's bytes; the two may overlap.
    /// ERROR_SIZE, with nothing copied, when length is not the buffer's size.
    virtual unsigned long Set(unsigned long length, const void* src);

    /// Writes the bytes to the file at path, which is created, or truncated if it exists.
    /// ERROR_WRITE when it cannot be opened, and then it is untouched, or when not every byte
    /// could be written, and then it holds as many as there was room for.
    unsigned long Save(const char* path) const;

    /// Fills the bytes from the C library's rand, one call a byte, without seeding it: material
    /// for tests, not for keys.
    void FillRand();

    /// Overwrites length bytes at address with 0x00, then 0xFF, then 0xAA. The passes are carried
    /// out even where nothing reads the bytes afterwards.
    static void Wipe(unsigned long length, void* address);

    /// Reverses the order of length bytes at address.
    static void Reverse(void* address, unsigned long length);

    /// The address of the first byte. May be null when the size is 0, and is null in a cursor that
    /// only counts, whatever its size.
    void* GetData() const { return data; }

    /// The number of bytes.
    unsigned long GetSize() const { return size; }

protected:
    void* data = nullptr;    ///< the first byte
    unsigned long size = 0;  ///< the number of bytes at data
};

}  // namespace qel
