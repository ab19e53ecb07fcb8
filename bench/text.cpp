// Conversions of text compared with iconv.

#include <algorithm>
#include <random>
#include <vector>

#include "app/byte_search.h"
#include "bench/benchmarks.h"
#include "bench/compare.h"
#include "core/text_converter.h"

namespace {

using qel::TextConverter;
using Ucs2String = std::basic_string<unsigned short>;

template <class Unit>
std::string_view BytesOf(const std::basic_string<Unit>& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(Unit)};
}

std::wstring ToWide(const std::string& text) {
    std::wstring wide;
    TextConverter::ASCIIToWCharWithSystemLocale(text.c_str(), wide);
    return wide;
}

Ucs2String ToUcs2(const std::string& text) {
    Ucs2String ucs2;
    TextConverter::EASCIIToUCS2(text.c_str(), ucs2, *TextConverter::cpLWin1251);
    return ucs2;
}

using RandomText = std::string (*)(std::size_t size, unsigned seed);

/// Returns size bytes of the words, chosen at random.
template <class Words>
std::string ChooseWords(const Words& words, std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string text;
    while (text.size() < size) text.append(words[random() % std::size(words)]).append(" ");
    text.resize(size);
    return text;
}

std::string EnglishText(std::size_t size, unsigned seed) {
    static constexpr const char* words[] = {"reader", "card", "list", "file",   "Entry",  "and",
                                            "new",    "in",   "not",  "found,", "system."};
    return ChooseWords(words, size, seed);
}

template <class From, class To>
using Convert = unsigned long (*)(const From*, unsigned long, To*, unsigned long&,
                                  const TextConverter::LocaleInfo&);

constexpr const char* table = "Text through the table";

/// Converts into memory that is allocated already, with iconv's descriptor open.
template <class From, class To>
Figures MeasureTable(const std::string& name, Convert<From, To> convert,
                     const std::basic_string<From>& text, const Iconv& iconv) {
    std::basic_string<To> out(text.size() + 1, 0);
    std::string outOfIconv(sizeof(To) * out.size(), '\0');
    const auto convertByTable = [&] {
        unsigned long size = sizeof(To) * out.size();
        convert(text.data(), sizeof(From) * text.size(), out.data(), size,
                *TextConverter::cpLWin1251);
        return BytesOf(out).substr(0, size - sizeof(To));
    };
    return Measure(name, "iconv", convertByTable,
                   [&] { return iconv.Convert(BytesOf(text), outOfIconv); });
}

/// Measures a long text, and short ones that are converted again and again: on repeated text
/// iconv's branches are predicted.
template <class Unit>
void CompareNarrowingFrom(const std::string& name, double limit, Convert<Unit, char> convert,
                          RandomText randomText,
                          std::basic_string<Unit> (*encode)(const std::string&),
                          const Iconv& iconv) {
    const auto measure = [&](std::size_t size, unsigned seed) {
        return MeasureTable<Unit, char>(name, convert, encode(randomText(size, seed)), iconv);
    };
    std::vector<Figures> repeated;
    for (unsigned seed = 1; seed <= 8; ++seed) repeated.push_back(measure(4096, seed));
    const auto [lowest, highest] =
        std::minmax_element(repeated.begin(), repeated.end(),
                            [](Figures a, Figures b) { return a.Ratio() < b.Ratio(); });
    PrintRow(table, name + ", 256 KB", "iconv", "ns", measure(256 * 1024, 0), limit);
    PrintRow(table, name + ", 4 KB repeated, lowest", "iconv", "ns", *lowest, 0);
    PrintRow(table, name + ", 4 KB repeated, highest", "iconv", "ns", *highest, 0);
}

void CompareWidening() {
    const std::string text = RussianText(4096, 1);
    const Iconv toWide("WCHAR_T", "WINDOWS-1251"), toUcs2("UCS-2LE", "WINDOWS-1251");
    const auto wide =
        MeasureTable<char, wchar_t>("wide", TextConverter::EASCIIToWChar, text, toWide);
    const auto ucs2 =
        MeasureTable<char, unsigned short>("UCS-2", TextConverter::EASCIIToUCS2, text, toUcs2);
    PrintRow(table, "Windows-1251 to wide, 4 KB", "iconv", "ns", wide, 0.5);
    PrintRow(table, "Windows-1251 to UCS-2, 4 KB", "iconv", "ns", ucs2, 0.5);
}

void CompareNarrowing(const std::string& language, double limit, RandomText randomText) {
    const Iconv fromWide("WINDOWS-1251", "WCHAR_T"), fromUcs2("WINDOWS-1251", "UCS-2LE");
    CompareNarrowingFrom<wchar_t>("wide to Windows-1251, " + language, limit,
                                  TextConverter::WCharToEASCII, randomText, ToWide, fromWide);
    CompareNarrowingFrom<unsigned short>("UCS-2 to Windows-1251, " + language, limit,
                                         TextConverter::UCS2ToEASCII, randomText, ToUcs2, fromUcs2);
}

/// What a program writes that calls iconv itself: a descriptor and a string for each text.
template <class String>
String ConvertByHand(const char* to, const char* from, std::string_view text,
                     std::size_t capacity) {
    String out(capacity, 0);
    const ::iconv_t descriptor = ::iconv_open(to, from);
    char *in = const_cast<char*>(text.data()), *end = reinterpret_cast<char*>(out.data());
    std::size_t inLeft = text.size(), outLeft = capacity * sizeof out[0];
    if (::iconv(descriptor, &in, &inLeft, &end, &outLeft) != 0) std::abort();
    ::iconv_close(descriptor);
    out.resize(capacity - outLeft / sizeof out[0]);
    return out;
}

template <class String, class Ours>
void CompareIconv(const char* name, const char* to, const char* from, std::string_view text,
                  std::size_t capacity, const Ours& ours) {
    Compare("Text through iconv", name, "iconv by hand", 1.1, ours,
            [&] { return ConvertByHand<String>(to, from, text, capacity); });
}

void CompareToWide(const std::string& utf8, const Ucs2String& ucs2, const std::string& narrow) {
    const auto fromUtf8 = [&] {
        std::wstring out;
        TextConverter::UTF8ToWChar(utf8.data(), utf8.size(), out);
        return out;
    };
    const auto fromUcs2 = [&] {
        std::wstring out;
        TextConverter::UCS2ToWChar(ucs2.data(), 2 * ucs2.size(), out);
        return out;
    };
    CompareIconv<std::wstring>("UTF-8 to wide", "WCHAR_T", "UTF-8", utf8, utf8.size(), fromUtf8);
    CompareIconv<std::wstring>("UCS-2 to wide", "WCHAR_T", "UCS-2LE", BytesOf(ucs2), ucs2.size(),
                               fromUcs2);
    CompareIconv<std::wstring>("Windows-1251 to wide", "WCHAR_T", "WINDOWS-1251", narrow,
                               narrow.size(), [&] { return ToWide(narrow); });
}

void CompareFromWide(const std::wstring& wide) {
    qel::BufferDynamic block;
    const auto toUtf8 = [&] {
        TextConverter::WCharToUTF8(wide.c_str(), block);
        return AsStringView(block);
    };
    const auto toUcs2 = [&] {
        Ucs2String out(wide.size() + 1, 0);
        unsigned long size = 2 * out.size();
        TextConverter::WCharToUCS2(wide.c_str(), out.data(), size);
        out.resize(size / 2 - 1);
        return out;
    };
    const auto toNarrow = [&] {
        std::string out;
        TextConverter::WCharToASCIIWithSystemLocale(wide.c_str(), out);
        return out;
    };
    const std::string_view bytes = BytesOf(wide);
    CompareIconv<std::string>("wide to UTF-8", "UTF-8", "WCHAR_T", bytes, 4 * wide.size(), toUtf8);
    CompareIconv<Ucs2String>("wide to UCS-2", "UCS-2LE", "WCHAR_T", bytes, wide.size(), toUcs2);
    CompareIconv<std::string>("wide to Windows-1251", "WINDOWS-1251", "WCHAR_T", bytes, wide.size(),
                              toNarrow);
}

}  // namespace

std::string RussianText(std::size_t size, unsigned seed) {
    // "reader", "card", "list", "file", "Entry", "and", "new", "in", "not", "found,", "system.".
    static constexpr const char* words[] = {"\xF1\xF7\xE8\xF2\xFB\xE2\xE0\xF2\xE5\xEB\xFC",
                                            "\xEA\xE0\xF0\xF2\xE0",
                                            "\xF1\xEF\xE8\xF1\xEE\xEA",
                                            "\xF4\xE0\xE9\xEB",
                                            "\xC7\xE0\xEF\xE8\xF1\xFC",
                                            "\xE8",
                                            "\xED\xEE\xE2\xFB\xE9",
                                            "\xE2",
                                            "\xED\xE5",
                                            "\xED\xE0\xE9\xE4\xE5\xED,",
                                            "\xF1\xE8\xF1\xF2\xE5\xEC\xE0."};
    return ChooseWords(words, size, seed);
}

void CompareText() {
    CompareWidening();
    CompareNarrowing("ASCII", 0, EnglishText);
    CompareNarrowing("Russian", 2.5, RussianText);

    const std::string narrow = RussianText(4096, 1);
    const std::wstring wide = ToWide(narrow);
    qel::BufferDynamic utf8;
    TextConverter::WCharToUTF8(wide.c_str(), utf8);
    CompareToWide(std::string(AsStringView(utf8)), ToUcs2(narrow), narrow);
    CompareFromWide(wide);
}
