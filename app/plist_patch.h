/// The patch itself: the text of a property list in, the patched text out.
///
/// The text is never parsed as XML. Landmarks are found by plain search of bytes, so everything but
/// the new entries stays as it is, NUL bytes and line ends included; names and values are taken as
/// bare text. Positions are byte offsets.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/buffer_dynamic.h"

/// A value to put at the head of the array that follows a name.
struct PlistEntry {
    std::string name;   ///< found wherever it occurs first; not empty
    std::string value;  ///< goes into a <string> element as it is, without XML escaping
};

/// Whether the <string> elements of all entries stand in document, each at or after the start of
/// the one before: the names are expected in the order of their arrays. Traces each that it finds;
/// without a trace it looks no further than the first that is missing.
bool HasAllEntries(std::string_view document, const std::vector<PlistEntry>& entries);

/// Inserts every entry into document, each searched in the result of the ones before. Traces each.
///
/// The <string> element, a line feed and two tabs go before the first <string> that starts behind
/// the first byte of the name. Only where the name is followed by </key>, white space and an array
/// without entries does the element go into that one, on a line of its own, one tab deeper than the
/// array's line; <array/> is opened up for it. With the entry {"ID", "0x2"} (and tabs in front)
///
///     <key>ID</key>
///     <array>
///         <string>0x1</string>
///
/// becomes
///
///     <key>ID</key>
///     <array>
///         <string>0x2</string>
///         <string>0x1</string>
///
/// document grows in its own block, once for all entries that leave each other alone. Throws
/// mox::Exception: "Tree[x] not found" when a name does not occur, "<string>[x] not found" or
/// "</array>[x] not found" when no such tag starts behind its first byte, also where an array
/// without entries follows; and qel::Exception(ERROR_MEM) when the heap refuses the block. document
/// then holds some of the entries.
void InsertEntries(qel::BufferDynamic& document, const std::vector<PlistEntry>& entries);
