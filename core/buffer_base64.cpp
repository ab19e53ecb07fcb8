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

constexpr int padCode = 65;

// The value of padding in this table is 64.
constexpr char encoding[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=";
constexpr int padValue = 64;

/// The two characters of each number of twelve bits, so that three bytes take two look-ups.
constexpr auto encodedPairs = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) pairs[i] = {encoding[i >> 6], encoding[i & 63]};
    return pairs;
}();

/// For each of the four places of a group the 24 bits that a character stands for in that place;
/// a bit above them for every character that is not in the alphabet.
constexpr std::uint32_t noValue = 1u << 24;
constexpr auto groupBits = [] {
    std::array<std::array<std::uint32_t, 256>, 4> bits{};
    for (std::size_t place = 0; place < 4; ++place) {
        bits[place].fill(noValue);
        for (std::uint32_t value = 0; value < 64; ++value) {
            bits[place][static_cast<unsigned char>(encoding[value])] = value << (18 - 6 * place);
        }
    }
    return bits;
}();

// Unlike hexadecimal text, base64 text has no tabs.
bool IsSkipped(char c) { return c == '\n' || c == '\r' || c == ' '; }

/// Takes four characters off the text, with those before each that are skipped, and returns true.
/// False when the text ends before the fourth. Where it ends with one to skip, that is the fourth.
bool TakeGroup(std::string_view& text, char (&group)[4]) {
    for (char& c : group) {
        do {
            if (text.empty()) return false;
            c = text.front();
            text.remove_prefix(1);
        } while (IsSkipped(c) && !text.empty());
    }
    return true;
}

unsigned long PutByte(BufferShifting& out, int value) {
    const auto byte = static_cast<unsigned char>(value);
    return out.SetBufferAndShift(1, &byte);
}

unsigned long DecodeGroup(const char (&group)[4], BufferShifting& out) {
    const int c1 = Buffer::GetBase64Code(group[0]), c2 = Buffer::GetBase64Code(group[1]),
              c3 = Buffer::GetBase64Code(group[2]), c4 = Buffer::GetBase64Code(group[3]);
    if (c1 < 0 || c2 < 0 || c3 < 0 || c4 < 0) return ERROR_DATA;
    if (c1 == padCode || c2 == padCode || (c3 == padCode && c4 != padCode)) return ERROR_DATA;
    unsigned long result = PutByte(out, c1 << 2 | c2 >> 4);
    if (result == SUCCESS && c3 != padCode) result = PutByte(out, (c2 & 15) << 4 | c3 >> 2);
    if (result == SUCCESS && c4 != padCode) result = PutByte(out, (c3 & 3) << 6 | c4);
    return result;
}

/// Takes the groups off the text that are four characters of the alphabet each, up to the first
/// that is not or that has no room.
void DecodePlainGroups(std::string_view& text, BufferShifting& out) {
    const auto* const characters = reinterpret_cast<const unsigned char*>(text.data());
    // Where bytes only count, all are written to the same place.
    unsigned char unused[3];
    const bool isWritten = out.GetData() != nullptr;
    auto* bytes = isWritten ? static_cast<unsigned char*>(out.GetData()) : unused;
    const unsigned long step = isWritten ? 3 : 0;
    const unsigned long most = std::min<unsigned long>(text.size() / 4, out.GetSize() / 3);
    unsigned long groups = 0;
    for (; groups < most; ++groups, bytes += step) {
        const unsigned char* const group = characters + 4 * groups;
        const std::uint32_t bits = groupBits[0][group[0]] | groupBits[1][group[1]] |
                                   groupBits[2][group[2]] | groupBits[3][group[3]];
        if (bits >= noValue) break;
        bytes[0] = static_cast<unsigned char>(bits >> 16);
        bytes[1] = static_cast<unsigned char>(bits >> 8);
        bytes[2] = static_cast<unsigned char>(bits);
    }
    text.remove_prefix(4 * groups);
    out.Shift(3 * groups);
}

/// Eight bytes as a number, the first of them highest; compilers make one load of it.
std::uint64_t BigEndian(const unsigned char* bytes) {
    return std::uint64_t{bytes[0]} << 56 | std::uint64_t{bytes[1]} << 48 |
           std::uint64_t{bytes[2]} << 40 | std::uint64_t{bytes[3]} << 32 |
           std::uint64_t{bytes[4]} << 24 | std::uint64_t{bytes[5]} << 16 |
           std::uint64_t{bytes[6]} << 8 | std::uint64_t{bytes[7]};
}

/// Writes the two characters of the lowest twelve bits.
void PutPair(std::uint64_t bits, char* out) { ::memcpy(out, &encodedPairs[bits & 4095], 2); }

/// Writes four characters for each three of count bytes, and for those that are left.
void Encode(const unsigned char* bytes, unsigned long count, char* out) {
    for (; count >= 8; count -= 6, bytes += 6, out += 8) {
        const std::uint64_t bits = BigEndian(bytes);
        PutPair(bits >> 52, out);
        PutPair(bits >> 40, out + 2);
        PutPair(bits >> 28, out + 4);
        PutPair(bits >> 16, out + 6);
    }
    for (; count >= 3; count -= 3, bytes += 3, out += 4) {
        const std::uint64_t bits =
            std::uint64_t{bytes[0]} << 16 | std::uint64_t{bytes[1]} << 8 | bytes[2];
        PutPair(bits >> 12, out);
        PutPair(bits, out + 2);
    }
    if (count == 0) return;
    const int second = count == 2 ? bytes[1] : 0;
    out[0] = encoding[bytes[0] >> 2];
    out[1] = encoding[(bytes[0] & 3) << 4 | second >> 4];
    out[2] = encoding[count == 2 ? (second & 15) << 2 : padValue];
    out[3] = encoding[padValue];
}

}  // namespace

std::int8_t Buffer::GetBase64Code(char c) {
    if (c >= 'A' && c <= 'Z') return static_cast<std::int8_t>(c - 'A');
    if (c >= 'a' && c <= 'z') return static_cast<std::int8_t>(c - 'a' + 26);
    if (c >= '0' && c <= '9') return static_cast<std::int8_t>(c - '0' + 52);
    if (c == '+') return 62;
    if (c == '/') return 63;
    return c == '=' ? padCode : -1;
}

unsigned long Buffer::FromBase64(const char* text, unsigned long length, unsigned long& size,
                                 void* out) {
    const unsigned long room = out == nullptr ? maxSize : size;
    BufferShifting cursor(out, room);
    std::string_view rest(text, length);
    for (char group[4];;) {
        DecodePlainGroups(rest, cursor);
        // At the end of a line this is all that the next group needs.
        if (!rest.empty() && IsSkipped(rest.front())) {
            rest.remove_prefix(1);
            continue;
        }
        if (!TakeGroup(rest, group)) break;
        const unsigned long result = DecodeGroup(group, cursor);
        if (result != SUCCESS) return result;
    }
    size = room - cursor.GetSize();
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
    // A short text is decoded once and copied, which takes half the time of decoding it twice, the
    // first time to count.
    unsigned char decoded[6 * 1024];
    const bool isShort = length / 4 * 3 <= sizeof decoded;
    unsigned long count = sizeof decoded;
    unsigned long result = FromBase64(text, length, count, isShort ? decoded : nullptr);
    if (result == SUCCESS) result = Alloc(count);
    if (result != SUCCESS) return result;
    return isShort ? Buffer::Set(count, decoded) : FromBase64(text, length, count, data);
}

std::string Buffer::ToBase64(unsigned long lineLength, const char* lineSeparator) const {
    const unsigned long length = SaturatingMultiply(4, size / 3 + (size % 3 == 0 ? 0 : 1));
    const unsigned long lines = lineLength == 0 ? 0 : length / lineLength;
    const unsigned long separatorLength = lines == 0 ? 0 : qel::strlen(lineSeparator);
    std::string text =
        MakeString(SaturatingAdd(length, SaturatingMultiply(lines, separatorLength)));

    // From the end of the text, where there is room for it unbroken, line after line moves to its
    // place; what is left over is in its place then.
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
