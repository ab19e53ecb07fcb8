/* Runs a command and prints how many nanoseconds it took, from its start to its end, and its peak
   memory in KiB. Small itself, as a child counts what its parent had when it was made. */

#include <spawn.h>
#include <stdio.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>

extern char** environ;

int main(int argc, char** argv) {
    struct timespec start, end;
    struct rusage usage;
    pid_t child;
    int status;
    if (argc < 2) return 2;
    clock_gettime(CLOCK_MONOTONIC, &start);
    if (posix_spawnp(&child, argv[1], NULL, NULL, argv + 1, environ) != 0) return 2;
    if (wait4(child, &status, 0, &usage) != child) return 2;
    clock_gettime(CLOCK_MONOTONIC, &end);
#if defined(__APPLE__)
    usage.ru_maxrss /= 1024; /* Bytes there. Not tried: no macOS was at hand. */
#endif
    printf("%lld %ld\n", (end.tv_sec - start.tv_sec) * 1000000000LL + (end.tv_nsec - start.tv_nsec),
           usage.ru_maxrss);
    return status == 0 ? 0 : 1;
}
