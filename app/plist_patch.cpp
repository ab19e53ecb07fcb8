#include "app/plist_patch.h"

#include <algorithm>

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

/// A change to a document: text in the place of some bytes, or of none.
struct Splice {
    std::size_t position;
    std::size_t length;
    std::string text;
};

/// What an entry does to a document: the splice, which is the same in every document that has the
/// name nowhere before and between from and to the same bytes; or, with an error, nothing.
struct Plan {
    const char* error = nullptr;
    std::size_t from = 0, to = 0;
    Splice splice = {};
};

std::string EntryText(const PlistEntry& entry) {
    return std::string(stringTag) + entry.value + "</string>";
}

bool Skip(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) return false;
    text.remove_prefix(expected.size());
    return true;
}

void SkipSpace(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

/// The array without entries that belongs to the key whose name stands before text, if that is what
/// stands there; else an empty view.
std::string_view FindEmptyArray(std::string_view text) {
    if (!Skip(text, "</key>")) return {};
    SkipSpace(text);
    const std::string_view array = text;
    if (!Skip(text, emptyArrayTag)) {
        if (!Skip(text, arrayTag)) return {};
        SkipSpace(text);
        if (!Skip(text, arrayEndTag)) return {};
    }
    return array.substr(0, array.size() - text.size());
}

/// The array without entries with the element in it. Its line begins with the indentation.
std::string FillArray(std::string_view array, std::string_view indentation,
                      const std::string& element) {
    std::string_view inside;
    if (array != emptyArrayTag) {
        inside = array.substr(arrayTag.size(), array.size() - arrayTag.size() - arrayEndTag.size());
    }
    const std::string lineEnd = '\n' + std::string(indentation);
    std::string text(arrayTag);
    text.append(lineEnd).append("\t").append(element);
    // Otherwise the end of the array stands on a line of its own already.
    if (inside.find('\n') == npos) text.append(lineEnd);
    return text.append(inside).append(arrayEndTag);
}

Plan PlanToFill(std::string_view document, std::size_t name, std::string_view array,
                const std::string& element) {
    const auto position = static_cast<std::size_t>(array.data() - document.data());
    const std::size_t lineFeed = document.rfind('\n', position);
    // Without a line feed before it, npos + 1 is the start of the document.
    const std::string_view line = document.substr(lineFeed + 1);
    const std::string_view indentation = line.substr(0, line.find_first_not_of(" \t"));
    return {.from = lineFeed == npos ? 0 : std::min(name, lineFeed),
            .to = position + array.size(),
            .splice = {position, array.size(), FillArray(array, indentation, element)}};
}

Plan MakePlan(std::string_view document, const PlistEntry& entry) {
    const std::size_t name = FindBytes(document, entry.name, 0);
    if (name == npos) return {.error = "Tree[x] not found"};
    const std::size_t firstEntry = FindBytes(document, stringTag, name + 1);
    if (firstEntry == npos) return {.error = "<string>[x] not found"};
    // Where the array ends does not matter; a document without an end of an array is not touched.
    if (FindBytes(document, arrayEndTag, name + 1) == npos)
        return {.error = "</array>[x] not found"};

    const std::string element = EntryText(entry);
    const std::size_t nameEnd = name + entry.name.size();
    const std::string_view emptyArray = FindEmptyArray(document.substr(nameEnd));
    if (!emptyArray.empty()) return PlanToFill(document, name, emptyArray, element);
    return {.from = name,
            .to = std::max(nameEnd, firstEntry + stringTag.size()),
            .splice = {firstEntry, 0, element + "\n\t\t"}};
}

/// The document while entries go in. Their splices wait until one could matter to another entry,
/// and are then made together: the document is moved once, not once for each.
class Patch {
public:
    explicit Patch(qel::BufferDynamic& text) : document(text) {}

    void Insert(const PlistEntry& entry);
    void MakeSplices();

private:
    bool Concerns(const Plan& plan, std::string_view name) const;
    bool BringsUp(std::string_view name) const;

    qel::BufferDynamic& document;
    std::vector<Splice> waiting;  // in the order of their positions
};

void Patch::Insert(const PlistEntry& entry) {
    log("Searching to insert \"%s\"", entry.value.c_str());
    Plan plan = MakePlan(AsStringView(document), entry);
    if (!waiting.empty() && Concerns(plan, entry.name)) {
        MakeSplices();
        plan = MakePlan(AsStringView(document), entry);
    }
    if (plan.error != nullptr) throw mox::Exception(plan.error);
    const auto isBefore = [](const Splice& left, const Splice& right) {
        return left.position < right.position;
    };
    waiting.insert(std::upper_bound(waiting.begin(), waiting.end(), plan.splice, isBefore),
                   plan.splice);
}

void Patch::MakeSplices() {
    std::size_t end = document.GetSize(), growth = 0;
    for (const Splice& splice : waiting) growth += splice.text.size() - splice.length;
    qel::ThrowUnlessSuccess(document.Realloc(end + growth));
    // From the end of the document to its start, so that every byte moves once.
    char* const bytes = static_cast<char*>(document.GetData());
    char* target = bytes + end + growth;
    for (; !waiting.empty(); waiting.pop_back()) {
        const auto& [position, length, text] = waiting.back();
        target = std::copy_backward(bytes + position + length, bytes + end, target);
        target = std::copy_backward(text.begin(), text.end(), target);
        end = position;
    }
}

/// Whether a splice that waits could make another plan of this one, which was made without it.
bool Patch::Concerns(const Plan& plan, std::string_view name) const {
    const auto isBetween = [&plan](const Splice& splice) {
        return splice.position < plan.to && splice.position + splice.length > plan.from;
    };
    return plan.error != nullptr || std::any_of(waiting.begin(), waiting.end(), isBetween) ||
           BringsUp(name);
}

/// Whether the name could stand in the changed document where it does not in this one: in or across
/// the end of what a splice inserts.
bool Patch::BringsUp(std::string_view name) const {
    const std::string_view text = AsStringView(document);
    const std::size_t reach = name.size() - 1;
    std::size_t last = 0;
    for (const auto& [position, length, inserted] : waiting) {
        // It could stand across this one and the last.
        if (last != 0 && position - last < reach) return true;
        last = position + length;
        const std::size_t before = std::min(position, reach);
        std::string around(text.substr(position - before, before));
        around.append(inserted).append(text.substr(last, reach));
        if (around.find(name) != npos) return true;
    }
    return false;
}

}  // namespace

bool HasAllEntries(std::string_view document, const std::vector<PlistEntry>& entries) {
    std::size_t from = 0;
    bool allFound = true;
    for (const PlistEntry& entry : entries) {
        const std::size_t position = FindBytes(document, EntryText(entry), from);
        if (position == npos) {
            // The others are looked for all the same where those that are found leave a trace.
            if (!verboseMode) return false;
            allFound = false;
            continue;
        }
        log("Found \"%s\" at position %ld", entry.name.c_str(), static_cast<long>(position));
        from = position;
    }
    return allFound;
}

void InsertEntries(qel::BufferDynamic& document, const std::vector<PlistEntry>& entries) {
    Patch patch(document);
    for (const PlistEntry& entry : entries) patch.Insert(entry);
    patch.MakeSplices();
}
