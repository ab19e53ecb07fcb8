#include "core/text_converter.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "core/exception.h"
#include "core/result_codes.h"
#include "tests/support/bytes.h"
#include "tests/support/code_pages.h"
#include "tests/support/outcome.h"

namespace {

using namespace std::string_literals;
using qel::Buffer, qel::BufferDynamic, qel::Exception;
using Converter = qel::TextConverter;
using Info = Converter::LocaleInfo;
using UCS2 = std::basic_string<unsigned short>;

const Info& win = Converter::ciLWin1251;
constexpr unsigned long tooMuch = 1ul << 62;

/// "RESULT SIZE: UNITS" of a conversion into a block of just room bytes, each 0xAA before, that has
/// no address when room is 0.
template <class From, class To>
std::string Answer(unsigned long (*convert)(const From*, unsigned long, To*, unsigned long&,
                                            const Info&),
                   const From* src, unsigned long length, unsigned long room,
                   const Info& info = win) {
    BufferDynamic block(room);
    Buffer::Wipe(room, block.GetData());
    auto* const out = static_cast<To*>(room == 0 ? nullptr : block.GetData());
    unsigned long size = room;
    std::string answer =
        Outcome<Exception>([&] { qel::ThrowUnlessSuccess(convert(src, length, out, size, info)); });
    answer += ' ' + std::to_string(size) + ':';
    for (unsigned long i = 0; i < room / sizeof(To); ++i) {
        char digits[10];
        std::snprintf(digits, sizeof digits, " %x", static_cast<std::make_unsigned_t<To>>(out[i]));
        answer += digits;
    }
    return answer;
}

template <int dir>
unsigned long Directed(const char* src, unsigned long length, char* out, unsigned long& size,
                       const Info& info) {
    const auto direction = static_cast<Converter::EDirection>(dir);
    return Converter::Convert(direction, src, length, out, size, &info == &win ? nullptr : &info);
}

unsigned long FromUCS2(const char* src, unsigned long length, char* out, unsigned long& size,
                       const Info&) {
    return Converter::UCS2ToASCIIWithSystemLocale(src, length, out, size);
}

unsigned long ByIconv(const wchar_t* src, unsigned long, unsigned short* out, unsigned long& size,
                      const Info&) {
    return Converter::WCharToUCS2(src, out, size);
}

TEST(TextConverter, FillsMemoryOfTheCaller) {
    using C = Converter;
    const unsigned short units[] = {0x410, 0x451, 0}, broken[] = {0x41, 0, 0x42, 0x100, 0};
    wchar_t table[256] = L"";
    table[0x80] = L'\x4E2D';
    const Info own(table);
    alignas(2) static constexpr char unaligned[] = "-\x10\x04";
    const char* const letter = unaligned + 1;
    for (int row = 0;
         const auto& [answer, expected] :
         {std::pair{Answer(C::EASCIIToWChar, "\xC0\x41", 0, 12), " 12: 410 41 0"},
          {Answer(C::EASCIIToWChar, "\xC0\x41", 0, 0), " 12:"},
          {Answer(C::EASCIIToWChar, "\xC0\x41", 0, 11), "ERROR_SIZE 12: aaaaaaaa aaaaaaaa"},
          {Answer(C::EASCIIToWChar, "\xC0\x41", 1, 12), " 8: 410 0 aaaaaaaa"},
          {Answer(C::EASCIIToWChar, "A", tooMuch - 1, 4), "ERROR_MEM 4: aaaaaaaa"},
          {Answer(C::EASCIIToWChar, static_cast<const char*>(nullptr), 1, 4), " 0: aaaaaaaa"},
          {Answer(C::EASCIIToUCS2, "\xE0\xA8\x98", 0, 8), " 8: 430 401 98 0"},
          {Answer(C::EASCIIToUCS2, "A\0B", 3, 8), " 8: 41 0 42 0"},
          {Answer(C::EASCIIToUCS2, "", 0, 2), " 2: 0"},
          {Answer(C::EASCIIToUCS2, "A", ~0ul, 2), "ERROR_MEM 2: aaaa"},
          {Answer(C::UCS2ToEASCII, units, 0, 3), " 3: c0 b8 0"},
          {Answer(C::UCS2ToEASCII, units, 0, 2), "ERROR_SIZE 3: aa aa"},
          {Answer(C::UCS2ToEASCII, units, 1, 1), " 1: 0"},
          {Answer(C::UCS2ToEASCII, broken, 6, 4), " 4: 41 0 aa aa"},
          {Answer(C::UCS2ToEASCII, broken + 2, 0, 3), "NO_UNICODE_TRANSLATION 3: 42 aa aa"},
          {Answer(C::WCharToEASCII, L"\x410\x451", 0, 3), " 3: c0 b8 0"},
          {Answer(C::WCharToEASCII, L"\x410\x451", 7, 2), " 2: c0 0"},
          {Answer(C::WCharToEASCII, L"\x10041", 0, 2), "NO_UNICODE_TRANSLATION 2: aa aa"},
          {Answer(Directed<0>, "\x80\x7F", 0, 6, own), " 6: 2d 4e 7f 0 0 0"},
          {Answer(Directed<1>, "\x2D\x4E", 2, 2, own), " 2: 80 0"},
          {Answer(Directed<1>, "\x7F\0", 2, 2, own), "NO_UNICODE_TRANSLATION 2: aa aa"},
          {Answer(Directed<1>, letter, 2, 2), " 2: c0 0"},
          {Answer(Directed<1>, letter, 2, 1), "ERROR_SIZE 2: aa"},
          {Answer(Directed<2>, letter, 2, 1), "ERROR_INTERNAL 1: aa"},
          {Answer(FromUCS2, letter, 2, 2), " 2: c0 0"},
          {Answer(FromUCS2, letter, 2, 1), " 2: aa"},
          {Answer(ByIconv, L"\x416", 0, 3), "ERROR_SIZE 4: aaaa"},
          {Answer(ByIconv, L"\x416", 0, 0), " 4:"},
          {Answer(ByIconv, L"\x10416", 0, 4), "NO_UNICODE_TRANSLATION 4: aaaa aaaa"},
          // A tag, which glibc would leave out.
          {Answer(ByIconv, L"\xE0041", 0, 4), "NO_UNICODE_TRANSLATION 4: aaaa aaaa"}}) {
        EXPECT_EQ(answer, expected) << "in row " << row;
        ++row;
    }
    table[0x80] = L'-';
    EXPECT_EQ(own.GetChar(L'\x4E2D'), 0x80) << "the way back was built again";
}

TEST(TextConverter, FillsBuffers) {
    using Case = std::tuple<int, Buffer, std::string>;
    for (const auto& [dir, src, answer] :
         {Case{0, Buffer("\xC0", 1), "\x10\4\0\0"s}, Case{1, Buffer("\x10\4", 2), "\xC0\0"s},
          Case{0, Buffer("A", 0), "\0\0"s}, Case{1, Buffer("A", 0), "\0"s}, Case{0, Buffer(), ""s},
          Case{2, Buffer(), "kept ERROR_INTERNAL"s}, Case{0, Buffer("", ~0ul), "kept ERROR_MEM"s},
          Case{0, Buffer("", tooMuch), "kept ERROR_MEM"s}}) {
        BufferDynamic out(View("kept"));
        const auto direction = static_cast<Converter::EDirection>(dir);
        const unsigned long result = Converter::Convert(direction, src, out, nullptr);
        EXPECT_EQ(Bytes(out) + (result == 0 ? "" : ' ' + Exception::GetResultString(result)),
                  answer);
    }
}

TEST(TextConverter, KnowsThePublishedCodePage) {
    std::string codes;
    std::wstring chart;
    for (unsigned code = 0; code < 256; ++code) {
        const wchar_t c = code < 128 ? static_cast<wchar_t>(code) : windows1251[code - 128];
        EXPECT_EQ(Converter::ciCWin1251[code], c) << code;
        EXPECT_EQ(win.GetUCS2Char(static_cast<unsigned char>(code)), c) << code;
        EXPECT_EQ(win.GetChar(c), code);
        if (code == 0 || code == 0x98) continue;
        codes += static_cast<char>(code);
        chart += c;
    }
    Info::CharPair low{9, INT32_MIN}, high{1, INT32_MAX};
    EXPECT_TRUE(Info::compare(&low, &high) < 0 && Info::compare(&high, &low) > 0);
    const UCS2 chartUnits(chart.begin(), chart.end());
    std::wstring wide = L"-", wideByIconv = wide;
    UCS2 units;
    std::string fromWide = "-", fromUnits, fromBad;
    EXPECT_EQ(Converter::EASCIIToWChar(codes.c_str(), wide, win) |
                  Converter::EASCIIToUCS2(codes.c_str(), units, win) |
                  Converter::WCharToEASCII(chart.c_str(), fromWide, win) |
                  Converter::UCS2ToEASCII(chartUnits.c_str(), fromUnits, win) |
                  Converter::ASCIIToWCharWithSystemLocale(codes.c_str(), wideByIconv),
              qel::SUCCESS);
    EXPECT_EQ(wide + wideByIconv, chart + chart);
    EXPECT_EQ(units, chartUnits);
    EXPECT_EQ(fromWide + fromUnits + Converter::WCharToASCIIWithSystemLocale(chart.c_str()),
              codes + codes + codes);
    EXPECT_EQ(Converter::WCharToASCIIWithSystemLocale(L"Привет"), "\xCF\xF0\xE8\xE2\xE5\xF2");
    for (const wchar_t* bad : {L"\x100", L"\x10410", L"\x7FFFFFFF", L"\xFFFFFFFF", L"\xE0041"}) {
        const auto convert = [&] { return Converter::WCharToEASCII(bad, fromBad, win); };
        const auto byIconv = [&] { Converter::WCharToASCIIWithSystemLocale(bad); };
        EXPECT_EQ(Outcome<Exception>(convert), "NO_UNICODE_TRANSLATION") << +*bad;
        EXPECT_EQ(Outcome<Exception>(byIconv), "NO_UNICODE_TRANSLATION") << +*bad;
    }
}

TEST(TextConverter, KeepsEveryCharacter) {
    std::wstring text, back;
    for (wchar_t c = 1; c < 0x10000; ++c) {
        if (c < 0xD800 || c > 0xDFFF) text += c;
    }
    UCS2 units(text.size() + 1, 0xFFFF);
    unsigned long size = 2 * units.size();
    EXPECT_EQ(Converter::WCharToUCS2(text.c_str(), units.data(), size), qel::SUCCESS);
    EXPECT_EQ(units, UCS2(text.begin(), text.end()) + UCS2{0});
    EXPECT_EQ(Converter::UCS2ToWChar(units.data(), size, back), qel::SUCCESS);
    EXPECT_EQ(back, text);

    text += L"\x10000\x1F600\x10FFFF";
    BufferDynamic utf8;
    EXPECT_EQ(Converter::WCharToUTF8(text.c_str(), utf8), qel::SUCCESS);
    EXPECT_EQ(utf8.GetSize(), 0x7F + 2 * 0x780 + 3 * (0xF800 - 0x800) + 3 * 4);
    EXPECT_EQ(Converter::UTF8ToWChar(utf8.GetData(), utf8.GetSize(), back), qel::SUCCESS);
    EXPECT_EQ(back, text);
    for (const auto& [wide, bytes] :
         {std::pair{L"\x416", "\xD0\x96"}, {L"\x1F600", "\xF0\x9F\x98\x80"}, {L"", ""}}) {
        EXPECT_EQ(Converter::WCharToUTF8(wide, utf8), qel::SUCCESS);
        EXPECT_EQ(Bytes(utf8), bytes);
    }
    EXPECT_EQ(Converter::ASCIIToWCharWithSystemLocale("", back), qel::SUCCESS);
    EXPECT_EQ(back, L"");
    // Zeros at the end go, but the first character stays.
    for (const auto& [bytes, wide] : {std::pair{""s, L""s},
                                      {"A\0"s, L"A"s},
                                      {"\0"s, L"\0"s},
                                      {"\0\0"s, L"\0"s},
                                      {"A\0B\0\0"s, L"A\0B"s}}) {
        const UCS2 same(bytes.begin(), bytes.end());
        EXPECT_EQ(Converter::UTF8ToWChar(bytes.data(), bytes.size(), back), qel::SUCCESS);
        EXPECT_EQ(back, wide);
        EXPECT_EQ(Converter::UCS2ToWChar(same.data(), 2 * same.size(), back), qel::SUCCESS);
        EXPECT_EQ(back, wide);
    }
}

TEST(TextConverter, RefusesBadText) {
    constexpr unsigned long bad = qel::NO_UNICODE_TRANSLATION;
    struct : BufferDynamic {
        unsigned long Alloc(unsigned long length) override {
            return length > 8 ? qel::ERROR_PARAM : BufferDynamic::Alloc(length);
        }
        unsigned long Realloc(unsigned long) override { return qel::ERROR_DATA; }
    } refusing;
    std::wstring wide = L"kept";
    std::string text = "kept";
    for (const auto& utf8 : {"\xD0"s, "\xC0\x80"s, "\xED\xA0\x80"s, "\xE0\x80\xAF"s, "A\xFF"s,
                             "\xF0\x9F\x98"s, "\xF0\x80\x80\xAF"s}) {
        EXPECT_EQ(Converter::UTF8ToWChar(utf8.data(), utf8.size(), wide), bad)
            << testing::PrintToString(utf8);
    }
    const unsigned short units[] = {0x41, 0xD800, 0xDC00};
    EXPECT_EQ(Converter::UCS2ToWChar(units, 3, wide), bad);
    EXPECT_EQ(Converter::UCS2ToWChar(units, 6, wide), bad);
    EXPECT_EQ(Converter::UCS2ToWChar(units, 2 * tooMuch, wide), qel::ERROR_MEM);
    EXPECT_EQ(Converter::UTF8ToWChar(units, ~0ul, wide), qel::ERROR_MEM);
    EXPECT_EQ(Converter::ASCIIToWCharWithSystemLocale("\x98", wide), bad);
    EXPECT_EQ(Converter::WCharToUTF8(L"\xD800", refusing), bad);
    EXPECT_EQ(Converter::WCharToUTF8(L"A", refusing), qel::ERROR_DATA);
    EXPECT_EQ(Converter::WCharToUTF8(L"AB", refusing), qel::ERROR_PARAM);
    EXPECT_EQ(Converter::UTF8ToSystemLocale("A", 1, text), qel::ERROR_NOT_IMPLEMENTED);
    EXPECT_EQ(Converter::WCharToASCIIWithSystemLocale(L"A\x4E2D", text), bad);
    EXPECT_EQ(wide + std::wstring(text.begin(), text.end()), L"keptkept");
}

TEST(TextConverter, TrimsSpacesAlone) {
    for (const auto& [text, trimmed] :
         {std::pair{"  a b  ", "a b"}, {"\ta\n", "\ta\n"}, {"   ", ""}, {"", ""}}) {
        EXPECT_EQ(Converter::Trim(text), trimmed);
    }
}

}  // namespace
