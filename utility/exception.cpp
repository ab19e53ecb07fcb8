#include "utility/exception.h"

namespace mox {

Exception::Exception(const std::string& text) : message(text) {}

const char* Exception::what() const noexcept { return message.c_str(); }

}  // namespace mox
