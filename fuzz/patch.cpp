// The patch: each entry inserts text that contains its element and changes nothing else, and after
// entries in document order a second run finds them all. The input is a line of alternating
// names and values, then a document.

#include <algorithm>

#include "app/location.h"
#include "app/plist_patch.h"
#include "fuzz/fuzz_target.h"
#include "tests/support/buffers.h"
#include "tests/support/result_text.h"

namespace {

std::vector<PlistEntry> ParseEntries(const std::string& line) {
    const std::vector<std::string> texts = SplitAtColons(line);
    std::vector<PlistEntry> entries;
    for (std::size_t i = 1; i < std::min<std::size_t>(texts.size(), 32); i += 2) {
        if (!texts[i - 1].empty() && !texts[i].empty()) entries.push_back({texts[i - 1], texts[i]});
    }
    return entries;
}

/// Returns the offset of the only insertion in after, which may have replaced the "/" of an
/// <array/>.
std::size_t FindInsertion(const std::string& before, const std::string& after) {
    const auto difference = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const std::string_view head(before.begin(), difference.first),
        tail(difference.first, before.end());
    const bool isExpanded = head.ends_with("<array") && tail.starts_with("/>");
    Require(after.ends_with(tail.substr(isExpanded ? 1 : 0)),
            "the text after an insertion is unchanged");
    return head.size();
}

void CheckPatch(const std::string& text, const std::vector<PlistEntry>& entries) {
    qel::BufferDynamic document(View(text));
    std::size_t previousEnd = 0;
    bool isInOrder = true;
    for (const PlistEntry& entry : entries) {
        const std::string before = Bytes(document),
                          element = "<string>" + entry.value + "</string>";
        InsertEntries(document, {entry});
        const std::string after = Bytes(document);
        const std::size_t size = after.size() - before.size();
        const std::size_t insertion = FindInsertion(before, after);
        // In repetitive text the insertion may begin earlier, by less than its size.
        const std::size_t position = after.find(element, insertion - std::min(insertion, size));
        const std::size_t end = position + element.size();
        Require(position < end && end <= insertion + size, "the insertion contains the element");
        isInOrder = isInOrder && std::min(insertion, position) >= previousEnd;
        previousEnd = end;
    }
    Require(!isInOrder || HasAllEntries(Bytes(document), entries, true),
            "a second patch finds all entries");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t lineEnd = std::min(input.find('\n'), size);
    const std::string failure = ResultText(
        [&] { CheckPatch(input.substr(lineEnd), ParseEntries(input.substr(0, lineEnd))); });
    Require(failure.empty() || failure.ends_with("[x] not found"),
            "a failure names what is missing");
    return 0;
}
