/// Parses the command line.
#pragma once

#include <string>

enum class Command { Help, Update, Restore };

/// The parsed arguments.
struct CommandLine {
    Command command = Command::Update;
    bool verbose = false;
    std::string configPath = "Quorvel.cfg";

    /// Empty if the arguments are valid; otherwise the newline-terminated message for the first
    /// invalid one, and the other fields are unspecified.
    std::string error;
};

/// Parses the arguments of main. argv[1] is always the command, even if it looks like an option;
/// anything but "restore" and the help options means update. argc 0 is an error. Does no I/O.
CommandLine ParseCommandLine(int argc, const char* const* argv);
