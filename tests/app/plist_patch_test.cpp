#include "app/plist_patch.h"

#include <gtest/gtest.h>

#include "app/location.h"
#include "utility/exception.h"

namespace {

using namespace std::string_literals;

const std::string entry = "<string>v</string>", next = "\n\t\t<string>";

/// The document with the value "v" inserted for each of the names, or the failure's message.
std::string Patched(const std::string& document, const std::string& names) try {
    std::vector<PlistEntry> entries;
    for (const std::string& name : SplitList(names)) entries.push_back({name, "v"});
    return InsertEntries(document, entries);
} catch (const mox::Exception& exception) {
    return exception.what();
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

}  // namespace
