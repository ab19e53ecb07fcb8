/// Platform-dependent parts of replacing a file.
#pragma once

#include <sys/stat.h>

#include <string>

/// Opens the directory at path, for the system calls that take a directory's descriptor. It is
/// enough to have search permission. Returns a negative number on failure.
int OpenDirectory(const std::string& path);

/// Returns whether both describe the same file.
bool IsSameFile(const struct stat& first, const struct stat& second);

/// Returns whether both describe the same file, and it did not change in between: size, and times
/// of the last modification and change.
bool IsSameVersion(const struct stat& first, const struct stat& second);

/// Copies owner, mode, ACL and extended attributes of the open file from, whose status is given, to
/// the open file to, and removes attributes that from lacks, such as inherited ACLs. Returns
/// whether all of that succeeded; on failure, part of it may be done.
bool CopyMetadata(int from, const struct stat& status, int to);

/// Waits until the contents and metadata of the open file or directory are on disk. Returns whether
/// that succeeded.
bool SyncToDisk(int fd);
