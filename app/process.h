/// What the tool asks of its process before anything else.
#pragma once

/// A write beyond the limit for files, or to a reader that has gone, is from now on an error like
/// any other instead of the end of the process. Where there is not even the memory for an
/// exception, the process ends with a line and status 1.
///
/// Opens the standard streams that are closed on /dev/null, so that no file gets the number of one
/// and, with it, the trace. Throws mox::Exception("Cannot open /dev/null") when that fails.
void PrepareProcess();
