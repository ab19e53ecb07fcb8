#include "app/command_line.h"

#include <gtest/gtest.h>

namespace {

TEST(CommandLine, EmptyArgumentVectorIsAnError) {
    const char* const argv[] = {nullptr};
    EXPECT_EQ(ParseCommandLine(0, argv).error, "Not enough parameters.\n");
}

TEST(CommandLine, NoArgumentsMeanUpdateWithDefaults) {
    const char* const argv[] = {"Quorvel", nullptr};
    const CommandLine commandLine = ParseCommandLine(1, argv);
    EXPECT_EQ(commandLine.error, "");
    EXPECT_EQ(commandLine.command, Command::Update);
    EXPECT_EQ(commandLine.configPath, "Quorvel.cfg");
    EXPECT_FALSE(commandLine.verbose);
}

}  // namespace
