#include "core/buffer.h"
#include "core/text_converter.h"

namespace qel {

// Separate from ToHex: Buffer's vtable pulls buffer_hex.o into every program, and would pull in
// TextConverter and iconv.
std::wstring Buffer::ToHexW(unsigned long groupSize, unsigned long groupsPerLine) const {
    std::wstring text;
    // A failure leaves the string empty.
    TextConverter::ASCIIToWCharWithSystemLocale(ToHex(groupSize, groupsPerLine, "\n").c_str(),
                                                text);
    return text;
}

}  // namespace qel
