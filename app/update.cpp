#include "app/update.h"

#include <vector>

#include "app/byte_search.h"
#include "app/location.h"
#include "app/log.h"
#include "app/plist_patch.h"
#include "app/replace_file.h"
#include "core/buffer_dynamic.h"
#include "core/exception.h"
#include "utility/exception.h"

namespace {

std::string FindPropertyList(const mox::Properties& config) {
    const std::string locations = config.Get("FileName");
    log("Locations to check: %s", locations.c_str());
    return FindLocation(locations);
}

void LoadDocument(const std::string& path, qel::BufferDynamic& document) {
    qel::ThrowUnlessSuccess(document.Load(path.c_str()));
    log("File loaded, size: %ld", static_cast<long>(document.GetSize()));
}

std::vector<PlistEntry> ReadEntries(const mox::Properties& config) {
    std::vector<PlistEntry> entries;
    for (const std::string& name : SplitAtColons(config.Get("Tree"))) {
        // An empty name would match at offset 0 and insert before the first <string>, possibly
        // outside any array, which makes the file invalid.
        if (name.empty()) throw mox::Exception("Empty name in \"Tree\"");
        const std::string value = config.Get(name);
        if (value.empty()) throw mox::Exception("No value for \"" + name + "\"");
        entries.push_back({name, value});
    }
    return entries;
}

void SaveDocument(const qel::Buffer& document, const std::string& path) {
    qel::ThrowUnlessSuccess(ReplaceFile(path, document));
    log("Data updated, size: %ld", static_cast<long>(document.GetSize()));
}

}  // namespace

int DoUpdate(mox::FileConfig& config) {
    const std::string path = FindPropertyList(config);
    qel::BufferDynamic document;
    LoadDocument(path, document);
    // Before the check, so that a bad "Tree" is reported even if nothing is to be inserted.
    const std::vector<PlistEntry> entries = ReadEntries(config);
    // Without a trace only the first missing entry matters.
    if (HasAllEntries(AsStringView(document), entries, !verboseMode)) {
        log("Already updated");
        return 0;
    }
    InsertEntries(document, entries);
    SaveDocument(document, path);
    return 0;
}
