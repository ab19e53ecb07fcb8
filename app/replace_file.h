/// Putting a new text in a file's place without ever losing the old one.
#pragma once

#include <string>

#include "core/buffer.h"

/// Replaces the contents of the existing file at path, whose symbolic links are followed, by text.
///
/// A regular file with one name is replaced in one step by a new file with the same owner, mode,
/// ACL and extended attributes: at every moment, through a kill or a loss of power too, the path
/// leads to the old contents or to the new, whole. A process that is killed can leave the new file
/// behind, beside the old one and under a name that begins with ".quorvel-".
///
/// Where such a file cannot be made or cannot take the place (other names, a folder or an owner out
/// of reach, a mount on the file), the bytes that differ are written over the old ones in place. A
/// failure is undone, but a kill or a loss of power in the middle leaves a mixture.
///
/// SUCCESS when text is in the file's place and written through to the disk, save for the new name
/// where the folder cannot be opened or synced. Otherwise the file is as it was, unless undoing has
/// failed as well: ERROR_WRITE when it cannot be opened for writing or the bytes cannot be stored;
/// in place also what BufferDynamic::Load answers for the old contents, ERROR_MEM for example.
/// Throws std::bad_alloc, also with the file as it was.
unsigned long ReplaceFile(const std::string& path, const qel::Buffer& text);
