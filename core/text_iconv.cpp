#include <iconv.h>
#include <wchar.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "core/c_library.h"
#include "core/exception.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"
#include "core/text_converter.h"

namespace qel {

namespace {

// "WCHAR_T" is Unicode in glibc, and in a libiconv for a system whose wchar_t is Unicode in every
// locale. Untested with the iconv of macOS.

/// Converts the whole input in one call, between two iconv encodings, into a new block of capacity
/// bytes; produced is set to the number of bytes written.
unsigned long Transcode(const char* from, const char* to, const Buffer& input,
                        unsigned long capacity, BufferDynamic& block, unsigned long& produced) {
    const ::iconv_t opened = ::iconv_open(to, from);
    if (opened == reinterpret_cast<::iconv_t>(-1)) return NO_UNICODE_TRANSLATION;
    const std::unique_ptr<std::remove_pointer_t<::iconv_t>, int (*)(::iconv_t)> descriptor(
        opened, ::iconv_close);

    if (const unsigned long result = block.Alloc(capacity)) return result;
    auto* in = static_cast<char*>(input.GetData());
    auto* out = static_cast<char*>(block.GetData());
    ::size_t inLeft = input.GetSize(), outLeft = capacity;
    // A positive result counts transliterated characters.
    if (::iconv(opened, &in, &inLeft, &out, &outLeft) != 0) return NO_UNICODE_TRANSLATION;
    produced = capacity - outLeft;
    return SUCCESS;
}

/// The same for fixed-width output, which must fill its block: glibc silently drops U+E0000 to
/// U+E007F if the target lacks them.
unsigned long TranscodeUnits(const char* from, const char* to, const Buffer& input,
                             unsigned long capacity, BufferDynamic& block) {
    unsigned long produced = 0;
    const unsigned long result = Transcode(from, to, input, capacity, block, produced);
    return result == SUCCESS && produced != capacity ? NO_UNICODE_TRANSLATION : result;
}

/// Converts length bytes at src, possibly unaligned, to wide text without trailing zeros.
unsigned long TranscodeToWide(const char* from, const void* src, unsigned long length,
                              unsigned long capacity, std::wstring& out) {
    BufferDynamic block;
    unsigned long produced = 0;
    const unsigned long result =
        Transcode(from, "WCHAR_T", Buffer(src, length), capacity, block, produced);
    if (result != SUCCESS) return result;
    const auto* const text = static_cast<const wchar_t*>(block.GetData());
    unsigned long characters = produced / sizeof *text;
    while (characters > 1 && text[characters - 1] == L'\0') --characters;
    out.assign(text, characters);
    return SUCCESS;
}

/// Converts units characters, terminator included, to a string without the terminator.
template <class Unit>
unsigned long TranscodeToString(const char* from, const char* to, const Buffer& input,
                                unsigned long units, std::basic_string<Unit>& out) {
    BufferDynamic block;
    const unsigned long result =
        TranscodeUnits(from, to, input, SaturatingMultiply(sizeof(Unit), units), block);
    if (result == SUCCESS) out.assign(static_cast<const Unit*>(block.GetData()), units - 1);
    return result;
}

}  // namespace

unsigned long TextConverter::UCS2ToWChar(const unsigned short* src, unsigned long length,
                                         std::wstring& out) {
    return TranscodeToWide("UCS-2LE", src, length, SaturatingMultiply(2, length), out);
}

unsigned long TextConverter::UTF8ToWChar(const void* src, unsigned long length, std::wstring& out) {
    const unsigned long capacity = SaturatingMultiply(4, SaturatingAdd(length, 1));
    return TranscodeToWide("UTF-8", src, length, capacity, out);
}

unsigned long TextConverter::WCharToUCS2(const wchar_t* src, unsigned short* out,
                                         unsigned long& size) {
    const unsigned long units = ::wcslen(src) + 1;
    BufferDynamic text;
    const unsigned long result =
        TranscodeUnits("WCHAR_T", "UCS-2LE", Buffer(src, 4 * units), 2 * units, text);
    if (result != SUCCESS) return result;
    const unsigned long capacity = std::exchange(size, text.GetSize());
    if (out == nullptr) return SUCCESS;
    if (capacity < size) return ERROR_SIZE;
    return Buffer(out, size).Set(size, text.GetData());
}

unsigned long TextConverter::WCharToASCIIWithSystemLocale(const wchar_t* src, std::string& out) {
    const unsigned long units = ::wcslen(src) + 1;
    return TranscodeToString("WCHAR_T", "WINDOWS-1251", Buffer(src, 4 * units), units, out);
}

std::string TextConverter::WCharToASCIIWithSystemLocale(const wchar_t* src) {
    std::string out;
    ThrowUnlessSuccess(WCharToASCIIWithSystemLocale(src, out));
    return out;
}

unsigned long TextConverter::ASCIIToWCharWithSystemLocale(const char* src, std::wstring& out) {
    const unsigned long units = qel::strlen(src) + 1;
    return TranscodeToString("WINDOWS-1251", "WCHAR_T", Buffer(src, units), units, out);
}

unsigned long TextConverter::WCharToUTF8(const wchar_t* src, BufferDynamic& out) {
    const unsigned long characters = ::wcslen(src);
    unsigned long produced = 0;
    const unsigned long result = Transcode("WCHAR_T", "UTF-8", Buffer(src, 4 * characters),
                                           SaturatingMultiply(8, characters), out, produced);
    return result == SUCCESS ? out.Realloc(produced) : result;
}

unsigned long TextConverter::UTF8ToSystemLocale(const void*, unsigned long, std::string&) {
    return ERROR_NOT_IMPLEMENTED;
}

}  // namespace qel
