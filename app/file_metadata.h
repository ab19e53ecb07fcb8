/// Platform-dependent parts of replacing a file: copying metadata, and syncing to disk.
#pragma once

#include <sys/stat.h>

/// Copies owner, mode, ACL and extended attributes of the open file from, whose status is given, to
/// the open file to, and removes attributes that from lacks, such as inherited ACLs. Returns
/// whether all of that succeeded; on failure, part of it may be done.
bool CopyMetadata(int from, const struct stat& status, int to);

/// Waits until the contents and metadata of the open file or directory are on disk. Returns whether
/// that succeeded.
bool SyncToDisk(int fd);
