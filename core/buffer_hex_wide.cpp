#include "core/buffer.h"
#include "core/text_converter.h"

namespace qel {

// In a file of its own: Buffer's vtable links buffer_hex.o into every program, which would then
// also link TextConverter and iconv.
std::wstring Buffer::ToHexW(unsigned long groupSize, unsigned long groupsPerLine) const {
    std::wstring text;
    // A failure leaves the string empty.
    TextConverter::ASCIIToWCharWithSystemLocale(ToHex(groupSize, groupsPerLine, "\n").c_str(),
                                                text);
    return text;
}

}  // namespace qel
