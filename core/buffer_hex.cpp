#include <algorithm>

#include "core/buffer.h"
#include "core/buffer_dynamic.h"
#include "core/c_library.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"

namespace qel {

namespace {

bool IsWhiteSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// 0 to 15, or -1 for a character that is no hexadecimal digit.
int DigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

unsigned long Buffer::FromHex(const char* text, unsigned long& size, void* out) {
    if (text[0] == '\0' || text[1] == '\0') return ERROR_DATA;
    auto* const bytes = static_cast<unsigned char*>(out);
    unsigned long count = 0;
    for (;; text += 2, ++count) {
        while (IsWhiteSpace(*text)) ++text;
        if (*text == '\0') break;
        if (out != nullptr && count == size) return ERROR_DATA;
        // An odd last digit stands before the terminating NUL, which is no digit.
        const int high = DigitValue(text[0]), low = DigitValue(text[1]);
        if (high < 0 || low < 0) return ERROR_DATA;
        if (out != nullptr) bytes[count] = static_cast<unsigned char>(high * 16 + low);
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
    static constexpr char digits[] = "0123456789ABCDEF";
    const unsigned long groups = groupSize == 0 ? 1 : size / groupSize;
    const unsigned long lines = groupsPerLine == 0 ? 0 : groups / groupsPerLine;
    const unsigned long separatorLength = qel::strlen(lineSeparator);
    const BufferDynamic block(
        SaturatingAdd(SaturatingAdd(SaturatingMultiply(2, size), SaturatingAdd(groups, 1)),
                      SaturatingMultiply(lines, separatorLength)));

    auto* const text = static_cast<char*>(block.GetData());
    char* end = text;
    const auto* const bytes = static_cast<const unsigned char*>(data);
    unsigned long bytesInGroup = 0, groupsInLine = 0;
    for (unsigned long i = 0; i < size; ++i) {
        *end++ = digits[bytes[i] >> 4];
        *end++ = digits[bytes[i] & 15];
        // A group, and a line of groups, of size 0 is never complete.
        if (++bytesInGroup != groupSize) continue;
        bytesInGroup = 0;
        *end++ = ' ';
        if (++groupsInLine != groupsPerLine) continue;
        groupsInLine = 0;
        end = std::copy_n(lineSeparator, separatorLength, end);
    }
    return {text, end};
}

}  // namespace qel
