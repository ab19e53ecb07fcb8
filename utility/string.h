/// mox::String: functions on byte strings.
///
///     std::vector<std::string> tokens;
///     mox::String::Split("a, b", ", ", tokens);  // 2; tokens are "a" and "b"
///     std::string size = "10 MB";
///     mox::String::ExtractMultiplier(size);      // 1048576; size is "10 "
#pragma once

#include <string>
#include <vector>

namespace mox::String {

/// Appends the pieces of text between separators to tokens, in order, and returns their number.
/// Every character of separators, up to its first NUL, is a separator. Empty pieces are left out;
/// others are not trimmed. text must not be an element of tokens.
unsigned long Split(const std::string& text, const std::string& separators,
                    std::vector<std::string>& tokens);

/// Removes a size suffix (case-insensitive) from value and returns its factor: 1024 for "k" and
/// "kb", 1024^2 for "m" and "mb", 1024^3 for "g" and "gb". Without a suffix, value is unchanged and
/// the factor is 1. The rest of value is not checked: "kb" leaves an empty value.
unsigned long ExtractMultiplier(std::string& value);

}  // namespace mox::String
