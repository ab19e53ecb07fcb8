#include "utility/file_config.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <map>
#include <tuple>
#include <vector>

#include "utility/config_syntax.h"
#include "utility/exception.h"
#include "utility/file.h"

namespace mox {

namespace {

/// At most 4094 bytes and the NUL. Part of the file format, since longer lines are split.
constexpr int lineBufferSize = 4095;

Exception UnableToOpen(const char* path) {
    return Exception(std::string("FileConfig: unable to open config file ") + path);
}

/// Adds a record to the store for each line of the file.
void ReadLines(std::FILE* file, const char* path, Properties& store) {
    char line[lineBufferSize];
    for (unsigned long number = 1; std::fgets(line, sizeof line, file) != nullptr; ++number) {
        const Properties::PropertyPtr record = ReadConfigLine(line, number);
        if (!record) {
            throw Exception(std::string("FileConfig: wrong data in config file ") + path +
                            " in line " + std::to_string(number));
        }
        store.PutProperty(record);
    }
    if (std::ferror(file) != 0) {
        throw Exception(std::string("FileConfig: error reading config file ") + path);
    }
}

std::vector<const Properties::Property*> InLineOrder(
    const std::map<std::string, Properties::PropertyPtr>& records) {
    std::vector<const Properties::Property*> lines;
    lines.reserve(records.size());
    for (const auto& [name, record] : records) lines.push_back(record.get());
    std::sort(lines.begin(), lines.end(), [](const auto* left, const auto* right) {
        return std::tie(left->index, left->name) < std::tie(right->index, right->name);
    });
    return lines;
}

}  // namespace

FileConfig::FileConfig(const std::string& path, bool missingAllowed)
    : fileName(path), allowMissing(missingAllowed) {
    Reopen();
}

FileConfig::~FileConfig() noexcept(false) {
    if (!modified || incomplete || fileName.empty()) return;
    try {
        Save();
    } catch (...) {
        // A second exception during unwinding would terminate the program.
        if (std::uncaught_exceptions() == 0) throw;
    }
}

void FileConfig::Reopen() {
    ReadConfigFile(fileName.c_str());
    modified = false;
}

void FileConfig::Reopen(const std::string& path) {
    fileName = path;
    Reopen();
}

void FileConfig::Save() {
    WriteConfigFile(fileName.c_str());
    modified = false;
    incomplete = false;
}

void FileConfig::SaveAs(const std::string& path) {
    fileName = path;
    Save();
}

void FileConfig::ReadConfigFile(const char* path) {
    // Until all lines are read, the destructor must not overwrite the file with a part of it.
    incomplete = true;
    Clear();
    std::FILE* const file = std::fopen(path, "r");
    if (file == nullptr && !allowMissing) throw UnableToOpen(path);
    if (file == nullptr) {
        incomplete = errno != ENOENT && errno != ENOTDIR;
        return;
    }
    const File::Guard guard(file);
    ReadLines(file, path, *this);
    incomplete = false;
}

void FileConfig::WriteConfigFile(const char* path) const {
    // Format everything first, so that a failure there leaves the old file intact.
    std::string text = header;
    for (const Property* record : InLineOrder(propertyMap)) text += WriteConfigLine(*record);

    std::FILE* const file = std::fopen(path, "w");
    if (file == nullptr) throw UnableToOpen(path);
    const File::Guard guard(file);
    std::fwrite(text.data(), 1, text.size(), file);
}

}  // namespace mox
