#include "utility/file.h"

#include <sys/stat.h>

#include <set>
#include <tuple>

#include "tests/support/buffers.h"
#include "tests/support/result_text.h"
#include "tests/support/scratch_test.h"

namespace {

namespace fs = std::filesystem;
using namespace mox::File;
using FileTest = ScratchTest;
using Paths = std::multiset<std::string>;
constexpr auto FileResultText = [](auto action) { return ResultText<mox::FileException>(action); };

TEST_F(FileTest, ExistenceFollowsLinks) {
    Write("file", "");
    fs::create_symlink("file", "link");
    fs::create_symlink("missing", "dangling");
    using Row = std::tuple<const char*, bool, bool>;
    for (const auto& [path, isFile, isDirectory] :
         {Row{"link", true, false}, Row{"/dev/null", true, false}, Row{".", false, true},
          Row{"dangling", false, false}, Row{"", false, false}}) {
        EXPECT_EQ(IsFileExist(path), isFile) << path;
        EXPECT_EQ(IsDirectoryExist(path), isDirectory) << path;
    }
}

TEST_F(FileTest, ForceDirectoriesCreatesMissingParents) {
    ::umask(0022);
    for (const char* path : {"a", "a/b/c", "d/e/f/", "g//h", "a"}) {
        EXPECT_TRUE(ForceDirectories(path)) << path;
        EXPECT_EQ(fs::status(path).permissions(), fs::perms(0705)) << path;
    }
    Write("file", "");
    for (const char* path : {"file", "file/d", ""}) EXPECT_FALSE(ForceDirectories(path)) << path;
    EXPECT_FALSE(ForceDirectories(nullptr));
}

TEST_F(FileTest, MergeFilePathPutsOneSlashBetweenDirectoryAndName) {
    using Row = std::tuple<const char*, const char*, std::string>;
    for (const auto& [dir, name, path] :
         {Row{"etc", "x", "etc/x"}, Row{"etc/", "x", "etc/x"}, Row{"etc", "/x", "etc/x"},
          Row{"etc/", "/x", "etc/x"}, Row{"", "x", "x"}, Row{"etc/", "", "etc/"}}) {
        EXPECT_EQ(MergeFilePath(dir, name), path) << dir << " and " << name;
    }
}

TEST_F(FileTest, ExtractedPathEndsBeforeTheLastSlash) {
    EXPECT_EQ(ExtractFilePath("a//b/c"), "a//b");
    EXPECT_EQ(ExtractFilePath("abc"), "abc");
    EXPECT_EQ(ExtractPathFromFullname("a/b/"), "a/b");
    EXPECT_EQ(ExtractPathFromFullname("abc"), ".");
}

TEST_F(FileTest, FullPathIsResolvedOrReturnedUnchanged) {
    fs::create_symlink(".", "link");
    EXPECT_EQ(GetFullFilePath("link"), fs::canonical(directory));
    EXPECT_EQ(GetFullFilePath("./missing"), "./missing");
}

TEST_F(FileTest, FilesAreLoadedCompletelyOrAnExceptionIsThrown) {
    qel::BufferDynamic data(View("old"));
    for (const std::string bytes : {"", "a\r\n\xFF"}) {
        Write("file", bytes);
        EXPECT_EQ(GetFileSize("file"), static_cast<long>(bytes.size()));
        EXPECT_EQ(GetFileData("file", data), bytes.size());
        EXPECT_EQ(Bytes(data), bytes);
    }
    EXPECT_EQ(FileResultText([&] { GetFileData("none", data); }),
              "Error loading file \"none\", code: 0x6e");
    EXPECT_EQ(Bytes(data), "");
    FailingBuffer failing;
    EXPECT_EQ(FileResultText([&] { GetFileData("file", failing); }), "Error shrinking data buffer");
    EXPECT_EQ(FileResultText([] { GetFileSize("none"); }), "Cannot open file");
    EXPECT_EQ(FileResultText([] { GetFileSize(UnseekablePath().c_str()); }), "Cannot read file");
}

TEST_F(FileTest, EraseAndReplacingRenameRemoveOnlyFiles) {
    fs::create_directory("directory");
    Write("file", "");
    EXPECT_FALSE(EraseFile("directory"));
    EXPECT_FALSE(RenameFile("directory", "file", false));
    EXPECT_TRUE(RenameFile("directory", "file", true));
    EXPECT_TRUE(EraseFile(Write("file/a", "").c_str()));
    EXPECT_TRUE(fs::is_empty("file"));
}

TEST_F(FileTest, TheWalkListsHiddenEntriesOfTheTopLevelOnly) {
    for (const char* path : {"d/.h", "d/e"}) fs::create_directories(path);
    for (const char* path : {"d/a", "d/.h/b", "d/e/c", "d/e/.i"}) Write(path, "");
    fs::create_symlink("e", "d/link");
    const auto walk = [](bool recursive, bool skipHidden) {
        std::vector<FileInfo> found{{"d", "d", true}};
        const char* const dir = found[0].fullPath.c_str();  // moves as found grows
        EXPECT_TRUE(FindAllFilesInDirectory(dir, found, recursive, skipHidden));
        Paths paths;
        for (const auto& [name, path, isDirectory] : found) {
            EXPECT_EQ(name, fs::path(path).filename());
            paths.insert(isDirectory ? path + '/' : path);
        }
        return paths;
    };
    EXPECT_EQ(walk(false, true), (Paths{"d/", "d/a", "d/e/", "d/link/"}));
    EXPECT_EQ(walk(true, false),
              (Paths{"d/", "d/.h/", "d/.h/b", "d/a", "d/e/", "d/e/c", "d/link/", "d/link/c"}));
}

TEST_F(FileTest, TheWalkEndsWhenTheCallbackStopsItOrADirectoryCannotBeOpened) {
    const auto walk = [](bool (*callback)(const FileInfo&, void*)) {
        int count = 0;
        return FileResultText(
            [&] { return FindAllFilesInDirectory(".", callback, &count, true, true); });
    };
    fs::create_directories("d/d/d");
    EXPECT_EQ(walk([](auto&, void* count) { return ++*static_cast<int*>(count) < 2; }), "0");
    EXPECT_THROW(walk([](auto&, void*) -> bool { throw 1; }), int);
    EXPECT_EQ(walk([](auto&, void*) { return fs::remove_all("d") > 0; }),
              "Error opening directory");
}

}  // namespace
