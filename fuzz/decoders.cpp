// Hexadecimal and base64: what was decoded comes back from its encoding, what was encoded from its
// decoding. Blocks have just the size that they need, so that the sanitizer sees each byte beyond.

#include <vector>

#include "core/result_codes.h"
#include "fuzz/fuzz_target.h"
#include "tests/support/buffers.h"

namespace {

using Decoder = unsigned long (*)(const std::vector<char>&, unsigned long&, void*);

unsigned long FromHex(const std::vector<char>& text, unsigned long& size, void* out) {
    std::vector<char> terminated = text;
    terminated.push_back('\0');
    return qel::Buffer::FromHex(terminated.data(), size, out);
}

unsigned long FromBase64(const std::vector<char>& text, unsigned long& size, void* out) {
    return qel::Buffer::FromBase64(text.data(), text.size(), size, out);
}

/// Whether text can be decoded, and the bytes that it holds.
std::pair<bool, std::string> Decoded(Decoder decode, const std::string& text) {
    const std::vector<char> exact(text.begin(), text.end());
    unsigned long size = text.size();
    const unsigned long result = decode(exact, size, nullptr);
    const qel::BufferDynamic block(size);
    Require(decode(exact, size, block.GetData()) == result, "counting and decoding agree");
    const bool isText = result == qel::SUCCESS;
    Require(size == (isText ? block.GetSize() : text.size()), "the size stays on failure");
    return {isText, isText ? Bytes(block) : ""};
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const unsigned long width = size == 0 ? 0 : data[0] % 9, lines = size == 0 ? 0 : data[0] / 9;
    for (const auto& bytes :
         {input, Decoded(FromHex, input).second, Decoded(FromBase64, input).second}) {
        // Two characters are the least that is text.
        const std::string hex = View(bytes).ToHex(width, lines, "\r\n\t") + "  ";
        Require(Decoded(FromHex, hex) == std::pair(true, bytes), "hexadecimal text comes back");
        const std::string base64 = View(bytes).ToBase64(lines, " \r\n");
        Require(Decoded(FromBase64, base64) == std::pair(true, bytes), "base64 text comes back");
    }
    return 0;
}
