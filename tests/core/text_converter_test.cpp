#include "core/text_converter.h"

#include <gtest/gtest.h>

#include <sstream>

#include "core/exception.h"
#include "core/result_codes.h"
#include "tests/support/buffers.h"
#include "tests/support/result_text.h"

namespace {

using namespace std::string_literals;
using qel::Buffer, qel::BufferDynamic, qel::Exception, qel::ThrowUnlessSuccess;
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
    std::ostringstream answer;
    answer << ResultText<Exception>(
        [&] { ThrowUnlessSuccess(convert(src, length, out, size, info)); });
    answer << ' ' << size << ':' << std::hex;
    for (unsigned long i = 0; i < room / sizeof(To); ++i)
        answer << ' ' << +static_cast<std::make_unsigned_t<To>>(out[i]);
    return answer.str();
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
    const unsigned short units[] = {0x4E2D, 0x7F, 0}, ended[] = {0x41, 0, 0x100};
    wchar_t table[256] = L"";
    table[0x80] = L'\x4E2D';
    const Info own(table);
    alignas(2) static constexpr char unaligned[] = "-\x10\x04";
    for (const auto& [answer, expected] :
         {std::pair{Answer(C::EASCIIToWChar, "\xC0\x41", 0, 12), " 12: 410 41 0"},
          {Answer(C::EASCIIToWChar, "\xC0\x41", 0, 0), " 12:"},
          {Answer(C::EASCIIToWChar, "\xC0\x41", 0, 11), "ERROR_SIZE 12: aaaaaaaa aaaaaaaa"},
          {Answer(C::EASCIIToWChar, "A", tooMuch - 1, 4), "ERROR_MEM 4: aaaaaaaa"},
          {Answer<char>(C::EASCIIToWChar, nullptr, 1, 4), " 0: aaaaaaaa"},
          {Answer(C::EASCIIToUCS2, "\xE0\0\x98", 3, 8), " 8: 430 0 98 0"},
          {Answer(C::EASCIIToUCS2, "\x80\x7F", 0, 6, own), " 6: 4e2d 7f 0"},
          {Answer(C::UCS2ToEASCII, units, 0, 3, own), "NO_UNICODE_TRANSLATION 3: 80 aa aa"},
          {Answer(C::WCharToEASCII, L"abc\x100", 0, 5), "NO_UNICODE_TRANSLATION 5: 61 62 63 aa aa"},
          {Answer(C::UCS2ToEASCII, ended, 1, 1), " 1: 0"},
          {Answer(C::UCS2ToEASCII, ended, 6, 4), " 4: 41 0 aa aa"},
          {Answer(C::WCharToEASCII, L"\x410\x451", 7, 2), " 2: c0 0"},
          {Answer(FromUCS2, unaligned + 1, 2, 2), " 2: c0 0"},
          {Answer(FromUCS2, unaligned + 1, 2, 1), " 2: aa"},
          {Answer(ByIconv, L"A\xFFFF", 0, 6), " 6: 41 ffff 0"},
          {Answer(ByIconv, L"\x416", 0, 3), "ERROR_SIZE 4: aaaa"},
          {Answer(ByIconv, L"\x416", 0, 0), " 4:"},
          {Answer(ByIconv, L"\x10416", 0, 4), "NO_UNICODE_TRANSLATION 4: aaaa aaaa"},
          // A tag, which glibc would leave out.
          {Answer(ByIconv, L"\xE0041", 0, 4), "NO_UNICODE_TRANSLATION 4: aaaa aaaa"}}) {
        EXPECT_EQ(answer, expected);
    }
    table[0x80] = L'-';
    EXPECT_EQ(own.GetChar(L'\x4E2D'), 0x80) << "the way back was built again";
}

TEST(TextConverter, FillsBuffers) {
    using Case = std::tuple<int, Buffer, std::string>;
    for (const auto& [dir, src, answer] :
         {Case{0, Buffer("\xC0", 1), "\x10\4\0\0"s}, Case{1, Buffer("\x10\4", 2), "\xC0\0"s},
          Case{0, Buffer("A", 0), "\0\0"s}, Case{1, Buffer("A", 0), "\0"s}, Case{0, Buffer(), ""s},
          Case{2, Buffer(), "ERROR_INTERNALkept"s}, Case{0, Buffer("", ~0ul), "ERROR_MEMkept"s},
          Case{0, Buffer("", tooMuch), "ERROR_MEMkept"s}}) {
        BufferDynamic out(View("kept"));
        const auto result =
            Converter::Convert(static_cast<Converter::EDirection>(dir), src, out, nullptr);
        EXPECT_EQ(result == 0 ? Bytes(out) : Exception(result).what() + Bytes(out), answer);
    }
}

TEST(TextConverter, KnowsTheCodePageThatTheSystemKnows) {
    // Twice, as a text of this length is converted in another way than a short one.
    const std::string half = BytesFromTo(1, 0x97) + BytesFromTo(0x99, 0xFF), codes = half + half;
    std::string narrow = "-", narrowByUnits;
    std::wstring chart = L"-", wide = L"-";
    EXPECT_EQ(Converter::ASCIIToWCharWithSystemLocale(codes.c_str(), chart), qel::SUCCESS);
    EXPECT_EQ(Converter::WCharToASCIIWithSystemLocale(chart.c_str()), codes);
    UCS2 units(chart.begin(), chart.end());
    EXPECT_EQ(Converter::WCharToEASCII(chart.c_str(), narrow, win) |
                  Converter::UCS2ToEASCII(units.c_str(), narrowByUnits, win) |
                  Converter::EASCIIToWChar(codes.c_str(), wide, win) |
                  Converter::EASCIIToUCS2(codes.c_str(), units, win),
              qel::SUCCESS);
    EXPECT_EQ(narrow + narrowByUnits, codes + codes);
    EXPECT_EQ(wide + std::wstring(units.begin(), units.end()), chart + chart);
    // A text ends at its zero also where that is far behind its start and in front of its length.
    const std::wstring ended = chart.substr(0, 100) + L'\0' + chart;
    unsigned long size = narrow.size();
    EXPECT_EQ(Converter::WCharToEASCII(ended.data(), 4 * 300, narrow.data(), size, win),
              qel::SUCCESS);
    EXPECT_EQ(std::string(narrow.c_str()), codes.substr(0, 100));
    for (const wchar_t* bad : {L"\x100", L"\x10410", L"\x7FFFFFFF", L"\xFFFFFFFF", L"\xE0041"}) {
        EXPECT_EQ(ResultText<Exception>([&] { Converter::WCharToEASCII(bad, narrow, win); }) +
                      ResultText<Exception>([&] { Converter::WCharToASCIIWithSystemLocale(bad); }),
                  "NO_UNICODE_TRANSLATIONNO_UNICODE_TRANSLATION");
    }
    Info::CharPair low{9, INT32_MIN}, high{1, INT32_MAX};
    EXPECT_TRUE(Info::compare(&low, &high) < 0 && Info::compare(&high, &low) > 0);
}

TEST(TextConverter, ConvertsUTF8BothWays) {
    using Row = std::pair<std::string, std::wstring>;
    std::wstring wide;
    BufferDynamic utf8;
    for (const auto& [bytes, text] : {Row{"", L""}, Row{"\x7F\xD0\x96\xEF\xBF\xBF\xF0\x9F\x98\x80",
                                                        L"\x7F\x416\xFFFF\x1F600"}}) {
        EXPECT_EQ(Converter::UTF8ToWChar(bytes.data(), bytes.size(), wide), qel::SUCCESS);
        EXPECT_EQ(Converter::WCharToUTF8(wide.c_str(), utf8), qel::SUCCESS);
        EXPECT_TRUE(wide == text && Bytes(utf8) == bytes) << bytes;
    }
    // Zeros at the end go, but the first character stays.
    for (const auto& [bytes, text] : {Row{"\0\0"s, L"\0"s}, Row{"A\0B\0\0"s, L"A\0B"s}}) {
        const UCS2 units(bytes.begin(), bytes.end());
        EXPECT_EQ(Converter::UTF8ToWChar(bytes.data(), bytes.size(), wide), qel::SUCCESS);
        EXPECT_EQ(wide, text);
        EXPECT_EQ(Converter::UCS2ToWChar(units.data(), 2 * units.size(), wide), qel::SUCCESS);
        EXPECT_EQ(wide, text);
    }
}

TEST(TextConverter, RefusesBadText) {
    constexpr unsigned long bad = qel::NO_UNICODE_TRANSLATION;
    FailingBuffer refusing;
    refusing.limit = 9;
    std::wstring wide = L"kept";
    std::string text = "kept";
    for (const std::string utf8 : {"\xD0", "\xC0\x80", "\xED\xA0\x80", "A\xFF", "\xF0\x80\x80\xAF"})
        EXPECT_EQ(Converter::UTF8ToWChar(utf8.data(), utf8.size(), wide), bad) << utf8.size();
    const unsigned short units[] = {0x41, 0xD800, 0xDC00};
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
    EXPECT_EQ(Converter::Trim("  \ta b\n  ") + Converter::Trim("  "), "\ta b\n");
}

}  // namespace
