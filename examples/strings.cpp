// Helpers for text: a list of vendor ids, a size with a suffix, and what may go to a terminal.
#include <cstdio>
#include <string>
#include <vector>

#include "utility/printable.h"
#include "utility/string.h"

int main() {
    // Each character is a separator, empty pieces are left out, and tokens is added to.
    std::vector<std::string> vendors = {"0x0001"};
    const unsigned long count = mox::String::Split("0x08e6:0x0100, 0x0bda", ":, ", vendors);
    std::printf("%lu found, %zu in all, the last is %s\n", count, vendors.size(),
                vendors.back().c_str());

    // The suffix is taken off the text itself; what is left is not looked at.
    std::string limit = "64kb";
    const unsigned long factor = mox::String::ExtractMultiplier(limit);
    std::printf("%s times %lu\n", limit.c_str(), factor);

    // Only ASCII counts as printable, and empty text does not.
    for (const std::string name : {"Reader #2", "Reader\u00B2", ""}) {
        std::printf("\"%s\": %d\n", name.c_str(), mox::IsStringPrintable(name));
    }
    const unsigned char answer[] = {0x3B, 0x6D, 0x00};
    std::printf("answer: %d\n", mox::IsBufferPrintable(qel::Buffer(answer, sizeof answer)));
}
