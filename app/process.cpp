#include "app/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "utility/exception.h"

namespace {

[[noreturn]] void EndWithoutException() {
    std::puts("Exception occured.");
    std::exit(1);
}

}  // namespace

void PrepareProcess() {
    std::set_terminate(EndWithoutException);
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) >= 0) continue;
        // The lowest free number is this one, as those below are open by now.
        if (::open("/dev/null", O_RDWR) < 0) throw mox::Exception("Cannot open /dev/null");
    }
}
