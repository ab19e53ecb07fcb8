#include "app/command_line.h"

#include <gtest/gtest.h>

// No process shows this one: the kernel fills an empty argument vector.
TEST(CommandLine, MayBeEmpty) {
    EXPECT_EQ(ParseCommandLine(0, nullptr).error, "Not enough parameters.\n");
}
