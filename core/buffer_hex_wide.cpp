#include "core/buffer.h"
#include "core/text_converter.h"

namespace qel {

// Not beside ToHex: every program with a buffer links the virtual decoders there, and would link
// the text converter and iconv with them.
std::wstring Buffer::ToHexW(unsigned long groupSize, unsigned long groupsPerLine) const {
    std::wstring text;
    // A failure leaves the string empty.
    TextConverter::ASCIIToWCharWithSystemLocale(ToHex(groupSize, groupsPerLine, "\n").c_str(),
                                                text);
    return text;
}

}  // namespace qel
