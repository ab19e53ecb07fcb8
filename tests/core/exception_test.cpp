#include "core/exception.h"

#include <gtest/gtest.h>

namespace {

using qel::Exception;

TEST(QelException, MapsResultCodesToMnemonics) {
    using Row = std::pair<unsigned long, std::string>;
    for (const auto& [code, mnemonic] :
         {Row{0, "SUCCESS"}, Row{2, "ERROR_FILE_NOT_FOUND"}, Row{13, "ERROR_DATA"},
          Row{29, "ERROR_WRITE"}, Row{30, "ERROR_READ"}, Row{86, "ERROR_PASSWORD"},
          Row{87, "ERROR_PARAM"}, Row{110, "ERROR_FILE_OPEN"}, Row{122, "ERROR_SIZE"},
          Row{1113, "NO_UNICODE_TRANSLATION"}, Row{1117, "ERROR_IO"},
          Row{1639, "INVALID_COMMAND_LINE"}, Row{0x80004001, "ERROR_NOT_IMPLEMENTED"},
          Row{0x8009000E, "ERROR_MEM"}, Row{0x80090011, "ERROR_ITEM_NOT_FOUND"},
          Row{0x80090020, "ERROR_INTERNAL"}, Row{1, ""}, Row{0x18009000E, ""}}) {
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
