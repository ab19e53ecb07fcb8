// The C library's functions under the name qel, where a platform can get its own version of them.
#include <cstdio>

#include "core/c_library.h"

int main() {
    const char* const line = "Slots = 12 in use";
    // Null when the text does not hold it; otherwise a place in the text itself.
    const char* const number = qel::strstr(line, "12");
    if (number != nullptr) std::printf("%d from \"%s\"\n", qel::stoi(number), number);

    // Unlike the function of that name in std, this stoi does not throw: no number reads as 0.
    std::printf("%d from \"none\"\n", qel::stoi("none"));

    char name[8];  // strcpy checks no room: seven characters and the NUL
    qel::strcpy(name, "reader");
    std::printf("%s: %lu bytes, the same: %d\n", name, qel::strlen(name),
                qel::strcmp(name, "reader") == 0);

    // The stream is the caller's to close; errno says why there is none.
    std::FILE* const stream = qel::fopen("missing.cfg", "r");
    if (stream == nullptr) std::puts("no stream");
}
