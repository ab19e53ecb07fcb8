// The libraries beside what a program would use in their place.

#include <unistd.h>

#include "bench/benchmarks.h"

std::string ScratchFile() {
    std::string path = "/dev/shm/quorvel-XXXXXX";
    const int file = ::mkstemp(path.data());
    if (file < 0) std::abort();
    ::close(file);
    return path;
}

int main() {
    CompareSearch();
    CompareEncodings();
    CompareText();
    CompareConfiguration();
    CompareBuffers();
}
