// The libraries compared with what a program would use instead.

#include <unistd.h>

#include "bench/benchmarks.h"

std::string CreateTemporaryFile() {
    std::string path = "/dev/shm/quorvel-XXXXXX";
    const int fd = ::mkstemp(path.data());
    if (fd < 0) std::abort();
    ::close(fd);
    return path;
}

int main() {
    CompareSearch();
    CompareEncodings();
    CompareText();
    CompareConfiguration();
    CompareBuffers();
}
