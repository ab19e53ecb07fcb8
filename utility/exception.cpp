#include "utility/exception.h"

namespace mox {

Exception::Exception(const std::string& text) : message(text) {}

Exception::~Exception() = default;

const char* Exception::what() const noexcept { return message.c_str(); }

FileException::~FileException() = default;

}  // namespace mox
