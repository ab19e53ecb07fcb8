#include "app/update.h"

#include <vector>

#include "app/byte_search.h"
#include "app/location.h"
#include "app/log.h"
#include "app/plist_patch.h"
#include "app/replace_file.h"
#include "core/buffer_dynamic.h"
#include "core/exception.h"
#include "core/result_codes.h"
#include "utility/exception.h"

namespace {

// Each attempt fails only if another process changed the property list during it.
constexpr int maxAttempts = 100;

std::string FindPropertyList(const mox::Properties& config) {
    const std::string locations = config.Get("FileName");
    log("Locations to check: %s", locations.c_str());
    return FindLocation(locations);
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

/// Returns false, with nothing written, if the property list changed after it was loaded.
bool UpdateOnce(ReplaceableFile& file, const mox::Properties& config) {
    qel::BufferDynamic document;
    file.Load(document);
    log("File loaded, size: %ld", static_cast<long>(document.GetSize()));
    // Before the check, so that a bad "Tree" is reported even if nothing is to be inserted.
    const std::vector<PlistEntry> entries = ReadEntries(config);
    // Without a trace only the first missing entry matters.
    if (HasAllEntries(AsStringView(document), entries, !verboseMode)) {
        log("Already updated");
        return true;
    }
    InsertEntries(document, entries);
    if (!file.Replace(document)) return false;
    log("Data updated, size: %ld", static_cast<long>(document.GetSize()));
    return true;
}

}  // namespace

int DoUpdate(mox::FileConfig& config) {
    ReplaceableFile file(FindPropertyList(config));
    for (int attempt = 0; attempt < maxAttempts; ++attempt) {
        if (UpdateOnce(file, config)) return 0;
    }
    throw qel::Exception(qel::ERROR_WRITE);
}
