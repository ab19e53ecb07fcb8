#include <string.h>

#include <algorithm>
#include <iterator>
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

/// Converts count codes and returns their number.
template <class Unit>
unsigned long WidenUnits(const void* src, unsigned long count, void* out, const LocaleInfo& info) {
    const auto* const codes = static_cast<const unsigned char*>(src);
    unsigned long place = 0;
    // A long text is worth a table of its own, which asks nothing of a code and holds units.
    if (count >= codeCount) {
        Unit units[codeCount];
        for (unsigned long code = 0; code < codeCount; ++code) {
            units[code] = static_cast<Unit>(info.GetWChar(static_cast<unsigned char>(code)));
        }
        for (; count - place >= 4; place += 4) {
            const unsigned char* const four = codes + place;
            const Unit wide[] = {units[four[0]], units[four[1]], units[four[2]], units[four[3]]};
            ::memcpy(static_cast<char*>(out) + place * sizeof(Unit), wide, sizeof wide);
        }
    }
    for (; place < count; ++place) {
        PutUnit(static_cast<Unit>(info.GetWChar(codes[place])), out, place);
    }
    return count;
}

/// Converts count units, or those before the first zero among them, and returns their number.
template <class Unit>
unsigned long NarrowUnits(const void* src, unsigned long count, void* out, const LocaleInfo& info) {
    auto* const codes = static_cast<unsigned char*>(out);
    wchar_t text[64];
    for (unsigned long place = 0; place < count; place += std::size(text)) {
        const unsigned long most = std::min(count - place, std::size(text));
        unsigned long length = 0;
        // What stands behind a zero need not be there to be read.
        for (; length < most; ++length) {
            text[length] = static_cast<wchar_t>(UnitAt<Unit>(src, place + length));
            if (text[length] == L'\0') break;
        }
        info.GetChars(text, length, codes + place);
        if (length < most) return place + length;
    }
    return count;
}

/// The conversion into memory of the caller, from units of one type to units of another.
template <class From, class To, auto convert>
unsigned long ConvertUnits(const void* src, unsigned long length, void* out, unsigned long& size,
                           const LocaleInfo& info) {
    if (src == nullptr) {
        size = 0;
        return SUCCESS;
    }
    const unsigned long count = CountUnits<From>(src, length);
    const unsigned long needed = SizeWithTerminator(count, sizeof(To));
    if (needed == maxSize) return ERROR_MEM;
    const unsigned long room = std::exchange(size, needed);
    if (out == nullptr) return SUCCESS;
    if (room < needed) return ERROR_SIZE;
    PutUnit(To{0}, out, convert(src, count, out, info));
    return SUCCESS;
}

/// Looks characters up in the sorted map, width at a time, and returns how many that makes. The
/// eight halvings of the map decide no branches, which would be foreseen wrongly every other time,
/// and while one character waits for memory another can be looked at.
template <unsigned long width>
unsigned long FindCodes(const LocaleInfo::CharPair* map, const wchar_t* text, unsigned long count,
                        unsigned char* codes) {
    unsigned long place = 0;
    for (; count - place >= width; place += width) {
        std::int32_t wanted[width];
        std::copy_n(text + place, width, wanted);
        const LocaleInfo::CharPair* found[width];
        std::fill_n(found, width, map);
        for (unsigned long half = codeCount / 2; half != 0; half /= 2) {
            for (unsigned long i = 0; i < width; ++i) {
                const bool isBehind = found[i][half - 1].character < wanted[i];
                found[i] += half & -static_cast<unsigned long>(isBehind);
            }
        }
        for (unsigned long i = 0; i < width; ++i) {
            if (found[i]->character != wanted[i]) throw Exception(NO_UNICODE_TRANSLATION);
            codes[place + i] = found[i]->code;
        }
    }
    return place;
}

template <class To>
constexpr auto widen = ConvertUnits<unsigned char, To, WidenUnits<To>>;

template <class From>
constexpr auto narrow = ConvertUnits<From, char, NarrowUnits<From>>;

template <class Unit>
unsigned long Widen(const char* src, std::basic_string<Unit>& out, const LocaleInfo& info) {
    const unsigned long length = qel::strlen(src);
    const BufferDynamic text(SizeWithTerminator(length, sizeof(Unit)));
    unsigned long size = text.GetSize();
    widen<Unit>(src, length, text.GetData(), size, info);
    out.assign(static_cast<const Unit*>(text.GetData()), length);
    return SUCCESS;
}

template <class Unit>
unsigned long Narrow(const Unit* src, std::string& out, const LocaleInfo& info) {
    const unsigned long count = CountUnits<Unit>(src, 0);
    out.resize(count);
    // The terminator falls on the string's own.
    unsigned long size = SizeWithTerminator(count, 1);
    return narrow<Unit>(src, count * sizeof(Unit), out.data(), size, info);
}

}  // namespace

unsigned char TextConverter::LocaleInfo::GetChar(const wchar_t& c) const {
    unsigned char code;
    GetChars(&c, 1, &code);
    return code;
}

void TextConverter::LocaleInfo::GetChars(const wchar_t* text, unsigned long count,
                                         unsigned char* codes) const {
    if (count == 0) return;
    if (reverseMap.GetSize() == 0) BuildReverseMap();
    const auto* const map = static_cast<const CharPair*>(reverseMap.GetData());
    const unsigned long place = FindCodes<4>(map, text, count, codes);
    FindCodes<1>(map, text + place, count - place, codes + place);
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
    return widen<wchar_t>(src, length, out, size, info);
}

unsigned long TextConverter::UCS2ToEASCII(const unsigned short* src, unsigned long length,
                                          char* out, unsigned long& size, const LocaleInfo& info) {
    return Convert(dirUCS2ToEASCII, src, length, out, size, &info);
}

unsigned long TextConverter::WCharToEASCII(const wchar_t* src, unsigned long length, char* out,
                                           unsigned long& size, const LocaleInfo& info) {
    return narrow<wchar_t>(src, length, out, size, info);
}

unsigned long TextConverter::Convert(EDirection dir, const void* src, unsigned long length,
                                     void* out, unsigned long& size, const LocaleInfo* info) {
    const LocaleInfo& table = info == nullptr ? *cpLWin1251 : *info;
    switch (dir) {
        case dirEASCIIToUCS2:
            return widen<unsigned short>(src, length, out, size, table);
        case dirUCS2ToEASCII:
            return narrow<unsigned short>(src, length, out, size, table);
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
    return Widen(src, out, info);
}

unsigned long TextConverter::EASCIIToWChar(const char* src, std::wstring& out,
                                           const LocaleInfo& info) {
    return Widen(src, out, info);
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
