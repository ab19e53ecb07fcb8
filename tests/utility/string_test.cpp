#include "utility/string.h"

#include <gtest/gtest.h>

#include <tuple>

#include "utility/printable.h"

namespace {

using namespace std::string_literals;

TEST(String, SplitAppendsThePiecesBetweenSeparators) {
    using Row = std::tuple<std::string, std::string, std::vector<std::string>>;
    for (const auto& [text, separators, tokens] :
         {Row{"a,,b,", ",", {"held", "a", "b"}}, Row{",,", ",", {"held"}},
          Row{" a b ", " ,", {"held", "a", "b"}}, Row{" a ", ",", {"held", " a "}},
          Row{"a\0b,\xE0"s, ",\0b"s, {"held", "a\0b"s, "\xE0"}},
          Row{"\r\n", "", {"held", "\r\n"}}}) {
        std::vector<std::string> all{"held"};
        EXPECT_EQ(mox::String::Split(text, separators, all), tokens.size() - 1);
        EXPECT_EQ(all, tokens);
    }
}

TEST(String, ExtractMultiplierTakesTheSuffixOff) {
    std::string value = "1 mbM";
    for (const unsigned long factor : {1ul << 20, 1ul << 20, 1ul})
        EXPECT_EQ(mox::String::ExtractMultiplier(value), factor);
    EXPECT_EQ(value, "1 ");
}

TEST(Printable, EveryByteCounts) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text = {'~', static_cast<char>(byte), ' '};
        EXPECT_EQ(mox::IsStringPrintable(text), byte >= 0x20 && byte <= 0x7E) << byte;
    }
    EXPECT_FALSE(mox::IsStringPrintable("") || mox::IsBufferPrintable(qel::Buffer()));
}

}  // namespace
