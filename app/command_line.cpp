#include "app/command_line.h"

#include <string_view>

namespace {

constexpr std::string_view configOption = "-config=";

Command ReadCommandWord(std::string_view word) {
    if (word == "-help" || word == "-h" || word == "--help") return Command::Help;
    if (word == "restore") return Command::Restore;
    return Command::Update;
}

void ReadOption(std::string_view argument, CommandLine& commandLine) {
    if (argument == "-v") {
        commandLine.verbose = true;
    } else if (argument.size() == 2 && argument.front() == '-') {
        commandLine.error = std::string("Error: Unknown option \"") + argument.back() + "\"\n";
    } else if (argument.starts_with(configOption)) {
        commandLine.configPath = argument.substr(configOption.size());
    } else {
        commandLine.error = "Error: Unknown parameter \"" + std::string(argument) + "\"\n";
    }
}

}  // namespace

CommandLine ParseCommandLine(int argc, const char* const* argv) {
    CommandLine commandLine;
    if (argc < 1) commandLine.error = "Not enough parameters.\n";
    if (argc > 1) commandLine.command = ReadCommandWord(argv[1]);
    // Whoever asks for help gets it, whatever else was typed.
    if (commandLine.command == Command::Help) return commandLine;
    for (int i = 2; i < argc && commandLine.error.empty(); ++i) ReadOption(argv[i], commandLine);
    return commandLine;
}
