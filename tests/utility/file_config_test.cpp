#include "utility/file_config.h"

#include <stdexcept>

#include "tests/support/exposed_store.h"
#include "tests/support/result_text.h"
#include "tests/support/scratch_test.h"

namespace {

using namespace std::string_literals;
using Config = Exposed<mox::FileConfig>;
using FileConfigTest = ScratchTest;

TEST_F(FileConfigTest, EveryLineBecomesARecordAndIsWrittenBack) {
    const std::string value(4092, 'v');
    const std::tuple<std::string, Records, std::string> rows[] = {
        {" \v\f\n# one \r\n#",
         {{1, "\n1", " \v\f\n", ""}, {2, "\n2", "# one \r\n", " one "}, {3, "\n3", "#", ""}},
         "\n# one \n\n"},
        {"b=1\n a a =\tb = c # 2\r\nb=",
         {{2, "a a", "b = c", " 2"}, {3, "b", "", ""}},
         "a a=b = c # 2\nb=\n"},
        {"k##=x##y\nl=x###y##z\n",
         {{1, "k#", "x#y", ""}, {2, "l", "x#", "y#z"}},
         "k##=x##y\nl=x## #y#z\n"},
        {"\ra=1\r2\nb=1\0 2\n"s, {{1, "a", "1#2", ""}, {2, "b", "1", ""}}, "a=1##2\nb=1\n"},
        // Lines are split after 4094 bytes.
        {"k=" + value + "l=1", {{1, "k", value, ""}, {2, "l", "1", ""}}, "k=" + value + "\nl=1\n"},
    };
    for (const auto& [text, records, written] : rows) {
        Config config(Write("config", text), false);
        EXPECT_EQ(config.GetRecords(), records) << text;
        config.SaveAs("written");
        EXPECT_EQ(Read("written"), written) << text;
    }
}

TEST_F(FileConfigTest, ReadFailuresNameThePathAndTheLine) {
    const auto read = [](auto path) { return ResultText([path] { Config(path, false); }); };
    const std::string file = Write("file", "a=1\n# note\n = value\n");
    EXPECT_EQ(read(file), "FileConfig: wrong data in config file file in line 3");
    EXPECT_EQ(read(Write("file", "a # =")), "FileConfig: wrong data in config file file in line 1");
    EXPECT_EQ(read("missing"), "FileConfig: unable to open config file missing");
    EXPECT_EQ(read("."), "FileConfig: error reading config file .");
}

TEST_F(FileConfigTest, RecordsAreWrittenInTheOrderOfIndexAndName) {
    Config config;
    config.header = "@header\n";
    using Line = Config::Property;
    for (const Line& line : {Line("last", "#", "", ~0ul), Line("b", "", "#note", 2),
                             Line("a", "1", "", 2), Line("\n3", "unused", "\n", 3)}) {
        config.PutProperty(std::make_shared<Line>(line));
    }
    config.WriteConfigFile("config");
    EXPECT_EQ(Read("config"), "@header\na=1\nb= # #note\n\nlast=##\n");
}

TEST_F(FileConfigTest, ReadConfigFileReplacesTheRecordsAndReopenAlsoBinds) {
    Config read(Write("old", "a=1\n"), false), reopened("old", false);
    read.ReadConfigFile(Write("new", "b=2\n").c_str());
    reopened.Reopen("new");
    for (const Config* config : {&read, &reopened})
        EXPECT_EQ(config->GetRecords(), (Records{{1, "b", "2", ""}})) << config->fileName;
    EXPECT_EQ(read.fileName, "old");
    EXPECT_TRUE(read.modified);
    EXPECT_EQ(reopened.fileName, "new");
    EXPECT_FALSE(reopened.modified);
}

TEST_F(FileConfigTest, DestructionWritesBackWhatWasModified) {
    Config(Write("unmodified", " a = 1\n"), false);
    Config(Write("modified", " a = 1\n"), false).Put("a", "2");
    Config("created", true).Put("b", "3", " note");
    Config().Put("c", "4");
    EXPECT_EQ(Read("unmodified"), " a = 1\n");
    EXPECT_EQ(Read("modified"), "a=2\n");
    EXPECT_EQ(Read("created"), "b=3 # note\n");
}

TEST_F(FileConfigTest, DestructionWritesBackPartlyReadRecordsOnlyIfTheyWereSaved) {
    const std::string bad = Write("bad", "a=1\nbad\nb=2\n");
    for (const bool saved : {false, true}) {
        Config config;
        EXPECT_NE(ResultText([&] { config.Reopen(bad); }), "");
        EXPECT_EQ(config.fileName, bad);
        if (saved) config.SaveAs("good");
        config.Put("c", "3");
    }
    EXPECT_EQ(Read(bad), "a=1\nbad\nb=2\n");
    EXPECT_EQ(Read("good"), "a=1\nc=3\n");
}

TEST_F(FileConfigTest, FailedReadLeavesAnEmptyStoreThatDestructionDoesNotWrite) {
    {
        Config config(Write("config", "a=1\n"), false);
        EXPECT_NE(ResultText([&] { config.Reopen("missing"); }), "");
        EXPECT_EQ(config.GetRecords(), Records());
    }
    EXPECT_FALSE(std::filesystem::exists("missing"));
}

TEST_F(FileConfigTest, DestructionOverwritesAFileThatCouldNotBeOpenedOnlyIfItWasSaved) {
    for (const auto& [saved, written] : {std::pair(false, "a=1\n"), {true, "b=2\nc=3\n"}}) {
        std::filesystem::remove("config");
        std::filesystem::create_symlink("config", "config");  // ELOOP
        {
            Config config("config", true);
            EXPECT_EQ(config.GetRecords(), Records());
            std::filesystem::remove("config");
            Write("config", "a=1\n");
            config.Put("b", "2");
            if (saved) config.Save();
            config.Put("c", "3");
        }
        EXPECT_EQ(Read("config"), written);
    }
}

TEST_F(FileConfigTest, SavingBindsAndResetsTheModifiedFlag) {
    Config config;
    config.Put("a", "1");
    EXPECT_NE(ResultText([&] { config.SaveAs("missing/config"); }), "");
    EXPECT_EQ(config.fileName, "missing/config");
    config.SaveAs("config");
    EXPECT_FALSE(config.modified);
}

TEST_F(FileConfigTest, DestructionThrowsAFailureToWriteUnlessUnwinding) {
    mox::Properties* const changed = new Config("a/b", true);
    changed->Put("a", "1");
    EXPECT_EQ(ResultText([&] { delete changed; }), "FileConfig: unable to open config file a/b");
    const auto unwind = [] {
        Config config("a/b", true);
        config.Put("a", "1");
        throw std::logic_error("in flight");
    };
    EXPECT_THROW(unwind(), std::logic_error);
}

}  // namespace
