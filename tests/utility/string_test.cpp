#include "utility/string.h"

#include <gtest/gtest.h>

#include <tuple>

#include "utility/printable.h"

namespace {

using namespace std::string_literals;

TEST(String, SplitAppendsThePiecesBetweenSeparators) {
    using Row = std::tuple<std::string, std::string, std::vector<std::string>>;
    for (const auto& [text, separators, tokens] :
         {Row{",a,, b,", ",", {"held", "a", " b"}}, Row{" a,b ", " ,", {"held", "a", "b"}},
          Row{"a\0b,\xE0"s, ",\0b"s, {"held", "a\0b"s, "\xE0"}},
          Row{"\r\n", "", {"held", "\r\n"}}}) {
        std::vector<std::string> all{"held"};
        EXPECT_EQ(mox::String::Split(text, separators, all), tokens.size() - 1);
        EXPECT_EQ(all, tokens);
    }
}

TEST(String, ExtractMultiplierTakesOneSuffixOff) {
    std::string value = "1 mbM";
    EXPECT_TRUE(mox::String::ExtractMultiplier(value) == 1 << 20 && value == "1 mb");
}

TEST(Printable, EveryByteCounts) {
    EXPECT_TRUE(mox::IsStringPrintable(" ~"));
    for (const char* text : {"", "~\x1F", "\x7F~", "~\x80~"})
        EXPECT_FALSE(mox::IsStringPrintable(text)) << text;
}

}  // namespace
