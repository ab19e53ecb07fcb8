#include "core/exception.h"

#include <gtest/gtest.h>

namespace {

using qel::Exception;

TEST(QelException, MapsResultCodesToMnemonics) {
    using Row = std::pair<unsigned long, std::string>;
    for (const auto& [code, mnemonic] :
         {Row{0, "SUCCESS"}, Row{30, "ERROR_READ"}, Row{1113, "NO_UNICODE_TRANSLATION"},
          Row{0x8009000E, "ERROR_MEM"}, Row{1, ""}, Row{0x18009000E, ""}}) {
        EXPECT_EQ(Exception::TResultToMnemonicStr(code), mnemonic) << code;
        EXPECT_EQ(Exception(code).what(), mnemonic.empty() ? "Unknown error" : mnemonic) << code;
    }
}

TEST(QelException, FormatsAnyCodeInHexadecimal) {
    EXPECT_EQ(Exception::GetResultStringA(0), "Unknown error (0x00000000)");
    EXPECT_EQ(Exception::GetResultStringA(~0ul), "Unknown error (0xffffffffffffffff)");
}

struct WithWideMessage : Exception {
    WithWideMessage() : Exception(87, "narrow") { messageW = L"wide"; }
};

TEST(QelException, ReturnsTheMessagesThatItWasGiven) {
    const WithWideMessage exception;
    EXPECT_EQ(exception.code, 87);
    EXPECT_STREQ(exception.what(), "narrow");
    EXPECT_STREQ(exception.whatW(), L"wide");
    EXPECT_STREQ(Exception(87, "narrow").whatW(), L"");
}

}  // namespace
