/// What differs between systems in replacing a file: its metadata, and syncing it to disk.
#pragma once

#include <sys/stat.h>

/// Gives the open file to the owner, mode, ACL and extended attributes of the open file from, whose
/// status is given, and removes the attributes that to inherited from its directory. Returns
/// whether all of that succeeded; on failure, part of it may be done.
bool CopyMetadata(int from, const struct stat& status, int to);

/// Waits until the contents and metadata of the open file or directory are on disk. Returns whether
/// that succeeded.
bool SyncToDisk(int fd);
