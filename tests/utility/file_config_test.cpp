#include "utility/file_config.h"

#include <random>
#include <stdexcept>

#include "tests/support/open_store.h"
#include "tests/support/outcome.h"
#include "tests/support/scratch_test.h"

namespace {

using namespace std::string_literals;
using Config = Open<mox::FileConfig>;

using FileConfigTest = ScratchTest;

TEST_F(FileConfigTest, ReadsEveryLineIntoARecordAndWritesItBack) {
    const std::string full = "k=" + std::string(4092, 'v'), value = full.substr(2);
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {" \t\v\f\n  # note \r\n#\n", "[1 \n1| \t\v\f\n|][2 \n2|  # note \r\n| note ][3 \n3|#\n|]",
         "\n# note \n\n"},
        {"a = b = c\r\nA b=\t1\t\r\r\n", "[2 A b|1|][1 a|b = c|]", "a=b = c\nA b=1\n"},
        {"k=x##y\nl=x###y\nm##=# a##b#c\n", "[1 k|x#y|][2 l|x#|y][3 m#|| a#b#c]",
         "k=x##y\nl=x## #y\nm##= # a#b#c\n"},
        {"\ra=\r1\rb=2", "[1 a|#1#b=2|]", "a=##1##b=2\n"},
        {"\r\r\n\0k=1\nk=1\0 2\n"s, "[1 \n1|\r\r\n|][2 \n2||][3 k|1|]", "\n\nk=1\n"},
        {"  k  =  1 # one\n\nk=2   # two\nl =", "[2 \n2|\n|][3 k|2| two][4 l||]",
         "\nk=2 # two\nl=\n"},
        {full + "\nl=1", "[2 \n2|\n|][1 k|" + value + "|][3 l|1|]", full + "\n\nl=1\n"},
        {full + "l=1\nm=2", "[1 k|" + value + "|][2 l|1|][3 m|2|]", full + "\nl=1\nm=2\n"},
    };
    for (const auto& [text, records, written] : rows) {
        SCOPED_TRACE(text);
        Config config(Write("config", text), false);
        EXPECT_EQ(config.Dump(), records);
        config.SaveAs("written");
        EXPECT_EQ(Read("written"), written);
    }
}

TEST_F(FileConfigTest, NamesWhatItCannotRead) {
    using Row = std::pair<std::string, std::string>;
    for (const auto& [text, line] :
         {Row{"a\n", "1"}, Row{"a=1\n# note\n = value\n", "3"}, Row{"no # = value\n", "1"},
          Row{"a=" + std::string(4093, 'v'), "2"},
          Row{"#\n" + std::string(10'000'000, 'x'), "2"}}) {
        Write("config", text);
        EXPECT_EQ(Outcome([] { Config("config", false); }),
                  "FileConfig: wrong data in config file config in line " + line);
    }
    EXPECT_EQ(Outcome([] { Config("/", false); }), "FileConfig: error reading config file /");
    EXPECT_EQ(Outcome([] { Config().Reopen("a"); }), "FileConfig: unable to open config file a");
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
    EXPECT_EQ(Read("good"), " a = 1\n");
    EXPECT_FALSE(std::filesystem::exists("new"));
    Config(good, false).Put("a", "0");
    EXPECT_EQ(Read("good"), "a=0\n");
    Config("new", true).Put("a", "1", " one");
    EXPECT_EQ(Read("new"), "a=1 # one\n");
    Config().Put("a", "1");
    for (const bool saved : {false, true}) {
        Config config(good, false);
        EXPECT_NE(Outcome([&] { config.Reopen(bad); }), "");
        EXPECT_EQ(config.Dump() + config.fileName, "[1 a|1|]*" + bad);
        if (saved) config.SaveAs(good);
        EXPECT_EQ(config.modified, !saved);
        config.Put("c", "3");
    }
    EXPECT_EQ(Read("bad") + Read("good"), "a=1\nbad\nb=2\na=1\nc=3\n");
}

TEST_F(FileConfigTest, AFailedWriteBackPassesOutUnlessUnwinding) {
    mox::Properties* const changed = new Config("a/b", true);
    changed->Put("a", "1");
    EXPECT_EQ(Outcome([&] { delete changed; }), "FileConfig: unable to open config file a/b");
    const auto fail = [] {
        Config config("a/b", true);
        config.Put("a", "1");
        throw std::logic_error("in flight");
    };
    EXPECT_THROW(fail(), std::logic_error);
}

TEST_F(FileConfigTest, ReadsWhatItWroteAndWhatParseReads) {
    std::mt19937 generator(20'000);  // Seeded, so that a failure comes again.
    const auto roll = [&generator](int times, const std::vector<std::string>& sides) {
        std::string text;
        while (times-- > 0) text += sides[generator() % sides.size()];
        return text;
    };
    for (int round = 0; round < 2000; ++round) {
        std::string text, plain;
        for (unsigned long number = generator() % 9; number > 0; --number) {
            const std::string key = std::to_string(number) + roll(1, {"k = ", "##=", "="});
            const std::string item = key + roll(6, {"", "v", " ", "=", "##", "####"});
            // A comment does not keep a "#" at its start or a "##".
            const std::string note = "#c" + roll(4, {" ", "=", "#c", "##c"});
            std::string line = roll(1, {"", "\t"}) + roll(1, {"", item}) + roll(1, {"", "#", note});
            // Leaves the writer room for a blank and a line feed; the ends here go past 4094 bytes.
            if (generator() % 4 == 0 && line.size() > 1) line.resize(4092, 'v');
            text += roll(1, {"", "\r"}) + line + roll(1, {"\n", "\r\n", "\r\r\n"});
            if (!line.empty()) plain += line + '\n';
        }
        const std::string name = std::to_string(round);  // fresh, as overwriting can be slow
        Config config(Write(name, text + roll(1, {"", "k=v", "#"})), false);
        const std::string records = config.Dump(false);
        config.SaveAs(name + " once");
        config.Reopen();
        EXPECT_EQ(config.Dump(false), records) << text;
        config.SaveAs(name + " twice");
        EXPECT_EQ(Read(name + " twice"), Read(name + " once")) << text;
        config.Reopen(Write(name + " plain", plain));
        Open<mox::Properties> parsed;
        parsed.Parse(plain);
        EXPECT_EQ(parsed.Dump(false), config.Dump(false) + '*') << plain;
    }
}

}  // namespace
