#include "utility/file.h"

#include <sys/socket.h>
#include <sys/stat.h>

#include <functional>
#include <set>
#include <tuple>

#include "tests/support/buffers.h"
#include "tests/support/result_text.h"
#include "tests/support/scratch_test.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using namespace mox::File;
using Row = std::tuple<std::string, std::string, std::string>;
using FileTest = ScratchTest;
constexpr auto outcome = [](auto action) { return ResultText<mox::FileException>(action); };

TEST_F(FileTest, ExistenceFollowsLinksAndTheDirectoryBit) {
    enum Kind { Nothing, File, Folder };
    using Entry = std::pair<std::string, Kind>;
    Write("file", "");
    fs::create_symlink("file", "link");
    fs::create_symlink(".", "up");
    fs::create_symlink("none", "dead");
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    for (const auto& [path, kind] :
         {Entry{"file", File}, Entry{"link", File}, Entry{"/dev/null", File}, Entry{".", Folder},
          Entry{"up", Folder}, Entry{"/dev/fd/" + std::to_string(socket), Folder},
          Entry{"dead", Nothing}, Entry{"", Nothing}}) {
        EXPECT_EQ(IsFileExist(path.c_str()) * File + IsDirectoryExist(path.c_str()) * Folder, kind);
    }
    ::close(socket);
}

TEST_F(FileTest, ForceDirectoriesMakesWhatIsMissing) {
    fs::create_symlink("missing", "dangling");
    Write("file", "");
    const ::mode_t mask = ::umask(0022);
    for (const char* name : {"a", "a/b/c", "d/e/f/", "g//h", "a"}) {
        EXPECT_TRUE(ForceDirectories(name)) << name;
        EXPECT_EQ(fs::status(name).permissions(), fs::perms(0705)) << name;
    }
    ::umask(mask);
    std::string tooLong = "kk";
    while (tooLong.size() < 4096) tooLong += "/.";
    for (const char* name : {"file", "file/d/e", "dangling", "", tooLong.c_str()})
        EXPECT_FALSE(ForceDirectories(name)) << name;
    EXPECT_FALSE(ForceDirectories(nullptr) || fs::exists("kk"));
}

TEST_F(FileTest, PathsAreMergedCutAndResolved) {
    for (const auto& [dir, name, path] :
         {Row{"etc", "x", "etc/x"}, Row{"etc", "/x", "etc/x"}, Row{"etc/", "x", "etc/x"},
          Row{"d//", "x", "d//x"}, Row{"", "x", "x"}, Row{"d", "", "d"}, Row{"d/", "", "d/"}}) {
        EXPECT_EQ(MergeFilePath(dir.c_str(), name.c_str()), path);
    }
    EXPECT_EQ(ExtractFilePath("abc") + ExtractFilePath("/a") + ExtractFilePath("a//b"), "abca/");
    EXPECT_EQ(ExtractPathFromFullname("abc") + ExtractPathFromFullname("a/b/"), ".a/b");
    EXPECT_TRUE(IsHiddenFile(".", false) && !IsHiddenFile("a.b", true) && !IsHiddenFile("", true));
    std::string tooLong = "d";
    while (tooLong.size() < 1022) tooLong += "/d";
    std::error_code refusal;  // on some systems
    fs::create_directories(tooLong, refusal);
    EXPECT_EQ(GetFullFilePath("d/.."), fs::canonical(folder));
    for (const auto& path : {tooLong, "./none"s}) EXPECT_EQ(GetFullFilePath(path), path);
}

TEST_F(FileTest, FilesAreSizedLoadedRenamedAndErased) {
    const std::string load = "Error loading file \"", piped = UnseekablePath();
    for (const auto& [path, size, loaded] :
         {Row{Write("one", "1"), "1", "1"}, Row{Write("empty", ""), "0", "0"},
          Row{"none", "Cannot open file", load + "none\", code: 0x6e"},
          Row{piped, "Cannot read file", load + piped + "\", code: 0x45d"}}) {
        qel::BufferDynamic data(7);
        EXPECT_EQ(outcome([&p = path] { return GetFileSize(p.c_str()); }), size);
        EXPECT_EQ(outcome([&, &p = path] { return GetFileData(p.c_str(), data); }), loaded);
        EXPECT_EQ(data.GetSize(), loaded == size ? std::stoul(size) : 0);
    }
    FailingBuffer stubborn;
    EXPECT_EQ(outcome([&] { GetFileData("", stubborn); }), "Error shrinking data buffer");
    EXPECT_TRUE(RenameFile("one", Write("two", "").c_str(), false) && Read("two") == "1");
    // A folder takes the place of a file only when that is removed first.
    fs::create_directory("one");
    EXPECT_TRUE(!RenameFile("one", "two", false) && RenameFile("one", "two", true));
    EXPECT_FALSE(EraseFile("two") || RenameFile("empty", "two", true));
    EXPECT_TRUE(EraseFile("empty") && !fs::exists("empty"));
}

TEST_F(FileTest, TheWalkReportsWhatItIsAskedFor) {
    for (const char* name : {"d/.h", "d/e", ".h/..."}) fs::create_directories(name);
    for (const char* name : {"a", ".h/v", "d/.h/c", "d/e/c", "..."}) Write(name, "");
    fs::create_symlink("e", "d/l");
    const auto walk = [](bool recursive, bool skipHidden) {
        std::vector<FileInfo> all{{"", "./", true}};  // is added to, and may hold the path
        EXPECT_TRUE(FindAllFilesInDirectory(all[0].fullPath.c_str(), all, recursive, skipHidden));
        EXPECT_EQ(all.front().fullPath, "./");
        std::multiset<std::string> paths;
        for (const auto& [name, path, isDirectory] : all) {
            EXPECT_EQ(name, fs::path(path).filename());
            paths.insert(path.substr(2) + (isDirectory ? "/" : ""));
        }
        return paths;
    };
    using Paths = std::multiset<std::string>;
    EXPECT_EQ(walk(false, true), (Paths{"/", "a", "d/"}));
    EXPECT_EQ(walk(true, false),
              (Paths{"/", "...", ".h/", ".h/v", "a", "d/", "d/e/", "d/e/c", "d/l/", "d/l/c"}));
}

TEST_F(FileTest, TheWalkEndsWhereTheCallbackOrTheSystemEndsIt) {
    using Visit = std::function<bool(const FileInfo&)>;
    const auto call = [](auto& info, void* visit) { return (*static_cast<Visit*>(visit))(info); };
    const auto walk = [call](Visit visit) {
        return outcome([&] { return FindAllFilesInDirectory(".", call, &visit, true, true); });
    };
    fs::create_directories("d/d/d");
    int calls = 0;
    EXPECT_TRUE(walk([&](auto&) { return ++calls < 2; }) == "0" && calls == 2);
    EXPECT_THROW(walk([&](auto&) { return --calls > 0 ? true : throw calls; }), int);
    EXPECT_EQ(walk([](auto&) { return fs::remove_all("d"); }), "Error opening directory");
    // The system hands out so many in pieces. Without its descriptor the walk gets the first alone.
    for (int number = 0; number < 10'000; ++number) Write(std::to_string(number), "");
    EXPECT_EQ(walk([this](auto&) { return ::close(lowestFreeFd) <= 0; }),
              "Error reading directory");
}

}  // namespace
