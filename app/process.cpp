#include "app/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "utility/exception.h"

namespace {

[[noreturn]] void TerminateOutOfMemory() {
    std::puts("Exception occured.");
    std::exit(1);
}

}  // namespace

void PrepareProcess() {
    std::set_terminate(TerminateOutOfMemory);
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) >= 0) continue;
        // open returns the lowest free descriptor, which is this one.
        if (::open("/dev/null", O_RDWR) < 0) throw mox::Exception("Cannot open /dev/null");
    }
}
