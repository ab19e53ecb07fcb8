#include "app/log.h"

#include <cstdarg>
#include <cstdio>

bool verboseMode = false;

void log(const char* format, ...) {
    if (!verboseMode) return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
    std::putchar('\n');
}
