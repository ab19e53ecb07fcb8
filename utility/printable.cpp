#include "utility/printable.h"

#include <algorithm>

namespace mox {

bool IsStringPrintable(const std::string& s) {
    return IsBufferPrintable(qel::Buffer(s.data(), s.size()));
}

bool IsBufferPrintable(const qel::Buffer& b) {
    const char* const first = static_cast<const char*>(b.GetData());
    return b.GetSize() != 0 && std::all_of(first, first + b.GetSize(), [](char character) {
               return ' ' <= character && character <= '~';
           });
}

}  // namespace mox
