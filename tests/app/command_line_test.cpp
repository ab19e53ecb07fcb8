#include "app/command_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::string Describe(const std::vector<const char*>& arguments) {
    const CommandLine line = ParseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    const char* const commands[] = {"help ", "update ", "restore "};
    if (!line.error.empty()) return line.error;
    return commands[static_cast<int>(line.command)] + line.configPath + (line.verbose ? " v" : "");
}

TEST(CommandLine, IsACommandWordThenOptions) {
    const std::pair<std::vector<const char*>, const char*> rows[] = {
        {{}, "Not enough parameters.\n"},
        {{"Quorvel", "restore", "-v"}, "restore Quorvel.cfg v"},
        {{"Quorvel", "-config=a", "-v"}, "update Quorvel.cfg v"},
        {{"Quorvel", "update", "-config=a", "-v", "-config=b=c"}, "update b=c v"},
        {{"Quorvel", "update", "-config="}, "update "},
        {{"Quorvel", "-h"}, "help Quorvel.cfg"},
        {{"Quorvel", "-help", "-x", "any"}, "help Quorvel.cfg"},
        {{"Quorvel", "update", "-v", "-V", "-x"}, "Error: Unknown option \"V\"\n"},
        {{"Quorvel", "restore", "-"}, "Error: Unknown parameter \"-\"\n"},
        {{"Quorvel", "update", "vv"}, "Error: Unknown parameter \"vv\"\n"},
        {{"Quorvel", "update", "-config"}, "Error: Unknown parameter \"-config\"\n"}};
    for (const auto& [arguments, description] : rows) EXPECT_EQ(Describe(arguments), description);
}

}  // namespace
