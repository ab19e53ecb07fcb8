#include "app/replace_file.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string_view>

#if defined(__APPLE__)
#include <copyfile.h>
#else
#include <linux/limits.h>
#include <sys/xattr.h>

#include <cerrno>
#include <map>
#endif

#include "app/byte_search.h"
#include "core/buffer_dynamic.h"
#include "core/result_codes.h"
#include "utility/file.h"

namespace {

/// An open file, closed at the end of the scope.
struct Descriptor {
    explicit Descriptor(int openFile) : number(openFile) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (IsOpen()) ::close(number);
    }

    bool IsOpen() const { return number >= 0; }

    const int number;
};

/// A new file of this user's alone, removed at the end of the scope unless it was moved away.
class Temporary {
public:
    explicit Temporary(const std::string& folder)
        : path(folder + ".quorvel-XXXXXX"), file(::mkstemp(path.data())) {}
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary() {
        if (file.IsOpen() && !moved) mox::File::EraseFile(path.c_str());
    }

    bool MoveTo(const std::string& target) {
        moved = mox::File::RenameFile(path.c_str(), target.c_str(), false);
        return moved;
    }

    std::string path;
    const Descriptor file;

private:
    bool moved = false;
};

#if defined(__APPLE__)

// Not tried, nor whether ACL entries that the folder hands down stay: no macOS was at hand.
bool CopyAttributes(int from, int to) {
    return ::fcopyfile(from, to, nullptr, COPYFILE_ACL | COPYFILE_XATTR) == 0;
}

// fsync leaves the bytes in the drive's own cache there. Not tried: no macOS was at hand.
bool Flush(int file) { return ::fcntl(file, F_FULLFSYNC) == 0 || ::fsync(file) == 0; }

#else

using Attributes = std::map<std::string, std::string>;

/// The extended attributes, ACLs among them; nothing when they cannot be read.
std::optional<Attributes> ReadAttributes(int file) {
    // The most that the system hands out. Static: where memory is short, a stack that has to grow
    // for them ends the process.
    static char names[XATTR_LIST_MAX], value[XATTR_SIZE_MAX];
    const ssize_t length = ::flistxattr(file, names, sizeof names);
    if (length < 0 && errno == ENOTSUP) return Attributes();
    if (length < 0) return std::nullopt;
    Attributes attributes;
    for (const char* name = names; name < names + length;
         name += std::string_view(name).size() + 1) {
        const ssize_t size = ::fgetxattr(file, name, value, sizeof value);
        if (size < 0) return std::nullopt;
        attributes.emplace(name, std::string(value, static_cast<std::size_t>(size)));
    }
    return attributes;
}

/// Gives one file the attributes of another, and takes from it those that only its folder gave it.
bool CopyAttributes(int from, int to) {
    const auto wanted = ReadAttributes(from), present = ReadAttributes(to);
    if (!wanted || !present) return false;
    for (const auto& [name, value] : *present) {
        if (!wanted->contains(name) && ::fremovexattr(to, name.c_str()) != 0) return false;
    }
    for (const auto& [name, value] : *wanted) {
        // Security modules refuse to set even what is there.
        const auto same = present->find(name);
        if (same != present->end() && same->second == value) continue;
        if (::fsetxattr(to, name.c_str(), value.data(), value.size(), 0) != 0) return false;
    }
    return true;
}

bool Flush(int file) { return ::fsync(file) == 0; }

#endif

bool CopyMetadata(int from, const struct stat& status, int to) {
    // The mode after the owner, whose change drops bits of it.
    return ::fchown(to, status.st_uid, status.st_gid) == 0 && CopyAttributes(from, to) &&
           ::fchmod(to, status.st_mode & 07777) == 0;
}

bool SaveWhole(const qel::Buffer& text, const Temporary& temporary) {
    struct stat status;
    return text.Save(temporary.path.c_str()) == qel::SUCCESS &&
           ::fstat(temporary.file.number, &status) == 0 &&
           static_cast<unsigned long>(status.st_size) == text.GetSize();
}

/// Whether path leads to the file of this status; flag as for fstatat.
bool LeadsTo(const std::string& path, int flag, const struct stat& status) {
    struct stat found;
    return ::fstatat(AT_FDCWD, path.c_str(), &found, flag) == 0 && found.st_dev == status.st_dev &&
           found.st_ino == status.st_ino;
}

/// Makes the new name last. The file is whole without it, so a refusal does not matter.
void FlushFolder(const std::string& folder) {
    const Descriptor opened(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY));
    if (opened.IsOpen()) Flush(opened.number);
}

/// Puts a new file with the text in the place of the one that is open; nothing when that cannot be.
std::optional<unsigned long> ReplaceByNewFile(const std::string& path, int file,
                                              const struct stat& status, const qel::Buffer& text) {
    // A link that cannot be resolved would be replaced itself.
    const std::string target = mox::File::GetFullFilePath(path);
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1 ||
        !LeadsTo(target, AT_SYMLINK_NOFOLLOW, status)) {
        return std::nullopt;
    }

    const std::string folder = target.substr(0, target.rfind('/') + 1);
    Temporary temporary(folder);
    if (!temporary.file.IsOpen()) return std::nullopt;
    // The text first: writing drops bits of the mode and attributes, and in a sticky folder not
    // even root may open another user's file as Save does.
    if (!SaveWhole(text, temporary)) return qel::ERROR_WRITE;
    if (!CopyMetadata(file, status, temporary.file.number)) return std::nullopt;
    if (!Flush(temporary.file.number)) return qel::ERROR_WRITE;
    if (!temporary.MoveTo(target)) return std::nullopt;
    FlushFolder(folder);
    return qel::SUCCESS;
}

bool WriteAt(int file, std::size_t position, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written =
            ::pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(position));
        if (written <= 0) return false;
        position += static_cast<std::size_t>(written);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Makes a file that holds from hold to, writing only behind the bytes that both begin with. With
/// from and to exchanged it undoes what a failure has left half done.
bool Overwrite(int file, std::string_view from, std::string_view to) {
    // Cut first: on some file systems the bytes that go make the room for those that come.
    const bool cut =
        to.size() >= from.size() || ::ftruncate(file, static_cast<off_t>(to.size())) == 0;
    const auto differs = std::mismatch(from.begin(), from.end(), to.begin(), to.end()).second;
    const auto same = static_cast<std::size_t>(differs - to.begin());
    return WriteAt(file, same, to.substr(same)) && cut && Flush(file);
}

unsigned long WriteInPlace(const std::string& path, int file, const struct stat& status,
                           const qel::Buffer& text) {
    qel::BufferDynamic old;
    if (const unsigned long result = old.Load(path.c_str())) return result;
    // Where another file has got the name by now, that one was loaded.
    if (!LeadsTo(path, 0, status)) return qel::ERROR_WRITE;
    if (Overwrite(file, AsStringView(old), AsStringView(text))) return qel::SUCCESS;
    Overwrite(file, AsStringView(text), AsStringView(old));
    return qel::ERROR_WRITE;
}

}  // namespace

unsigned long ReplaceFile(const std::string& path, const qel::Buffer& text) {
    const Descriptor file(::open(path.c_str(), O_RDWR));
    struct stat status;
    if (!file.IsOpen() || ::fstat(file.number, &status) != 0) return qel::ERROR_WRITE;
    const auto result = ReplaceByNewFile(path, file.number, status, text);
    return result ? *result : WriteInPlace(path, file.number, status, text);
}
