#include "utility/string.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/tokenizer.hpp>
#include <string_view>
#include <utility>

namespace mox::String {

namespace {

// None is a suffix of another, so the order does not matter.
constexpr std::pair<std::string_view, unsigned long> sizeSuffixes[] = {
    {"kb", 1ul << 10}, {"mb", 1ul << 20}, {"gb", 1ul << 30},
    {"k", 1ul << 10},  {"m", 1ul << 20},  {"g", 1ul << 30},
};

}  // namespace

unsigned long Split(const std::string& text, const std::string& separators,
                    std::vector<std::string>& tokens) {
    const std::size_t sizeBefore = tokens.size();
    const boost::char_separator<char> separator(separators.c_str());
    for (const std::string& token : boost::tokenizer(text, separator)) tokens.push_back(token);
    return tokens.size() - sizeBefore;
}

unsigned long ExtractMultiplier(std::string& value) {
    // Setting 0x20 makes an ASCII letter lower-case, whatever the locale.
    const auto isEqual = [](char left, char right) { return (left | 0x20) == right; };
    for (const auto& [suffix, factor] : sizeSuffixes) {
        if (!boost::algorithm::ends_with(value, suffix, isEqual)) continue;
        value.erase(value.size() - suffix.size());
        return factor;
    }
    return 1;
}

}  // namespace mox::String
