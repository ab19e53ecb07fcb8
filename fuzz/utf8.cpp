// UTF-8 to wide characters and back, up to the first NUL.

#include <algorithm>

#include "core/result_codes.h"
#include "core/text_converter.h"
#include "fuzz/fuzz_target.h"
#include "tests/support/buffers.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::wstring wide;
    qel::BufferDynamic utf8;
    if (qel::TextConverter::UTF8ToWChar(data, size, wide) != qel::SUCCESS) {
        const bool isAscii = std::all_of(data, data + size, [](int byte) { return byte < 128; });
        Require(!isAscii, "ASCII is valid UTF-8");
        return 0;
    }
    Require(qel::TextConverter::WCharToUTF8(wide.c_str(), utf8) == qel::SUCCESS,
            "valid UTF-8 converts back");
    const std::string text(reinterpret_cast<const char*>(data), size);
    Require(Bytes(utf8) == text.c_str(), "the round trip restores the input");
    return 0;
}
