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

// A pretend file system: the sub-directories of each directory, and which
// directories exist on the right.
struct FakeTree {
    std::map<std::string, std::vector<std::string>> children;
    std::set<std::string> rightDirs;
    std::set<std::string> unreadable; // on either side
    std::string left, right;
    std::vector<std::string> compared; // "left | right"
    std::vector<std::string> lines;
    bool stop = false;
    int stopAfterCompares = -1;

    SubDirectoryWalk walk() {
        SubDirectoryWalk::Hooks h;
        h.stopRequested = [this] { return stop; };
        h.subdirectories = [this](const std::string& d) {
            auto it = children.find(d);
            return it == children.end() ? std::vector<std::string>{} : it->second;
        };
        h.moveLeft = [this](const std::string& d) {
            if (unreadable.count(d))
                throw RuntimeError(EACCES, "Path not found: " + d + ": Permission denied");
            return left = d;
        };
        h.moveRight = [this](const std::string& d) {
            if (unreadable.count(d))
                throw RuntimeError(EACCES, "Path not found: " + d + ": Permission denied");
            if (!rightDirs.count(d))
                throw RuntimeError(2, "No such file or directory");
            return right = d;
        };
        h.compare = [this] {
            compared.push_back(left + " | " + right);
            if (static_cast<int>(compared.size()) == stopAfterCompares)
                stop = true;
        };
        h.addLine = [this](const std::string& l) { lines.push_back(l); };
        return SubDirectoryWalk(h);
    }
    void run(const std::string& b1, const std::string& b2) {
        left = b1;
        right = b2;
        walk().run(b1, b2);
    }
};

} // namespace

TEST(SubDirectoryWalk, PreOrderWithUnmatchedDirectoriesReportedAndStillWalked) {
    FakeTree t;
    t.children["/src"] = {"/src/x", "/src/y"};
    t.children["/src/x"] = {"/src/x/deep"};
    t.children["/src/y"] = {"/src/y/z"};
    t.rightDirs = {"/bak", "/bak/x", "/bak/x/deep"};
    t.run("/src", "/bak");
    EXPECT_EQ(t.compared, (std::vector<std::string>{"/src | /bak", "/src/x | /bak/x",
                                                    "/src/x/deep | /bak/x/deep"}));
    EXPECT_EQ(t.lines,
              (std::vector<std::string>{"Unmatched sub directory : '\t/bak/y' does not exist",
                                        "Unmatched sub directory : '\t/bak/y/z' does not exist"}));
}

// A directory of the right tree that the left walk never reaches is listed once,
// at its top, after the walk; one under a compared pair as well.
TEST(SubDirectoryWalk, RightOnlyDirectoriesAreListedOnceAfterTheWalk) {
    FakeTree t;
    t.children["/src"] = {"/src/x"};
    t.children["/bak"] = {"/bak/new", "/bak/x"};
    t.children["/bak/new"] = {"/bak/new/deep"};
    t.children["/bak/x"] = {"/bak/x/extra"};
    t.rightDirs = {"/bak", "/bak/x", "/bak/new", "/bak/new/deep", "/bak/x/extra"};
    t.run("/src", "/bak");
    EXPECT_EQ(t.compared, (std::vector<std::string>{"/src | /bak", "/src/x | /bak/x"}));
    EXPECT_EQ(t.lines, (std::vector<std::string>{
                           "Unmatched sub directory : '/bak/new' exists only in directory 2",
                           "Unmatched sub directory : '/bak/x/extra' exists only in directory 2"}));
}

// An unreadable directory on either side is reported with its reason, and its
// pair is not compared (the left pane would still show the previous directory).
TEST(SubDirectoryWalk, UnreadableDirectoriesAreReportedAndTheirPairsSkipped) {
    FakeTree t;
    t.children["/src"] = {"/src/a", "/src/b", "/src/c"};
    t.children["/bak"] = {"/bak/a", "/bak/b", "/bak/c"};
    t.rightDirs = {"/bak", "/bak/a", "/bak/b", "/bak/c"};
    t.unreadable = {"/src/a", "/bak/b"};
    t.run("/src", "/bak");
    EXPECT_EQ(t.compared, (std::vector<std::string>{"/src | /bak", "/src/c | /bak/c"}));
    EXPECT_EQ(t.lines,
              (std::vector<std::string>{"Unreadable sub directory : '/src/a' Permission denied",
                                        "Unreadable sub directory : '/bak/b' Permission denied"}));
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
    std::vector<std::string> compared, lines, notes;
    SubDirectoryWalk::Hooks h;
    std::string left;
    h.subdirectories = [](const std::string& d) {
        std::vector<std::string> out;
        for (const std::string& name : listSubdirectories(d))
            out.push_back(joinPath(d, name));
        return out;
    };
    h.moveLeft = [&](const std::string& d) { return left = d; };
    h.moveRight = [](const std::string& d) {
        listSubdirectories(d);
        return d;
    };
    h.compare = [&] { compared.push_back(left); };
    h.stopRequested = [&] { return compared.size() > 20; }; // a walk without end stops here
    h.addLine = [&](const std::string& l) { lines.push_back(l); };
    h.addNote = [&](const std::string& l) { notes.push_back(l); };
    const std::string l = tree / "l";
    left = l;
    SubDirectoryWalk(h).run(l, tree / "r");
    EXPECT_EQ(compared, (std::vector<std::string>{l, l + "/a"}));
    EXPECT_EQ(lines, std::vector<std::string>{});
    EXPECT_EQ(notes,
              (std::vector<std::string>{
                  "Sub directory loop : '" + l + "/a/self' leads to '" + l + "/a', not entered",
                  "Sub directory loop : '" + l + "/a/up' leads to '" + l + "', not entered",
                  "Sub directory loop : '" + l + "/b' leads to '" + l + "/a', not entered"}));
}

TEST(SubDirectoryWalk, TwentyFourLevelsAreComparedAndDeeperOnesReported) {
    FakeTree t;
    std::string d = "/l", r = "/r";
    std::vector<std::string> levels{d};
    t.rightDirs.insert(r);
    for (int level = 1; level <= 25; ++level) {
        std::string child = d + "/d" + std::to_string(level);
        t.children[d] = {child};
        d = child;
        levels.push_back(d);
        r += "/d" + std::to_string(level);
        t.rightDirs.insert(r);
    }
    t.children["/l"].push_back("/l/sibling");
    t.rightDirs.insert("/r/sibling");
    t.run("/l", "/r");
    ASSERT_EQ(t.compared.size(), 24u + 1u); // levels 0..23 and the sibling
    EXPECT_EQ(t.compared[23].substr(0, t.compared[23].find(' ')), levels[23]);
    EXPECT_EQ(t.compared.back(), "/l/sibling | /r/sibling");
    EXPECT_EQ(t.lines, std::vector<std::string>{std::string(kTooDeep)});
}

TEST(SubDirectoryWalk, StopIsHonouredAtTheStartOfTheNextLevel) {
    FakeTree t;
    t.children["/a"] = {"/a/1", "/a/2"};
    t.rightDirs = {"/b", "/b/1", "/b/2"};
    t.stopAfterCompares = 2;
    t.run("/a", "/b");
    EXPECT_EQ(t.compared, (std::vector<std::string>{"/a | /b", "/a/1 | /b/1"}));
}

TEST(SubDirectoryWalk, FailuresInsideALevelArePassedOver) {
    FakeTree t;
    t.children["/a"] = {"/a/1", "/a/2"};
    t.rightDirs = {"/b", "/b/1", "/b/2"};
    SubDirectoryWalk::Hooks h;
    int compares = 0;
    h.subdirectories = [&](const std::string& d) { return t.children[d]; };
    h.moveLeft = [](const std::string& d) { return d; };
    h.moveRight = [](const std::string& d) { return d; };
    h.compare = [&] {
        if (++compares == 2)
            throw RuntimeError(5, "Input/output error");
    };
    h.addLine = [](const std::string&) {};
    SubDirectoryWalk(h).run("/a", "/b");
    EXPECT_EQ(compares, 3);
}

// The right pane can land elsewhere than asked (a link it resolves): the pair is
// reported with both directories and not compared.
TEST(SubDirectoryWalk, RightPaneLandingElsewhereIsReportedNotCompared) {
    std::vector<std::string> compared, lines;
    std::string left = "/a", right = "/b"; // the panes stand on the pair the walk starts from
    SubDirectoryWalk::Hooks h;
    h.subdirectories = [](const std::string& d) {
        return d == "/a" ? std::vector<std::string>{"/a/x", "/a/y"} : std::vector<std::string>{};
    };
    h.moveLeft = [&](const std::string& d) { return left = d; };
    h.moveRight = [&](const std::string& d) { return right = d == "/b/x" ? "/b/other" : d; };
    h.compare = [&] { compared.push_back(left + " | " + right); };
    h.addLine = [&](const std::string& l) { lines.push_back(l); };
    SubDirectoryWalk(h).run("/a", "/b");
    EXPECT_EQ(compared, (std::vector<std::string>{"/a | /b", "/a/y | /b/y"}));
    EXPECT_EQ(lines,
              std::vector<std::string>{"Unmatched sub directory : 1:'/a/x' <> 2:'/b/other'"});
}

TEST(SubDirectoryWalk, CounterpartKeepsOneSeparator) {
    EXPECT_EQ(SubDirectoryWalk::counterpart("/src", "/bak", "/src/x/y"), "/bak/x/y");
    EXPECT_EQ(SubDirectoryWalk::counterpart("/", "/bak", "/x"), "/bak/x");
    EXPECT_EQ(SubDirectoryWalk::counterpart("/src", "/", "/src/x"), "/x");
    EXPECT_EQ(SubDirectoryWalk::counterpart("/src", "/bak", "/src"), "/bak");
}
