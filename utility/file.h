/// mox::File: functions over the POSIX file system.
///
/// Paths are NUL-terminated byte strings, passed to the system unchanged. A path is a directory if
/// stat succeeds and the single bit S_IFDIR of the mode is set: symbolic links are followed, and
/// block devices and sockets, whose types contain that bit, count as directories.
///
/// Tests and modifiers return a bool without an error code; functions that return data throw
/// mox::FileException. Functions that build a path can throw std::bad_alloc.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "core/buffer_dynamic.h"

namespace mox::File {

/// Returns whether path exists, is accessible and is not a directory. Never throws.
bool IsFileExist(const char* path);

/// Returns whether path exists, is accessible and is a directory. Never throws.
bool IsDirectoryExist(const char* path);

/// Creates path and its missing parents, with mode 0707 & ~umask. Returns whether path is then a
/// directory; false for null, and for a path of more than 4095 bytes whose parents are missing. On
/// failure the directories created so far remain.
bool ForceDirectories(const char* path);

/// Returns whether name begins with "."; flag is ignored.
bool IsHiddenFile(const char* name, bool flag);

/// Returns whether name is "." or "..".
bool IsPredefinedDirectoryName(const char* name);

/// Joins dir and name with a "/", unless one of them has it; if both do, one is dropped. If either
/// is empty, returns the other. "etc" and "x" give "etc/x", as do "etc/" and "/x"; "etc/" and "//x"
/// give "etc//x".
std::string MergeFilePath(const char* dir, const char* name);

/// Returns path up to, not including, its last "/": "a/b" of "a/b/c" and of "a/b/". All of path if
/// it has no "/".
std::string ExtractFilePath(const std::string& path);

/// The same, but "." if path has no "/".
std::string ExtractPathFromFullname(const std::string& path);

/// Returns the absolute path of the existing file or directory at path, without symbolic links, "."
/// and "..". Returns path itself if it cannot be resolved or the result is longer than 1023 bytes.
std::string GetFullFilePath(const std::string& path);

/// Returns the size in bytes of the file at path, found by seeking to the end; unspecified for a
/// directory. Throws mox::FileException: "Cannot open file", or "Cannot read file" if seeking
/// fails.
long GetFileSize(const char* path);

/// rename(2), which replaces a file at to atomically; true on success. With replace, a file (not a
/// directory) at to is removed first: it is lost if the rename then fails, or if from and to are
/// the same.
bool RenameFile(const char* from, const char* to, bool replace);

/// Removes the file, not a directory, at path; true on success.
bool EraseFile(const char* path);

/// Empties data, loads the file into it and returns its size: 0 for special files that report none.
/// name must not point into data. Throws mox::FileException: "Error shrinking data buffer" with
/// data unchanged, or "Error loading file \"" + name + "\", code: 0x" + the result code in
/// lowercase hexadecimal with data as BufferDynamic::Load leaves an empty buffer.
unsigned long GetFileData(const char* name, qel::BufferDynamic& data);

/// An entry of a directory.
struct FileInfo {
    std::string name;      ///< as listed by the directory
    std::string fullPath;  ///< the directory's path as it was given, merged with the name
    bool isDirectory;      ///< what IsDirectoryExist says of fullPath
};

/// Calls callback with each entry of the directory at dir and with context, in the system's order.
/// "." and ".." are left out, with skipHidden other hidden entries too. With recursive, a
/// directory's entries follow it, always without hidden ones; one descriptor is open per level.
/// Symbolic links to directories are followed; a cycle ends at the system's limit (40 on Linux),
/// and several cycles multiply.
///
///     bool CountFiles(const mox::File::FileInfo& entry, void* count) {
///         if (!entry.isDirectory) ++*static_cast<int*>(count);
///         return true;
///     }
///     int count = 0;
///     mox::File::FindAllFilesInDirectory("readers", CountFiles, &count, true, true);
///
/// False if the callback stopped the walk by returning false; otherwise true. Throws
/// mox::FileException, "Error opening directory" (also for a socket or block device within a
/// recursive walk) or "Error reading directory", and passes on the callback's exceptions.
bool FindAllFilesInDirectory(const char* dir, bool (*callback)(const FileInfo&, void*),
                             void* context, bool recursive, bool skipHidden);

/// The same walk; appends the entries to found, which keeps those found before an exception. dir
/// may point into found.
bool FindAllFilesInDirectory(const char* dir, std::vector<FileInfo>& found, bool recursive,
                             bool skipHidden);

/// Owns an open stdio stream and closes it at the end of the scope, ignoring errors. Not copyable.
class Guard {
public:
    /// Takes ownership of the stream; null is allowed.
    explicit Guard(std::FILE* openStream) : stream(openStream) {}

    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard();

private:
    std::FILE* stream;
};

}  // namespace mox::File
