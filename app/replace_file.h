/// Race-safe, crash-safe replacement of a file's contents.
#pragma once

#include <sys/stat.h>

#include <string>

#include "core/buffer_dynamic.h"

/// An open file or directory, closed at the end of the scope. fd is negative if it is not open.
struct FileDescriptor {
    explicit FileDescriptor(int openFile) : fd(openFile) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    bool IsOpen() const { return fd >= 0; }

    const int fd;
};

/// A file whose contents are loaded and then replaced.
///
/// The symbolic links of its path are followed once, by the constructor. Whoever exchanges a link,
/// a directory or the file afterwards cannot redirect a write to another file.
///
/// Load and Replace lock the file (flock) while they run, so that other processes that do the same
/// neither read a partly written file nor overwrite each other's changes. If the lock cannot be
/// taken for about two seconds in all, they continue without it.
///
///     ReplaceableFile file("Info.plist");
///     qel::BufferDynamic contents;
///     do {
///         file.Load(contents);
///         Edit(contents);
///     } while (!file.Replace(contents));
class ReplaceableFile {
public:
    /// Follows the links of path and opens the directory of the file. On failure, Load throws.
    explicit ReplaceableFile(const std::string& path);

    /// Replaces contents by those of the file. Throws qel::Exception with the result codes of
    /// BufferDynamic::Load; contents can then have changed.
    void Load(qel::BufferDynamic& contents);

    /// Replaces the contents of the file and syncs it to disk. Returns false, with the file
    /// untouched, if another process changed or replaced the file since Load.
    ///
    /// A regular file with one hard link is replaced atomically by a new file with the same owner,
    /// mode, ACL and extended attributes: after a crash of the process or the system, the path
    /// leads to the complete old or new contents. The rename is synced only if the directory can
    /// be. A killed process can leave the new file in the same directory; its name begins with
    /// ".quorvel-".
    ///
    /// If that is impossible (more hard links, no permission for the directory or the owner, a
    /// mount point), the bytes that differ are overwritten in place. Errors are rolled back, but a
    /// crash in between leaves a mixture.
    ///
    /// Throws qel::Exception: ERROR_WRITE if the file cannot be opened for writing or the bytes
    /// cannot be stored; when written in place, also ERROR_IO, ERROR_MEM or ERROR_READ if the old
    /// contents cannot be read for the rollback. Throws std::bad_alloc when out of memory. The file
    /// is then unchanged, unless the rollback failed too.
    ///
    /// REQUIRES: Load succeeded.
    bool Replace(const qel::Buffer& contents);

private:
    enum class Outcome { Replaced, Changed, Impossible };

    void Lock(int fd, int operation);
    bool IsUnchanged(int fd) const;
    Outcome ReplaceAtomically(int fd, const qel::Buffer& contents) const;
    Outcome WriteInPlace(int fd, const qel::Buffer& contents) const;

    const std::string target;        ///< the path without symbolic links
    const std::string name;          ///< its last component
    const FileDescriptor directory;  ///< the rest
    struct stat loaded = {};         ///< identifies the file, and the version that was loaded
    int lockRetries = 0;
};
