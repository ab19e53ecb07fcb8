/// qel::Buffer: a view of bytes that somebody else holds.
///
/// The caller keeps the bytes alive and in place for as long as the view is used; the view neither
/// copies nor releases them. Copying a Buffer copies the view. Sizes are in bytes. Like a pointer
/// that is const itself, a const Buffer still lets its bytes be changed.
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
    /// A view of nothing: null address, size 0.
    Buffer() = default;

    /// A view of length bytes at address. The view may be of constant bytes as long as nothing
    /// that writes is called on it (Set, FromHex, FromBase64, FillRand).
    Buffer(const void* address, unsigned long length);

    virtual ~Buffer() = default;

    /// The address of the first byte. May be null when the size is 0, and is null in a cursor that
    /// only counts, whatever its size.
    void* GetData() const { return data; }

    /// The number of bytes.
    unsigned long GetSize() const { return size; }

    /// Copies length bytes from src over the buffer's bytes; the two may overlap.
    /// ERROR_SIZE, with nothing copied, when length is not the buffer's size.
    virtual unsigned long Set(unsigned long length, const void* src);

    /// Decodes text (hexadecimal, NUL-terminated, by the rules of the static FromHex) over the
    /// buffer's bytes, which it must not overlap. They stay as they were on failure: ERROR_DATA
    /// when text is malformed, ERROR_SIZE when the number of its bytes is not the buffer's size.
    virtual unsigned long FromHex(const char* text);

    /// As FromBase64 with the length of text, which ends with a NUL.
    virtual unsigned long FromBase64(const char* text);

    /// Decodes length characters of base64 text, by the rules of the static FromBase64, over the
    /// buffer's bytes; as FromHex in all else.
    virtual unsigned long FromBase64(const char* text, unsigned long length);

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

    // The encodings. Each reads every byte, so that none of them is for a cursor that only counts.
    // Those that return text throw qel::Exception(ERROR_MEM) when the heap refuses the text or no
    // string can be that long.

    /// The bytes as upper-case hexadecimal text, two digits a byte. After each complete group of
    /// groupSize bytes stands a space, and after each groupsPerLine groups lineSeparator behind
    /// that space, even at the end of the text. 0 as groupSize: no spaces and no lines; 0 as
    /// groupsPerLine: no lines. lineSeparator must not be null.
    std::string ToHex(unsigned long groupSize, unsigned long groupsPerLine,
                      const char* lineSeparator) const;

    /// The same with a line feed as lineSeparator, as wide text. Empty when that cannot be had:
    /// memory for the conversion is refused, or iconv does not know Windows-1251.
    std::wstring ToHexW(unsigned long groupSize, unsigned long groupsPerLine) const;

    /// Decodes NUL-terminated hexadecimal text of either case into out, which has room for size
    /// bytes; a null out only counts, and then size does not matter before. size becomes the number
    /// of bytes. Tabs, line feeds, carriage returns and spaces count for nothing, save between the
    /// two digits of a byte.
    ///
    /// On failure size is unchanged, and the bytes decoded so far are written: ERROR_DATA for any
    /// other character, an odd number of digits, a text of fewer than two characters, and also for
    /// more bytes than there is room for.
    static unsigned long FromHex(const char* text, unsigned long& size, void* out);

    /// The bytes as base64 text in the alphabet of RFC 4648, section 4, padded with "=". After
    /// every lineLength characters, even at the end of the text, stands lineSeparator, which may be
    /// null only for a lineLength of 0: no lines.
    std::string ToBase64(unsigned long lineLength, const char* lineSeparator) const;

    /// Decodes length characters of base64 text into out, which has room for size bytes; a null out
    /// only counts, and then size does not matter before. size becomes the number of bytes.
    ///
    /// Line feeds, carriage returns and spaces count for nothing. What does not complete a group of
    /// four at the end of the text is ignored, whatever it is; but where the text ends with a line
    /// feed, a carriage return or a space after three characters of a group, that is a wrong
    /// fourth. Groups may follow a padded one. Bits of a last character for which there is no byte
    /// are dropped.
    ///
    /// On failure size is unchanged, and the bytes decoded so far are written: ERROR_DATA for any
    /// other character or a misplaced "=", ERROR_SIZE for more bytes than there is room for.
    static unsigned long FromBase64(const char* text, unsigned long length, unsigned long& size,
                                    void* out);

    /// The value of a base64 character, 0 to 63; 65 for "="; -1 for any other character.
    static std::int8_t GetBase64Code(char c);

    /// The bytes up to the first zero byte, with each of the 66 letters of the Russian alphabet
    /// changed from Windows-1251 to code page 866, and every other byte as it is.
    std::string ToDos() const;

    /// The same from code page 866 to Windows-1251.
    std::string ToWin() const;

protected:
    void* data = nullptr;    ///< the first byte
    unsigned long size = 0;  ///< the number of bytes at data

private:
    /// The letters of the Russian alphabet, the lower-case ones first: their codes in code page
    /// 866, then, in the same order, those in Windows-1251.
    static const unsigned char cChars_[132];
};

}  // namespace qel
