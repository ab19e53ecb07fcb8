// Configuration text: Parse and FileConfig read the same lines alike, and what was read is written
// and read back the same.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "fuzz/fuzz_target.h"
#include "tests/support/exposed_store.h"
#include "tests/support/result_text.h"
#include "utility/file_config.h"
#include "utility/string.h"

namespace {

using Config = Exposed<mox::FileConfig>;

const std::string path =
    std::filesystem::temp_directory_path() / ("quorvel-" + std::to_string(::getpid()));

/// The path of the scratch file, which now holds text.
const std::string& Written(const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

/// A text without what the two readers treat differently.
std::string Plain(std::string text) {
    std::erase_if(text, [](char c) { return c == '\r' || c == '\0'; });
    std::vector<std::string> lines;
    mox::String::Split(text, "\n", lines);
    std::string plain;
    // With its line feed a longer line would be read in two pieces.
    for (const std::string& line : lines) plain += line.substr(0, 4093) + '\n';
    return plain;
}

void ReadAlike(const std::string& text) {
    Exposed<mox::Properties> parsed;
    Config config;
    const std::string refusal = ResultText([&] { parsed.Parse(text); });
    const std::string fileRefusal = ResultText([&] { config.Reopen(Written(text)); });
    const auto end = [](const std::string& message) {
        return message.substr(message.rfind(' ') + 1);
    };
    Require(end(refusal) == end(fileRefusal), "both refuse the same line, or none");
    Require(parsed.Dump(false) == config.Dump(false) + (refusal.empty() ? "*" : ""),
            "both make the same records");
}

void ReadBackTheSame(const std::string& text) {
    Config config;
    if (!ResultText([&] { config.Reopen(Written(text)); }).empty()) return;
    config.Save();
    // All that changes: a line that a later one replaced is gone, so the lines are counted anew; a
    // comment gets a blank before a "#" at its start, and loses half of each "##".
    std::map<unsigned long, Config::PropertyPtr> lines;
    for (const auto& [name, record] : config.propertyMap) lines[record->index] = record;
    config.Clear();
    for (unsigned long number = 0; const auto& [index, record] : lines) {
        record->index = ++number;
        if (record->name[0] == '\n') record->name = '\n' + std::to_string(number);
        if (record->comment[0] == '#') record->comment.insert(0, 1, ' ');
        mox::Properties::Preunmask(record->comment);
        mox::Properties::Unmask(record->comment);
        config.PutProperty(record);
    }
    const std::string expected = config.Dump(false);
    config.Reopen();
    Require(config.Dump(false) + '*' == expected, "the records are read back");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    ReadAlike(Plain(text));
    // Lines that each "#" makes longer stay below the size of a piece.
    ReadBackTheSame(text.substr(0, 2000));
    std::filesystem::remove(path);
    return 0;
}
