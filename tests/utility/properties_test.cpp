#include "utility/properties.h"

#include <gtest/gtest.h>

#include "tests/support/open_store.h"
#include "utility/exception.h"

namespace {

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

}  // namespace
