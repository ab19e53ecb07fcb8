/// Crash-safe replacement of a file's contents.
#pragma once

#include <string>

#include "core/buffer.h"

/// Replaces the contents of the existing file at path, whose symbolic links are followed.
///
/// A regular file with one hard link is replaced atomically by a new file with the same owner,
/// mode, ACL and extended attributes: after a crash of the process or the system, path leads to the
/// complete old or new contents. A killed process can leave the new file in the same directory,
/// under a name that begins with ".quorvel-".
///
/// If that is impossible (more hard links, no permission for the directory or the owner, a mount
/// point), the bytes that differ are overwritten in place. Errors are rolled back, but a crash in
/// between leaves a mixture.
///
/// Returns SUCCESS when the contents are written and synced to disk (the rename only if the
/// directory can be synced), and ERROR_WRITE if the file cannot be opened for writing or the bytes
/// cannot be stored. Writing in place can also return any result of BufferDynamic::Load for the old
/// contents, such as ERROR_MEM. On failure the file is unchanged, unless the rollback failed too.
/// Throws std::bad_alloc, with the file unchanged.
unsigned long ReplaceFile(const std::string& path, const qel::Buffer& contents);
