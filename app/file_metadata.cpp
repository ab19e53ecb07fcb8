#include "app/file_metadata.h"

#include <fcntl.h>
#include <unistd.h>

#if defined(__APPLE__)
#include <copyfile.h>
#else
#include <linux/limits.h>
#include <sys/xattr.h>

#include <cerrno>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#endif

namespace {

bool IsSameTime(const timespec& first, const timespec& second) {
    return first.tv_sec == second.tv_sec && first.tv_nsec == second.tv_nsec;
}

#if defined(__APPLE__)

// Untested on macOS; inherited ACL entries may remain.
bool CopyAttributes(int from, int to) {
    return ::fcopyfile(from, to, nullptr, COPYFILE_ACL | COPYFILE_XATTR) == 0;
}

#else

using Attributes = std::map<std::string, std::string>;

/// Returns the extended attributes, ACLs among them; nullopt if they cannot be read.
std::optional<Attributes> ReadAttributes(int fd) {
    // The system's limits. Static, because failing to grow the stack would kill the process.
    static char names[XATTR_LIST_MAX], value[XATTR_SIZE_MAX];
    const ssize_t length = ::flistxattr(fd, names, sizeof names);
    if (length < 0 && errno == ENOTSUP) return Attributes();
    if (length < 0) return std::nullopt;
    Attributes attributes;
    for (const char* name = names; name < names + length;
         name += std::string_view(name).size() + 1) {
        const ssize_t size = ::fgetxattr(fd, name, value, sizeof value);
        if (size < 0) return std::nullopt;
        attributes.emplace(name, std::string(value, static_cast<std::size_t>(size)));
    }
    return attributes;
}

bool CopyAttributes(int from, int to) {
    const auto wanted = ReadAttributes(from), present = ReadAttributes(to);
    if (!wanted || !present) return false;
    for (const auto& [name, value] : *present) {
        if (!wanted->contains(name) && ::fremovexattr(to, name.c_str()) != 0) return false;
    }
    for (const auto& [name, value] : *wanted) {
        // Security modules may refuse even the current value.
        const auto same = present->find(name);
        if (same != present->end() && same->second == value) continue;
        if (::fsetxattr(to, name.c_str(), value.data(), value.size(), 0) != 0) return false;
    }
    return true;
}

#endif

}  // namespace

int OpenDirectory(const std::string& path) {
    const char* const directory = path.empty() ? "." : path.c_str();
#if defined(O_PATH)
    return ::open(directory, O_PATH | O_DIRECTORY);
#else
    // Untested on macOS.
    return ::open(directory, O_SEARCH | O_DIRECTORY);
#endif
}

bool IsSameFile(const struct stat& first, const struct stat& second) {
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool IsSameVersion(const struct stat& first, const struct stat& second) {
#if defined(__APPLE__)
    const bool sameTimes = IsSameTime(first.st_mtimespec, second.st_mtimespec) &&
                           IsSameTime(first.st_ctimespec, second.st_ctimespec);
#else
    const bool sameTimes =
        IsSameTime(first.st_mtim, second.st_mtim) && IsSameTime(first.st_ctim, second.st_ctim);
#endif
    return IsSameFile(first, second) && first.st_size == second.st_size && sameTimes;
}

bool CopyMetadata(int from, const struct stat& status, int to) {
    // Mode after owner: chown clears the set-id bits.
    return ::fchown(to, status.st_uid, status.st_gid) == 0 && CopyAttributes(from, to) &&
           ::fchmod(to, status.st_mode & 07777) == 0;
}

bool SyncToDisk(int fd) {
#if defined(__APPLE__)
    // fsync does not flush the drive's cache there. Untested on macOS.
    if (::fcntl(fd, F_FULLFSYNC) == 0) return true;
#endif
    return ::fsync(fd) == 0;
}
