/// qel::Exception: an exception that carries a result code.
///
/// Thrown by operations that cannot return a code (constructors, assignments, functions that return
/// data), and by callers for whom a code is fatal. Thrown by value, caught by reference. Its
/// operations can throw std::bad_alloc.
#pragma once

#include <exception>
#include <string>

namespace qel {

class Exception : public std::exception {
public:
    /// The message is the code's mnemonic, or "Unknown error" for a code without one.
    explicit Exception(unsigned long resultCode);

    /// The message is a copy of text (NUL-terminated).
    Exception(unsigned long resultCode, const char* text);

    /// Returns the message, which lives as long as this object.
    const char* what() const noexcept override;

    /// Returns the wide message, which lives as long as this object; a static empty text unless a
    /// derived class has set messageW.
    virtual const wchar_t* whatW() const noexcept;

    /// Returns the mnemonic of a code, for example "ERROR_MEM", or "Unknown error".
    static std::string GetResultString(unsigned long resultCode);

    /// Returns "Unknown error (0x0000000d)": any code, 0 included, in at least eight lower-case hex
    /// digits.
    static std::string GetResultStringA(unsigned long resultCode);

    /// Returns the mnemonic of a code, or an empty string for a code without one.
    static std::string TResultToMnemonicStr(unsigned long resultCode);

    unsigned long code;  ///< the result code, never changed by this class

protected:
    std::wstring messageW;  ///< returned by whatW()
    std::string message;    ///< returned by what()
};

/// Throws Exception(resultCode) for any code but SUCCESS.
void ThrowUnlessSuccess(unsigned long resultCode);

}  // namespace qel
