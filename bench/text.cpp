// Conversions of text of 4 KB beside iconv.

#include <random>

#include "bench/benchmarks.h"
#include "bench/compare.h"
#include "core/text_converter.h"

namespace {

using qel::TextConverter;
using Ucs2 = std::basic_string<unsigned short>;

template <class Unit>
std::string_view BytesOf(const std::basic_string<Unit>& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(Unit)};
}

template <class From, class To>
using Convert = unsigned long (*)(const From*, unsigned long, To*, unsigned long&,
                                  const TextConverter::LocaleInfo&);

/// Both ways into memory that is there already, with iconv's descriptor open.
template <class From, class To>
void CompareTable(const char* name, double goal, Convert<From, To> convert,
                  const std::basic_string<From>& text, const Iconv& iconv) {
    std::basic_string<To> room(text.size() + 1, 0);
    std::string roomOfIconv(sizeof(To) * room.size(), '\0');
    const auto convertByTable = [&] {
        unsigned long size = sizeof(To) * room.size();
        convert(text.data(), sizeof(From) * text.size(), room.data(), size,
                *TextConverter::cpLWin1251);
        return BytesOf(room).substr(0, size - sizeof(To));
    };
    Compare("Text through the table", name, "iconv", goal, convertByTable,
            [&] { return iconv.Convert(BytesOf(text), roomOfIconv); });
}

void CompareTables(const std::string& narrow, const std::wstring& wide, const Ucs2& ucs2) {
    // The processor foresees the branches within iconv the better, the more a text repeats itself.
    std::mt19937 random(1);
    std::wstring letters(wide.size(), L'\0');
    for (wchar_t& letter : letters) letter = static_cast<wchar_t>(L'\x410' + random() % 64);

    const Iconv toWide("WCHAR_T", "WINDOWS-1251"), toUcs2("UCS-2LE", "WINDOWS-1251");
    const Iconv fromWide("WINDOWS-1251", "WCHAR_T"), fromUcs2("WINDOWS-1251", "UCS-2LE");
    CompareTable<char, wchar_t>("Windows-1251 to wide", 0.5, TextConverter::EASCIIToWChar, narrow,
                                toWide);
    CompareTable<char, unsigned short>("Windows-1251 to UCS-2", 0.5, TextConverter::EASCIIToUCS2,
                                       narrow, toUcs2);
    CompareTable<wchar_t, char>("wide to Windows-1251", 1.0, TextConverter::WCharToEASCII, wide,
                                fromWide);
    CompareTable<wchar_t, char>("the same, letters at random", 0, TextConverter::WCharToEASCII,
                                letters, fromWide);
    CompareTable<unsigned short, char>("UCS-2 to Windows-1251", 1.0, TextConverter::UCS2ToEASCII,
                                       ucs2, fromUcs2);
}

/// What a program writes that calls iconv itself: a descriptor and a string for each text.
template <class String>
String ConvertByHand(const char* to, const char* from, std::string_view text, std::size_t room) {
    String out(room, 0);
    const ::iconv_t descriptor = ::iconv_open(to, from);
    char *in = const_cast<char*>(text.data()), *end = reinterpret_cast<char*>(out.data());
    std::size_t inLeft = text.size(), outLeft = room * sizeof out[0];
    if (::iconv(descriptor, &in, &inLeft, &end, &outLeft) != 0) std::abort();
    ::iconv_close(descriptor);
    out.resize(room - outLeft / sizeof out[0]);
    return out;
}

template <class String, class Ours>
void CompareIconv(const char* name, const char* to, const char* from, std::string_view text,
                  std::size_t room, const Ours& ours) {
    Compare("Text through iconv", name, "iconv by hand", 1.1, ours,
            [&] { return ConvertByHand<String>(to, from, text, room); });
}

void CompareToWide(const std::string& utf8, const Ucs2& ucs2, const std::string& narrow) {
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
    const auto fromNarrow = [&] {
        std::wstring out;
        TextConverter::ASCIIToWCharWithSystemLocale(narrow.c_str(), out);
        return out;
    };
    CompareIconv<std::wstring>("UTF-8 to wide", "WCHAR_T", "UTF-8", utf8, utf8.size(), fromUtf8);
    CompareIconv<std::wstring>("UCS-2 to wide", "WCHAR_T", "UCS-2LE", BytesOf(ucs2), ucs2.size(),
                               fromUcs2);
    CompareIconv<std::wstring>("Windows-1251 to wide", "WCHAR_T", "WINDOWS-1251", narrow,
                               narrow.size(), fromNarrow);
}

void CompareFromWide(const std::wstring& wide) {
    qel::BufferDynamic block;
    const auto toUtf8 = [&] {
        TextConverter::WCharToUTF8(wide.c_str(), block);
        return AsStringView(block);
    };
    const auto toUcs2 = [&] {
        Ucs2 out(wide.size() + 1, 0);
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
    CompareIconv<Ucs2>("wide to UCS-2", "UCS-2LE", "WCHAR_T", bytes, wide.size(), toUcs2);
    CompareIconv<std::string>("wide to Windows-1251", "WINDOWS-1251", "WCHAR_T", bytes, wide.size(),
                              toNarrow);
}

}  // namespace

std::string RussianText(std::size_t size) {
    // "reader", "card", "list", "file", "entry", "and", "new", "in", "not", "found", "system".
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
    std::mt19937 random(1);
    std::string text;
    while (text.size() < size) text.append(words[random() % std::size(words)]).append(" ");
    return text;
}

void CompareText() {
    const std::string narrow = RussianText(4096);
    std::wstring wide;
    Ucs2 ucs2;
    qel::BufferDynamic utf8;
    TextConverter::ASCIIToWCharWithSystemLocale(narrow.c_str(), wide);
    TextConverter::EASCIIToUCS2(narrow.c_str(), ucs2, *TextConverter::cpLWin1251);
    TextConverter::WCharToUTF8(wide.c_str(), utf8);
    CompareTables(narrow, wide, ucs2);
    CompareToWide(std::string(AsStringView(utf8)), ucs2, narrow);
    CompareFromWide(wide);
}
