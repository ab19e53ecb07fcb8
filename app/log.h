/// The trace of a run, printed with the option -v.
#pragma once

/// Whether log prints. False at start; set by the command line and never cleared.
extern bool verboseMode;

/// In verbose mode formats the arguments like printf onto standard output and ends the line; format
/// carries no line feed of its own. Otherwise does nothing.
void log(const char* format, ...) __attribute__((format(printf, 1, 2)));
