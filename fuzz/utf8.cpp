// UTF-8 to wide characters and back, up to the first zero.

#include <algorithm>

#include "core/result_codes.h"
#include "core/text_converter.h"
#include "fuzz/fuzz_target.h"
#include "tests/support/buffers.h"

using Converter = qel::TextConverter;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::wstring wide;
    qel::BufferDynamic utf8;
    if (Converter::UTF8ToWChar(data, size, wide) != qel::SUCCESS) {
        Require(std::any_of(data, data + size, [](int byte) { return byte > 127; }),
                "ASCII is UTF-8");
        return 0;
    }
    Require(Converter::WCharToUTF8(wide.c_str(), utf8) == qel::SUCCESS, "wide text is converted");
    Require(Bytes(utf8) == text.c_str(), "UTF-8 comes back");
    return 0;
}
