#include "app/command_line.h"

#include <string_view>

namespace {

constexpr std::string_view configOption = "-config=";

Command ReadCommandWord(std::string_view word) {
    if (word == "-help" || word == "-h" || word == "--help") return Command::Help;
    if (word == "restore") return Command::Restore;
    return Command::Update;
}

void ReadOption(std::string_view argument, CommandLine& line) {
    if (argument == "-v") {
        line.verbose = true;
    } else if (argument.size() == 2 && argument.front() == '-') {
        line.error = std::string("Error: Unknown option \"") + argument.back() + "\"\n";
    } else if (argument.starts_with(configOption)) {
        line.configPath = argument.substr(configOption.size());
    } else {
        line.error = "Error: Unknown parameter \"" + std::string(argument) + "\"\n";
    }
}

}  // namespace

CommandLine ParseCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    if (argc < 1) line.error = "Not enough parameters.\n";
    if (argc > 1) line.command = ReadCommandWord(argv[1]);
    // Whoever asks for help gets it, whatever else was typed.
    if (line.command == Command::Help) return line;
    for (int i = 2; i < argc && line.error.empty(); ++i) ReadOption(argv[i], line);
    return line;
}
