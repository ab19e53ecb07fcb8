/// qel::TextConverter: text from one of four forms to another.
///
/// - Single-byte text (EASCII, "extended ASCII"): bytes in a code page, by default Windows-1251,
///   ended by a zero byte.
/// - UCS-2 text: 16-bit units, little-endian, ended by a zero unit; no surrogate pairs.
/// - Wide text: wchar_t, 32 bits, one for each character, ended by a zero character.
/// - UTF-8 text: bytes; its length is given.
///
/// Some conversions look characters up in the table of a LocaleInfo, which may be the caller's own;
/// the others go through the system's iconv, which decides what is valid text (that of glibc also
/// takes characters above U+10FFFF). Functions that end in WithSystemLocale always use
/// Windows-1251, whatever locale is set. Its one undefined code, 0x98, is U+0098 in the table and
/// cannot be translated through iconv.
///
/// Lengths and sizes are in bytes. Source and result must not overlap. std::bad_alloc comes from
/// everything whose result is a std string, when the heap refuses that string, and in the place of
/// a qel::Exception, when it refuses that.
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
    /// A code page: its 256 characters, and the reverse mapping.
    ///
    /// The reverse map is built lazily, without locking, by the first GetChar: if threads share a
    /// LocaleInfo, call it once beforehand. Everything else is thread-safe.
    class LocaleInfo {
    public:
        /// A record of the way back.
        struct CharPair {
            std::uint8_t code;       ///< the single-byte code
            std::int32_t character;  ///< the wide character, signed also where wchar_t is not
        };

        /// table points to 256 characters, of which number i belongs to code i. It is not copied
        /// and has to outlive this object. Codes below 0x80 stand for themselves, whatever
        /// the table has for them, when text is widened.
        constexpr explicit LocaleInfo(const wchar_t* table) : codeTable(table) {}

        /// The wide character of a code.
        wchar_t GetWChar(const unsigned char& code) const {
            return code < 0x80 ? wchar_t{code} : codeTable[code];
        }

        /// The UCS-2 unit of a code: the low 16 bits of its character.
        unsigned short GetUCS2Char(const unsigned char& code) const {
            return static_cast<unsigned short>(GetWChar(code));
        }

        /// The code of a wide character, any of them where the table has it twice. Throws
        /// qel::Exception(NO_UNICODE_TRANSLATION) when the code page lacks it, and, at the first
        /// call, ERROR_MEM when the heap refuses.
        unsigned char GetChar(const wchar_t& c) const;

        /// Below, at or above 0 as the character of a is below, equal to or above that of b.
        static int compare(CharPair* a, CharPair* b);

    private:
        void BuildReverseMap() const;

        const wchar_t* codeTable;
        mutable BufferDynamic reverseMap;  // CharPairs sorted by character; empty until needed
    };

    /// What Convert converts. The type is fixed so that every int can be given.
    enum EDirection : int {
        dirEASCIIToUCS2 = 0,  ///< single-byte to UCS-2
        dirUCS2ToEASCII = 1,  ///< UCS-2 to single-byte
    };

    /// The characters of Windows-1251 by the Unicode Consortium's table CP1251.TXT; its one
    /// undefined code, 0x98, is U+0098.
    static const wchar_t ciCWin1251[256];

    /// Windows-1251. It is there before any code runs, and goes at exit: not for destructors of
    /// static objects.
    static const LocaleInfo ciLWin1251;

    /// The LocaleInfo that a null stands for: ciLWin1251.
    static const LocaleInfo* const cpLWin1251;

    /// s, which must not be null, without the spaces (0x20 alone) at its start and end.
    static std::string Trim(const char* s);

    // Through a table, into memory of the caller. out has room for size bytes.
    //
    // A length of 0 means that src runs up to its terminator. Single-byte text is otherwise
    // converted whole, zero bytes included; UCS-2 and wide text ends before length at a zero unit,
    // and a broken unit at its end does not count. The result has a terminator.
    //
    // size becomes what the text and a terminator need, and the text counts with its length where
    // that is given, even if it ends earlier at a zero unit. SUCCESS when out is null, which only
    // asks for that size, and when src is null, which needs nothing.
    // ERROR_SIZE, with nothing written, when the room is less. ERROR_MEM, with size unchanged, when
    // the size does not fit 64 bits. qel::Exception(NO_UNICODE_TRANSLATION) is thrown for a
    // character that the code page lacks, with the text before it written; what else GetChar throws
    // comes through as well.

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

    /// EASCIIToUCS2 or UCS2ToEASCII; a null info means Windows-1251. UCS-2 text need not be
    /// aligned. ERROR_INTERNAL, with size unchanged, for another direction.
    static unsigned long Convert(EDirection dir, const void* src, unsigned long length, void* out,
                                 unsigned long& size, const LocaleInfo* info);

    /// The same from the bytes of src into a new block in out, which then has the size that is
    /// needed, terminator included. A src of size 0 is an empty text, or nothing if its address is
    /// null. Bytes behind the terminator of a text that ends earlier are undefined. out is
    /// unchanged after a result code other than SUCCESS, which can be ERROR_MEM also when the heap
    /// refuses; after an exception its bytes are undefined, save for the text before a refused
    /// character.
    static unsigned long Convert(EDirection dir, const Buffer& src, BufferDynamic& out,
                                 const LocaleInfo* info);

    /// UCS2ToEASCII with Windows-1251, but SUCCESS, with nothing written, when the room is too
    /// small: compare size with it. UCS-2 text need not be aligned.
    static unsigned long UCS2ToASCIIWithSystemLocale(const void* src, unsigned long length,
                                                     void* out, unsigned long& size);

    // Through a table, into a string. src runs up to its terminator and must not be null. SUCCESS.
    //
    // From single-byte text, qel::Exception(ERROR_MEM) is thrown, with out unchanged, when the heap
    // refuses. Towards single-byte text, what GetChar throws comes through; out then has the length
    // of the text, and holds undefined characters from the one that was refused on.

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

    // Through iconv. NO_UNICODE_TRANSLATION when src is malformed or incomplete, when a character
    // has no place in the other form (none is replaced or left out) and when iconv cannot be opened
    // for the two forms; ERROR_MEM when the heap refuses. out is unchanged on failure, save where
    // said otherwise, and so is size. A src without a length runs up to its terminator and must not
    // be null.

    /// length bytes of UCS-2 to wide text, without the zero characters at its end, save for the
    /// first of all: the result of a single zero is one zero.
    static unsigned long UCS2ToWChar(const unsigned short* src, unsigned long length,
                                     std::wstring& out);

    /// Wide text to UCS-2, with its terminator, in out, which has room for size bytes. size becomes
    /// what they need, also when out is null, which only asks for it, and on ERROR_SIZE, when the
    /// room is less and nothing is written.
    static unsigned long WCharToUCS2(const wchar_t* src, unsigned short* out, unsigned long& size);

    /// Wide text to Windows-1251.
    static unsigned long WCharToASCIIWithSystemLocale(const wchar_t* src, std::string& out);

    /// The same, with every failure thrown as qel::Exception.
    static std::string WCharToASCIIWithSystemLocale(const wchar_t* src);

    /// Windows-1251 to wide text.
    static unsigned long ASCIIToWCharWithSystemLocale(const char* src, std::wstring& out);

    /// Wide text to UTF-8, in a new block in out, without a terminator. On NO_UNICODE_TRANSLATION,
    /// and on ERROR_MEM when the heap refuses to shrink that block, out may have been changed.
    static unsigned long WCharToUTF8(const wchar_t* src, BufferDynamic& out);

    /// length bytes of UTF-8 to wide text; zero characters at its end as in UCS2ToWChar.
    static unsigned long UTF8ToWChar(const void* src, unsigned long length, std::wstring& out);

    /// ERROR_NOT_IMPLEMENTED, with out unchanged.
    static unsigned long UTF8ToSystemLocale(const void* src, unsigned long length,
                                            std::string& out);
};

}  // namespace qel
