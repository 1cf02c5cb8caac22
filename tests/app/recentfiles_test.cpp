#include "app/recentfiles.h"
#include "settings/itemlist.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

namespace {

// The raw values of ITEM0..ITEM20 ("" for missing), as a reader scanning by index sees them.
std::vector<std::string> recentItems(const pv::Settings& s) {
    std::vector<std::string> out;
    for (int i = 0; i <= 20; ++i)
        out.push_back(s.read("RECENTFILES", pv::itemKey(i)));
    return out;
}

std::string fileWithItems(const std::vector<std::string>& items) {
    std::string text = "[RECENTFILES]\r\n";
    for (std::size_t i = 0; i < items.size(); ++i)
        text += "ITEM" + std::to_string(i) + "=" + items[i] + "\r\n";
    return text;
}

std::vector<std::string> numbered(int count) {
    std::vector<std::string> v;
    for (int i = 0; i < count; ++i)
        v.push_back("/f/" + std::to_string(i) + ".txt");
    return v;
}

TEST(AddRecent, EmptyListWritesOnlyItem0AndTrimsThePath) {
    pvtest::TempDir dir;
    pv::Settings s(dir / "p.ini");
    std::string path = "  /a.txt ";
    pv::AddRecent(path, s);
    EXPECT_EQ(path, "/a.txt");
    EXPECT_EQ(pvtest::readFile(dir / "p.ini"), "[RECENTFILES]\r\nITEM0=/a.txt\r\n");
}

TEST(AddRecent, KnownPathInOtherCaseRewritesOnlyItem0) {
    pvtest::TempDir dir;
    pv::Settings s(dir.write("p.ini", fileWithItems({"/a.txt", "/b.txt"})));
    std::string path = "/A.TXT";
    pv::AddRecent(path, s);
    EXPECT_EQ(pvtest::readFile(dir / "p.ini"), fileWithItems({"/A.TXT", "/b.txt"}));
}

TEST(AddRecent, FullListDropsTheOldestEntry) {
    pvtest::TempDir dir;
    pv::Settings s(dir.write("p.ini", fileWithItems(numbered(21))));
    std::string path = "/new.txt";
    pv::AddRecent(path, s);
    std::vector<std::string> expected{"/new.txt"};
    auto old = numbered(20); // 0..19 move down; the old ITEM20 is overwritten
    expected.insert(expected.end(), old.begin(), old.end());
    EXPECT_EQ(recentItems(s), expected);
}

TEST(AddRecent, PathFoundInTheMiddleMovesToTheHead) {
    pvtest::TempDir dir;
    auto items = numbered(10);
    pv::Settings s(dir.write("p.ini", fileWithItems(items)));
    std::string path = items[5];
    pv::AddRecent(path, s);
    std::vector<std::string> expected{items[5], items[0], items[1], items[2], items[3], items[4]};
    expected.insert(expected.end(), items.begin() + 6, items.end()); // 6 and later untouched
    expected.resize(21);
    EXPECT_EQ(recentItems(s), expected);
}

// The last of several equal entries decides how far the shift reaches.
TEST(AddRecent, LastMatchWins) {
    pvtest::TempDir dir;
    pv::Settings s(dir.write("p.ini", fileWithItems({"/x", "/a", "/y", "/A", "/z"})));
    std::string path = "/a";
    pv::AddRecent(path, s);
    std::vector<std::string> expected{"/a", "/x", "/a", "/y", "/z"};
    expected.resize(21);
    EXPECT_EQ(recentItems(s), expected);
}

TEST(AddRecent, BlankPathLeavesTheFileUnchanged) {
    pvtest::TempDir dir;
    const std::string before = fileWithItems({"/a.txt"});
    pv::Settings s(dir.write("p.ini", before));
    for (std::string path : {"", "   ", "\t"}) {
        pv::AddRecent(path, s);
        EXPECT_EQ(pvtest::readFile(dir / "p.ini"), before);
    }
}

// A one-character entry reads as missing: it is not moved, so the entry above it
// overwrites it and the entry below it stays where it was as well as moving down.
TEST(AddRecent, ShortEntriesCountAsMissing) {
    pvtest::TempDir dir;
    pv::Settings s(dir.write("p.ini", fileWithItems({"/a", "x", "/b"})));
    std::string path = "/n";
    pv::AddRecent(path, s);
    std::vector<std::string> expected{"/n", "/a", "/b", "/b"};
    expected.resize(21);
    EXPECT_EQ(recentItems(s), expected);
}

} // namespace
