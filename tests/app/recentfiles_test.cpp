#include "app/recentfiles.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

namespace {

using Items = std::vector<std::string>;

std::string fileWithItems(const Items& items) {
    std::string text = "[RECENTFILES]\r\n";
    for (std::size_t i = 0; i < items.size(); ++i)
        text += "ITEM" + std::to_string(i) + "=" + items[i] + "\r\n";
    return text;
}

Items numbered(int from, int to) {
    Items v;
    for (int i = from; i <= to; ++i)
        v.push_back("/f/" + std::to_string(i) + ".txt");
    return v;
}

Items operator+(Items a, const Items& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// The settings file's bytes after one AddRecent: every entry moved is rewritten in place.
TEST(AddRecent, MovesEntriesDownAndPutsThePathFirst) {
    struct Row {
        const char* name;
        Items before; // empty: no file yet
        std::string path;
        Items after;
    } rows[] = {
        {"first entry, path trimmed", {}, "  /a.txt ", {"/a.txt"}},
        {"known path in another case", {"/a.txt", "/b.txt"}, "/A.TXT", {"/A.TXT", "/b.txt"}},
        // 0..19 move down; the old ITEM20 is overwritten.
        {"full list drops the oldest", numbered(0, 20), "/new.txt",
         Items{"/new.txt"} + numbered(0, 19)},
        {"found in the middle", numbered(0, 9), "/f/5.txt",
         Items{"/f/5.txt"} + numbered(0, 4) + numbered(6, 9)},
        // The last of several equal entries decides how far the shift reaches.
        {"last match wins", {"/x", "/a", "/y", "/A", "/z"}, "/a", {"/a", "/x", "/a", "/y", "/z"}},
        {"blank path", {"/a.txt"}, " \t", {"/a.txt"}},
        // A one-character entry reads as missing: it is not moved, so the entry above
        // it overwrites it and the entry below stays as well as moving down.
        {"short entries count as missing", {"/a", "x", "/b"}, "/n", {"/n", "/a", "/b", "/b"}},
    };
    for (const Row& r : rows) {
        pvtest::TempDir dir;
        if (!r.before.empty())
            dir.write("p.ini", fileWithItems(r.before));
        pv::Settings s(dir / "p.ini");
        std::string path = r.path;
        pv::AddRecent(path, s);
        EXPECT_EQ(pvtest::readFile(dir / "p.ini"), fileWithItems(r.after)) << r.name;
        if (r.before.empty()) {
            EXPECT_EQ(path, "/a.txt");
        }
    }
}

} // namespace
