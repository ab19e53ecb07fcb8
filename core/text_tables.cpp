#include <string.h>

#include <algorithm>
#include <string_view>
#include <type_traits>
#include <utility>

#include "core/c_library.h"
#include "core/exception.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"
#include "core/text_converter.h"

namespace qel {

namespace {

using LocaleInfo = TextConverter::LocaleInfo;

constexpr unsigned long codeCount = 256;

bool IsBefore(LocaleInfo::CharPair a, LocaleInfo::CharPair b) {
    return LocaleInfo::compare(&a, &b) < 0;
}

/// The unit at a place in text that need not be aligned.
template <class Unit>
Unit UnitAt(const void* text, unsigned long place) {
    Unit unit;
    ::memcpy(&unit, static_cast<const char*>(text) + place * sizeof unit, sizeof unit);
    return unit;
}

template <class Unit>
void PutUnit(Unit unit, void* text, unsigned long place) {
    ::memcpy(static_cast<char*>(text) + place * sizeof unit, &unit, sizeof unit);
}

/// The number of units in length bytes of text, or before the terminator when length is 0.
template <class Unit>
unsigned long CountUnits(const void* text, unsigned long length) {
    if (length != 0) return length / sizeof(Unit);
    unsigned long count = 0;
    while (UnitAt<Unit>(text, count) != 0) ++count;
    return count;
}

/// The bytes that count units and a terminator take.
unsigned long SizeWithTerminator(unsigned long count, unsigned long unitSize) {
    return SaturatingMultiply(SaturatingAdd(count, 1), unitSize);
}

/// The conversion into memory of the caller, from units of one type to what map, a member of
/// LocaleInfo, makes of them.
template <class From, auto map>
unsigned long ConvertUnits(const void* src, unsigned long length, void* out, unsigned long& size,
                           const LocaleInfo& info) {
    using To = std::invoke_result_t<decltype(map), const LocaleInfo&, From>;
    if (src == nullptr) {
        size = 0;
        return SUCCESS;
    }
    const unsigned long count = CountUnits<From>(src, length);
    const unsigned long needed = SizeWithTerminator(count, sizeof(To));
    if (needed == largestSize) return ERROR_MEM;
    const unsigned long room = std::exchange(size, needed);
    if (out == nullptr) return SUCCESS;
    if (room < needed) return ERROR_SIZE;
    unsigned long place = 0;
    for (; place < count; ++place) {
        const From unit = UnitAt<From>(src, place);
        // Single-byte text of a given length may hold zero bytes.
        if (sizeof unit != 1 && unit == 0) break;
        PutUnit((info.*map)(unit), out, place);
    }
    PutUnit(To{0}, out, place);
    return SUCCESS;
}

template <auto map, class Unit>
unsigned long Widen(const char* src, std::basic_string<Unit>& out, const LocaleInfo& info) {
    const unsigned long length = qel::strlen(src);
    const BufferDynamic text(SizeWithTerminator(length, sizeof(Unit)));
    unsigned long size = text.GetSize();
    ConvertUnits<unsigned char, map>(src, length, text.GetData(), size, info);
    out.assign(static_cast<const Unit*>(text.GetData()), length);
    return SUCCESS;
}

template <class Unit>
unsigned long Narrow(const Unit* src, std::string& out, const LocaleInfo& info) {
    const unsigned long count = CountUnits<Unit>(src, 0);
    out.resize(count);
    // The terminator falls on the string's own.
    unsigned long size = SizeWithTerminator(count, 1);
    return ConvertUnits<Unit, &LocaleInfo::GetChar>(src, count * sizeof(Unit), out.data(), size,
                                                    info);
}

}  // namespace

unsigned char TextConverter::LocaleInfo::GetChar(const wchar_t& c) const {
    if (reverseMap.GetSize() == 0) BuildReverseMap();
    auto* const first = static_cast<CharPair*>(reverseMap.GetData());
    const CharPair wanted{0, static_cast<std::int32_t>(c)};
    const CharPair* const found = std::lower_bound(first, first + codeCount, wanted, IsBefore);
    if (found == first + codeCount || found->character != wanted.character) {
        throw Exception(NO_UNICODE_TRANSLATION);
    }
    return found->code;
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
    std::sort(records, records + codeCount, IsBefore);
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
    return ConvertUnits<unsigned char, &LocaleInfo::GetWChar>(src, length, out, size, info);
}

unsigned long TextConverter::UCS2ToEASCII(const unsigned short* src, unsigned long length,
                                          char* out, unsigned long& size, const LocaleInfo& info) {
    return Convert(dirUCS2ToEASCII, src, length, out, size, &info);
}

unsigned long TextConverter::WCharToEASCII(const wchar_t* src, unsigned long length, char* out,
                                           unsigned long& size, const LocaleInfo& info) {
    return ConvertUnits<wchar_t, &LocaleInfo::GetChar>(src, length, out, size, info);
}

unsigned long TextConverter::Convert(EDirection dir, const void* src, unsigned long length,
                                     void* out, unsigned long& size, const LocaleInfo* info) {
    const LocaleInfo& table = info == nullptr ? *cpLWin1251 : *info;
    switch (dir) {
        case dirEASCIIToUCS2:
            return ConvertUnits<unsigned char, &LocaleInfo::GetUCS2Char>(src, length, out, size,
                                                                         table);
        case dirUCS2ToEASCII:
            return ConvertUnits<unsigned short, &LocaleInfo::GetChar>(src, length, out, size,
                                                                      table);
    }
    return ERROR_INTERNAL;
}

unsigned long TextConverter::Convert(EDirection dir, const Buffer& src, BufferDynamic& out,
                                     const LocaleInfo* info) {
    // A length of 0 asks for a terminator, and an empty block has none.
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
    // The one failure is too small a room: half of a length and a terminator always fit 64 bits.
    Convert(dirUCS2ToEASCII, src, length, out, size, cpLWin1251);
    return SUCCESS;
}

unsigned long TextConverter::EASCIIToUCS2(const char* src, std::basic_string<unsigned short>& out,
                                          const LocaleInfo& info) {
    return Widen<&LocaleInfo::GetUCS2Char>(src, out, info);
}

unsigned long TextConverter::EASCIIToWChar(const char* src, std::wstring& out,
                                           const LocaleInfo& info) {
    return Widen<&LocaleInfo::GetWChar>(src, out, info);
}

unsigned long TextConverter::UCS2ToEASCII(const unsigned short* src, std::string& out,
                                          const LocaleInfo& info) {
    return Narrow(src, out, info);
}

unsigned long TextConverter::WCharToEASCII(const wchar_t* src, std::string& out,
                                           const LocaleInfo& info) {
    return Narrow(src, out, info);
}

}  // namespace qel
