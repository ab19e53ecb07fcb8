// The substring search of the patch, compared with the standard ones in a property list of 10 MB.

#include <cstring>

#include "app/byte_search.h"
#include "bench/benchmarks.h"
#include "bench/compare.h"

namespace {

std::string PropertyListOf(std::size_t size) {
    std::string text = "<plist>\n<dict>\n\t<key>ifdVendorID</key>\n\t<array>\n";
    char line[64];
    for (unsigned i = 0; text.size() < size / 3; ++i) {
        std::snprintf(line, sizeof line, "\t\t<string>0x%04X</string>\n", i * 2654435761u >> 16);
        text += line;
    }
    text += "\t</array>\n\t<key>ifdFriendlyName</key>\n\t<array>\n";
    for (unsigned i = 0; text.size() < size; ++i) {
        std::snprintf(line, sizeof line, "\t\t<string>Maker %u Smart Card Reader %02u</string>\n",
                      i * 2654435761u >> 26, i % 100);
        text += line;
    }
    return text + "\t</array>\n</dict>\n</plist>\n";
}

}  // namespace

void CompareSearch() {
    constexpr const char* table = "Byte search";
    const std::string text = PropertyListOf(10'000'000);
    for (const auto& [name, wanted] :
         {std::pair("an entry that is missing", "<string>Another Reader</string>"),
          std::pair("a number that is missing", "<string>0x10000</string>"),
          std::pair("a name after 3.3 MB", "ifdFriendlyName"),
          std::pair("a name after 20 bytes", "ifdVendorID"),
          std::pair("a tag after 60 bytes", "<string>")}) {
        const auto find = [&, &wanted = wanted] { return FindBytes(text, wanted, 0); };
        const auto stringFind = [&, &wanted = wanted] { return text.find(wanted); };
        const auto memmem = [&, &wanted = wanted] {
            const auto* const found = static_cast<const char*>(
                ::memmem(text.data(), text.size(), wanted, std::strlen(wanted)));
            return found == nullptr ? std::string::npos
                                    : static_cast<std::size_t>(found - text.data());
        };
        Compare(table, name, "`std::string::find`", 0, find, stringFind);
        Compare(table, name, "`memmem`", 0, find, memmem);
    }
}
