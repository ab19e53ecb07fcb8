#include <string.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "core/buffer.h"
#include "core/buffer_dynamic.h"
#include "core/buffer_shifting.h"
#include "core/c_library.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"

namespace qel {

namespace {

// The code that GetBase64Code returns for "=".
constexpr std::int8_t padCode = 65;
constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The two characters of each 12-bit value: two look-ups per three bytes.
constexpr auto encodePairs = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) pairs[i] = {alphabet[i >> 6], alphabet[i & 63]};
    return pairs;
}();

/// For each position in a group, a character's contribution to the 24 bits; invalid, a bit above
/// them, for characters outside the alphabet.
constexpr std::uint32_t invalid = 1u << 24;
constexpr auto decodeTable = [] {
    std::array<std::array<std::uint32_t, 256>, 4> table{};
    for (std::size_t i = 0; i < 4; ++i) {
        table[i].fill(invalid);
        for (std::uint32_t value = 0; value < 64; ++value) {
            table[i][static_cast<unsigned char>(alphabet[value])] = value << (18 - 6 * i);
        }
    }
    return table;
}();

// Unlike hexadecimal text, base64 text has no tabs.
bool IsSkipped(char c) { return c == '\n' || c == '\r' || c == ' '; }

/// Removes the next four characters from text, skipping white space. Returns false if the text ends
/// first; but its very last character is never skipped as the fourth.
bool ReadGroup(std::string_view& text, char (&group)[4]) {
    for (char& c : group) {
        do {
            if (text.empty()) return false;
            c = text.front();
            text.remove_prefix(1);
        } while (IsSkipped(c) && !text.empty());
    }
    return true;
}

unsigned long WriteByte(BufferShifting& out, int value) {
    const auto byte = static_cast<unsigned char>(value);
    return out.SetBufferAndShift(1, &byte);
}

unsigned long DecodeGroup(const char (&group)[4], BufferShifting& out) {
    const int c1 = Buffer::GetBase64Code(group[0]), c2 = Buffer::GetBase64Code(group[1]),
              c3 = Buffer::GetBase64Code(group[2]), c4 = Buffer::GetBase64Code(group[3]);
    if (c1 < 0 || c2 < 0 || c3 < 0 || c4 < 0) return ERROR_DATA;
    if (c1 == padCode || c2 == padCode || (c3 == padCode && c4 != padCode)) return ERROR_DATA;
    unsigned long result = WriteByte(out, c1 << 2 | c2 >> 4);
    if (result == SUCCESS && c3 != padCode) result = WriteByte(out, (c2 & 15) << 4 | c3 >> 2);
    if (result == SUCCESS && c4 != padCode) result = WriteByte(out, (c3 & 3) << 6 | c4);
    return result;
}

/// Fast path: decodes groups of four alphabet characters until another character follows or out is
/// full.
void DecodeGroupsFast(std::string_view& text, BufferShifting& out) {
    const auto* const characters = reinterpret_cast<const unsigned char*>(text.data());
    // A counting cursor has no bytes: write to a dummy.
    unsigned char unused[3];
    const bool isWritten = out.GetData() != nullptr;
    auto* bytes = isWritten ? static_cast<unsigned char*>(out.GetData()) : unused;
    const unsigned long step = isWritten ? 3 : 0;
    const unsigned long maxGroups = std::min<unsigned long>(text.size() / 4, out.GetSize() / 3);
    unsigned long groups = 0;
    for (; groups < maxGroups; ++groups, bytes += step) {
        const unsigned char* const group = characters + 4 * groups;
        const std::uint32_t bits = decodeTable[0][group[0]] | decodeTable[1][group[1]] |
                                   decodeTable[2][group[2]] | decodeTable[3][group[3]];
        if (bits >= invalid) break;
        bytes[0] = static_cast<unsigned char>(bits >> 16);
        bytes[1] = static_cast<unsigned char>(bits >> 8);
        bytes[2] = static_cast<unsigned char>(bits);
    }
    text.remove_prefix(4 * groups);
    out.Shift(3 * groups);
}

/// A big-endian load; compiles to one load and one byte swap.
std::uint64_t LoadBigEndian64(const unsigned char* bytes) {
    return std::uint64_t{bytes[0]} << 56 | std::uint64_t{bytes[1]} << 48 |
           std::uint64_t{bytes[2]} << 40 | std::uint64_t{bytes[3]} << 32 |
           std::uint64_t{bytes[4]} << 24 | std::uint64_t{bytes[5]} << 16 |
           std::uint64_t{bytes[6]} << 8 | std::uint64_t{bytes[7]};
}

/// Writes the two characters of the lowest 12 bits.
void WritePair(std::uint64_t bits, char* out) { ::memcpy(out, &encodePairs[bits & 4095], 2); }

/// Writes the four characters of three bytes.
void EncodeGroup(const unsigned char* bytes, char* out) {
    const std::uint64_t bits =
        std::uint64_t{bytes[0]} << 16 | std::uint64_t{bytes[1]} << 8 | bytes[2];
    WritePair(bits >> 12, out);
    WritePair(bits, out + 2);
}

/// Encodes count bytes, with padding.
void Encode(const unsigned char* bytes, unsigned long count, char* out) {
    for (; count >= 8; count -= 6, bytes += 6, out += 8) {
        const std::uint64_t bits = LoadBigEndian64(bytes);
        WritePair(bits >> 52, out);
        WritePair(bits >> 40, out + 2);
        WritePair(bits >> 28, out + 4);
        WritePair(bits >> 16, out + 6);
    }
    for (; count >= 3; count -= 3, bytes += 3, out += 4) EncodeGroup(bytes, out);
    if (count == 0) return;
    unsigned char last[3] = {};
    ::memcpy(last, bytes, count);
    EncodeGroup(last, out);
    if (count == 1) out[2] = '=';
    out[3] = '=';
}

}  // namespace

std::int8_t Buffer::GetBase64Code(char c) {
    if (c == '=') return padCode;
    const std::uint32_t value = decodeTable[3][static_cast<unsigned char>(c)];
    return value == invalid ? std::int8_t{-1} : static_cast<std::int8_t>(value);
}

unsigned long Buffer::FromBase64(const char* text, unsigned long length, unsigned long& size,
                                 void* out) {
    const unsigned long capacity = out == nullptr ? maxSize : size;
    BufferShifting cursor(out, capacity);
    std::string_view rest(text, length);
    char group[4];
    while (true) {
        DecodeGroupsFast(rest, cursor);
        // A line break between groups: back to the fast path.
        if (!rest.empty() && IsSkipped(rest.front())) {
            rest.remove_prefix(1);
            continue;
        }
        if (!ReadGroup(rest, group)) break;
        if (const unsigned long result = DecodeGroup(group, cursor)) return result;
    }
    size = capacity - cursor.GetSize();
    return SUCCESS;
}

unsigned long Buffer::FromBase64(const char* text) { return FromBase64(text, qel::strlen(text)); }

unsigned long Buffer::FromBase64(const char* text, unsigned long length) {
    unsigned long count = 0;
    unsigned long result = FromBase64(text, length, count, nullptr);
    if (result == SUCCESS && count != size) result = ERROR_SIZE;
    return result == SUCCESS ? FromBase64(text, length, count, data) : result;
}

unsigned long BufferDynamic::FromBase64(const char* text, unsigned long length) {
    // Decoding once and copying takes less time than counting first.
    BufferDynamic decoded;
    unsigned long result = decoded.Alloc(length / 4 * 3);
    unsigned long count = decoded.GetSize();
    if (result == SUCCESS) result = FromBase64(text, length, count, decoded.GetData());
    if (result == SUCCESS) result = Alloc(count);
    return result == SUCCESS ? Buffer::Set(count, decoded.GetData()) : result;
}

std::string Buffer::ToBase64(unsigned long lineLength, const char* lineSeparator) const {
    const unsigned long length = SaturatingMultiply(4, size / 3 + (size % 3 == 0 ? 0 : 1));
    const unsigned long lines = lineLength == 0 ? 0 : length / lineLength;
    const unsigned long separatorLength = lines == 0 ? 0 : qel::strlen(lineSeparator);
    std::string text =
        MakeString(SaturatingAdd(length, SaturatingMultiply(lines, separatorLength)));

    // Encode without line breaks at the end of the string, then move line by line to the front; the
    // incomplete last line is already in its final position.
    char* encoded = text.data() + (text.size() - length);
    Encode(static_cast<const unsigned char*>(data), size, encoded);
    char* end = text.data();
    for (unsigned long line = 0; line < lines; ++line) {
        ::memmove(end, encoded, lineLength);
        encoded += lineLength;
        end = std::copy_n(lineSeparator, separatorLength, end + lineLength);
    }
    return text;
}

}  // namespace qel
