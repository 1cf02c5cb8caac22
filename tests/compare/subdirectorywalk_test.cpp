#include "compare/filelisting.h"
#include "compare/subdirectorywalk.h"
#include "platform/runtimeerror.h"
#include "support/temptree.h"

#include <cerrno>
#include <filesystem>

#include <gtest/gtest.h>

#include <map>
#include <set>

using namespace pv;

namespace {

using Paths = std::vector<std::string>;

// A pretend file system: the sub-directories of each directory, which directories
// exist on the right, and the ones that cannot be read (on either side).
struct FakeTree {
    std::map<std::string, Paths> children;
    std::set<std::string> rightDirs;
    std::set<std::string> unreadable;
    std::map<std::string, std::string> landsElsewhere; // right directory -> where the pane lands
    int stopAfterCompares = -1;
    int failAtCompare = -1;
};

struct Seen {
    Paths compared; // "left | right"
    Paths lines;
};

Seen walk(FakeTree t, const std::string& b1, const std::string& b2) {
    Seen seen;
    std::string left = b1, right = b2;
    bool stop = false;
    auto check = [&](const std::string& d) {
        if (t.unreadable.count(d))
            throw RuntimeError(EACCES, "Path not found: " + d + ": Permission denied");
    };
    SubDirectoryWalk::Hooks h;
    h.stopRequested = [&] { return stop; };
    h.subdirectories = [&](const std::string& d) {
        auto it = t.children.find(d);
        return it == t.children.end() ? Paths{} : it->second;
    };
    h.moveLeft = [&](const std::string& d) { return check(d), left = d; };
    h.moveRight = [&](const std::string& d) {
        check(d);
        if (!t.rightDirs.count(d))
            throw RuntimeError(ENOENT, "No such file or directory");
        return right = t.landsElsewhere.count(d) ? t.landsElsewhere[d] : d;
    };
    h.compare = [&] {
        seen.compared.push_back(left + " | " + right);
        const int n = static_cast<int>(seen.compared.size());
        stop = stop || n == t.stopAfterCompares;
        if (n == t.failAtCompare)
            throw RuntimeError(EIO, "Input/output error");
    };
    h.addLine = [&](const std::string& l) { seen.lines.push_back(l); };
    SubDirectoryWalk(h).run(b1, b2);
    return seen;
}

} // namespace

TEST(SubDirectoryWalk, PairsAndReports) {
    struct Row {
        const char* name;
        FakeTree tree;
        Paths compared, lines;
    };
    // clang-format off
    const Row rows[] = {
        {"pre-order; a missing right directory is reported and its left tree still walked",
         {{{"/l", {"/l/x", "/l/y"}}, {"/l/x", {"/l/x/deep"}}, {"/l/y", {"/l/y/z"}}},
          {"/r", "/r/x", "/r/x/deep"}, {}, {}, -1, -1},
         {"/l | /r", "/l/x | /r/x", "/l/x/deep | /r/x/deep"},
         {"Unmatched sub directory : '\t/r/y' does not exist",
          "Unmatched sub directory : '\t/r/y/z' does not exist"}},
        // Listed once, at its top, after the walk; one under a compared pair as well.
        {"right-only directories",
         {{{"/l", {"/l/x"}}, {"/r", {"/r/new", "/r/x"}}, {"/r/new", {"/r/new/deep"}}, {"/r/x", {"/r/x/extra"}}},
          {"/r", "/r/x", "/r/new", "/r/new/deep", "/r/x/extra"}, {}, {}, -1, -1},
         {"/l | /r", "/l/x | /r/x"},
         {"Unmatched sub directory : '/r/new' exists only in directory 2",
          "Unmatched sub directory : '/r/x/extra' exists only in directory 2"}},
        // The left pane would still show the previous directory: the pair is skipped.
        {"unreadable directories on either side",
         {{{"/l", {"/l/a", "/l/b", "/l/c"}}, {"/r", {"/r/a", "/r/b", "/r/c"}}},
          {"/r", "/r/a", "/r/b", "/r/c"}, {"/l/a", "/r/b"}, {}, -1, -1},
         {"/l | /r", "/l/c | /r/c"},
         {"Unreadable sub directory : '/l/a' Permission denied",
          "Unreadable sub directory : '/r/b' Permission denied"}},
        // A link the right pane resolves: the pair is reported with both directories.
        {"right pane landing elsewhere",
         {{{"/l", {"/l/x", "/l/y"}}}, {"/r", "/r/x", "/r/y"}, {}, {{"/r/x", "/r/other"}}, -1, -1},
         {"/l | /r", "/l/y | /r/y"},
         {"Unmatched sub directory : 1:'/l/x' <> 2:'/r/other'"}},
        {"a stop is honoured at the start of the next level",
         {{{"/l", {"/l/1", "/l/2"}}}, {"/r", "/r/1", "/r/2"}, {}, {}, 2, -1},
         {"/l | /r", "/l/1 | /r/1"}, {}},
        {"a failing compare is passed over",
         {{{"/l", {"/l/1", "/l/2"}}}, {"/r", "/r/1", "/r/2"}, {}, {}, -1, 2},
         {"/l | /r", "/l/1 | /r/1", "/l/2 | /r/2"}, {}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Seen seen = walk(row.tree, "/l", "/r");
        EXPECT_EQ(seen.compared, row.compared);
        EXPECT_EQ(seen.lines, row.lines);
    }
}

// Links back up the tree would make the walk endless (two per level: 2^23 pairs).
// Each directory is walked once; a link to one walked before is reported.
TEST(SubDirectoryWalk, LinksToDirectoriesWalkedBeforeAreNotEnteredAgain) {
    pvtest::TempDir tree;
    namespace fs = std::filesystem;
    for (const char* side : {"l", "r"}) {
        tree.mkdir(std::string(side) + "/a");
        fs::create_directory_symlink("..", tree / (std::string(side) + "/a/up"));
        fs::create_directory_symlink(".", tree / (std::string(side) + "/a/self"));
        fs::create_directory_symlink("a", tree / (std::string(side) + "/b"));
    }
    Paths compared, lines, notes;
    SubDirectoryWalk::Hooks h;
    const std::string l = tree / "l";
    std::string left = l;
    h.subdirectories = [](const std::string& d) {
        Paths out;
        for (const std::string& name : listSubdirectories(d))
            out.push_back(joinPath(d, name));
        return out;
    };
    h.moveLeft = [&](const std::string& d) { return left = d; };
    h.moveRight = [](const std::string& d) { return listSubdirectories(d), d; };
    h.compare = [&] { compared.push_back(left); };
    h.stopRequested = [&] { return compared.size() > 20; }; // a walk without end stops here
    h.addLine = [&](const std::string& l) { lines.push_back(l); };
    h.addNote = [&](const std::string& l) { notes.push_back(l); };
    SubDirectoryWalk(h).run(l, tree / "r");
    EXPECT_EQ(compared, (Paths{l, l + "/a"}));
    EXPECT_EQ(lines, Paths{});
    EXPECT_EQ(notes,
              (Paths{"Sub directory loop : '" + l + "/a/self' leads to '" + l + "/a', not entered",
                     "Sub directory loop : '" + l + "/a/up' leads to '" + l + "', not entered",
                     "Sub directory loop : '" + l + "/b' leads to '" + l + "/a', not entered"}));
}

TEST(SubDirectoryWalk, TwentyFourLevelsAreComparedAndDeeperOnesReported) {
    FakeTree t;
    std::string d = "/l", r = "/r";
    t.rightDirs.insert(r);
    for (int level = 1; level <= 25; ++level) {
        std::string child = d + "/d" + std::to_string(level);
        t.children[d] = {child};
        d = child;
        r += "/d" + std::to_string(level);
        t.rightDirs.insert(r);
    }
    t.children["/l"].push_back("/l/sibling");
    t.rightDirs.insert("/r/sibling");
    Seen seen = walk(t, "/l", "/r");
    ASSERT_EQ(seen.compared.size(), 24u + 1u); // levels 0..23 and the sibling
    EXPECT_EQ(seen.compared[23].rfind("/l/d1/d2/d3/d4/d5/d6/d7/d8/d9/d10/d11/d12/d13/d14/d15/d16/"
                                      "d17/d18/d19/d20/d21/d22/d23 | ",
                                      0),
              0u);
    EXPECT_EQ(seen.compared.back(), "/l/sibling | /r/sibling");
    EXPECT_EQ(seen.lines, Paths{std::string(kTooDeep)});
}

TEST(SubDirectoryWalk, CounterpartKeepsOneSeparator) {
    EXPECT_EQ(SubDirectoryWalk::counterpart("/src", "/bak", "/src/x/y"), "/bak/x/y");
    EXPECT_EQ(SubDirectoryWalk::counterpart("/", "/bak", "/x"), "/bak/x");
    EXPECT_EQ(SubDirectoryWalk::counterpart("/src", "/", "/src/x"), "/x");
    EXPECT_EQ(SubDirectoryWalk::counterpart("/src", "/bak", "/src"), "/bak");
}
