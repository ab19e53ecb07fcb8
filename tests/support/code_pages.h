/// The characters of the codes 0x80 to 0xFF, sixteen a row, after the published charts.
/// That of Windows-1251 leaves 0x98 undefined.
#pragma once

#include <string_view>

inline constexpr std::wstring_view windows1251 =
    L"ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏ"
    L"ђ‘’“”•–—\x98"
    L"™љ›њќћџ"
    L"\u00A0ЎўЈ¤Ґ¦§Ё©Є«¬\u00AD®Ї"
    L"°±Ііґµ¶·ё№є»јЅѕї"
    L"АБВГДЕЖЗИЙКЛМНОП"
    L"РСТУФХЦЧШЩЪЫЬЭЮЯ"
    L"абвгдежзийклмноп"
    L"рстуфхцчшщъыьэюя";

inline constexpr std::wstring_view dos866 =
    L"АБВГДЕЖЗИЙКЛМНОП"
    L"РСТУФХЦЧШЩЪЫЬЭЮЯ"
    L"абвгдежзийклмноп"
    L"░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
    L"└┴┬├─┼╞╟╚╔╩╦╠═╬╧"
    L"╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
    L"рстуфхцчшщъыьэюя"
    L"ЁёЄєЇїЎў°∙·√№¤■\u00A0";
