/// qel::TextConverter: conversion between four text encodings.
///
/// - Single-byte text (EASCII, "extended ASCII"): bytes in a code page, by default Windows-1251,
///   terminated by a zero byte.
/// - UCS-2 text: 16-bit units, little-endian, terminated by a zero unit; no surrogate pairs.
/// - Wide text: wchar_t, 32 bits, one per character, terminated by a zero character.
/// - UTF-8 text: bytes; its length is given.
///
/// Some conversions look characters up in the table of a LocaleInfo, which can be the caller's own;
/// the others call the system's iconv, which decides what is valid text (that of glibc also accepts
/// characters above U+10FFFF). Functions that end in WithSystemLocale always use Windows-1251,
/// whatever locale is set. Its one undefined code, 0x98, is U+0098 in the table and cannot be
/// translated by iconv.
///
/// Lengths and sizes are in bytes. Source and result must not overlap. Where the result is a std
/// string, or qel::Exception is thrown, std::bad_alloc can be thrown, too.
///
///     std::wstring wide;
///     qel::TextConverter::UTF8ToWChar("\xD0\x96", 2, wide);  // U+0416
///     std::string text;
///     qel::TextConverter::WCharToASCIIWithSystemLocale(wide.c_str(), text);  // "\xC6"
#pragma once

#include <bit>
#include <cstdint>
#include <string>

#include "core/buffer_dynamic.h"
#include "core/ucs2_traits.h"

namespace qel {

static_assert(sizeof(wchar_t) == 4 && sizeof(unsigned short) == 2 &&
                  std::endian::native == std::endian::little,
              "the units of wide and UCS-2 text");

class TextConverter {
public:
    /// A code page: its 256 characters, and the reverse map.
    ///
    /// The reverse map is built lazily, without locking, by the first GetChar: if threads share a
    /// LocaleInfo, call it once beforehand. Everything else is thread-safe.
    class LocaleInfo {
    public:
        /// A record of the reverse map.
        struct CharPair {
            std::uint8_t code;       ///< the single-byte code
            std::int32_t character;  ///< the wide character, signed also where wchar_t is not
        };

        /// table[i] is the character of code i. It is not copied and must outlive this object. When
        /// widening, codes below 0x80 map to themselves, whatever the table says.
        constexpr explicit LocaleInfo(const wchar_t* table) : codeTable(table) {}

        /// Returns the wide character of a code.
        wchar_t GetWChar(const unsigned char& code) const {
            return code < 0x80 ? wchar_t{code} : codeTable[code];
        }

        /// Returns the UCS-2 unit of a code: the low 16 bits of its character.
        unsigned short GetUCS2Char(const unsigned char& code) const {
            return static_cast<unsigned short>(GetWChar(code));
        }

        /// Returns the code of a wide character; if several codes map to it, any of them. Throws
        /// qel::Exception: NO_UNICODE_TRANSLATION if the code page lacks the character, ERROR_MEM
        /// when out of memory at the first call.
        unsigned char GetChar(const wchar_t& c) const;

        /// Returns a negative value, 0 or a positive one: orders by character.
        static int compare(CharPair* a, CharPair* b);

    private:
        void BuildReverseMap() const;

        const wchar_t* codeTable;
        mutable BufferDynamic reverseMap;  // CharPairs sorted by character; empty until needed
    };

    /// The direction of Convert. Its underlying type is fixed, so that any int can be passed.
    enum EDirection : int {
        dirEASCIIToUCS2 = 0,  ///< single-byte to UCS-2
        dirUCS2ToEASCII = 1,  ///< UCS-2 to single-byte
    };

    /// The characters of Windows-1251 from the Unicode Consortium's table CP1251.TXT; its one
    /// undefined code, 0x98, is U+0098.
    static const wchar_t ciCWin1251[256];

    /// Windows-1251. Constant-initialized, destroyed at exit: not for static destructors.
    static const LocaleInfo ciLWin1251;

    /// The default LocaleInfo, used for null: ciLWin1251.
    static const LocaleInfo* const cpLWin1251;

    /// Returns s, which must not be null, without the spaces (0x20 only) at its start and end.
    static std::string Trim(const char* s);

    // Table conversions into a caller's buffer. The capacity of out is size bytes.
    //
    // A length of 0 means that src is NUL-terminated. Otherwise single-byte text is converted
    // completely, including zero bytes; UCS-2 and wide text ends at length or an earlier zero unit,
    // and a trailing partial unit is ignored. The result is terminated.
    //
    // size is set to the size needed for length (or the whole text) and a terminator, even if the
    // text ends earlier at a zero unit. SUCCESS if out is null (a size query) or src is null (size
    // 0). ERROR_SIZE, with nothing written, if out is too small. ERROR_MEM, with size unchanged, if
    // the size overflows 64 bits. Throws like GetChar, with the preceding text converted.

    /// Single-byte text to UCS-2.
    static unsigned long EASCIIToUCS2(const char* src, unsigned long length, unsigned short* out,
                                      unsigned long& size, const LocaleInfo& info);

    /// Single-byte text to wide text.
    static unsigned long EASCIIToWChar(const char* src, unsigned long length, wchar_t* out,
                                       unsigned long& size, const LocaleInfo& info);

    /// UCS-2 to single-byte text.
    static unsigned long UCS2ToEASCII(const unsigned short* src, unsigned long length, char* out,
                                      unsigned long& size, const LocaleInfo& info);

    /// Wide text to single-byte text.
    static unsigned long WCharToEASCII(const wchar_t* src, unsigned long length, char* out,
                                       unsigned long& size, const LocaleInfo& info);

    /// EASCIIToUCS2 or UCS2ToEASCII; a null info means Windows-1251. UCS-2 text can be unaligned.
    /// ERROR_INTERNAL, with size unchanged, for another direction.
    static unsigned long Convert(EDirection dir, const void* src, unsigned long length, void* out,
                                 unsigned long& size, const LocaleInfo* info);

    /// The same from the bytes of src into a new block in out of the size needed, terminator
    /// included. A src of size 0 is an empty text, or no text if its address is null. Bytes after
    /// an early terminator are undefined. out is unchanged after a result code other than SUCCESS,
    /// such as ERROR_MEM when out of memory; after an exception its bytes are undefined, except for
    /// the text before the untranslatable character.
    static unsigned long Convert(EDirection dir, const Buffer& src, BufferDynamic& out,
                                 const LocaleInfo* info);

    /// UCS2ToEASCII with Windows-1251, but SUCCESS, with nothing written, if out is too small:
    /// check size. UCS-2 text can be unaligned.
    static unsigned long UCS2ToASCIIWithSystemLocale(const void* src, unsigned long length,
                                                     void* out, unsigned long& size);

    // Table conversions into a string. src is NUL-terminated and must not be null. Return SUCCESS.
    //
    // From single-byte text they throw qel::Exception(ERROR_MEM), with out unchanged, when out of
    // memory. To single-byte text they throw like GetChar; out then has the length of the text and
    // undefined characters from the untranslatable one on.

    /// Single-byte text to UCS-2.
    static unsigned long EASCIIToUCS2(const char* src, std::basic_string<unsigned short>& out,
                                      const LocaleInfo& info);

    /// Single-byte text to wide text.
    static unsigned long EASCIIToWChar(const char* src, std::wstring& out, const LocaleInfo& info);

    /// UCS-2 to single-byte text.
    static unsigned long UCS2ToEASCII(const unsigned short* src, std::string& out,
                                      const LocaleInfo& info);

    /// Wide text to single-byte text.
    static unsigned long WCharToEASCII(const wchar_t* src, std::string& out,
                                       const LocaleInfo& info);

    // Conversions by iconv. NO_UNICODE_TRANSLATION if src is malformed or incomplete, if a
    // character is not representable (none is replaced or dropped) or if iconv does not support the
    // encodings; ERROR_MEM when out of memory. On failure out and size are unchanged, unless noted
    // otherwise. A src without a length is NUL-terminated and must not be null.

    /// length bytes of UCS-2 to wide text, dropping trailing zeros but never the first character: a
    /// single zero stays one.
    static unsigned long UCS2ToWChar(const unsigned short* src, unsigned long length,
                                     std::wstring& out);

    /// Wide text to UCS-2, terminated, in out, whose capacity is size bytes. size is set to the
    /// size needed, also if out is null (a size query), and on ERROR_SIZE, with nothing written, if
    /// out is too small.
    static unsigned long WCharToUCS2(const wchar_t* src, unsigned short* out, unsigned long& size);

    /// Wide text to Windows-1251.
    static unsigned long WCharToASCIIWithSystemLocale(const wchar_t* src, std::string& out);

    /// The same, with every failure thrown as qel::Exception.
    static std::string WCharToASCIIWithSystemLocale(const wchar_t* src);

    /// Windows-1251 to wide text.
    static unsigned long ASCIIToWCharWithSystemLocale(const char* src, std::wstring& out);

    /// Wide text to UTF-8, in a new block in out, without a terminator. On NO_UNICODE_TRANSLATION,
    /// and on ERROR_MEM while shrinking that block, out may have been changed.
    static unsigned long WCharToUTF8(const wchar_t* src, BufferDynamic& out);

    /// length bytes of UTF-8 to wide text; trailing zeros are dropped as in UCS2ToWChar.
    static unsigned long UTF8ToWChar(const void* src, unsigned long length, std::wstring& out);

    /// ERROR_NOT_IMPLEMENTED, with out unchanged.
    static unsigned long UTF8ToSystemLocale(const void* src, unsigned long length,
                                            std::string& out);
};

}  // namespace qel
