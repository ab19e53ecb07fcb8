/// The patch: the contents of a property list in, the patched contents out.
///
/// The document is never parsed as XML. Keys and tags are found by substring search, so every other
/// byte is preserved, NULs and line endings included. Names and values are used verbatim. Positions
/// are byte offsets.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/buffer_dynamic.h"

/// A value to insert as the first element of the array after a key.
struct PlistEntry {
    std::string name;   ///< the key; its first occurrence in the document is used; not empty
    std::string value;  ///< the contents of the new <string> element, without XML escaping
};

/// Returns whether document contains the <string> element of every entry, each at or after the
/// start of the previous one: entries must be in document order. Logs each one found; with
/// stopAtMissing, only those before the first missing one.
bool HasAllEntries(std::string_view document, const std::vector<PlistEntry>& entries,
                   bool stopAtMissing);

/// Inserts the entries in order, each into the result of the previous ones. Logs each.
///
/// The <string> element, a newline and two tabs are inserted before the first <string> after the
/// first byte of the name. But if the name is followed by </key> and an empty array, with nothing
/// but white space between these tags, the element goes into that array, on its own line, one tab
/// deeper than the array; <array/> is expanded. With the entry {"ID", "0x2"},
///
///     <key>ID</key><array>
///         <string>0x1</string>
///
/// becomes
///
///     <key>ID</key><array>
///         <string>0x2</string>
///         <string>0x1</string>
///
/// document is resized in place, once per entry. Throws mox::Exception: "Tree[x] not found" if a
/// name does not occur, "<string>[x] not found" or "</array>[x] not found" if no such tag follows
/// its first byte; both tags are required even for an empty array. When out of memory, throws
/// qel::Exception(ERROR_MEM) or std::bad_alloc. Earlier entries then remain in document.
void InsertEntries(qel::BufferDynamic& document, const std::vector<PlistEntry>& entries);
