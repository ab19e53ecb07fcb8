#include <string.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "core/buffer.h"
#include "core/buffer_dynamic.h"
#include "core/c_library.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"

namespace qel {

namespace {

constexpr char digits[] = "0123456789ABCDEFabcdef";

/// The value of each hexadecimal digit; invalid, above every byte, for other characters.
constexpr std::uint16_t invalid = 0x100;
constexpr auto digitValues = [] {
    std::array<std::uint16_t, 256> values{};
    values.fill(invalid);
    for (std::uint16_t i = 0; i < sizeof digits - 1; ++i) {
        values[static_cast<unsigned char>(digits[i])] = i < 16 ? i : i - 6;
    }
    return values;
}();

/// The two digits of each byte.
constexpr auto digitPairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) pairs[i] = {digits[i >> 4], digits[i & 15]};
    return pairs;
}();

bool IsWhiteSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// Decodes the first two characters of text, which is not empty; invalid or more on failure.
unsigned DecodeByte(const char* text) {
    const unsigned high = digitValues[static_cast<unsigned char>(text[0])];
    return high << 4 | digitValues[static_cast<unsigned char>(text[1])];
}

/// Writes two digits for each of count bytes and returns the end of the output.
char* WriteDigits(const unsigned char* bytes, unsigned long count, char* out) {
    for (unsigned long i = 0; i < count; ++i, out += 2) ::memcpy(out, &digitPairs[bytes[i]], 2);
    return out;
}

}  // namespace

unsigned long Buffer::FromHex(const char* text, unsigned long& size, void* out) {
    if (qel::strlen(text) < 2) return ERROR_DATA;
    const unsigned long capacity = out == nullptr ? maxSize : size;
    auto* const bytes = static_cast<unsigned char*>(out);
    unsigned long count = 0;
    while (*text != '\0') {
        const unsigned byte = DecodeByte(text);
        if (byte >= invalid) {
            if (!IsWhiteSpace(*text++)) return ERROR_DATA;
            continue;
        }
        if (count == capacity) return ERROR_DATA;
        if (bytes != nullptr) bytes[count] = static_cast<unsigned char>(byte);
        ++count;
        text += 2;
    }
    size = count;
    return SUCCESS;
}

unsigned long Buffer::FromHex(const char* text) {
    unsigned long count = 0;
    unsigned long result = FromHex(text, count, nullptr);
    if (result == SUCCESS && count != size) result = ERROR_SIZE;
    return result == SUCCESS ? FromHex(text, count, data) : result;
}

unsigned long BufferDynamic::FromHex(const char* text) {
    unsigned long count = 0;
    unsigned long result = FromHex(text, count, nullptr);
    if (result == SUCCESS && count != size) result = Alloc(count);
    return result == SUCCESS ? FromHex(text, count, data) : result;
}

std::string Buffer::ToHex(unsigned long groupSize, unsigned long groupsPerLine,
                          const char* lineSeparator) const {
    const unsigned long groups = groupSize == 0 ? 0 : size / groupSize;
    const unsigned long lines = groupsPerLine == 0 ? 0 : groups / groupsPerLine;
    const unsigned long separatorLength = qel::strlen(lineSeparator);
    std::string text = MakeString(SaturatingAdd(SaturatingAdd(SaturatingMultiply(2, size), groups),
                                                SaturatingMultiply(lines, separatorLength)));

    char* end = text.data();
    const auto* bytes = static_cast<const unsigned char*>(data);
    unsigned long lineEnd = groupsPerLine;
    for (unsigned long group = 1; group <= groups; ++group) {
        end = WriteDigits(bytes, groupSize, end);
        bytes += groupSize;
        *end++ = ' ';
        // A comparison, since a division per group would dominate the loop.
        if (group != lineEnd) continue;
        end = std::copy_n(lineSeparator, separatorLength, end);
        lineEnd += groupsPerLine;
    }
    WriteDigits(bytes, size - groups * groupSize, end);
    return text;
}

}  // namespace qel
