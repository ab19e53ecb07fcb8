/// The exceptions of the utility library and of the tool: a message, no code.
#pragma once

#include <exception>
#include <string>

/// The utility library: named values and their files, the file system, strings.
namespace mox {

/// A failure told by a message. Thrown by value, caught by reference.
class Exception : public std::exception {
public:
    /// Keeps a copy of text.
    explicit Exception(const std::string& text);

    /// The message, never null. The characters live as long as this object.
    const char* what() const noexcept override;

private:
    std::string message;
};

/// A failure of the file system.
class FileException : public Exception {
public:
    /// Keeps a copy of text.
    using Exception::Exception;
};

}  // namespace mox
