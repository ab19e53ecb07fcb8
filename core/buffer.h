/// qel::Buffer: a non-owning view of bytes.
///
/// The caller keeps the bytes alive and in place while the view is used; the view neither copies
/// nor releases them. Copying a Buffer copies the view. Sizes are in bytes. Constness is shallow: a
/// const Buffer's bytes can be changed.
///
///     const unsigned char bytes[] = {0xCA, 0xFE, 0x01};
///     const qel::Buffer view(bytes, sizeof bytes);
///     view.ToHex(1, 0, "");  // "CA FE 01 "
///     view.ToBase64(0, "");  // "yv4B"
#pragma once

#include <cstdint>
#include <string>

namespace qel {

class Buffer {
public:
    /// An empty view: null address, size 0.
    Buffer() = default;

    /// A view of length bytes at address, which can be constant if nothing that writes is called on
    /// the view (Set, FromHex, FromBase64, FillRand).
    Buffer(const void* address, unsigned long length);

    virtual ~Buffer() = default;

    /// Returns the address of the first byte. Can be null if the size is 0, and is null in a
    /// counting cursor, whatever its size.
    void* GetData() const { return data; }

    /// Returns the number of bytes.
    unsigned long GetSize() const { return size; }

    /// Copies length bytes from src into the buffer; the two can overlap. ERROR_SIZE, with nothing
    /// copied, if length is not the buffer's size.
    virtual unsigned long Set(unsigned long length, const void* src);

    /// Decodes NUL-terminated hexadecimal text, by the rules of the static FromHex, into the
    /// buffer, which it must not overlap. Unchanged on failure: ERROR_DATA if text is malformed,
    /// ERROR_SIZE if the decoded size is not the buffer's.
    virtual unsigned long FromHex(const char* text);

    /// FromBase64(text, strlen(text)).
    virtual unsigned long FromBase64(const char* text);

    /// The same as FromHex for length characters of base64 text, by the rules of the static
    /// FromBase64.
    virtual unsigned long FromBase64(const char* text, unsigned long length);

    /// Writes the bytes to the file at path, which is created, or truncated if it exists.
    /// ERROR_WRITE if it cannot be opened (it is then untouched) or not written completely (it is
    /// then truncated).
    unsigned long Save(const char* path) const;

    /// Fills the bytes from rand(), one call per byte, unseeded: for tests, not for keys.
    void FillRand();

    /// Overwrites length bytes at address with 0x00, then 0xFF, then 0xAA. The passes are never
    /// optimized away.
    static void Wipe(unsigned long length, void* address);

    /// Reverses the order of length bytes at address.
    static void Reverse(void* address, unsigned long length);

    // Encodings. Not for counting cursors. The encoders throw qel::Exception(ERROR_MEM) if the
    // string cannot be allocated.

    /// Returns the bytes as upper-case hexadecimal text, two digits per byte. A space follows each
    /// complete group of groupSize bytes, and lineSeparator follows every groupsPerLine groups,
    /// even at the end. groupSize 0: neither; groupsPerLine 0: no lineSeparator. lineSeparator must
    /// not be null.
    std::string ToHex(unsigned long groupSize, unsigned long groupsPerLine,
                      const char* lineSeparator) const;

    /// The same with a newline as lineSeparator, as wide text. Returns an empty string if the
    /// conversion to wide text fails: ERROR_MEM, or iconv does not support Windows-1251.
    std::wstring ToHexW(unsigned long groupSize, unsigned long groupsPerLine) const;

    /// Decodes NUL-terminated hexadecimal text of either case into out, whose capacity is size
    /// bytes; with a null out it only counts, and the old size is ignored. size is set to the
    /// number of bytes. Tabs, newlines, carriage returns and spaces are skipped, but not between
    /// the two digits of a byte.
    ///
    /// On failure size is unchanged, and the bytes decoded so far are written: ERROR_DATA for any
    /// other character, an odd number of digits, a text of fewer than two characters, or if out is
    /// too small.
    static unsigned long FromHex(const char* text, unsigned long& size, void* out);

    /// Returns the bytes as base64 text in the alphabet of RFC 4648, section 4, padded with "=".
    /// lineSeparator follows every lineLength characters, even at the end; with lineLength 0 it is
    /// unused and can be null.
    std::string ToBase64(unsigned long lineLength, const char* lineSeparator) const;

    /// Decodes length characters of base64 text into out, whose capacity is size bytes; with a null
    /// out it only counts, and the old size is ignored. size is set to the number of bytes.
    ///
    /// Newlines, carriage returns and spaces are skipped. An incomplete group at the end is
    /// ignored, unchecked; but three characters followed by trailing white space are an error.
    /// Groups can follow a padded one. Leftover bits are dropped.
    ///
    /// On failure size is unchanged, and the bytes decoded so far are written: ERROR_DATA for any
    /// other character or a misplaced "=", ERROR_SIZE if out is too small.
    static unsigned long FromBase64(const char* text, unsigned long length, unsigned long& size,
                                    void* out);

    /// Returns the value of a base64 character, 0 to 63; 65 for "="; -1 for any other character.
    static std::int8_t GetBase64Code(char c);

    /// Returns the bytes up to the first zero byte, with the 66 letters of the Russian alphabet
    /// converted from Windows-1251 to code page 866 and every other byte unchanged.
    std::string ToDos() const;

    /// The same from code page 866 to Windows-1251.
    std::string ToWin() const;

protected:
    void* data = nullptr;    ///< the first byte
    unsigned long size = 0;  ///< the number of bytes at data

private:
    /// The letters of the Russian alphabet, lower-case first: their codes in code page 866, then,
    /// in the same order, those in Windows-1251.
    static const unsigned char cChars_[132];
};

}  // namespace qel
