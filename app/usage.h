/// The fixed texts that tell a user how to call the program.
#pragma once

#include <string>

/// Writes the banner line and the usage text to standard output.
void PrintHelp();

/// Writes the usage text to standard output.
void PrintUsage();

/// Writes the banner line, the newline-terminated error and the hint to standard error.
void PrintArgumentError(const std::string& error);
