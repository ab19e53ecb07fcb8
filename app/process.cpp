#include "app/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <limits>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "utility/exception.h"

namespace {

[[noreturn]] void EndWithoutException() {
    std::puts("Exception occured.");
    std::exit(1);
}

/// Keeps what is freed: it would be given back page by page just before the process ends, which
/// gives all back at once.
void KeepFreedMemory() {
#if defined(__GLIBC__)
    ::mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
#endif
}

}  // namespace

void PrepareProcess() {
    std::set_terminate(EndWithoutException);
    KeepFreedMemory();
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) >= 0) continue;
        // The lowest free number is this one, as those below are open by now.
        if (::open("/dev/null", O_RDWR) < 0) throw mox::Exception("Cannot open /dev/null");
    }
}
