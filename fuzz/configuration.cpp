// Configuration text: Parse and FileConfig read it alike, and a saved file reads back the same.

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "fuzz/fuzz_target.h"
#include "tests/support/exposed_store.h"
#include "tests/support/result_text.h"
#include "utility/file_config.h"

namespace {

using Config = Exposed<mox::FileConfig>;

/// A private directory, removed at exit.
struct TemporaryDirectory {
    TemporaryDirectory() { Require(::mkdtemp(path.data()) != nullptr, "a directory is created"); }
    ~TemporaryDirectory() { std::filesystem::remove(path); }

    std::string path = std::filesystem::temp_directory_path() / "quorvel-XXXXXX";
};

const TemporaryDirectory directory;
const std::string path = directory.path + "/config";

/// Writes text to a file and reads that into config. Returns the message on failure.
std::string ReadThroughFile(const std::string& text, Config& config) {
    std::ofstream(path, std::ios::binary) << text;
    return ResultText([&] { config.Reopen(path); });
}

/// The records in line order, without line numbers and blank lines, which only a file has, and
/// without "#" and spaces in comments, which change when they are saved.
Records Normalized(const auto& store) {
    Records records = store.GetRecords();
    std::sort(records.begin(), records.end());
    for (auto& [index, name, value, comment] : records) {
        index = 0;
        if (name.starts_with('\n')) name = value = "";
        std::erase_if(comment, [](char c) { return c == '#' || c == ' '; });
    }
    std::erase(records, Records::value_type());
    return records;
}

void CheckSavedFileReadsBack(const std::string& text) {
    Config config;
    if (!ReadThroughFile(text, config).empty()) return;
    const Records records = Normalized(config);
    config.Save();
    config.Reopen();
    Require(Normalized(config) == records, "a saved file reads back the same");
}

void CheckReadersAgree(const std::string& text) {
    Config config;
    Exposed<mox::Properties> parsed;
    const bool fails = !ResultText([&] { parsed.Parse(text); }).empty();
    Require(!ReadThroughFile(text, config).empty() == fails, "both readers fail or neither");
    Require(Normalized(config) == Normalized(parsed), "both readers make the same records");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Lines of this length are not split, even with every "#" doubled.
    std::string text(reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 2000));
    CheckSavedFileReadsBack(text);
    // Parse removes carriage returns and reads past NULs; FileConfig does neither.
    std::erase_if(text, [](char c) { return c == '\r' || c == '\0'; });
    CheckReadersAgree(text);
    std::filesystem::remove(path);
    return 0;
}
