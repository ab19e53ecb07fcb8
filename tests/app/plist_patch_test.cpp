#include "app/plist_patch.h"

#include <gtest/gtest.h>

#include <random>

#include "app/byte_search.h"
#include "tests/support/buffers.h"
#include "utility/exception.h"

namespace {

using namespace std::string_literals;

const std::string entry = "<string>v</string>", inserted = entry + "\n\t\t";
const std::string rest = "<string>b</string></array>";

/// The document with the value "v" inserted for each of the names, or the exception's message.
std::string Patched(const std::string& document, const std::vector<std::string>& names) try {
    std::vector<PlistEntry> entries;
    for (const std::string& name : names) entries.push_back({name, "v"});
    qel::BufferDynamic patched(View(document));
    InsertEntries(patched, entries);
    return Bytes(patched);
} catch (const mox::Exception& exception) {
    return exception.what();
}

TEST(PlistPatch, InsertsBeforeTheFirstStringAfterTheName) {
    // Names and tags are found even in a comment, and in either order.
    EXPECT_EQ(Patched("<!-- a --></array>\0\r\n<string>"s, {"a"}),
              "<!-- a --></array>\0\r\n"s + inserted + "<string>");
    // The search for the tags starts after the first byte of the name.
    EXPECT_EQ(Patched("<string>a" + rest, {"<string>a"}), "<string>a" + inserted + rest);
    EXPECT_EQ(Patched("<string></array>a", {"a"}), "<string>[x] not found");
    EXPECT_EQ(Patched("</array>a</key><array/><string>", {"a"}), "</array>[x] not found");
    EXPECT_EQ(Patched("a" + rest, {"a", "A"}), "Tree[x] not found");
}

TEST(PlistPatch, SearchesEachEntryInTheResultOfThePrevious) {
    EXPECT_EQ(Patched("a" + rest, {"a", "v"}), "a" + inserted + inserted + rest);
    EXPECT_EQ(Patched("a" + rest, {"a", "a<string>b"}), "Tree[x] not found");
    EXPECT_EQ(Patched("a</key><array/>" + rest, {"a", "a"}),
              "a</key><array>\n\t" + inserted + entry + "\n</array>" + rest);
}

TEST(PlistPatch, EntriesOfTheSameValueShareAnElement) {
    const std::vector<PlistEntry> entries{{"a", "v"}, {"b", "v"}, {"c", "w"}};
    EXPECT_TRUE(HasAllEntries("<string>v</string><string>w</string>", entries, true));
    EXPECT_FALSE(HasAllEntries("<string>w</string><string>v</string>", entries, true));
}

TEST(PlistPatch, ExpandsTheEmptyArrayOfTheKey) {
    using Row = std::pair<std::string, std::string>;
    for (const auto& [before, after] :
         {Row{"\ta</key>\n\t<array/>", "\ta</key>\n\t<array>\n\t\t" + entry + "\n\t</array>"},
          Row{"a</key>\n  <array></array>", "a</key>\n  <array>\n  \t" + entry + "\n  </array>"},
          Row{"a</key>\r\n<array>\r\n</array>", "a</key>\r\n<array>\n\t" + entry + "\r\n</array>"},
          Row{" a</key><array> </array>", " a</key><array>\n \t" + entry + "\n  </array>"}}) {
        EXPECT_EQ(Patched(before + rest, {"a"}), after + rest);
        EXPECT_EQ(Patched(before, {"a"}), "<string>[x] not found") << before;
    }
}

TEST(PlistPatch, ExpandsOnlyAnEmptyArrayRightAfterTheKey) {
    for (const std::string before :
         {"<!--ID--><key>ID</key><array/>", "ID</key><!----><array/>", "ID</key><array />",
          "ID</key><array><!----></array>", "ID </key><array/>"})
        EXPECT_EQ(Patched(before + rest, {"ID"}), before + inserted + rest);
}

TEST(FindBytes, FindsWhatFindFinds) {
    std::mt19937 random(1);
    // Mostly the same letter, so that partial matches are frequent.
    const auto text = [&random](std::size_t size) {
        std::string letters;
        while (letters.size() < size) letters += "aaaaaaaaaaaaabcd"[random() % 16];
        return letters;
    };
    for (int round = 0; round < 20'000; ++round) {
        const std::string document = text(random() % 1000);
        const std::size_t from = random() % (document.size() + 2), size = random() % 80;
        const bool isPart = random() % 2 != 0 && from < document.size();
        const std::string wanted = isPart ? document.substr(from, size) : text(size % 9);
        for (const std::size_t start : {from / 2, from})
            ASSERT_EQ(FindBytes(document, wanted, start), document.find(wanted, start))
                << wanted << " from " << start << " in " << document;
    }
}

}  // namespace
