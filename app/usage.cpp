#include "app/usage.h"

#include <cstdio>

// The "%s" is part of the text: the banner is always an argument, never a format.
constexpr const char* banner = "Quorvel version " QUORVEL_VERSION " for %s.\n";

constexpr const char* usage = R"(Usage: Quorvel <options> <command> <command parameters>

Commands
--------
 Update CCID config
    update

  General options:
  ----------------
    -v  - verbose mode.

  Command parameters:
  --------------
    -config=...         - configuration file name.
    Default configuration file Quorvel.cfg.
)";

void PrintHelp() {
    std::fputs(banner, stdout);
    PrintUsage();
}

void PrintUsage() { std::fputs(usage, stdout); }

void PrintArgumentError(const std::string& error) {
    std::fputs(banner, stderr);
    std::fputs(error.c_str(), stderr);
    std::fputs("Use parameter help (-h) to see help on usage.\n", stderr);
}
