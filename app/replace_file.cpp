#include "app/replace_file.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/random.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>
#include <string_view>
#include <thread>

#include "app/byte_search.h"
#include "app/file_metadata.h"
#include "core/exception.h"
#include "core/result_codes.h"

namespace {

constexpr int maxLockRetries = 2000;
constexpr std::chrono::milliseconds lockRetryInterval(1);

/// Returns path without symbolic links; path itself if that is too long for the system.
std::string ResolveLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&::free)> resolved(::realpath(path.c_str(), nullptr),
                                                            ::free);
    return resolved ? resolved.get() : path;
}

/// Returns an empty name, which no file can have, if the system has no random bytes.
std::string UnpredictableName() {
    unsigned char random[8];
    if (::getentropy(random, sizeof random) != 0) return "";
    return ".quorvel-" + qel::Buffer(random, sizeof random).ToHex(0, 0, "");
}

/// A private temporary file, removed at the end of the scope unless renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(int directoryFd)
        : directory(directoryFd),
          name(UnpredictableName()),
          file(::openat(directory, name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, 0600)) {}
    ~TemporaryFile() {
        if (file.IsOpen() && !renamed) ::unlinkat(directory, name.c_str(), 0);
    }

    bool RenameTo(const std::string& newName) {
        renamed = ::renameat(directory, name.c_str(), directory, newName.c_str()) == 0;
        return renamed;
    }

    const int directory;
    const std::string name;
    const FileDescriptor file;

private:
    bool renamed = false;
};

/// Replaces contents by those of the open file, with the result codes of BufferDynamic::Load.
unsigned long ReadCompletely(int fd, qel::BufferDynamic& contents) {
    const off_t size = ::lseek(fd, 0, SEEK_END);
    if (size < 0) return qel::ERROR_IO;
    if (const auto result = contents.Alloc(static_cast<unsigned long>(size))) return result;
    for (off_t position = 0; position < size;) {
        char* const next = static_cast<char*>(contents.GetData()) + position;
        const ssize_t count =
            ::pread(fd, next, static_cast<std::size_t>(size - position), position);
        if (count <= 0) return qel::ERROR_READ;
        position += count;
    }
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

/// Returns whether name in the directory is known to be another file than the open one.
bool IsOtherFile(int directory, const std::string& name, int fd) {
    struct stat named, opened;
    return ::fstatat(directory, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           ::fstat(fd, &opened) == 0 && !IsSameFile(named, opened);
}

/// Makes a rename durable. Best effort: the file is consistent anyway.
void SyncDirectory(int directory) {
    const FileDescriptor readable(::openat(directory, ".", O_RDONLY));
    if (readable.IsOpen()) SyncToDisk(readable.fd);
}

}  // namespace

FileDescriptor::~FileDescriptor() {
    if (IsOpen()) ::close(fd);
}

ReplaceableFile::ReplaceableFile(const std::string& path)
    : target(ResolveLinks(path)),
      name(target.substr(target.rfind('/') + 1)),
      directory(OpenDirectory(target.substr(0, target.size() - name.size()))) {}

void ReplaceableFile::Load(qel::BufferDynamic& contents) {
    const FileDescriptor file(::openat(directory.fd, name.c_str(), O_RDONLY | O_NOFOLLOW));
    if (!file.IsOpen()) throw qel::Exception(qel::ERROR_FILE_OPEN);
    Lock(file.fd, LOCK_SH);
    // Before reading, so that Replace also detects a change in between.
    if (::fstat(file.fd, &loaded) != 0) throw qel::Exception(qel::ERROR_IO);
    qel::ThrowUnlessSuccess(ReadCompletely(file.fd, contents));
}

bool ReplaceableFile::Replace(const qel::Buffer& contents) {
    const FileDescriptor file(::openat(directory.fd, name.c_str(), O_RDWR | O_NOFOLLOW));
    if (!file.IsOpen()) throw qel::Exception(qel::ERROR_WRITE);
    Lock(file.fd, LOCK_EX);
    if (!IsUnchanged(file.fd)) return false;
    Outcome outcome = ReplaceAtomically(file.fd, contents);
    if (outcome == Outcome::Impossible) outcome = WriteInPlace(file.fd, contents);
    return outcome == Outcome::Replaced;
}

void ReplaceableFile::Lock(int fd, int operation) {
    // Never blocks: the lock can belong to a process that waits for this one.
    while (::flock(fd, operation | LOCK_NB) != 0 && errno == EWOULDBLOCK &&
           lockRetries < maxLockRetries) {
        std::this_thread::sleep_for(lockRetryInterval);
        ++lockRetries;
    }
}

bool ReplaceableFile::IsUnchanged(int fd) const {
    struct stat opened, named;
    if (::fstat(fd, &opened) != 0 ||
        ::fstatat(directory.fd, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0) {
        throw qel::Exception(qel::ERROR_WRITE);
    }
    return IsSameVersion(opened, loaded) && IsSameFile(named, loaded);
}

ReplaceableFile::Outcome ReplaceableFile::ReplaceAtomically(int fd,
                                                            const qel::Buffer& contents) const {
    if (!S_ISREG(loaded.st_mode) || loaded.st_nlink != 1) return Outcome::Impossible;
    TemporaryFile temporary(directory.fd);
    if (!temporary.file.IsOpen()) return Outcome::Impossible;
    // Contents first: writing clears set-id bits and capabilities.
    if (!WriteAt(temporary.file.fd, 0, AsStringView(contents))) {
        throw qel::Exception(qel::ERROR_WRITE);
    }
    if (!CopyMetadata(fd, loaded, temporary.file.fd)) return Outcome::Impossible;
    if (!SyncToDisk(temporary.file.fd)) throw qel::Exception(qel::ERROR_WRITE);
    if (!IsUnchanged(fd)) return Outcome::Changed;
    if (!temporary.RenameTo(name)) return Outcome::Impossible;
    // Whoever can write the directory can have exchanged the temporary file.
    if (IsOtherFile(directory.fd, name, temporary.file.fd)) throw qel::Exception(qel::ERROR_WRITE);
    SyncDirectory(directory.fd);
    return Outcome::Replaced;
}

ReplaceableFile::Outcome ReplaceableFile::WriteInPlace(int fd, const qel::Buffer& contents) const {
    qel::BufferDynamic old;
    qel::ThrowUnlessSuccess(ReadCompletely(fd, old));
    if (!IsUnchanged(fd)) return Outcome::Changed;
    if (OverwriteDifference(fd, AsStringView(old), AsStringView(contents))) {
        return Outcome::Replaced;
    }
    OverwriteDifference(fd, AsStringView(contents), AsStringView(old));
    throw qel::Exception(qel::ERROR_WRITE);
}
