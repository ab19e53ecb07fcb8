/* Runs a command and prints the nanoseconds from its start to its end, its peak memory in KiB and
   its page faults. Kept small, since a child's peak memory starts at its parent's. */

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
    printf("%lld %ld %ld\n",
           (end.tv_sec - start.tv_sec) * 1000000000LL + (end.tv_nsec - start.tv_nsec),
           usage.ru_maxrss, usage.ru_minflt + usage.ru_majflt);
    return status == 0 ? 0 : 1;
}
