#include "core/exception.h"

#include <stdio.h>

#include <utility>

#include "core/result_codes.h"

namespace qel {

namespace {

// Small enough for linear search, and a constexpr array needs no start-up code.
constexpr std::pair<unsigned long, const char*> mnemonics[] = {
    {SUCCESS, "SUCCESS"},
    {ERROR_FILE_NOT_FOUND, "ERROR_FILE_NOT_FOUND"},
    {ERROR_DATA, "ERROR_DATA"},
    {ERROR_WRITE, "ERROR_WRITE"},
    {ERROR_READ, "ERROR_READ"},
    {ERROR_PASSWORD, "ERROR_PASSWORD"},
    {ERROR_PARAM, "ERROR_PARAM"},
    {ERROR_FILE_OPEN, "ERROR_FILE_OPEN"},
    {ERROR_SIZE, "ERROR_SIZE"},
    {NO_UNICODE_TRANSLATION, "NO_UNICODE_TRANSLATION"},
    {ERROR_IO, "ERROR_IO"},
    {INVALID_COMMAND_LINE, "INVALID_COMMAND_LINE"},
    {ERROR_NOT_IMPLEMENTED, "ERROR_NOT_IMPLEMENTED"},
    {ERROR_MEM, "ERROR_MEM"},
    {ERROR_ITEM_NOT_FOUND, "ERROR_ITEM_NOT_FOUND"},
    {ERROR_INTERNAL, "ERROR_INTERNAL"},
};

}  // namespace

Exception::Exception(unsigned long resultCode)
    : code(resultCode), message(GetResultString(resultCode)) {}

Exception::Exception(unsigned long resultCode, const char* text)
    : code(resultCode), message(text) {}

const char* Exception::what() const noexcept { return message.c_str(); }

const wchar_t* Exception::whatW() const noexcept {
    return messageW.empty() ? L"" : messageW.c_str();
}

std::string Exception::GetResultString(unsigned long resultCode) {
    const std::string mnemonic = TResultToMnemonicStr(resultCode);
    return mnemonic.empty() ? "Unknown error" : mnemonic;
}

std::string Exception::GetResultStringA(unsigned long resultCode) {
    // Holds the text around the digits and the sixteen digits of the largest code.
    char text[48];
    ::snprintf(text, sizeof text, "Unknown error (0x%08lx)", resultCode);
    return text;
}

std::string Exception::TResultToMnemonicStr(unsigned long resultCode) {
    for (const auto& [code, mnemonic] : mnemonics) {
        if (code == resultCode) return mnemonic;
    }
    return "";
}

void ThrowUnlessSuccess(unsigned long resultCode) {
    if (resultCode != SUCCESS) throw Exception(resultCode);
}

}  // namespace qel
