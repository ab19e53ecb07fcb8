/// Finds the property list; splits the lists of the configuration.
#pragma once

#include <string>
#include <vector>

/// Splits list at ":", without trimming. A run of ":" is one separator; a leading or trailing one
/// yields an empty piece, and so does an empty list: "a::b:" yields "a", "b" and "".
std::vector<std::string> SplitAtColons(const std::string& list);

/// Returns the first path of a ":"-separated list that is an existing file and not a directory,
/// logging each one tried. Throws mox::Exception("Location not found") if there is none.
std::string FindLocation(const std::string& list);
