/// Parses and formats one configuration line; the only code that knows the syntax. Private to this
/// library.
///
/// A line is "name = value # comment", of which only the name of a property is required; "##" is a
/// literal "#" in each part.
#pragma once

#include <string>
#include <string_view>

#include "utility/properties.h"

namespace mox {

/// isspace() of the POSIX locale.
inline constexpr std::string_view whiteSpace = " \t\n\v\f\r";

/// Parses a line, with or without its line ending, into a property, or a placeholder whose value is
/// the line. Returns null if the line is malformed: not blank, but without "=" or without a name
/// before it.
Properties::PropertyPtr ReadConfigLine(std::string_view line, unsigned long lineNumber);

/// Formats a record as a line. A placeholder becomes its comment, or a blank line; its value is
/// unused. A comment starting with "#" is preceded by a space.
///
/// ReadConfigLine restores the same record, except for a placeholder's value, for that space, and
/// for a "##" within the comment, which reads as "#". Not round-tripped: an empty name, "=" in a
/// name, line endings, and white space or carriage returns that the reader trims or turns into "#".
std::string WriteConfigLine(const Properties::Property& record);

}  // namespace mox
