// A configuration of 1,000,000 lines, one in ten of them a comment, compared with other readers of
// such files.

#include <INIReader.h>
#include <SimpleIni.h>
#include <glib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "bench/benchmarks.h"
#include "bench/compare.h"
#include "utility/file_config.h"

namespace {

constexpr unsigned lineCount = 1'000'000;

std::string Name(unsigned number) {
    char name[16];
    std::snprintf(name, sizeof name, "Key%07u", number);
    return name;
}

std::string Value(unsigned number, bool isLong) {
    // Short values fit the std::string itself, which holds up to 15 bytes; long ones are allocated.
    return (isLong ? "a longer, allocated value of " : "value of ") + std::to_string(number);
}

struct Case {
    const char* name;
    bool isShuffled, hasLongValues;
    std::vector<double> limits;  ///< one per reader, 0 for none; the others are not run
};

const Case cases[] = {{"names in order", false, false, {1.0, 0.6, 0.6}},
                      {"names in order, long values", false, true, {0}},
                      {"names shuffled", true, false, {0, 1.0}}};

/// Writes the lines in the order of numbers, after a section for the readers that need one.
std::string WriteFile(const std::vector<unsigned>& numbers, bool hasLongValues, bool hasSection) {
    const std::string path = CreateTemporaryFile();
    std::FILE* const file = std::fopen(path.c_str(), "w");
    if (hasSection) std::fputs("[readers]\n", file);
    for (const unsigned number : numbers) {
        if (number % 10 == 0) {
            std::fprintf(file, "# Remark %u.\n", number);
        } else {
            const std::string value = Value(number, hasLongValues);
            std::fprintf(file, "%s = %s\n", Name(number).c_str(), value.c_str());
        }
    }
    std::fclose(file);
    return path;
}

/// Returns the values of some names, on which the readers have to agree.
template <class Get>
std::string SomeValues(const Get& get) {
    std::string values;
    for (unsigned number = 1; number < lineCount; number += 99'990)
        values += get(Name(number)) + ';';
    return values;
}

std::string ReadByGlib(const char* path) {
    const std::unique_ptr<::GKeyFile, decltype(&::g_key_file_free)> file(::g_key_file_new(),
                                                                         ::g_key_file_free);
    if (!::g_key_file_load_from_file(file.get(), path, G_KEY_FILE_KEEP_COMMENTS, nullptr))
        std::abort();
    return SomeValues([&file](const std::string& name) {
        const std::unique_ptr<char, decltype(&::g_free)> value(
            ::g_key_file_get_string(file.get(), "readers", name.c_str(), nullptr), ::g_free);
        return std::string(value.get());
    });
}

std::string ReadByInih(const char* path) {
    const INIReader file(path);
    return SomeValues([&file](const std::string& name) { return file.Get("readers", name, ""); });
}

std::string ReadBySimpleIni(const char* path) {
    CSimpleIniCaseA file;
    if (file.LoadFile(path) != SI_OK) std::abort();
    return SomeValues([&file](const std::string& name) {
        return std::string(file.GetValue("readers", name.c_str(), ""));
    });
}

constexpr struct {
    const char* name;
    std::string (*read)(const char* path);
} readers[] = {{"GLib `GKeyFile`", ReadByGlib},
               {"inih `INIReader`", ReadByInih},
               {"SimpleIni", ReadBySimpleIni}};

std::string Read(const char* path) {
    const mox::FileConfig file(path, false);
    return SomeValues([&file](const std::string& name) { return file.Get(name); });
}

void MeasureMemory([[maybe_unused]] const char* name, [[maybe_unused]] const std::string& path) {
#if defined(__GLIBC__)
    const auto before = ::mallinfo2().uordblks;
    const mox::FileConfig file(path, false);
    const auto allocated = static_cast<double>(::mallinfo2().uordblks - before);
    const auto fileSize = static_cast<double>(std::filesystem::file_size(path));
    PrintRow("Memory of a line", name, "the line in the file", "bytes",
             {allocated / lineCount, fileSize / lineCount}, 10);
#endif
}

void CompareReading(const Case& shape, const std::vector<unsigned>& numbers) {
    const std::string path = WriteFile(numbers, shape.hasLongValues, false),
                      sectionPath = WriteFile(numbers, shape.hasLongValues, true);
    for (std::size_t i = 0; i < shape.limits.size(); ++i) {
        Compare(
            "Configuration", shape.name, readers[i].name, shape.limits[i],
            [&] { return Read(path.c_str()); },
            [&] { return readers[i].read(sectionPath.c_str()); });
    }
    MeasureMemory(shape.name, path);
    std::remove(path.c_str());
    std::remove(sectionPath.c_str());
}

void CompareGet(const std::vector<unsigned>& numbers) {
    mox::Properties store;
    std::map<std::string, std::string> map;
    std::vector<std::string> names;
    for (unsigned number = 0; number < 1000; ++number) names.push_back(Name(numbers[number]));
    for (const std::string& name : names) {
        store.Put(name, "value of " + name);
        map.emplace(name, "value of " + name);
    }
    const auto get = [&](const std::string& name) { return store.Get(name); };
    const auto find = [&](const std::string& name) { return map.find(name)->second; };
    const auto isSame = [&](const std::string& name) { return get(name) == find(name); };
    RequireEqual(std::all_of(names.begin(), names.end(), isSame), "`Get`", "`std::map::find`");
    const auto all = [&names](const auto& lookUp) {
        std::size_t length = 0;
        for (const std::string& name : names) length += lookUp(name).size();
        return length;
    };
    Compare(
        "Configuration", "`Get` of each of 1,000 names", "`std::map::find` and a copy", 1.1,
        [&] { return all(get); }, [&] { return all(find); });
}

}  // namespace

void CompareConfiguration() {
    std::vector<unsigned> inOrder(lineCount);
    std::iota(inOrder.begin(), inOrder.end(), 0u);
    std::vector<unsigned> shuffled = inOrder;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(1));
    for (const Case& shape : cases) CompareReading(shape, shape.isShuffled ? shuffled : inOrder);
    CompareGet(shuffled);
}
