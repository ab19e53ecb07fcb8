// Text from one form to another: the label of a card, from UTF-8 to Windows-1251 and UCS-2.
#include <cstdio>
#include <string>

#include "core/exception.h"
#include "core/text_converter.h"

using qel::TextConverter;

int main() {
    const std::string utf8 = "\xD0\x9A\xD0\xB0\xD1\x80\xD1\x82\xD0\xB0";  // five Cyrillic letters
    std::wstring wide;
    qel::ThrowUnlessSuccess(TextConverter::UTF8ToWChar(utf8.data(), utf8.size(), wide));
    const std::string ansi = TextConverter::WCharToASCIIWithSystemLocale(wide.c_str());
    std::printf("UTF-8: %zu bytes, wide: %zu characters, Windows-1251: %zu bytes\n", utf8.size(),
                wide.size(), ansi.size());

    // Into memory of your own: a null asks for the size, in bytes and with the terminator; the
    // second call is told the room by the same variable.
    unsigned long size = 0;
    qel::ThrowUnlessSuccess(TextConverter::WCharToUCS2(wide.c_str(), nullptr, size));
    std::basic_string<unsigned short> units(size / sizeof(unsigned short), 0);
    qel::ThrowUnlessSuccess(TextConverter::WCharToUCS2(wide.c_str(), units.data(), size));
    std::printf("UCS-2: %lu bytes, the first unit is 0x%04x\n", size, units[0]);

    // No character is replaced or left out: where the other form lacks one, the conversion fails
    // and the result stays as it was.
    std::string kept = "as it was";
    const unsigned long result = TextConverter::WCharToASCIIWithSystemLocale(L"\u4E2D", kept);
    std::printf("%s, %s\n", qel::Exception::GetResultString(result).c_str(), kept.c_str());
}
