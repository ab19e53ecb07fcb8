// A code page of one's own: Latin-1, in which each code is the character of the same number.
#include <array>
#include <cstdio>
#include <numeric>
#include <string>

#include "core/exception.h"
#include "core/text_converter.h"

using qel::TextConverter;

int main() {
    std::array<wchar_t, 256> latin1;
    std::iota(latin1.begin(), latin1.end(), L'\0');
    // The table is not copied: it has to outlive the locale, here because it stands before it.
    const TextConverter::LocaleInfo locale(latin1.data());

    std::wstring wide;
    qel::ThrowUnlessSuccess(TextConverter::EASCIIToWChar("Caf\xE9", wide, locale));
    std::printf("%zu characters, the last is 0x%04x\n", wide.size(),
                static_cast<unsigned>(wide.back()));
    std::printf("the code of 0x00e9: 0x%02x\n", locale.GetChar(L'\u00E9'));

    // Through a table, a character that the code page lacks is an exception, not a result code.
    try {
        std::string text;
        TextConverter::WCharToEASCII(L"\u0416", text, locale);
    } catch (const qel::Exception& failure) {
        std::printf("%s\n", failure.what());
    }
}
