#include "utility/file.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <functional>
#include <set>
#include <tuple>

#include "core/result_codes.h"
#include "tests/support/outcome.h"
#include "tests/support/scratch_test.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using namespace mox::File;
using Row = std::tuple<std::string, std::string, std::string>;
using FileTest = ScratchTest;
constexpr auto outcome = [](auto action) { return Outcome<mox::FileException>(action); };

TEST_F(FileTest, ExistenceFollowsLinksAndTheDirectoryBit) {
    enum Kind { Nothing, File, Folder };
    using Entry = std::pair<const char*, Kind>;
    Write("file", "");
    fs::create_symlink("file", "link");
    fs::create_symlink(".", "up");
    fs::create_symlink("none", "dead");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    "socket"s.copy(address.sun_path, sizeof address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
    for (const auto& [path, kind] :
         {Entry{"file", File}, Entry{"link", File}, Entry{"/dev/null", File}, Entry{".", Folder},
          Entry{"up", Folder}, Entry{"socket", Folder}, Entry{"dead", Nothing},
          Entry{"file ", Nothing}, Entry{"", Nothing}}) {
        EXPECT_EQ(IsFileExist(path) * File + IsDirectoryExist(path) * Folder, kind) << path;
    }
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
    const std::string component(200, 'k');
    std::string longest;
    while (longest.size() < 4096) longest += component + '/';
    longest.resize(4096);
    for (const char* name : {"file", "file/d/e", "dangling", "", longest.c_str()})
        EXPECT_FALSE(ForceDirectories(name)) << name;
    EXPECT_FALSE(ForceDirectories(nullptr) || fs::exists(component));
    longest.pop_back();
    EXPECT_TRUE(ForceDirectories(longest.c_str()) || fs::exists(component));
}

TEST_F(FileTest, PathsAreMergedCutAndResolved) {
    for (const auto& [dir, name, path] :
         {Row{"etc", "x", "etc/x"}, Row{"etc", "/x", "etc/x"}, Row{"etc/", "x", "etc/x"},
          Row{"etc/", "//x", "etc//x"}, Row{"d//", "x", "d//x"}, Row{"", "x", "x"},
          Row{"d", "", "d"}, Row{"d/", "", "d/"}}) {
        EXPECT_EQ(MergeFilePath(dir.c_str(), name.c_str()), path);
    }
    EXPECT_EQ(ExtractFilePath("abc") + ExtractFilePath("/a") + ExtractFilePath("a//b"), "abca/");
    EXPECT_EQ(ExtractPathFromFullname("abc") + ExtractPathFromFullname("a/b/"), ".a/b");
    EXPECT_TRUE(IsHiddenFile(".", false) && !IsHiddenFile("a.b", true) && !IsHiddenFile("", true));
    std::string longest = fs::canonical(folder);
    while (longest.size() < 800) longest += '/' + std::string(200, 'd');
    longest += '/' + std::string(1022 - longest.size(), 'd');
    std::error_code refusal;  // of the longer one on some systems
    for (const char* end : {"", "d"}) fs::create_directories(longest + end, refusal);
    fs::create_symlink(longest, "link");
    EXPECT_EQ(GetFullFilePath("link"), longest);
    for (const auto& path : {longest + "d/.", "./none"s}) EXPECT_EQ(GetFullFilePath(path), path);
}

TEST_F(FileTest, FilesAreSizedLoadedRenamedAndErased) {
    struct : qel::BufferDynamic {
        unsigned long Alloc(unsigned long) override { return qel::ERROR_MEM; }
    } stubborn;
    const Guard nothing(nullptr);
    const std::string load = "Error loading file \"", piped = Unseekable();
    for (const auto& [path, size, loaded] :
         {Row{Write("one", "1"), "1", "1"}, Row{Write("two", "22"), "2", "2"},
          Row{Write("empty", ""), "0", "0"},
          Row{"none", "Cannot open file", load + "none\", code: 0x6e"},
          Row{piped, "Cannot read file", load + piped + "\", code: 0x45d"}}) {
        qel::BufferDynamic data(7);
        EXPECT_EQ(outcome([&p = path] { return GetFileSize(p.c_str()); }), size);
        EXPECT_EQ(outcome([&, &p = path] { return GetFileData(p.c_str(), data); }), loaded);
        EXPECT_EQ(data.GetSize(), loaded == size ? std::stoul(size) : 0);
    }
    EXPECT_EQ(outcome([&] { GetFileData("", stubborn); }), "Error shrinking data buffer");

    EXPECT_TRUE(RenameFile("one", "two", false) && Read("two") == "1");
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
    using Paths = std::multiset<std::string>;
    const auto walk = [](bool recursive, bool skipHidden) {
        std::vector<FileInfo> all{{"", "./", true}};  // is added to, and may hold the path
        EXPECT_TRUE(FindAllFilesInDirectory(all[0].fullPath.c_str(), all, recursive, skipHidden));
        EXPECT_EQ(all.front().fullPath, "./");
        Paths paths;
        for (const auto& [name, path, isDirectory] : all) {
            EXPECT_EQ(name, fs::path(path).filename());
            paths.insert(path.substr(2) + (isDirectory ? "/" : ""));
        }
        return paths;
    };
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
    for (int most = 1; most <= 3; ++most) {
        EXPECT_EQ(walk([&](auto&) { return ++calls < most; }), "0");
        EXPECT_EQ(calls, most);
        EXPECT_THROW(walk([&](auto&) { return --calls > 0 ? true : throw calls; }), int);
    }
    EXPECT_EQ(walk([](auto&) { return fs::remove_all("d"); }), "Error opening directory");
    fs::create_symlink(".", "self");
    EXPECT_EQ(walk([](auto&) { return true; }), "1");
    fs::remove("self");
    for (int number = 0; number < 10'000; ++number) Write(std::to_string(number), "");
    EXPECT_EQ(walk([&](auto&) { return ++calls > 0; }), "1");
    EXPECT_EQ(calls, 10'000);
    // Without its descriptor the walk can read no further.
    EXPECT_EQ(walk([this](auto&) { return ::close(lowestFree) <= 0; }), "Error reading directory");
}

}  // namespace
