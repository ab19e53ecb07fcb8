#include "core/text_converter.h"

#include <gtest/gtest.h>

#include "core/exception.h"
#include "core/result_codes.h"
#include "tests/support/buffers.h"
#include "tests/support/result_text.h"

namespace {

using namespace std::string_literals;
using qel::Buffer, qel::BufferDynamic, qel::Exception;
using Ucs2String = std::basic_string<unsigned short>;

constexpr unsigned long tooMuch = 1ul << 62, noTranslation = qel::NO_UNICODE_TRANSLATION;

/// Brings the names in TextConverter into scope.
struct TextConverterTest : testing::Test, qel::TextConverter {
    /// The result code of a conversion into memory, the size that it set, and the units there.
    using Converted = std::tuple<unsigned long, unsigned long, std::wstring>;

    /// Converts into size bytes. They and the unit after them are filled with '-' first.
    template <class From, class To>
    static Converted Into(unsigned long size,
                          unsigned long (*convert)(const From*, unsigned long, To*, unsigned long&,
                                                   const LocaleInfo&),
                          const From* src, unsigned long length) {
        std::vector<To> memory(size / sizeof(To) + 1, '-');
        const unsigned long result = convert(src, length, memory.data(), size, ciLWin1251);
        return {result, size, {memory.begin(), memory.end()}};
    }
};

TEST_F(TextConverterTest, LocaleInfoMapsCodesAndCharacters) {
    wchar_t table[256] = L"";
    table[0x41] = L'-';
    table[0x80] = L'\xF600';
    table[0x81] = L'\x1F600';
    const LocaleInfo info(table);
    EXPECT_EQ(info.GetUCS2Char(0x41), 0x41) << "codes below 0x80 map to themselves";
    EXPECT_EQ(info.GetUCS2Char(0x81), 0xF600) << "the low 16 bits";
    EXPECT_EQ(info.GetChar(L'\x1F600'), 0x81);
    EXPECT_EQ(ResultText<Exception>([&] { info.GetChar(L'A'); }), "NO_UNICODE_TRANSLATION");
    LocaleInfo::CharPair low{9, INT32_MIN}, high{1, INT32_MAX};
    EXPECT_LT(LocaleInfo::compare(&low, &high), 0);

    const std::string codes(256, '\x80');
    std::string narrow(257, '-');
    std::wstring wide;
    Ucs2String units, unitsInMemory(257, 0);
    unsigned long size = 2 * 257;
    EASCIIToWChar(codes.c_str(), wide, info);
    EASCIIToUCS2(codes.c_str(), units, info);
    EASCIIToUCS2(codes.c_str(), 256, unitsInMemory.data(), size, info);
    UCS2ToEASCII(units.c_str(), 2 * 256, narrow.data(), size, info);
    EXPECT_EQ(wide, std::wstring(256, L'\xF600'));
    EXPECT_EQ(units, Ucs2String(256, 0xF600));
    EXPECT_EQ(unitsInMemory.c_str(), units);
    EXPECT_EQ(narrow.c_str(), codes);
}

TEST_F(TextConverterTest, ConvertsIntoMemory) {
    EXPECT_EQ(Into(12, EASCIIToWChar, "\xC0\x41", 0), Converted(0, 12, L"\x410\x41\0-"s));
    EXPECT_EQ(Into(11, EASCIIToWChar, "\xC0\x41", 0), Converted(qel::ERROR_SIZE, 12, L"---"));
    EXPECT_EQ(Into(4, EASCIIToWChar, "A", tooMuch - 1), Converted(qel::ERROR_MEM, 4, L"--"));
    EXPECT_EQ(Into<char>(4, EASCIIToWChar, nullptr, 1), Converted(qel::SUCCESS, 0, L"--"));
    EXPECT_EQ(Into(6, EASCIIToUCS2, "\0\x98", 2), Converted(qel::SUCCESS, 6, L"\0\x98\0-"s));
    const unsigned short text[] = {'A', 'B', 0, 'C'};
    EXPECT_EQ(Into(3, UCS2ToEASCII, text, 0), Converted(qel::SUCCESS, 3, L"AB\0-"s));
    EXPECT_EQ(Into(5, UCS2ToEASCII, text, 8), Converted(qel::SUCCESS, 5, L"AB\0---"s));
    EXPECT_EQ(Into(2, UCS2ToEASCII, text, 3), Converted(qel::SUCCESS, 2, L"A\0-"s));
    EXPECT_EQ(Into(2, WCharToEASCII, L"ABC", 4), Converted(qel::SUCCESS, 2, L"A\0-"s));
    char out[] = "-";
    unsigned long size = 1;
    EXPECT_EQ(UCS2ToASCIIWithSystemLocale(text, 2, out, size), qel::SUCCESS);
    EXPECT_EQ(size, 2);
    EXPECT_STREQ(out, "-") << "the capacity is too small";
}

TEST_F(TextConverterTest, WCharToUCS2ConvertsUnitForUnit) {
    Ucs2String units(2, '-');
    unsigned long size = 3;
    EXPECT_EQ(WCharToUCS2(L"\xFFFF", units.data(), size), qel::ERROR_SIZE);
    EXPECT_EQ(size, 4);
    EXPECT_EQ(WCharToUCS2(L"\x10416", units.data(), size), noTranslation);
    EXPECT_EQ(WCharToUCS2(L"\xE0041", units.data(), size), noTranslation) << "glibc skips tags";
    EXPECT_EQ(WCharToUCS2(L"\xFFFF", units.data(), size), qel::SUCCESS);
    EXPECT_EQ(units, (Ucs2String{0xFFFF, 0}));
}

TEST_F(TextConverterTest, ConvertsBuffers) {
    using Row = std::tuple<int, Buffer, unsigned long, std::string>;
    for (const auto& [direction, src, result, bytes] :
         {Row{dirEASCIIToUCS2, Buffer("\xC0", 1), qel::SUCCESS, "\x10\4\0\0"s},
          Row{dirUCS2ToEASCII, Buffer("\x10\4", 2), qel::SUCCESS, "\xC0\0"s},
          Row{dirEASCIIToUCS2, Buffer("A", 0), qel::SUCCESS, "\0\0"s},
          Row{dirEASCIIToUCS2, Buffer(), qel::SUCCESS, ""},
          Row{dirEASCIIToUCS2, Buffer("", tooMuch), qel::ERROR_MEM, "kept"},
          Row{2, Buffer(), qel::ERROR_INTERNAL, "kept"}}) {
        BufferDynamic out(View("kept"));
        EXPECT_EQ(Convert(EDirection{direction}, src, out, nullptr), result) << bytes;
        EXPECT_EQ(Bytes(out), bytes);
    }
}

TEST_F(TextConverterTest, TablesAgreeWithIconv) {
    // Every code but 0x98, twice. Texts of 256 codes and more are widened in groups of four.
    const std::string once = BytesFromTo(0x99, 0xFF) + BytesFromTo(1, 0x97), codes = once + once;
    for (const std::size_t size : {255u, 256u, 257u, 258u, 259u, 508u}) {
        std::string text = codes.substr(0, size), narrow;
        std::wstring chart, wide;
        Ucs2String units;
        EXPECT_EQ(ASCIIToWCharWithSystemLocale(text.c_str(), chart), qel::SUCCESS);
        EXPECT_EQ(WCharToASCIIWithSystemLocale(chart.c_str()), text);
        EASCIIToWChar(text.c_str(), wide, ciLWin1251);
        EXPECT_EQ(wide, chart);
        EASCIIToUCS2(text.c_str(), units, ciLWin1251);
        EXPECT_EQ(std::wstring(units.begin(), units.end()), chart);
        WCharToEASCII(chart.c_str(), narrow, ciLWin1251);
        EXPECT_EQ(narrow, text);
        UCS2ToEASCII(units.c_str(), narrow, ciLWin1251);
        EXPECT_EQ(narrow, text);
    }
}

TEST_F(TextConverterTest, ConvertsUTF8BothWays) {
    const std::string bytes = "\x7F\xD0\x96\xEF\xBF\xBF\xF0\x9F\x98\x80";
    std::wstring wide;
    BufferDynamic utf8;
    EXPECT_EQ(UTF8ToWChar(bytes.data(), bytes.size(), wide), qel::SUCCESS);
    EXPECT_EQ(wide, L"\x7F\x416\xFFFF\x1F600");
    EXPECT_EQ(WCharToUTF8(wide.c_str(), utf8), qel::SUCCESS);
    EXPECT_EQ(Bytes(utf8), bytes);
    EXPECT_EQ(WCharToUTF8(L"\xD800", utf8), noTranslation);
}

TEST_F(TextConverterTest, DropsTrailingZerosExceptTheFirstCharacter) {
    const unsigned short units[] = {'A', 0, 'B', 0, 0};
    std::wstring wide;
    EXPECT_EQ(UCS2ToWChar(units, 10, wide), qel::SUCCESS);
    EXPECT_EQ(wide, L"A\0B"s);
    EXPECT_EQ(UTF8ToWChar("\0\0", 2, wide), qel::SUCCESS);
    EXPECT_EQ(wide, L"\0"s);
}

TEST_F(TextConverterTest, FailedConversionsLeaveTheOutputUnchanged) {
    std::wstring wide = L"kept";
    for (const std::string utf8 : {"\xD0", "\xC0\x80", "\xED\xA0\x80", "A\xFF"})
        EXPECT_EQ(UTF8ToWChar(utf8.data(), utf8.size(), wide), noTranslation) << utf8;
    const unsigned short surrogates[] = {0xD800, 0xDC00};
    EXPECT_EQ(UCS2ToWChar(surrogates, 4, wide), noTranslation);
    EXPECT_EQ(UCS2ToWChar(surrogates, 2 * tooMuch, wide), qel::ERROR_MEM);
    EXPECT_EQ(UTF8ToWChar("", ~0ul, wide), qel::ERROR_MEM);
    EXPECT_EQ(ASCIIToWCharWithSystemLocale("\x98", wide), noTranslation);
    EXPECT_EQ(wide, L"kept");
    std::string narrow = "kept";
    EXPECT_EQ(UTF8ToSystemLocale("A", 1, narrow), qel::ERROR_NOT_IMPLEMENTED);
    EXPECT_EQ(WCharToASCIIWithSystemLocale(L"A\x4E2D", narrow), noTranslation);
    EXPECT_EQ(narrow, "kept");
}

TEST_F(TextConverterTest, TrimsOnlySpaces) {
    EXPECT_EQ(Trim("  \ta b\n  "), "\ta b\n");
    EXPECT_EQ(Trim("  "), "");
}

}  // namespace
