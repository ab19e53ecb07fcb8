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
// locale. That this holds for the iconv of macOS could not be tried: no macOS was at hand.

/// Converts the whole input in one call, from one form to another under iconv's names, into a new
/// block of capacity bytes; produced becomes the number of bytes in it that count.
unsigned long Transcode(const char* from, const char* to, const Buffer& input,
                        unsigned long capacity, BufferDynamic& block, unsigned long& produced) {
    const ::iconv_t opened = ::iconv_open(to, from);
    if (opened == reinterpret_cast<::iconv_t>(-1)) return NO_UNICODE_TRANSLATION;
    const std::unique_ptr<std::remove_pointer_t<::iconv_t>, int (*)(::iconv_t)> descriptor(
        opened, ::iconv_close);

    const unsigned long result = block.Alloc(capacity);
    if (result != SUCCESS) return result;
    auto* in = static_cast<char*>(input.GetData());
    auto* out = static_cast<char*>(block.GetData());
    ::size_t inLeft = input.GetSize(), outLeft = capacity;
    // A number above 0 counts characters that were replaced by similar ones.
    if (::iconv(opened, &in, &inLeft, &out, &outLeft) != 0) return NO_UNICODE_TRANSLATION;
    produced = capacity - outLeft;
    return SUCCESS;
}

/// The same where every character takes as many bytes as any other, so that the output fills its
/// block: glibc leaves out the characters U+E0000 to U+E007F where the other form lacks them, and
/// calls that a success.
unsigned long TranscodeUnits(const char* from, const char* to, const Buffer& input,
                             unsigned long capacity, BufferDynamic& block) {
    unsigned long produced = 0;
    const unsigned long result = Transcode(from, to, input, capacity, block, produced);
    return result == SUCCESS && produced != capacity ? NO_UNICODE_TRANSLATION : result;
}

/// length bytes at src, which need not be aligned, as wide text without the zeros at its end.
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

/// The number of characters with their terminator.
unsigned long CountWithTerminator(const wchar_t* text) { return ::wcslen(text) + 1; }

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
    const unsigned long units = CountWithTerminator(src);
    BufferDynamic text;
    const unsigned long result =
        TranscodeUnits("WCHAR_T", "UCS-2LE", Buffer(src, 4 * units), 2 * units, text);
    if (result != SUCCESS) return result;
    const unsigned long room = std::exchange(size, text.GetSize());
    if (out == nullptr) return SUCCESS;
    if (room < size) return ERROR_SIZE;
    return Buffer(out, size).Set(size, text.GetData());
}

unsigned long TextConverter::WCharToASCIIWithSystemLocale(const wchar_t* src, std::string& out) {
    const unsigned long units = CountWithTerminator(src);
    BufferDynamic text;
    const unsigned long result =
        TranscodeUnits("WCHAR_T", "WINDOWS-1251", Buffer(src, 4 * units), units, text);
    if (result == SUCCESS) out.assign(static_cast<const char*>(text.GetData()), units - 1);
    return result;
}

std::string TextConverter::WCharToASCIIWithSystemLocale(const wchar_t* src) {
    std::string out;
    ThrowUnlessSuccess(WCharToASCIIWithSystemLocale(src, out));
    return out;
}

unsigned long TextConverter::ASCIIToWCharWithSystemLocale(const char* src, std::wstring& out) {
    const unsigned long units = qel::strlen(src) + 1;
    BufferDynamic text;
    const unsigned long result = TranscodeUnits("WINDOWS-1251", "WCHAR_T", Buffer(src, units),
                                                SaturatingMultiply(4, units), text);
    if (result == SUCCESS) out.assign(static_cast<const wchar_t*>(text.GetData()), units - 1);
    return result;
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
