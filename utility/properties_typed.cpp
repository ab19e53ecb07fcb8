#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>
#include <system_error>
#include <type_traits>

#include "utility/config_syntax.h"
#include "utility/exception.h"
#include "utility/properties.h"
#include "utility/string.h"

namespace mox {

namespace {

constexpr std::string_view trueWords[] = {"TRUE", "true", "1", "yes"};
constexpr std::string_view falseWords[] = {"FALSE", "false", "0", "no"};

bool Contains(const std::string_view (&words)[4], std::string_view word) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

/// Returns the number at the start of text times the factor of its suffix, or defaultValue.
template <class Number>
Number ReadNumber(std::string text, Number defaultValue) {
    const unsigned long factor = String::ExtractMultiplier(text);
    std::string_view digits = text;
    digits.remove_prefix(std::min(digits.find_first_not_of(whiteSpace), digits.size()));
    // std::from_chars accepts a minus sign, but no plus sign.
    if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);

    Number number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc()) return defaultValue;
    // Unsigned: signed overflow is undefined.
    using Unsigned = std::make_unsigned_t<Number>;
    return static_cast<Number>(static_cast<Unsigned>(number) * static_cast<Unsigned>(factor));
}

}  // namespace

int Properties::GetAsInt(const std::string& name, int defaultValue) const {
    return ReadNumber(Get(name), defaultValue);
}

unsigned int Properties::GetAsUInt(const std::string& name, unsigned int defaultValue) const {
    return ReadNumber(Get(name), defaultValue);
}

unsigned long Properties::GetAsULong(const std::string& name, unsigned long defaultValue) const {
    return ReadNumber(Get(name), defaultValue);
}

bool Properties::GetAsBool(const std::string& name, bool defaultValue) const {
    const std::string value = Get(name);
    if (value.empty()) return defaultValue;
    if (Contains(trueWords, value)) return true;
    if (Contains(falseWords, value)) return false;
    throw Exception("Bad value for boolean option \"" + value + "\"");
}

}  // namespace mox
