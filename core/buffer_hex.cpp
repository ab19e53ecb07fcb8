#include <string.h>

#include <algorithm>
#include <string_view>

#include "core/buffer.h"
#include "core/buffer_dynamic.h"
#include "core/c_library.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"

namespace qel {

namespace {

// Digits are read and written by arithmetic, of which the compiler makes vector instructions.

/// The bytes that are read at once where nothing but digits stands.
constexpr unsigned long chunkSize = 32;

bool IsWhiteSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// 0 to 15, or 255 for a character that is no hexadecimal digit.
unsigned char DigitValue(char c) {
    const auto digit = static_cast<unsigned char>(c - '0');
    // With this bit a letter of either case is a small one.
    const auto letter = static_cast<unsigned char>((c | 0x20) - 'a');
    const auto value = static_cast<unsigned char>(letter < 6 ? letter + 10 : 255);
    return digit < 10 ? digit : value;
}

char Digit(int value) { return static_cast<char>(value + (value < 10 ? '0' : 'A' - 10)); }

/// Decodes a chunk of digits; false, with the bytes undefined, when anything else stands there.
bool ReadChunk(const char* digits, unsigned char (&bytes)[chunkSize]) {
    unsigned char worst = 0;
    for (unsigned long i = 0; i < chunkSize; ++i) {
        const unsigned char high = DigitValue(digits[2 * i]), low = DigitValue(digits[2 * i + 1]);
        bytes[i] = static_cast<unsigned char>(high << 4 | low);
        worst |= high | low;
    }
    return worst < 16;
}

/// Writes two digits for each of count bytes and returns where they end.
char* WriteDigits(const unsigned char* bytes, unsigned long count, char* out) {
    for (unsigned long i = 0; i < count; ++i) {
        out[2 * i] = Digit(bytes[i] >> 4);
        out[2 * i + 1] = Digit(bytes[i] & 15);
    }
    return out + 2 * count;
}

/// The decoder's place in the text and in the output, which is null when bytes only count.
class HexReader {
public:
    HexReader(std::string_view text, void* output, unsigned long outputSize)
        : rest(text),
          out(static_cast<unsigned char*>(output)),
          room(output == nullptr ? maxSize : outputSize) {}

    /// Reads to the end of the text; false when the text is malformed or the room too small.
    bool Read() {
        while (!rest.empty()) {
            ReadChunks();
            if (!ReadSingly(2 * chunkSize)) return false;
        }
        return true;
    }

    unsigned long GetCount() const { return count; }

private:
    void ReadChunks() {
        unsigned char bytes[chunkSize];
        while (rest.size() >= 2 * chunkSize && room - count >= chunkSize &&
               ReadChunk(rest.data(), bytes)) {
            if (out != nullptr) ::memcpy(out + count, bytes, chunkSize);
            rest.remove_prefix(2 * chunkSize);
            count += chunkSize;
        }
    }

    /// Reads at least the given number of characters, or to the end of the text.
    bool ReadSingly(unsigned long length) {
        const unsigned long end = rest.size() - std::min(length, rest.size());
        while (rest.size() > end) {
            if (IsWhiteSpace(rest.front())) {
                rest.remove_prefix(1);
                continue;
            }
            if (rest.size() < 2 || count == room) return false;
            const int high = DigitValue(rest[0]), low = DigitValue(rest[1]);
            if ((high | low) > 15) return false;
            if (out != nullptr) out[count] = static_cast<unsigned char>(high << 4 | low);
            rest.remove_prefix(2);
            ++count;
        }
        return true;
    }

    std::string_view rest;
    unsigned char* const out;
    const unsigned long room;
    unsigned long count = 0;
};

}  // namespace

unsigned long Buffer::FromHex(const char* text, unsigned long& size, void* out) {
    const std::string_view digits(text, qel::strlen(text));
    HexReader reader(digits, out, size);
    if (digits.size() < 2 || !reader.Read()) return ERROR_DATA;
    size = reader.GetCount();
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
    for (unsigned long group = 1; group <= groups; ++group) {
        end = WriteDigits(bytes, groupSize, end);
        bytes += groupSize;
        *end++ = ' ';
        if (lines == 0 || group % groupsPerLine != 0) continue;
        end = std::copy_n(lineSeparator, separatorLength, end);
    }
    WriteDigits(bytes, size - groups * groupSize, end);
    return text;
}

}  // namespace qel
