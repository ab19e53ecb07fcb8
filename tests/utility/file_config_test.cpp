#include "utility/file_config.h"

#include <stdexcept>

#include "tests/support/exposed_store.h"
#include "tests/support/result_text.h"
#include "tests/support/scratch_test.h"

namespace {

using namespace std::string_literals;
using Config = Exposed<mox::FileConfig>;
using FileConfigTest = ScratchTest;

TEST_F(FileConfigTest, ReadsEveryLineIntoARecordAndWritesItBack) {
    const std::string full = "k=" + std::string(4092, 'v'), value = full.substr(2);
    using Row = std::tuple<std::string, std::string, std::string>;
    for (const auto& [text, records, written] :
         {Row{" \t\v\f\n  # note \r\n#\n",
              "[1 \n1| \t\v\f\n|][2 \n2|  # note \r\n| note ][3 \n3|#\n|]", "\n# note \n\n"},
          Row{"\ra = b\r = c\r\nA b=\t1\t\r\r\n", "[2 A b|1|][1 a|b# = c|]", "a=b## = c\nA b=1\n"},
          Row{"k=x##y\nl=x###y\nm##=# a##b#c\n", "[1 k|x#y|][2 l|x#|y][3 m#|| a#b#c]",
              "k=x##y\nl=x## #y\nm##= # a#b#c\n"},
          Row{"\r\r\n\0k=1\nk=1\0 2\n"s, "[1 \n1|\r\r\n|][2 \n2||][3 k|1|]", "\n\nk=1\n"},
          Row{"  k  =  1 # one\n\nk=2   # two\nl =", "[2 \n2|\n|][3 k|2| two][4 l||]",
              "\nk=2 # two\nl=\n"},
          Row{full + "l=1\n" + full + "\nm=2", "[4 \n4|\n|][3 k|" + value + "|][2 l|1|][5 m|2|]",
              "l=1\n" + full + "\n\nm=2\n"}}) {
        Config config(Write("config", text), false);
        EXPECT_EQ(config.Dump(), records) << text;
        config.SaveAs("written");
        EXPECT_EQ(Read("written"), written) << text;
    }
}

TEST_F(FileConfigTest, NamesWhatItCannotRead) {
    using Row = std::pair<std::string, std::string>;
    for (const auto& [text, line] : {Row{"a=1\n# note\n = value\n", "3"}, Row{"no # = value", "1"},
                                     Row{"a=" + std::string(4093, 'v'), "2"}}) {
        Write("config", text);
        EXPECT_EQ(ResultText([] { Config("config", false); }),
                  "FileConfig: wrong data in config file config in line " + line);
    }
}

TEST_F(FileConfigTest, WritesRecordsInLineOrderAndLosesNone) {
    Config config;
    config.header = "@header";
    using Line = Config::Property;
    for (const Line& line :
         {Line("late", "#", "", ~0ul), Line("twin b", "", "#marked", 2), Line("twin a", "1", "", 2),
          Line("\n5", "unused", "##", 5), Line("none", "0", "\n", 0), Line("\n3", "", "\n", 3)}) {
        config.PutProperty(std::make_shared<Line>(line));
    }
    config.WriteConfigFile("config");
    EXPECT_EQ(Read("config"), "@headernone=0\ntwin a=1\ntwin b= # #marked\n\n# ##\nlate=##\n");
}

TEST_F(FileConfigTest, WritesItselfBackOnlyWhenChangedAndWhole) {
    const std::string good = Write("good", " a = 1\n"), bad = Write("bad", "a=1\nbad\nb=2\n");
    { const Config unchanged(good, false), missing("new", true), unnamed; }
    EXPECT_EQ(Read(good) + Read("new"), " a = 1\n");
    Config(good, false).Put("a", "0");
    Config("new", true).Put("a", "1", " one");
    Config().Put("a", "1");
    EXPECT_EQ(Read(good) + Read("new"), "a=0\na=1 # one\n");
    for (const bool saved : {false, true}) {
        Config config(good, false);
        EXPECT_NE(ResultText([&] { config.Reopen(bad); }), "");
        EXPECT_EQ(config.Dump() + config.fileName, "[1 a|1|]*" + bad);
        if (saved) config.SaveAs(good);
        EXPECT_EQ(config.modified, !saved);
        config.Put("c", "3");
    }
    EXPECT_EQ(Read(bad) + Read(good), "a=1\nbad\nb=2\na=1\nc=3\n");
}

TEST_F(FileConfigTest, AFailedWriteBackPassesOutUnlessUnwinding) {
    mox::Properties* const changed = new Config("a/b", true);
    changed->Put("a", "1");
    EXPECT_EQ(ResultText([&] { delete changed; }), "FileConfig: unable to open config file a/b");
    const auto fail = [] {
        Config config("a/b", true);
        config.Put("a", "1");
        throw std::logic_error("in flight");
    };
    EXPECT_THROW(fail(), std::logic_error);
}

}  // namespace
