#include "utility/file.h"

#include <sys/stat.h>

namespace mox::File {

bool IsFileExist(const char* path) {
    struct stat status;
    return ::stat(path, &status) == 0 && (status.st_mode & S_IFDIR) == 0;
}

bool IsDirectoryExist(const char* path) {
    struct stat status;
    return ::stat(path, &status) == 0 && (status.st_mode & S_IFDIR) != 0;
}

Guard::~Guard() {
    if (stream != nullptr) std::fclose(stream);
}

}  // namespace mox::File
