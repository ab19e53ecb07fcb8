/// Where the property list is, and the syntax of the lists in the configuration.
#pragma once

#include <string>
#include <vector>

/// The pieces of a list that is separated by ":", in order and untrimmed. Adjacent ":" count as
/// one; one at the start or the end gives an empty piece there, and an empty list is one empty
/// piece. So "a::b:" gives "a", "b" and "".
std::vector<std::string> SplitAtColons(const std::string& list);

/// The first path of a list of candidates that names an existing file (a directory does not count),
/// tracing each that it tries. Throws mox::Exception("Location not found") when there is none.
std::string FindLocation(const std::string& list);
