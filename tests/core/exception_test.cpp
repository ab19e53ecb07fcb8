#include "core/exception.h"

#include <gtest/gtest.h>

namespace {

using qel::Exception;
using Code = std::pair<unsigned long, std::string>;

TEST(QelException, CarriesACodeAndItsTexts) {
    for (const auto& [code, mnemonic] :
         {Code{0, "SUCCESS"}, Code{1, ""}, Code{2, "ERROR_FILE_NOT_FOUND"}, Code{13, "ERROR_DATA"},
          Code{30, "ERROR_READ"}, Code{86, "ERROR_PASSWORD"}, Code{87, "ERROR_PARAM"},
          Code{122, "ERROR_SIZE"}, Code{1113, "NO_UNICODE_TRANSLATION"}, Code{1117, "ERROR_IO"},
          Code{1639, "INVALID_COMMAND_LINE"}, Code{2147500033, "ERROR_NOT_IMPLEMENTED"},
          Code{2148073489, "ERROR_ITEM_NOT_FOUND"}, Code{2148073504, "ERROR_INTERNAL"},
          Code{0x18009000E, ""}}) {
        EXPECT_EQ(Exception::TResultToMnemonicStr(code), mnemonic) << code;
        EXPECT_EQ(Exception(code).what(), mnemonic.empty() ? "Unknown error" : mnemonic) << code;
    }
    EXPECT_EQ(Exception::GetResultStringA(0), "Unknown error (0x00000000)");
    EXPECT_EQ(Exception::GetResultStringA(~0ul), "Unknown error (0xffffffffffffffff)");
    const Exception exception(87, "given");
    EXPECT_EQ(exception.what() + std::to_string(exception.code), "given87");
    EXPECT_STREQ(exception.whatW(), L"");
}

}  // namespace
