#include "app/usage.h"

#include <cstdio>

namespace {

// The "%s" is part of the text: the banner is always an argument, never a format.
constexpr const char* banner = "Quorvel version " QUORVEL_VERSION " for %s.\n";

}  // namespace

void PrintHelp() {
    std::fputs(banner, stdout);
    PrintUsage();
}

void PrintUsage() {
    std::puts("Usage: Quorvel <options> <command> <command parameters>");
    std::puts("\nCommands");
    std::puts("--------");
    std::puts(" Update CCID config");
    std::puts("    update");
    std::puts("\n  General options:");
    std::puts("  ----------------");
    std::puts("    -v  - verbose mode.");
    std::puts("\n  Command parameters:");
    std::puts("  --------------");
    std::puts("    -config=...         - configuration file name.");
    std::puts("    Default configuration file Quorvel.cfg.");
}

void PrintArgumentError(const std::string& error) {
    std::fputs(banner, stderr);
    std::fputs(error.c_str(), stderr);
    std::fputs("Use parameter help (-h) to see help on usage.\n", stderr);
}
