/// The trace of a run, printed with the option -v.
#pragma once

/// Whether log prints. False at start; set by the command line and never cleared.
extern bool verboseMode;

/// In verbose mode, prints like printf and then a newline; format must not end in one. Otherwise
/// does nothing.
void log(const char* format, ...) __attribute__((format(printf, 1, 2)));
