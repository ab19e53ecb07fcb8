// Hexadecimal and base64: decoding inverts encoding. Buffers are sized exactly, so that the
// sanitizer catches any overrun.

#include <vector>

#include "core/result_codes.h"
#include "fuzz/fuzz_target.h"
#include "tests/support/buffers.h"

namespace {

unsigned long FromHex(const std::string& text, unsigned long& size, void* out) {
    const std::vector<char> exact(text.c_str(), text.c_str() + text.size() + 1);
    return qel::Buffer::FromHex(exact.data(), size, out);
}

unsigned long FromBase64(const std::string& text, unsigned long& size, void* out) {
    const std::vector<char> exact(text.begin(), text.end());
    return qel::Buffer::FromBase64(exact.data(), exact.size(), size, out);
}

/// Returns the decoded bytes; none if text is malformed.
std::string Decoded(decltype(FromHex)& decode, const std::string& text) {
    unsigned long size = text.size();
    const unsigned long result = decode(text, size, nullptr);
    const qel::BufferDynamic bytes(size);
    Require(decode(text, size, bytes.GetData()) == result, "querying the size and decoding agree");
    if (result == qel::SUCCESS) return Bytes(bytes);
    Require(size == text.size(), "a failure leaves the size unchanged");
    return "";
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const unsigned long groupSize = size == 0 ? 0 : data[0] % 9,
                        length = size == 0 ? 0 : data[0] / 9;
    for (const auto& bytes : {input, Decoded(FromHex, input), Decoded(FromBase64, input)}) {
        const qel::BufferDynamic exact(View(bytes));
        // FromHex needs at least two characters.
        const std::string hex = exact.ToHex(groupSize, length, "\r\n\t") + "  ";
        Require(Decoded(FromHex, hex) == bytes, "hexadecimal decodes to what was encoded");
        const std::string base64 = exact.ToBase64(length, " \r\n");
        Require(Decoded(FromBase64, base64) == bytes, "base64 decodes to what was encoded");
    }
    return 0;
}
