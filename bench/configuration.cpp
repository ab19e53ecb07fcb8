// A configuration of 1,000,000 lines, every tenth of them a comment, beside other readers of such
// files.

#include <INIReader.h>
#include <SimpleIni.h>
#include <glib.h>

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

std::string Value(unsigned number) { return "value of " + std::to_string(number); }

bool IsComment(unsigned number) { return number % 10 == 0; }

/// Lines in the order of numbers, under a section, for the readers that need one, or under none.
std::string WriteFile(const std::vector<unsigned>& numbers, bool hasSection) {
    const std::string path = ScratchFile();
    std::FILE* const file = std::fopen(path.c_str(), "w");
    if (hasSection) std::fputs("[readers]\n", file);
    for (const unsigned number : numbers) {
        if (IsComment(number)) {
            std::fprintf(file, "# Remark %u.\n", number);
        } else {
            std::fprintf(file, "%s = %s\n", Name(number).c_str(), Value(number).c_str());
        }
    }
    std::fclose(file);
    return path;
}

/// What the readers have to agree on: the values of some names, one after the other.
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

std::string Read(const char* path) {
    const mox::FileConfig file(path, false);
    return SomeValues([&file](const std::string& name) { return file.Get(name); });
}

void CompareReading(const char* name, const std::vector<unsigned>& numbers, double glibGoal,
                    double inihGoal, double simpleIniGoal) {
    constexpr const char* table = "Configuration";
    const std::string path = WriteFile(numbers, false), sectionPath = WriteFile(numbers, true);
    const auto read = [&] { return Read(path.c_str()); };
    const char* const section = sectionPath.c_str();
    Compare<5>(table, name, "GLib `GKeyFile`", glibGoal, read, [&] { return ReadByGlib(section); });
    Compare<5>(table, name, "inih `INIReader`", inihGoal, read,
               [&] { return ReadByInih(section); });
    Compare<5>(table, name, "SimpleIni", simpleIniGoal, read,
               [&] { return ReadBySimpleIni(section); });

#if defined(__GLIBC__)
    const auto before = ::mallinfo2().uordblks;
    const mox::FileConfig file(path, false);
    const auto taken = static_cast<double>(::mallinfo2().uordblks - before);
    PrintRow(table, name, "heap a line, at most 260 bytes", "bytes", taken / lineCount, 260, 1);
#endif
    std::remove(path.c_str());
    std::remove(section);
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
        "Configuration", "`Get` of 1,000 names among as many", "`std::map::find` and a copy", 1.1,
        [&] { return all(get); }, [&] { return all(find); });
}

}  // namespace

void CompareConfiguration() {
    std::vector<unsigned> numbers(lineCount);
    std::iota(numbers.begin(), numbers.end(), 0u);
    CompareReading("1,000,000 lines, names in order", numbers, 1.0, 0.6, 0.6);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    CompareReading("1,000,000 lines, names shuffled", numbers, 0, 0.8, 0.9);
    CompareGet(numbers);
}
