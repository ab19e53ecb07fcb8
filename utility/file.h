/// mox::File: functions over the POSIX file system.
///
/// Paths are byte strings that end with a NUL and are handed to the system as they stand. A path
/// is a directory when stat succeeds and the single bit S_IFDIR of the mode is set: symbolic links
/// are followed, and block devices and sockets, whose types contain that bit, count as directories.
///
/// Tests and changes answer with a bool and keep no error code; what yields data throws
/// mox::FileException when it fails. std::bad_alloc can come from everything that makes a path.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "core/buffer_dynamic.h"

namespace mox::File {

/// True when path can be reached and is not a directory. Never throws.
bool IsFileExist(const char* path);

/// True when path can be reached and is a directory. Never throws.
bool IsDirectoryExist(const char* path);

/// Makes the directory at path and every missing one above it, each with mode 0707 less the
/// process's file-creation mask. True when path is a directory afterwards. False, with the
/// directories that could be made left in place, when it is not, when path is null, and when
/// directories are missing above a path of more than 4095 bytes.
bool ForceDirectories(const char* path);

/// True when name begins with ".". flag changes nothing.
bool IsHiddenFile(const char* name, bool flag);

/// True when name is "." or "..".
bool IsPredefinedDirectoryName(const char* name);

/// dir and name with one "/" between them, of which either may bring its own; when both do, one is
/// dropped. An empty dir or name adds nothing, not even the "/". "etc" and "x" give "etc/x", as do
/// "etc/" and "/x"; "etc/" and "//x" give "etc//x".
std::string MergeFilePath(const char* dir, const char* name);

/// What stands before the last "/" of path: "a/b" of "a/b/c" and of "a/b/". All of path when it has
/// no "/".
std::string ExtractFilePath(const std::string& path);

/// The same, but "." when path has no "/".
std::string ExtractPathFromFullname(const std::string& path);

/// The absolute path of the existing file or directory at path, without symbolic links, "." and
/// "..". path itself when it cannot be resolved or the result is longer than 1023 bytes.
std::string GetFullFilePath(const std::string& path);

/// The size of the file at path in bytes, as the end of an opened stream tells it; of a directory
/// that may be any number. Throws mox::FileException: "Cannot open file", or "Cannot read file"
/// when there is no end to seek.
long GetFileSize(const char* path);

/// Renames as the system does, where a file at to is replaced in one step; true on success. With
/// replace, a file (not a directory) at to is removed first: for a moment nothing is there, and
/// when the renaming then fails, the file is lost, as it is when from and to are the same.
bool RenameFile(const char* from, const char* to, bool replace);

/// Removes the file, not the directory, at path; true on success.
bool EraseFile(const char* path);

/// Loads the whole file into data, whose old contents go first, and returns its size in bytes: 0
/// for files of the system's own that tell no size. name must not stand in data. Throws
/// mox::FileException: "Error shrinking data buffer" with data as it was, or "Error loading file
/// \"" + name + "\", code: 0x" + the result code in lowercase hexadecimal with data as
/// BufferDynamic::Load leaves an empty buffer.
unsigned long GetFileData(const char* name, qel::BufferDynamic& data);

/// An entry of a directory.
struct FileInfo {
    std::string name;      ///< as the directory lists it
    std::string fullPath;  ///< the directory's path, as it was given, merged with the name
    bool isDirectory;      ///< what IsDirectoryExist says of fullPath
};

/// Calls callback with each entry of the directory at dir and with context, in the order in which
/// the system lists them. "." and ".." are left out, with skipHidden other hidden entries too. With
/// recursive the entries of a directory follow it, there always without hidden ones, and one
/// descriptor is open for each level. A symbolic link to a directory is one; a link that leads back
/// up is followed as often as the system allows (40 times on Linux), and several multiply.
///
///     bool CountFiles(const mox::File::FileInfo& entry, void* count) {
///         if (!entry.isDirectory) ++*static_cast<int*>(count);
///         return true;
///     }
///     int count = 0;
///     mox::File::FindAllFilesInDirectory("readers", CountFiles, &count, true, true);
///
/// False when the callback stopped the walk, on whatever level, by returning false; true when it
/// ran to its end. Throws mox::FileException, "Error opening directory" (a socket or a block device
/// within a recursive walk gives it too) or "Error reading directory", on whatever level, and lets
/// the callback's exceptions pass.
bool FindAllFilesInDirectory(const char* dir, bool (*callback)(const FileInfo&, void*),
                             void* context, bool recursive, bool skipHidden);

/// The same walk; appends the entries to found, which keeps those found before an exception. dir
/// may stand in found.
bool FindAllFilesInDirectory(const char* dir, std::vector<FileInfo>& found, bool recursive,
                             bool skipHidden);

/// Owns an open stdio stream and closes it at the end of the scope. The result of closing is not
/// examined.
class Guard {
public:
    /// Takes the stream over; a null stream is not closed.
    explicit Guard(std::FILE* openStream) : stream(openStream) {}

    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard();

private:
    std::FILE* stream;
};

}  // namespace mox::File
