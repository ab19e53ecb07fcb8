// The patch: the new text is the old with insertions only, and with the names in the order of their
// arrays a second patch finds all present. The input is a line of names and values, and a document.

#include <algorithm>

#include "app/location.h"
#include "app/plist_patch.h"
#include "fuzz/fuzz_target.h"
#include "tests/support/buffers.h"
#include "tests/support/result_text.h"

namespace {

/// The entries of a list in which names and values take turns.
std::vector<PlistEntry> Entries(const std::string& list) {
    std::vector<PlistEntry> entries;
    const std::vector<std::string> texts = SplitAtColons(list);
    for (std::size_t i = 1; i < std::min<std::size_t>(texts.size(), 32); i += 2) {
        if (!texts[i - 1].empty() && !texts[i].empty()) entries.push_back({texts[i - 1], texts[i]});
    }
    return entries;
}

/// Where the texts part: there the new one has more in one piece, for which only the "/" of an
/// <array/> may have gone.
std::size_t FindInsertion(const std::string& before, const std::string& after) {
    const auto part = std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first;
    const std::string_view rest(part, before.end());
    const std::size_t place = before.size() - rest.size();
    const bool isOpened = rest.starts_with("/>") && before.substr(0, place).ends_with("<array");
    Require(after.ends_with(rest.substr(isOpened ? 1 : 0)), "the text behind an insertion stays");
    return place;
}

std::string Patched(const std::string& document, const std::vector<PlistEntry>& entries) {
    qel::BufferDynamic patched(View(document));
    InsertEntries(patched, entries);
    return Bytes(patched);
}

void Patch(std::string document, const std::vector<PlistEntry>& entries) {
    const std::string patched = Patched(document, entries);
    std::size_t last = 0, end = 0;
    bool isInOrder = true;
    for (const PlistEntry& entry : entries) {
        const std::string before = document, element = "<string>" + entry.value + "</string>";
        document = Patched(before, {entry});
        const std::size_t place = FindInsertion(before, document);
        const std::size_t grown = document.size() - before.size();
        const std::size_t found = document.rfind(element, place + grown - element.size());
        Require(found != std::string::npos && found + element.size() + grown >= place,
                "the element stands in what was inserted");
        isInOrder = isInOrder && found >= last && place >= end;
        last = found;
        end = found + element.size();
    }
    Require(document == patched, "one patch does what its entries do one by one");
    Require(!isInOrder || HasAllEntries(document, entries, true),
            "a second patch finds all present");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t line = std::min(input.find('\n'), size);
    const std::string refusal =
        ResultText([&] { Patch(input.substr(line), Entries(input.substr(0, line))); });
    Require(refusal.empty() || refusal.ends_with("[x] not found"),
            "a refusal names what is missing");
    return 0;
}
