#include "utility/file.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <string_view>

#include "core/result_codes.h"
#include "utility/exception.h"

namespace mox::File {

namespace {

// Linux's limit: creating a longer path's parents is pointless.
constexpr std::size_t maxForcedPathLength = 4095;
// macOS's limit, applied everywhere: the result with its NUL fits 1024 bytes.
constexpr std::size_t maxFullPathLength = 1023;

/// Creates the directory. Also succeeds if it exists by now, be it as its own parent: "a/".
bool EnsureDirectory(const char* path) {
    return ::mkdir(path, 0707) == 0 || IsDirectoryExist(path);
}

}  // namespace

bool IsFileExist(const char* path) {
    struct stat status;
    return ::stat(path, &status) == 0 && (status.st_mode & S_IFDIR) == 0;
}

bool IsDirectoryExist(const char* path) {
    struct stat status;
    return ::stat(path, &status) == 0 && (status.st_mode & S_IFDIR) != 0;
}

bool ForceDirectories(const char* path) {
    if (path == nullptr) return false;
    if (IsDirectoryExist(path) || EnsureDirectory(path)) return true;

    const std::string_view text = path;
    const std::size_t lastSlash = text.rfind('/');
    if (lastSlash == std::string_view::npos || text.size() > maxForcedPathLength) return false;
    const std::string parent(text.substr(0, lastSlash));
    return ForceDirectories(parent.c_str()) && EnsureDirectory(path);
}

bool IsHiddenFile(const char* name, bool) { return *name == '.'; }

bool IsPredefinedDirectoryName(const char* name) {
    const std::string_view text = name;
    return text == "." || text == "..";
}

std::string MergeFilePath(const char* dir, const char* name) {
    std::string path = dir;
    if (path.empty()) return name;
    if (*name == '\0') return path;
    if (path.ends_with('/')) path.pop_back();
    if (*name != '/') path += '/';
    return path + name;
}

std::string ExtractFilePath(const std::string& path) { return path.substr(0, path.rfind('/')); }

std::string ExtractPathFromFullname(const std::string& path) {
    return path.find('/') == std::string::npos ? "." : ExtractFilePath(path);
}

std::string GetFullFilePath(const std::string& path) {
    // Let realpath allocate: it could overflow a 1024-byte array.
    const std::unique_ptr<char, decltype(&::free)> resolved(::realpath(path.c_str(), nullptr),
                                                            ::free);
    if (!resolved) return path;
    std::string fullPath = resolved.get();
    return fullPath.size() > maxFullPathLength ? path : fullPath;
}

long GetFileSize(const char* path) {
    std::FILE* const file = std::fopen(path, "rb");
    if (file == nullptr) throw FileException("Cannot open file");
    const Guard guard(file);
    if (std::fseek(file, 0, SEEK_END) != 0) throw FileException("Cannot read file");
    return std::ftell(file);
}

bool RenameFile(const char* from, const char* to, bool replace) {
    if (replace) ::unlink(to);
    return std::rename(from, to) == 0;
}

bool EraseFile(const char* path) { return ::unlink(path) == 0; }

unsigned long GetFileData(const char* name, qel::BufferDynamic& data) {
    if (data.Alloc(0) != qel::SUCCESS) throw FileException("Error shrinking data buffer");
    const unsigned long result = data.Load(name);
    if (result != qel::SUCCESS) {
        // The sixteen digits of the largest code and the NUL.
        char code[17];
        std::snprintf(code, sizeof code, "%lx", result);
        throw FileException(std::string("Error loading file \"") + name + "\", code: 0x" + code);
    }
    return data.GetSize();
}

Guard::~Guard() {
    if (stream != nullptr) std::fclose(stream);
}

}  // namespace mox::File
