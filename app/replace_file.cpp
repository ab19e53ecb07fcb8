#include "app/replace_file.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string_view>

#include "app/byte_search.h"
#include "app/file_metadata.h"
#include "core/buffer_dynamic.h"
#include "core/result_codes.h"
#include "utility/file.h"

namespace {

/// An open file, closed at the end of the scope.
struct FileDescriptor {
    explicit FileDescriptor(int openFile) : fd(openFile) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (IsOpen()) ::close(fd);
    }

    bool IsOpen() const { return fd >= 0; }

    const int fd;
};

/// A private temporary file, removed at the end of the scope unless renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& directory)
        : path(directory + ".quorvel-XXXXXX"), file(::mkstemp(path.data())) {}
    ~TemporaryFile() {
        if (file.IsOpen() && !renamed) mox::File::EraseFile(path.c_str());
    }

    bool RenameTo(const std::string& target) {
        renamed = mox::File::RenameFile(path.c_str(), target.c_str(), false);
        return renamed;
    }

    std::string path;
    const FileDescriptor file;

private:
    bool renamed = false;
};

bool WriteCompletely(const qel::Buffer& contents, const TemporaryFile& temporary) {
    struct stat status;
    return contents.Save(temporary.path.c_str()) == qel::SUCCESS &&
           ::fstat(temporary.file.fd, &status) == 0 &&
           static_cast<unsigned long>(status.st_size) == contents.GetSize();
}

/// Returns whether path is the file described by status; flag as for fstatat.
bool IsSameFile(const std::string& path, int flag, const struct stat& status) {
    struct stat found;
    return ::fstatat(AT_FDCWD, path.c_str(), &found, flag) == 0 && found.st_dev == status.st_dev &&
           found.st_ino == status.st_ino;
}

/// Makes a rename durable. Best effort: the file is consistent anyway.
void SyncDirectory(const std::string& directory) {
    const FileDescriptor opened(::open(directory.empty() ? "." : directory.c_str(), O_RDONLY));
    if (opened.IsOpen()) SyncToDisk(opened.fd);
}

/// Replaces the file at path, open as fd, by a new file. Returns SUCCESS or ERROR_WRITE; nullopt,
/// with the file unchanged, if it must be written in place instead.
std::optional<unsigned long> ReplaceAtomically(const std::string& path, int fd,
                                               const struct stat& status,
                                               const qel::Buffer& contents) {
    // If target is still a symbolic link, rename would replace the link.
    const std::string target = mox::File::GetFullFilePath(path);
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1 ||
        !IsSameFile(target, AT_SYMLINK_NOFOLLOW, status)) {
        return std::nullopt;
    }

    const std::string directory = target.substr(0, target.rfind('/') + 1);
    TemporaryFile temporary(directory);
    if (!temporary.file.IsOpen()) return std::nullopt;
    // Contents first: writing clears set-id bits and capabilities, and in sticky directories
    // O_CREAT on another user's file fails even for root.
    if (!WriteCompletely(contents, temporary)) return qel::ERROR_WRITE;
    if (!CopyMetadata(fd, status, temporary.file.fd)) return std::nullopt;
    if (!SyncToDisk(temporary.file.fd)) return qel::ERROR_WRITE;
    if (!temporary.RenameTo(target)) return std::nullopt;
    SyncDirectory(directory);
    return qel::SUCCESS;
}

bool WriteAt(int fd, std::size_t position, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written =
            ::pwrite(fd, bytes.data(), bytes.size(), static_cast<off_t>(position));
        if (written <= 0) return false;
        position += static_cast<std::size_t>(written);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Changes the contents of the open file from old to next, writing only after their common
/// prefix. With the arguments swapped it rolls back a partial write.
bool OverwriteDifference(int fd, std::string_view old, std::string_view next) {
    // Truncate first: on some file systems that frees the space for the new bytes.
    const bool truncated =
        next.size() >= old.size() || ::ftruncate(fd, static_cast<off_t>(next.size())) == 0;
    const auto difference = std::mismatch(old.begin(), old.end(), next.begin(), next.end()).second;
    const auto prefixSize = static_cast<std::size_t>(difference - next.begin());
    return WriteAt(fd, prefixSize, next.substr(prefixSize)) && truncated && SyncToDisk(fd);
}

unsigned long WriteInPlace(const std::string& path, int fd, const struct stat& status,
                           const qel::Buffer& contents) {
    qel::BufferDynamic old;
    if (const unsigned long result = old.Load(path.c_str())) return result;
    // If path was replaced meanwhile, another file was loaded.
    if (!IsSameFile(path, 0, status)) return qel::ERROR_WRITE;
    if (OverwriteDifference(fd, AsStringView(old), AsStringView(contents))) return qel::SUCCESS;
    OverwriteDifference(fd, AsStringView(contents), AsStringView(old));
    return qel::ERROR_WRITE;
}

}  // namespace

unsigned long ReplaceFile(const std::string& path, const qel::Buffer& contents) {
    const FileDescriptor file(::open(path.c_str(), O_RDWR));
    struct stat status;
    if (!file.IsOpen() || ::fstat(file.fd, &status) != 0) return qel::ERROR_WRITE;
    const auto result = ReplaceAtomically(path, file.fd, status, contents);
    return result ? *result : WriteInPlace(path, file.fd, status, contents);
}
