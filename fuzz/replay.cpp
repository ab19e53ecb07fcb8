// Runs a fuzz target on each of the files that the command line names.

#include <fstream>
#include <iterator>
#include <span>
#include <string>

#include "fuzz/fuzz_target.h"

int main(int argc, char* argv[]) {
    for (const char* const path : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        std::fprintf(stderr, "%s\n", path);
        std::ifstream file(path, std::ios::binary);
        if (!file) return 1;
        const std::string input{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
    return 0;
}
