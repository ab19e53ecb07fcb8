#include "utility/properties.h"

#include <gtest/gtest.h>

#include "tests/support/open_store.h"
#include "tests/support/outcome.h"

namespace {

using namespace std::string_literals;
using Row = std::pair<std::string, std::string>;
using Store = Open<mox::Properties>;

TEST(Properties, PutMakesARecordOnceThenChangesItsValue) {
    Store store, cleared, deleted;
    store.Put("a", "1");
    store.Put("B", "", " two");
    store.Put("\n7", "");
    EXPECT_EQ(store.Dump(), "[3 \n7||][2 B|| two][1 a|1|]*");
    EXPECT_EQ(store.Get("a") + store.Get("A"), "1");
    EXPECT_EQ(store.Get("a", "x") + store.Get("A", "y") + store.Get("B", "z"), "1yz");
    store.Put("B", "3", "dropped");
    store.Delete("a");
    store.Put("\xE0", "4");
    EXPECT_EQ(store.Dump(), "[3 \n7||][2 B|3| two][3 \xE0|4|]*");
    cleared.Clear();
    deleted.Delete("a");
    EXPECT_EQ(cleared.Dump() + deleted.Dump(), "**");
}

TEST(Properties, SharesRecordsBetweenStores) {
    const auto record = [](const char* name, const char* value) {
        return std::make_shared<Store::Property>(name, value, "note", 9);
    };
    for (const bool overwrite : {false, true}) {
        Store source, target;
        source.Put("c", "4");
        for (const char* name : {"a", "b"}) source.PutProperty(record(name, "2"));
        target.PutProperty(record("a", "1"));
        target.PutProperty(record("b", ""));
        target.Merge(source, overwrite);
        const std::string a = overwrite ? "[9 a|2|note]" : "[9 a|1|note]";
        EXPECT_EQ(target.Dump(), a + "[9 b|2|note][1 c|4|]");
        source.Put("c", "changed");
        source.PutProperty(record("c", "replaced"));
        EXPECT_EQ(target.Get("c"), "changed");
        target.Clear();
        EXPECT_THROW(target.PutProperty(nullptr), mox::Exception);
        EXPECT_EQ(target.Dump(), "*");
    }
}

TEST(Properties, ReadNumbersWithSizeSuffixes) {
    Store store;
    // As int, unsigned int and unsigned long, each with the default 99.
    const auto read = [&store](const std::string& value) {
        store.Put("a", value);
        return std::to_string(store.GetAsInt("a", 99)) + ' ' +
               std::to_string(store.GetAsUInt("a", 99)) + ' ' +
               std::to_string(store.GetAsULong("a", 99));
    };
    for (const auto& [text, numbers] :
         {Row{"007", "7 7 7"}, Row{"0x10", "0 0 0"}, Row{"9b", "9 9 9"},
          Row{"1.5kb", "1024 1024 1024"}, Row{" \t\n\v\f\r+7 K", "7168 7168 7168"},
          Row{"-2k", "-2048 99 99"}, Row{"-0", "0 99 99"},
          Row{"2147483647", "2147483647 2147483647 2147483647"},
          Row{"2147483648", "99 2147483648 2147483648"}, Row{"-2147483648", "-2147483648 99 99"},
          Row{"2gB", "-2147483648 2147483648 2147483648"}, Row{"4G", "0 0 4294967296"},
          Row{"4294967295", "99 4294967295 4294967295"}, Row{"4294967296", "99 99 4294967296"},
          Row{"18446744073709551615", "99 99 18446744073709551615"},
          Row{"18446744073709551615Mb", "99 99 18446744073708503040"}}) {
        EXPECT_EQ(read(text), numbers) << text;
    }
    for (const char* text :
         {"18446744073709551616", "-2147483649", "+-2", "- 2", "kb", "two", ""}) {
        EXPECT_EQ(read(text), "99 99 99") << text;
    }
}

TEST(Properties, ReadTruthFromEightWords) {
    Store store;
    const auto read = [&store](const std::string& word, bool defaultValue) {
        store.Put("a", word);
        return Outcome([&] { return store.GetAsBool("a", defaultValue); });
    };
    EXPECT_EQ(read("", true) + read("", false), "10");
    for (const char* word : {"TRUE", "true", "1", "yes"}) EXPECT_EQ(read(word, false), "1");
    for (const char* word : {"FALSE", "false", "0", "no"}) EXPECT_EQ(read(word, true), "0");
    for (const std::string word : {"Yes", "On", "1 "})
        EXPECT_EQ(read(word, true), "Bad value for boolean option \"" + word + '"');
}

TEST(Properties, ParseReplacesTheStoreByTheRecordsOfAText) {
    Store store;
    store.Parse("\n\r\n# readers\r\nC=0 # old\nC\r = 3\0   # entries\n\nName=a##b\n"s);
    EXPECT_EQ(store.Dump(), "[1 \n1|# readers| readers][3 C|3\0| entries][4 Name|a#b|]*"s);
    EXPECT_EQ(store.GetAsDataFile(), "\n1=# readers\nC=3\0\nName=a#b\n"s);
    for (const char* bad : {"none", " = 3"}) {
        EXPECT_EQ(Outcome([&] { store.Parse("\na=1\n\nb=2\n"s + bad + "\nc=4"); }),
                  "Properties: wrong data in config data  in line 3");
        EXPECT_EQ(store.Dump(), "[1 a|1|][2 b|2|]*");
    }
    store.Parse("\r\n\n");
    EXPECT_EQ(store.Dump(), "*");
}

}  // namespace
