#include "app/plist_patch.h"

#include <algorithm>
#include <cstring>

#include "app/byte_search.h"
#include "app/log.h"
#include "core/exception.h"
#include "utility/exception.h"

namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::string_view stringTag = "<string>";
constexpr std::string_view arrayTag = "<array>";
constexpr std::string_view arrayEndTag = "</array>";
constexpr std::string_view emptyArrayTag = "<array/>";

std::string Element(const PlistEntry& entry) {
    return std::string(stringTag) + entry.value + "</string>";
}

std::size_t FindOrThrow(std::string_view document, std::string_view wanted, std::size_t from,
                        const char* message) {
    const std::size_t position = FindBytes(document, wanted, from);
    if (position == npos) throw mox::Exception(message);
    return position;
}

bool Skip(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) return false;
    text.remove_prefix(expected.size());
    return true;
}

void SkipWhiteSpace(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

/// Returns the empty array of the key whose name ends where text starts; an empty view if there is
/// none.
std::string_view FindEmptyArray(std::string_view text) {
    if (!Skip(text, "</key>")) return {};
    SkipWhiteSpace(text);
    const std::string_view array = text;
    if (!Skip(text, emptyArrayTag)) {
        if (!Skip(text, arrayTag)) return {};
        SkipWhiteSpace(text);
        if (!Skip(text, arrayEndTag)) return {};
    }
    return array.substr(0, array.size() - text.size());
}

/// Returns the spaces and tabs at the start of the line of document that contains position.
std::string_view IndentationAt(std::string_view document, std::size_t position) {
    // If there is no newline, npos + 1 == 0 is the start of the document.
    const std::string_view line = document.substr(document.rfind('\n', position) + 1);
    return line.substr(0, line.find_first_not_of(" \t"));
}

/// Returns the empty array with element inserted; indentation is that of the array's line.
std::string ExpandEmptyArray(std::string_view array, std::string_view indentation,
                             const std::string& element) {
    std::string_view inside;
    if (array != emptyArrayTag) {
        inside = array.substr(arrayTag.size(), array.size() - arrayTag.size() - arrayEndTag.size());
    }
    const std::string newline = '\n' + std::string(indentation);
    std::string text(arrayTag);
    text.append(newline).append("\t").append(element);
    // Otherwise </array> already has its own line.
    if (inside.find('\n') == npos) text.append(newline);
    return text.append(inside).append(arrayEndTag);
}

/// Replaces length bytes of document at position by text, which is at least as long.
void ReplaceRange(qel::BufferDynamic& document, std::size_t position, std::size_t length,
                  const std::string& text) {
    const std::size_t tailSize = document.GetSize() - position - length;
    qel::ThrowUnlessSuccess(document.Realloc(position + text.size() + tailSize));
    char* const range = static_cast<char*>(document.GetData()) + position;
    std::memmove(range + text.size(), range + length, tailSize);
    std::memcpy(range, text.data(), text.size());
}

void InsertEntry(qel::BufferDynamic& document, const PlistEntry& entry) {
    log("Searching to insert \"%s\"", entry.value.c_str());
    const std::string_view text = AsStringView(document);
    const std::size_t name = FindOrThrow(text, entry.name, 0, "Tree[x] not found");
    const std::size_t firstEntry = FindOrThrow(text, stringTag, name + 1, "<string>[x] not found");
    // Some </array> must follow the name. The last one is usually near the end of the document.
    const std::size_t lastArrayEnd = text.rfind(arrayEndTag);
    if (lastArrayEnd == npos || lastArrayEnd <= name) throw mox::Exception("</array>[x] not found");

    const std::string_view array = FindEmptyArray(text.substr(name + entry.name.size()));
    if (array.empty()) {
        ReplaceRange(document, firstEntry, 0, Element(entry) + "\n\t\t");
    } else {
        const auto position = static_cast<std::size_t>(array.data() - text.data());
        ReplaceRange(document, position, array.size(),
                     ExpandEmptyArray(array, IndentationAt(text, position), Element(entry)));
    }
}

}  // namespace

bool HasAllEntries(std::string_view document, const std::vector<PlistEntry>& entries,
                   bool stopAtMissing) {
    std::size_t from = 0;
    bool allFound = true;
    for (const PlistEntry& entry : entries) {
        const std::size_t position = FindBytes(document, Element(entry), from);
        if (position == npos) {
            if (stopAtMissing) return false;
            allFound = false;
            continue;
        }
        log("Found \"%s\" at position %ld", entry.name.c_str(), static_cast<long>(position));
        from = position;
    }
    return allFound;
}

void InsertEntries(qel::BufferDynamic& document, const std::vector<PlistEntry>& entries) {
    for (const PlistEntry& entry : entries) InsertEntry(document, entry);
}
