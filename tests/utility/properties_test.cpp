#include "utility/properties.h"

#include <gtest/gtest.h>

#include "tests/support/exposed_store.h"
#include "tests/support/result_text.h"

namespace {

using namespace std::string_literals;
using Store = Exposed<mox::Properties>;

TEST(Properties, PutAddsARecordOrChangesItsValue) {
    Store store;
    store.Put("b", "1");
    store.Put("a", "", " two");
    EXPECT_EQ(store.Get("a", "default"), "default");
    EXPECT_EQ(store.Get("missing", "default"), "default");
    store.Put("a", "3", "ignored");
    EXPECT_EQ(store.GetRecords(), (Records{{2, "a", "3", " two"}, {1, "b", "1", ""}}));
}

TEST(Properties, DeleteOfAMissingNameSetsTheModifiedFlag) {
    Store store;
    store.Delete("missing");
    EXPECT_TRUE(store.modified);
}

TEST(Properties, SharedRecordsChangeInAllStoresAndAreDeletedFromOne) {
    Store store, other;
    store.Put("a", "replaced");
    store.PutProperty(std::make_shared<Store::Property>("a", "1", "note", 9));
    other.Merge(store, false);
    store.Put("a", "2");
    store.Delete("a");
    EXPECT_EQ(store.GetRecords(), Records());
    EXPECT_EQ(other.GetRecords(), (Records{{9, "a", "2", "note"}}));
    EXPECT_EQ(ResultText([&] { other.PutProperty(nullptr); }), "Properties: null record");
    EXPECT_FALSE(other.modified);
}

TEST(Properties, MergeKeepsNonEmptyValuesUnlessItOverwrites) {
    Store kept, overwritten, other;
    kept.Parse("empty=\nset=old");
    overwritten.Parse("set=old");
    other.Parse("empty=1\nset=2\nnew=3");
    kept.Merge(other, false);
    overwritten.Merge(other, true);
    EXPECT_EQ(kept.GetAsDataFile(), "empty=1\nnew=3\nset=old\n");
    EXPECT_EQ(overwritten.GetAsDataFile(), "empty=1\nnew=3\nset=2\n");
}

TEST(Properties, ValuesReadAsNumbersWithSizeSuffixes) {
    constexpr int none = 99;  // the default
    using Row = std::tuple<std::string, int, unsigned int, unsigned long>;
    for (const auto& [value, asInt, asUInt, asULong] :
         {Row{"007b", 7, 7, 7}, Row{"0x10", 0, 0, 0}, Row{"1.5kb", 1024, 1024, 1024},
          Row{" \t\n\v\f\r+7 K", 7168, 7168, 7168}, Row{"-2k", -2048, none, none},
          Row{"2147483648", none, 1u << 31, 1u << 31}, Row{"4294967296", none, none, 1ul << 32},
          Row{"4G", 0, 0, 1ul << 32}, Row{"+-2", none, none, none}, Row{"kb", none, none, none}}) {
        Store store;
        store.Put("a", value);
        EXPECT_EQ(store.GetAsInt("a", none), asInt) << value;
        EXPECT_EQ(store.GetAsUInt("a", none), asUInt) << value;
        EXPECT_EQ(store.GetAsULong("a", none), asULong) << value;
    }
}

TEST(Properties, ValuesReadAsBooleans) {
    const auto read = [](const std::string& value, bool defaultValue) {
        Store store;
        store.Put("a", value);
        return ResultText([&] { return store.GetAsBool("a", defaultValue); });
    };
    for (const char* word : {"TRUE", "true", "1", "yes"}) EXPECT_EQ(read(word, false), "1") << word;
    for (const char* word : {"FALSE", "false", "0", "no"}) EXPECT_EQ(read(word, true), "0") << word;
    EXPECT_EQ(read("", true), "1");
    EXPECT_EQ(read("", false), "0");
    EXPECT_EQ(read("Yes", true), "Bad value for boolean option \"Yes\"");
}

TEST(Properties, ParseReplacesAllRecords) {
    Store store;
    store.Parse("\n\r\n# note\r\nB=0 # old\nB\r = 1\0   # new\n\na=b##c\n"s);
    EXPECT_EQ(store.GetAsDataFile(), "\n1=# note\nB=1\0\na=b#c\n"s);
    EXPECT_EQ(
        store.GetRecords(),
        (Records{{1, "\n1", "# note", " note"}, {3, "B", "1\0"s, " new"}, {4, "a", "b#c", ""}}));
    EXPECT_EQ(ResultText([&] { store.Parse("a=1\n\nb=2\nnone\nc=4"); }),
              "Properties: wrong data in config data  in line 3");
    EXPECT_EQ(store.GetRecords(), (Records{{1, "a", "1", ""}, {2, "b", "2", ""}}));
    EXPECT_TRUE(store.modified);
}

}  // namespace
