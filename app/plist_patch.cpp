#include "app/plist_patch.h"

#include <algorithm>
#include <optional>

#include "app/log.h"
#include "utility/exception.h"

namespace {

constexpr std::string_view stringTag = "<string>";
constexpr std::string_view arrayTag = "<array>";
constexpr std::string_view arrayEndTag = "</array>";
constexpr std::string_view emptyArrayTag = "<array/>";

std::string EntryText(const PlistEntry& entry) {
    return std::string(stringTag) + entry.value + "</string>";
}

/// The position of the first landmark at or after from; throws mox::Exception(error) without one.
std::size_t Locate(std::string_view document, std::string_view landmark, std::size_t from,
                   const char* error) {
    const std::size_t position = document.find(landmark, from);
    if (position == std::string_view::npos) throw mox::Exception(error);
    return position;
}

bool Skip(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) return false;
    text.remove_prefix(expected.size());
    return true;
}

void SkipSpace(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

/// Where the array without entries starts that belongs to the key whose name ends at nameEnd, if
/// that is what stands there.
std::optional<std::size_t> FindEmptyArray(std::string_view document, std::size_t nameEnd) {
    std::string_view rest = document.substr(nameEnd);
    if (!Skip(rest, "</key>")) return std::nullopt;
    SkipSpace(rest);
    const std::size_t array = document.size() - rest.size();
    if (Skip(rest, emptyArrayTag)) return array;
    if (!Skip(rest, arrayTag)) return std::nullopt;
    SkipSpace(rest);
    return Skip(rest, arrayEndTag) ? std::optional(array) : std::nullopt;
}

/// The blanks and tabs at the start of the line on which position stands.
std::string Indentation(std::string_view document, std::size_t position) {
    // Without a line feed before it, npos + 1 is the start of the document.
    const std::size_t line = document.rfind('\n', position) + 1;
    const std::size_t text = document.find_first_not_of(" \t", line);
    return std::string(document.substr(line, text - line));
}

void InsertIntoEmptyArray(std::string& document, std::size_t array, const std::string& element) {
    const std::string lineEnd = '\n' + Indentation(document, array);
    // Opened up, <array/> is an array with nothing inside like any other.
    if (std::string_view(document).substr(array).starts_with(emptyArrayTag)) {
        document.replace(array, emptyArrayTag.size(), std::string(arrayTag).append(arrayEndTag));
    }
    const std::size_t inside = array + arrayTag.size();
    const std::size_t end = document.find(arrayEndTag, inside);
    const bool endsOnItsOwnLine = document.find('\n', inside) < end;
    document.insert(inside, lineEnd + "\t" + element + (endsOnItsOwnLine ? "" : lineEnd));
}

void InsertEntry(std::string& document, const PlistEntry& entry) {
    log("Searching to insert \"%s\"", entry.value.c_str());
    const std::size_t name = Locate(document, entry.name, 0, "Tree[x] not found");
    const std::size_t firstEntry = Locate(document, stringTag, name + 1, "<string>[x] not found");
    // Where the array ends does not matter; a document without an end of an array is not touched.
    Locate(document, arrayEndTag, name + 1, "</array>[x] not found");

    const std::string element = EntryText(entry);
    if (const auto emptyArray = FindEmptyArray(document, name + entry.name.size())) {
        InsertIntoEmptyArray(document, *emptyArray, element);
    } else {
        document.insert(firstEntry, element + "\n\t\t");
    }
}

}  // namespace

bool HasAllEntries(std::string_view document, const std::vector<PlistEntry>& entries) {
    std::size_t from = 0;
    bool allFound = true;
    // All are looked for, also behind a missing one, as each that is found leaves a line of trace.
    for (const PlistEntry& entry : entries) {
        const std::size_t position = document.find(EntryText(entry), from);
        if (position == std::string_view::npos) {
            allFound = false;
            continue;
        }
        log("Found \"%s\" at position %ld", entry.name.c_str(), static_cast<long>(position));
        from = position;
    }
    return allFound;
}

std::string InsertEntries(std::string document, const std::vector<PlistEntry>& entries) {
    for (const PlistEntry& entry : entries) InsertEntry(document, entry);
    return document;
}
