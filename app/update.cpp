#include "app/update.h"

#include <utility>
#include <vector>

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

std::string LoadDocument(const std::string& path) {
    qel::BufferDynamic file;
    qel::ThrowUnlessSuccess(file.Load(path.c_str()));
    std::string document(static_cast<const char*>(file.GetData()), file.GetSize());
    log("File loaded, size: %ld", static_cast<long>(document.size()));
    return document;
}

std::vector<PlistEntry> ReadEntries(const mox::Properties& config) {
    std::vector<PlistEntry> entries;
    for (const std::string& name : SplitList(config.Get("Tree"))) {
        // An empty name would put its entry before the first <string> of the document, which need
        // not stand in an array; no reader would take such a file any more.
        if (name.empty()) throw mox::Exception("Empty name in \"Tree\"");
        const std::string value = config.Get(name);
        if (value.empty()) throw mox::Exception("No value for \"" + name + "\"");
        entries.push_back({name, value});
    }
    return entries;
}

void SaveDocument(const std::string& document, const std::string& path) {
    qel::ThrowUnlessSuccess(ReplaceFile(path, qel::Buffer(document.data(), document.size())));
    log("Data updated, size: %ld", static_cast<long>(document.size()));
}

}  // namespace

int DoUpdate(mox::FileConfig& config) {
    const std::string path = FindPropertyList(config);
    std::string document = LoadDocument(path);
    // A faulty list of names comes to light even where nothing would have to be inserted.
    const std::vector<PlistEntry> entries = ReadEntries(config);
    if (HasAllEntries(document, entries)) {
        log("Already updated");
        return 0;
    }
    SaveDocument(InsertEntries(std::move(document), entries), path);
    return 0;
}
