/// mox::File: functions over the POSIX file system.
///
/// Paths are byte strings that end with a NUL and are handed to the system as they stand. A path
/// is a directory when stat succeeds and the single bit S_IFDIR of the mode is set: symbolic links
/// are followed, and block devices and sockets, whose types contain that bit, count as directories.
#pragma once

#include <cstdio>

namespace mox::File {

/// True when path can be reached and is not a directory. Never throws.
bool IsFileExist(const char* path);

/// True when path can be reached and is a directory. Never throws.
bool IsDirectoryExist(const char* path);

/// Owns an open stdio stream and closes it at the end of the scope. The result of closing is not
/// examined.
class Guard {
public:
    /// Takes the stream over; a null stream is not closed.
    explicit Guard(std::FILE* openStream) : stream(openStream) {}

    /// Not copied: a stream is closed once.
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    /// Closes the stream.
    ~Guard();

private:
    std::FILE* stream;
};

}  // namespace mox::File
