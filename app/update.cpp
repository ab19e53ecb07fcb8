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
    const std::string list = config.Get("FileName");
    log("Locations to check: %s", list.c_str());
    return FindLocation(list);
}

void LoadDocument(const std::string& path, qel::BufferDynamic& document) {
    qel::ThrowUnlessSuccess(document.Load(path.c_str()));
    log("File loaded, size: %ld", static_cast<long>(document.GetSize()));
}

std::vector<PlistEntry> ReadEntries(const mox::Properties& config) {
    std::vector<PlistEntry> entries;
    for (const std::string& name : SplitAtColons(config.Get("Tree"))) {
        // An empty name would put its entry before the first <string> of the document, which need
        // not stand in an array; no reader would take such a file any more.
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
    // A faulty list of names comes to light even where nothing would have to be inserted.
    const std::vector<PlistEntry> entries = ReadEntries(config);
    if (HasAllEntries(AsStringView(document), entries)) {
        log("Already updated");
        return 0;
    }
    InsertEntries(document, entries);
    SaveDocument(document, path);
    return 0;
}
