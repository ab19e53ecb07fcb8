#include <algorithm>
#include <string_view>

#include "core/buffer.h"
#include "core/buffer_dynamic.h"
#include "core/buffer_shifting.h"
#include "core/c_library.h"
#include "core/exception.h"
#include "core/result_codes.h"
#include "core/size_arithmetic.h"

namespace qel {

namespace {

constexpr int padCode = 65;

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
    const unsigned long room = out == nullptr ? largestSize : size;
    BufferShifting cursor(out, room);
    std::string_view rest(text, length);
    for (char group[4]; TakeGroup(rest, group);) {
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
    unsigned long count = 0;
    unsigned long result = FromBase64(text, length, count, nullptr);
    if (result == SUCCESS) result = Alloc(count);
    return result == SUCCESS ? FromBase64(text, length, count, data) : result;
}

std::string Buffer::ToBase64(unsigned long lineLength, const char* lineSeparator) const {
    static constexpr char encoding[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=";
    constexpr int pad = 64;
    const unsigned long length = SaturatingMultiply(4, size / 3 + (size % 3 == 0 ? 0 : 1));
    const unsigned long separators = lineLength == 0 ? 0 : length / lineLength;
    const unsigned long separatorLength = lineSeparator == nullptr ? 0 : qel::strlen(lineSeparator);
    const BufferDynamic block(
        SaturatingAdd(length, SaturatingMultiply(separators, separatorLength)));

    BufferShifting cursor(block);
    unsigned long column = 0;
    const auto put = [&](int value) {
        ThrowUnlessSuccess(cursor.SetBufferAndShift(1, &encoding[value]));
        // A line of length 0 is never full.
        if (++column != lineLength) return;
        column = 0;
        ThrowUnlessSuccess(cursor.SetBufferAndShift(separatorLength, lineSeparator));
    };
    const auto* bytes = static_cast<const unsigned char*>(data);
    for (unsigned long left = size; left != 0;) {
        const unsigned long taken = std::min(left, 3ul);
        const int b0 = bytes[0], b1 = taken > 1 ? bytes[1] : 0, b2 = taken > 2 ? bytes[2] : 0;
        put(b0 >> 2);
        put((b0 & 3) << 4 | b1 >> 4);
        put(taken > 1 ? (b1 & 15) << 2 | b2 >> 6 : pad);
        put(taken > 2 ? b2 & 63 : pad);
        bytes += taken;
        left -= taken;
    }
    return {static_cast<const char*>(block.GetData()), block.GetSize()};
}

}  // namespace qel
