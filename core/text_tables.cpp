#include <string.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/c_library.h"
#include "core/exception.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"
#include "core/text_converter.h"

namespace qel {

namespace {

using LocaleInfo = TextConverter::LocaleInfo;
using Ucs2 = unsigned short;

constexpr unsigned long codeCount = 256;

/// Loads a unit of text that may be unaligned.
template <class Unit>
Unit LoadUnit(const void* text, unsigned long index) {
    Unit unit;
    ::memcpy(&unit, static_cast<const char*>(text) + index * sizeof unit, sizeof unit);
    return unit;
}

template <class Unit>
void StoreUnit(Unit unit, void* text, unsigned long index) {
    ::memcpy(static_cast<char*>(text) + index * sizeof unit, &unit, sizeof unit);
}

/// Returns the number of units in length bytes of text, or before the terminator if length is 0.
template <class Unit>
unsigned long CountUnits(const void* text, unsigned long length) {
    if (length != 0) return length / sizeof(Unit);
    unsigned long count = 0;
    while (LoadUnit<Unit>(text, count) != 0) ++count;
    return count;
}

/// Returns the size in bytes of count units and a terminator.
unsigned long SizeWithTerminator(unsigned long count, unsigned long unitSize) {
    return SaturatingMultiply(SaturatingAdd(count, 1), unitSize);
}

/// Converts count codes and returns their number.
template <class Unit>
unsigned long WidenUnits(const void* src, unsigned long count, void* out, const LocaleInfo& info) {
    const auto* const codes = static_cast<const unsigned char*>(src);
    unsigned long index = 0;
    // For long text, build a table of units: one unconditional look-up per code.
    if (count >= codeCount) {
        Unit units[codeCount];
        for (unsigned long code = 0; code < codeCount; ++code) {
            units[code] = static_cast<Unit>(info.GetWChar(static_cast<unsigned char>(code)));
        }
        for (; count - index >= 4; index += 4) {
            const unsigned char* const four = codes + index;
            const Unit wide[] = {units[four[0]], units[four[1]], units[four[2]], units[four[3]]};
            ::memcpy(static_cast<char*>(out) + index * sizeof(Unit), wide, sizeof wide);
        }
    }
    for (; index < count; ++index) {
        StoreUnit(static_cast<Unit>(info.GetWChar(codes[index])), out, index);
    }
    return count;
}

/// Converts count units, or those before the first zero among them, and returns their number.
template <class Unit>
unsigned long NarrowUnits(const void* src, unsigned long count, void* out, const LocaleInfo& info) {
    auto* const codes = static_cast<unsigned char*>(out);
    for (unsigned long index = 0; index < count; ++index) {
        const auto character = static_cast<wchar_t>(LoadUnit<Unit>(src, index));
        // Memory after a terminator may not be readable.
        if (character == L'\0') return index;
        codes[index] = info.GetChar(character);
    }
    return count;
}

/// Converts into a caller's buffer; convert is WidenUnits or NarrowUnits.
template <class From, class To, class Converter>
unsigned long ConvertUnits(Converter convert, const void* src, unsigned long length, void* out,
                           unsigned long& size, const LocaleInfo& info) {
    if (src == nullptr) {
        size = 0;
        return SUCCESS;
    }
    const unsigned long count = CountUnits<From>(src, length);
    const unsigned long needed = SizeWithTerminator(count, sizeof(To));
    if (needed == maxSize) return ERROR_MEM;
    const unsigned long capacity = std::exchange(size, needed);
    if (out == nullptr) return SUCCESS;
    if (capacity < needed) return ERROR_SIZE;
    StoreUnit(To{0}, out, convert(src, count, out, info));
    return SUCCESS;
}

template <class Unit>
unsigned long WidenString(const char* src, std::basic_string<Unit>& out, const LocaleInfo& info) {
    const unsigned long length = qel::strlen(src);
    const BufferDynamic units(SaturatingMultiply(length, sizeof(Unit)));
    WidenUnits<Unit>(src, length, units.GetData(), info);
    out.assign(static_cast<const Unit*>(units.GetData()), length);
    return SUCCESS;
}

template <class Unit>
unsigned long NarrowString(const Unit* src, std::string& out, const LocaleInfo& info) {
    out.resize(CountUnits<Unit>(src, 0));
    NarrowUnits<Unit>(src, out.size(), out.data(), info);
    return SUCCESS;
}

}  // namespace

unsigned char TextConverter::LocaleInfo::GetChar(const wchar_t& c) const {
    if (reverseMap.GetSize() == 0) BuildReverseMap();
    const auto wanted = static_cast<std::int32_t>(c);
    // A binary search whose steps do not branch: half of the branches would be mispredicted.
    const auto* record = static_cast<const CharPair*>(reverseMap.GetData());
    for (unsigned long step = codeCount / 2; step != 0; step /= 2) {
        const bool isAfter = record[step - 1].character < wanted;
        record += isAfter * step;
    }
    if (record->character != wanted) throw Exception(NO_UNICODE_TRANSLATION);
    return record->code;
}

int TextConverter::LocaleInfo::compare(CharPair* a, CharPair* b) {
    return a->character < b->character ? -1 : a->character > b->character ? 1 : 0;
}

void TextConverter::LocaleInfo::BuildReverseMap() const {
    ThrowUnlessSuccess(reverseMap.Alloc(codeCount * sizeof(CharPair)));
    auto* const records = static_cast<CharPair*>(reverseMap.GetData());
    for (unsigned long code = 0; code < codeCount; ++code) {
        records[code] = {static_cast<std::uint8_t>(code),
                         static_cast<std::int32_t>(codeTable[code])};
    }
    std::sort(records, records + codeCount,
              [](CharPair a, CharPair b) { return compare(&a, &b) < 0; });
}

std::string TextConverter::Trim(const char* s) {
    const std::string_view text(s, qel::strlen(s));
    const auto first = text.find_first_not_of(' ');
    if (first == text.npos) return "";
    return std::string(text.substr(first, text.find_last_not_of(' ') + 1 - first));
}

unsigned long TextConverter::EASCIIToUCS2(const char* src, unsigned long length,
                                          unsigned short* out, unsigned long& size,
                                          const LocaleInfo& info) {
    return Convert(dirEASCIIToUCS2, src, length, out, size, &info);
}

unsigned long TextConverter::EASCIIToWChar(const char* src, unsigned long length, wchar_t* out,
                                           unsigned long& size, const LocaleInfo& info) {
    return ConvertUnits<unsigned char, wchar_t>(WidenUnits<wchar_t>, src, length, out, size, info);
}

unsigned long TextConverter::UCS2ToEASCII(const unsigned short* src, unsigned long length,
                                          char* out, unsigned long& size, const LocaleInfo& info) {
    return Convert(dirUCS2ToEASCII, src, length, out, size, &info);
}

unsigned long TextConverter::WCharToEASCII(const wchar_t* src, unsigned long length, char* out,
                                           unsigned long& size, const LocaleInfo& info) {
    return ConvertUnits<wchar_t, char>(NarrowUnits<wchar_t>, src, length, out, size, info);
}

unsigned long TextConverter::Convert(EDirection dir, const void* src, unsigned long length,
                                     void* out, unsigned long& size, const LocaleInfo* info) {
    if (info == nullptr) info = cpLWin1251;
    switch (dir) {
        case dirEASCIIToUCS2:
            return ConvertUnits<unsigned char, Ucs2>(WidenUnits<Ucs2>, src, length, out, size,
                                                     *info);
        case dirUCS2ToEASCII:
            return ConvertUnits<Ucs2, char>(NarrowUnits<Ucs2>, src, length, out, size, *info);
    }
    return ERROR_INTERNAL;
}

unsigned long TextConverter::Convert(EDirection dir, const Buffer& src, BufferDynamic& out,
                                     const LocaleInfo* info) {
    // A length of 0 means NUL-terminated, which an empty block is not.
    static constexpr unsigned short emptyText = 0;
    const bool isEmpty = src.GetSize() == 0 && src.GetData() != nullptr;
    const void* const text = isEmpty ? &emptyText : src.GetData();
    unsigned long size = 0;
    unsigned long result = Convert(dir, text, src.GetSize(), nullptr, size, info);
    if (result == SUCCESS) result = out.Alloc(size);
    if (result != SUCCESS) return result;
    return Convert(dir, text, src.GetSize(), out.GetData(), size, info);
}

unsigned long TextConverter::UCS2ToASCIIWithSystemLocale(const void* src, unsigned long length,
                                                         void* out, unsigned long& size) {
    // The only failure is ERROR_SIZE: half of a length and a terminator always fit 64 bits.
    Convert(dirUCS2ToEASCII, src, length, out, size, cpLWin1251);
    return SUCCESS;
}

unsigned long TextConverter::EASCIIToUCS2(const char* src, std::basic_string<unsigned short>& out,
                                          const LocaleInfo& info) {
    return WidenString(src, out, info);
}

unsigned long TextConverter::EASCIIToWChar(const char* src, std::wstring& out,
                                           const LocaleInfo& info) {
    return WidenString(src, out, info);
}

unsigned long TextConverter::UCS2ToEASCII(const unsigned short* src, std::string& out,
                                          const LocaleInfo& info) {
    return NarrowString(src, out, info);
}

unsigned long TextConverter::WCharToEASCII(const wchar_t* src, std::string& out,
                                           const LocaleInfo& info) {
    return NarrowString(src, out, info);
}

}  // namespace qel
