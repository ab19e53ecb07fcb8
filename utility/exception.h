/// The exceptions of the utility library and of the tool: a message, no code.
#pragma once

#include <exception>
#include <string>

/// The utility library: named values and their files, the file system, strings.
namespace mox {

/// An error described by a message. Thrown by value, caught by reference.
class Exception : public std::exception {
public:
    /// Copies text.
    explicit Exception(const std::string& text);

    /// Returns the message, never null, which lives as long as this object.
    const char* what() const noexcept override;

private:
    std::string message;
};

/// A file-system error.
class FileException : public Exception {
public:
    /// Copies text.
    using Exception::Exception;
};

}  // namespace mox
