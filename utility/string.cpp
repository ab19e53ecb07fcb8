#include "utility/string.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/tokenizer.hpp>
#include <string_view>

namespace mox::String {

namespace {

struct SizeSuffix {
    std::string_view text;
    unsigned long factor;
};

// None is the end of another, so the order does not matter.
constexpr SizeSuffix sizeSuffixes[] = {
    {"kb", 1ul << 10}, {"mb", 1ul << 20}, {"gb", 1ul << 30},
    {"k", 1ul << 10},  {"m", 1ul << 20},  {"g", 1ul << 30},
};

/// The letters A to Z alone, whatever the locale.
char ToLower(char character) {
    const bool isUpper = 'A' <= character && character <= 'Z';
    return isUpper ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

unsigned long Split(const std::string& text, const std::string& separators,
                    std::vector<std::string>& tokens) {
    const std::size_t sizeBefore = tokens.size();
    const boost::char_separator<char> separator(separators.c_str());
    for (const std::string& token : boost::tokenizer(text, separator)) tokens.push_back(token);
    return tokens.size() - sizeBefore;
}

unsigned long ExtractMultiplier(std::string& value) {
    const auto isEqual = [](char left, char right) { return ToLower(left) == right; };
    for (const auto& [suffix, factor] : sizeSuffixes) {
        if (!boost::algorithm::ends_with(value, suffix, isEqual)) continue;
        value.erase(value.size() - suffix.size());
        return factor;
    }
    return 1;
}

}  // namespace mox::String
