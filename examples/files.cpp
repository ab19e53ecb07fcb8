// Files and folders: the lists of the drivers that are there, and how large they are.
#include <cstdio>
#include <string>

#include "utility/exception.h"
#include "utility/file.h"

namespace {

bool PrintSize(const mox::File::FileInfo& entry, void* count) {
    if (entry.isDirectory) return true;  // false would end the walk
    ++*static_cast<int*>(count);
    std::printf("%s: %ld bytes\n", entry.name.c_str(),
                mox::File::GetFileSize(entry.fullPath.c_str()));
    return true;
}

}  // namespace

int main() {
    // Tests and changes answer with a bool and tell no reason.
    if (!mox::File::ForceDirectories("drivers/ccid")) return 1;
    const std::string path = mox::File::MergeFilePath("drivers/ccid", "Info.plist");
    if (std::FILE* const stream = std::fopen(path.c_str(), "w")) {
        const mox::File::Guard guard(stream);  // closes it at the end of the scope
        std::fputs("<plist/>\n", stream);
    }

    int count = 0;
    mox::File::FindAllFilesInDirectory("drivers", PrintSize, &count, true, true);
    std::printf("files: %d, the last folder: %s\n", count,
                mox::File::ExtractFilePath(path).c_str());

    // What yields data throws.
    try {
        mox::File::GetFileSize("drivers/missing.plist");
    } catch (const mox::FileException& failure) {
        std::printf("%s\n", failure.what());
    }
}
