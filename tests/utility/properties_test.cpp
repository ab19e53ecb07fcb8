#include "utility/properties.h"

#include <gtest/gtest.h>

#include <tuple>

#include "tests/support/exposed_store.h"
#include "tests/support/result_text.h"

namespace {

using namespace std::string_literals;
using Store = Exposed<mox::Properties>;

TEST(Properties, PutMakesARecordOnceThenChangesItsValue) {
    Store store, cleared, deleted;
    store.Put("a", "1");
    store.Put("B", "", " two");
    store.Put("\n7", "");
    EXPECT_EQ(store.Dump(), "[3 \n7||][2 B|| two][1 a|1|]*");
    EXPECT_EQ(store.Get("A") + store.Get("a", "x") + store.Get("A", "y") + store.Get("B", "z"),
              "1yz");
    store.Put("B", "3", "dropped");
    store.Delete("a");
    store.Put("\xE0", "4");
    cleared.Parse("\r\n");
    deleted.Delete("a");
    EXPECT_EQ(store.Dump(), "[3 \n7||][2 B|3| two][3 \xE0|4|]*");
    EXPECT_EQ(cleared.Dump() + deleted.Dump(), "**");
}

TEST(Properties, SharesRecordsBetweenStores) {
    const auto record = [](const char* name, const char* value) {
        return std::make_shared<Store::Property>(name, value, "note", 9);
    };
    for (const bool overwrite : {false, true}) {
        Store source, target;
        source.Parse("a=2\nb=2\nc=4");
        target.PutProperty(record("a", "1"));
        target.PutProperty(record("b", ""));
        target.Merge(source, overwrite);
        EXPECT_EQ(target.Dump(), (overwrite ? "[1 a|2|]" : "[9 a|1|note]") + "[2 b|2|][3 c|4|]"s);
        source.Put("c", "changed");
        EXPECT_EQ(target.Get("c"), "changed");
    }
    EXPECT_EQ(ResultText([] { Store().PutProperty(nullptr); }), "Properties: null record");
}

TEST(Properties, ReadNumbersWithSizeSuffixes) {
    // A value as int, unsigned int and unsigned long, each with the default 99.
    using Row = std::tuple<std::string, int, unsigned int, unsigned long>;
    for (const Row& row :
         {Row{"007b", 7, 7, 7}, Row{"0x10", 0, 0, 0}, Row{"1.5kb", 1024, 1024, 1024},
          Row{" \t\n\v\f\r+7 K", 7168, 7168, 7168}, Row{"-2k", -2048, 99, 99},
          Row{"2gB", INT32_MIN, 1u << 31, 1u << 31}, Row{"2147483648", 99, 1u << 31, 1u << 31},
          Row{"4G", 0, 0, 1ul << 32}, Row{"4294967296", 99, 99, 1ul << 32},
          Row{"18446744073709551616", 99, 99, 99},
          Row{"18446744073709551615Mb", 99, 99, ~0ul << 20}, Row{"+-2", 99, 99, 99},
          Row{"- 2", 99, 99, 99}, Row{"kb", 99, 99, 99}}) {
        const std::string text = std::get<0>(row);
        Store store;
        store.Put("a", text);
        EXPECT_EQ(row, Row(text, store.GetAsInt("a", 99), store.GetAsUInt("a", 99),
                           store.GetAsULong("a", 99)));
    }
}

TEST(Properties, ReadTruthFromEightWords) {
    Store store;
    const auto read = [&store](const std::string& word, bool defaultValue) {
        store.Put("a", word);
        return ResultText([&] { return store.GetAsBool("a", defaultValue); });
    };
    EXPECT_EQ(read("", true) + read("", false), "10");
    for (const char* word : {"TRUE", "true", "1", "yes"}) EXPECT_EQ(read(word, false), "1");
    for (const char* word : {"FALSE", "false", "0", "no"}) EXPECT_EQ(read(word, true), "0");
    for (const std::string word : {"Yes", "1 "})
        EXPECT_EQ(read(word, true), "Bad value for boolean option \"" + word + '"');
}

TEST(Properties, ParseReplacesTheStoreByTheRecordsOfAText) {
    Store store;
    store.Parse("\n\r\n# readers\r\nC=0 # old\nC\r = 3\0   # entries\n\nName=a##b\n"s);
    EXPECT_EQ(store.Dump(), "[1 \n1|# readers| readers][3 C|3\0| entries][4 Name|a#b|]*"s);
    EXPECT_EQ(store.GetAsDataFile(), "\n1=# readers\nC=3\0\nName=a#b\n"s);
    for (const char* bad : {"none", " = 3"}) {
        EXPECT_EQ(ResultText([&] { store.Parse("\na=1\n\nb=2\n"s + bad + "\nc=4"); }),
                  "Properties: wrong data in config data  in line 3");
        EXPECT_EQ(store.Dump(), "[1 a|1|][2 b|2|]*");
    }
}

}  // namespace
