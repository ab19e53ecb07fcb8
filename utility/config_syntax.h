/// One line of configuration text, taken apart and put together: the only place that knows its
/// syntax. Private to this library.
///
/// A line is "name = value # comment" with every part optional but the name of a property; "##" is
/// a literal "#" in each of them.
#pragma once

#include <string>
#include <string_view>

#include "utility/properties.h"

namespace mox {

/// The characters that the POSIX locale calls space.
inline constexpr std::string_view whiteSpace = " \t\n\v\f\r";

/// The record of one line, which may carry its line end: a property, or a placeholder whose value
/// is the line as given. Null when the line is malformed, that is, not blank but without "=" or
/// without a name before it.
Properties::PropertyPtr ReadConfigLine(std::string_view line, unsigned long lineNumber);

/// The line of a record, ended by a line feed. A placeholder gives its comment alone, or a blank
/// line; its value is not used. A comment that begins with "#" gets a blank in front.
///
/// ReadConfigLine reads the line back into the same record, save for a placeholder's value, for
/// that blank, and for a "##" within the comment, which reads as "#". What a line cannot hold reads
/// back as something else or not at all: an empty name, one with "=", line ends, and white space or
/// carriage returns that the reader trims or turns into "#".
std::string WriteConfigLine(const Properties::Property& record);

}  // namespace mox
