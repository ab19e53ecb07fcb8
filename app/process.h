/// Process-wide setup, done first.
#pragma once

/// Ignores SIGXFSZ and SIGPIPE, so that a write beyond the file size limit, or to a closed pipe,
/// fails with an error code. If memory runs out even for an exception object, the process prints
/// "Exception occured." and exits with status 1.
///
/// Redirects closed standard streams to /dev/null, so that no file opened later takes their
/// descriptor and receives the trace. Throws mox::Exception("Cannot open /dev/null") on failure.
void PrepareProcess();
