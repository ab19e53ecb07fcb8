#include <dirent.h>
#include <errno.h>

#include <memory>

#include "utility/exception.h"
#include "utility/file.h"

namespace mox {

namespace {

/// Returns the next entry; null at the end.
const dirent* ReadEntry(DIR* directory) {
    // Only errno tells the end from an error.
    errno = 0;
    const dirent* const entry = ::readdir(directory);
    if (entry == nullptr && errno != 0) throw FileException("Error reading directory");
    return entry;
}

bool IsSkipped(const char* name, bool skipHidden) {
    return File::IsPredefinedDirectoryName(name) || (skipHidden && File::IsHiddenFile(name, true));
}

File::FileInfo Describe(const char* dir, const char* name) {
    const std::string fullPath = File::MergeFilePath(dir, name);
    return {name, fullPath, File::IsDirectoryExist(fullPath.c_str())};
}

bool FileFoundToVectorCallback(const File::FileInfo& info, void* context) {
    static_cast<std::vector<File::FileInfo>*>(context)->push_back(info);
    return true;
}

}  // namespace

bool File::FindAllFilesInDirectory(const char* dir, bool (*callback)(const FileInfo&, void*),
                                   void* context, bool recursive, bool skipHidden) {
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(dir), ::closedir);
    if (!directory) throw FileException("Error opening directory");
    while (const dirent* const entry = ReadEntry(directory.get())) {
        const char* const name = entry->d_name;
        if (IsSkipped(name, skipHidden)) continue;
        const FileInfo info = Describe(dir, name);
        if (!callback(info, context)) return false;
        // Below the top level hidden entries are always left out.
        if (recursive && info.isDirectory &&
            !FindAllFilesInDirectory(info.fullPath.c_str(), callback, context, true, true)) {
            return false;
        }
    }
    return true;
}

bool File::FindAllFilesInDirectory(const char* dir, std::vector<FileInfo>& found, bool recursive,
                                   bool skipHidden) {
    // dir may point into found, which reallocates.
    const std::string directory = dir;
    return FindAllFilesInDirectory(directory.c_str(), FileFoundToVectorCallback, &found, recursive,
                                   skipHidden);
}

}  // namespace mox
