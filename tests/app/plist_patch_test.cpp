#include "app/plist_patch.h"

#include <gtest/gtest.h>

#include <random>

#include "app/byte_search.h"
#include "app/location.h"
#include "tests/support/buffers.h"
#include "utility/exception.h"

namespace {

using namespace std::string_literals;

const std::string entry = "<string>v</string>", next = "\n\t\t<string>";

/// The document with the entries inserted, or the failure's message.
std::string Patched(const std::string& document, const std::vector<PlistEntry>& entries) try {
    qel::BufferDynamic patched(View(document));
    InsertEntries(patched, entries);
    return Bytes(patched);
} catch (const mox::Exception& exception) {
    return exception.what();
}

/// The document with the value "v" inserted for each of the names.
std::string Patched(const std::string& document, const std::string& names) {
    std::vector<PlistEntry> entries;
    for (const std::string& name : SplitAtColons(names)) entries.push_back({name, "v"});
    return Patched(document, entries);
}

TEST(PlistPatch, InsertsBeforeTheFirstEntryBehindTheName) {
    const std::tuple<std::string, std::string, std::string> rows[] = {
        // The second name stands in what the first inserts.
        {"\0a<string></array>"s, "a:v", "\0a<string>v</string>\n\t\t"s + entry + next + "</array>"},
        // The name is bare text, wherever it stands, and the tags may stand in either order.
        {"<!-- a --></array>\r\n<string>a", "a", "<!-- a --></array>\r\n" + entry + next + "a"},
        // The search for the tags starts one byte behind the start of the name.
        {"<string>b<string></array>", "<string>b<string>", "<string>b" + entry + next + "</array>"},
        {"<string></array>a", "a", "<string>[x] not found"},
        {"</array>a</key><array/><string>", "a", "</array>[x] not found"},
        {"a<string></array>", "a:A", "Tree[x] not found"},
        // The last name stands at the end, and across two entries that were inserted before.
        {"a<string>b<string>\n\t\t<string>b<string>v</array>", "a:b:\n\t\t<string>b<string>v",
         "a" + entry + "\n\t\t" + entry + next + "b" + entry + next + next + "b<string>v</array>"},
        // What an entry before has changed: the bytes of an array that was empty, twice, the line
        // of one that still is, twice, and a name that was there, twice.
        {"ID</key><array/><string></array>", "ID:D",
         "ID</key><array>\n\t" + entry + "\n\t\t" + entry + "\n</array><string></array>"},
        {"A</key><array/><string>array/<string></array>", "A:rray/",
         "A</key><array>\n\t" + entry + "\n</array><string>array/" + entry + next + "</array>"},
        {"\n A<string>B</key><array/><string></array>", "A:B",
         "\n A" + entry + next + "B</key><array>\n\t\t\t" + entry + "\n\t\t</array>" +
             "<string></array>"},
        {" A<string>B</key><array/><string></array>", "A:B",
         " A" + entry + next + "B</key><array>\n\t\t\t" + entry + "\n\t\t</array>" +
             "<string></array>"},
        {"x<string>y</key>\n<array/><string></array>", "x:x<string>y", "Tree[x] not found"},
        {"x<string>y<string>z</array>", "y:x<string>y<string>z", "Tree[x] not found"},
    };
    for (const auto& [document, names, result] : rows) EXPECT_EQ(Patched(document, names), result);
}

TEST(PlistPatch, OpensAnEmptyArrayBehindItsKey) {
    const std::string head = "<key>b</key>\n<array>\n\t\t", tail = "<string>1</string></array>";
    using Row = std::pair<std::string, std::string>;
    for (const auto& [before, after] :
         {Row{"\tID</key>\n\t<array/>", "\tID</key>\n\t<array>\n\t\t" + entry + "\n\t</array>"},
          Row{"ID</key>\n  <array></array>", "ID</key>\n  <array>\n  \t" + entry + "\n  </array>"},
          Row{"</array>ID</key>\r\n<array>\r\n</array>",
              "</array>ID</key>\r\n<array>\n\t" + entry + "\r\n</array>"},
          Row{" ID</key><array> </array>", " ID</key><array>\n \t" + entry + "\n  </array>"}}) {
        EXPECT_EQ(Patched(before + head + tail, "ID"), after + head + tail);
        // Both tags must be found first.
        EXPECT_EQ(Patched(before, "ID"), "<string>[x] not found") << before;
    }
    // Anything else between the name and the end of its array leaves the plain rule in force.
    for (const std::string other :
         {"<!-- ID --><key>ID</key><array/>", "ID</key><!----><array/>", "ID</key><array />",
          "ID</key><array><!----></array>", "ID </key><array/>"}) {
        EXPECT_EQ(Patched(other + head + tail, "ID"), other + head + entry + "\n\t\t" + tail);
    }
}

TEST(FindBytes, FindsWhatFindFinds) {
    std::mt19937 random(1);
    const auto text = [&random](std::size_t size, unsigned letters) {
        std::string result;
        while (size-- != 0) result += random() % 16 == 0 ? char('a' + random() % letters) : 'a';
        return result;
    };
    for (int round = 0; round < 20'000; ++round) {
        const unsigned letters = 1 + random() % 4;
        const std::string document = text(random() % 1000, letters);
        const std::size_t place = random() % (document.size() + 2), size = random() % 80;
        const std::string wanted = random() % 2 == 0 || place > document.size()
                                       ? text(size % 9, letters)
                                       : document.substr(place, size);
        ASSERT_EQ(FindBytes(document, wanted, place / 2), document.find(wanted, place / 2));
        ASSERT_EQ(FindBytes(document, wanted, place), document.find(wanted, place));
    }
}

}  // namespace
