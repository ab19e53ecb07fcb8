/// The option syntax: from the argument vector to what to run, or to the error to print.
#pragma once

#include <string>

enum class Command { Help, Update, Restore };

/// What one run of the program is asked to do.
struct CommandLine {
    Command command = Command::Update;
    bool verbose = false;
    std::string configPath = "Quorvel.cfg";

    /// Empty when the arguments are good; otherwise the line that names the first bad one, with its
    /// line feed, and the other fields mean nothing.
    std::string error;
};

/// Reads argv[0] to argv[argc - 1], NUL-terminated texts of which the first is the program's name.
/// The first argument after it is always the command word, also when it looks like an option; any
/// word but "restore" and the help words means update. Without even the program's name (argc 0)
/// there is an error. Prints nothing and touches no file.
CommandLine ParseCommandLine(int argc, const char* const* argv);
