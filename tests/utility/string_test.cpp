#include "utility/string.h"

#include <gtest/gtest.h>

#include <tuple>

#include "utility/printable.h"

namespace {

using namespace std::string_literals;
using Tokens = std::vector<std::string>;

TEST(String, SplitAppendsTheNonEmptyPieces) {
    using Row = std::tuple<std::string, std::string, Tokens>;
    for (const auto& [text, separators, expected] :
         {Row{",a,, b,", ",", {"old", "a", " b"}}, Row{" a,b ", " ,", {"old", "a", "b"}},
          Row{"a\0b,\xE0"s, ",\0b"s, {"old", "a\0b"s, "\xE0"}}, Row{"a", "", {"old", "a"}}}) {
        Tokens tokens{"old"};
        EXPECT_EQ(mox::String::Split(text, separators, tokens), expected.size() - 1) << text;
        EXPECT_EQ(tokens, expected) << text;
    }
}

TEST(String, ExtractMultiplierRemovesOneSuffix) {
    std::string value = "1 mbM";
    EXPECT_EQ(mox::String::ExtractMultiplier(value), 1ul << 20);
    EXPECT_EQ(value, "1 mb");
}

TEST(Printable, EveryByteMustBePrintableAscii) {
    EXPECT_TRUE(mox::IsStringPrintable(" ~"));
    for (const char* text : {"", "~\x1F", "\x7F~", "~\x80~"})
        EXPECT_FALSE(mox::IsStringPrintable(text)) << text;
}

}  // namespace
