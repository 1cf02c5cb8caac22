#include "compare/comparecommand.h"
#include "platform/runtimeerror.h"
#include "recordingobserver.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <map>

using namespace pv;

namespace {

// Panes over a pretend tree: file lists and sub-directories by directory.
class FakePanes : public ComparePanes {
  public:
    std::map<std::string, std::vector<std::string>> files, subdirs;
    std::string left = "/l", right = "/r";
    bool stop = true; // cleared by a sub-directory run
    std::string leftDir() const override { return left; }
    std::string rightDir() const override { return right; }
    PaneLists lists() override {
        if (!files.count(left) || !files.count(right))
            throw RuntimeError(2, "No such file or directory");
        return {left, right, files[left], files[right]};
    }
    std::string moveLeft(const std::string& d) override {
        if (d.ends_with("locked"))
            throw RuntimeError(13, "Permission denied");
        return left = d;
    }
    std::string moveRight(const std::string& d) override {
        if (!files.count(d))
            throw RuntimeError(2, "No such file or directory");
        return right = d;
    }
    std::vector<std::string> subdirectories(const std::string& d) override { return subdirs[d]; }
    bool stopRequested() override { return stop; }
    void clearStopRequest() override { stop = false; }
};

struct Fixture {
    pvtest::TempDir home;
    pvtest::RecordingObserver observer;
    FakePanes panes;
    int starts = 0;
    std::map<std::string, std::string> attributes; // by path; "" when not given
    DirectoryCompare compare{observer, CompareFiles::forWindow(home.str(), ""),
                             [this](const std::string&) { return ++starts, 9L; },
                             [this](const std::string& path) { return attributes[path]; }};
    DirectoryCompare::Call call;
    CompareTotals run(bool sub) {
        CompareCommand command(compare, observer, panes, [this] { return call; });
        return command.run(sub);
    }
};

} // namespace

TEST(CompareCommand, SingleModeTotalsAndEndLine) {
    Fixture f;
    f.panes.files = {{"/l", {"a", "b"}}, {"/r", {"a"}}};
    CompareTotals t = f.run(false);
    EXPECT_EQ(t.pairs, 1);
    EXPECT_EQ(t.matched, 1);
    EXPECT_EQ(t.oneOnly, 1);
    EXPECT_FALSE(t.allMatched());
    EXPECT_EQ(f.observer.lines.back().rfind("end of Directory compare\t", 0), 0u);
    EXPECT_EQ(f.observer.cntl, "");
    EXPECT_EQ(f.starts, 1);
}

TEST(CompareCommand, SingleModeErrorLeavesControlValueClearAndScriptUnstarted) {
    Fixture f;
    f.panes.files = {{"/l", {"a"}}}; // the right directory cannot be listed
    EXPECT_THROW(f.run(false), RuntimeError);
    EXPECT_EQ(f.observer.cntl, "");
    EXPECT_EQ(f.starts, 0);
}

TEST(CompareCommand, SubDirectoryRunWalksRestoresAndStartsOnce) {
    Fixture f;
    f.panes.files = {{"/l", {"a"}}, {"/r", {"a"}}, {"/l/x", {"b"}}, {"/r/x", {"b"}}, {"/l/y", {}}};
    f.panes.subdirs = {{"/l", {"/l/x", "/l/y"}}};
    f.compare.beginSubDirectoryRun(); // a stale run's script is simply replaced
    CompareTotals t = f.run(true);
    EXPECT_EQ(t.pairs, 2);
    EXPECT_EQ(t.matched, 2);
    EXPECT_EQ(t.unmatchedDirectories, 1); // /r/y
    EXPECT_EQ(f.starts, 1);
    EXPECT_EQ(f.panes.left, "/l");
    EXPECT_EQ(f.panes.right, "/r");
    EXPECT_EQ(f.observer.lines.front().rfind("Start\t", 0), 0u);
    EXPECT_EQ(f.observer.lines.back(), " there were 0 unreadable sub directories");
    EXPECT_EQ(f.observer.cntl, "");
    // Replace in a sub-directory run: the results file gets the start lines once,
    // when the script is complete.
    EXPECT_EQ(pvtest::readFile(f.home / "Pairview.txt").rfind("\r\n\r\n---------- Start ", 0), 0u);
}

TEST(CompareCommand, TopPairThatCannotBeListedIsPassedOverInASubDirectoryRun) {
    Fixture f;
    f.panes.files = {{"/l", {"a"}}};
    CompareTotals t = f.run(true);
    EXPECT_EQ(t.pairs, 0);
    EXPECT_EQ(f.starts, 1); // the script still ends and starts
}

TEST(CompareCommand, WalkReportsProgressAndStopsWhenTheUserCancels) {
    Fixture f;
    f.panes.files = {{"/l", {}}, {"/r", {}}, {"/l/x", {}}, {"/r/x", {}}, {"/l/x/d", {}},
                     {"/r/x/d", {}}, {"/l/y", {}}, {"/r/y", {}}};
    f.panes.subdirs = {{"/l", {"/l/x", "/l/y"}}, {"/l/x", {"/l/x/d"}}};
    f.run(true);
    using Steps = std::vector<std::pair<long, long>>;
    EXPECT_EQ(f.observer.walk, (Steps{{1, 3}, {2, 4}, {3, 4}, {4, 4}}));
    EXPECT_EQ(f.observer.walksEnded, 1);

    // Cancelled at the second report: the walk stops before its next level and
    // the list says how far it got.
    f.observer = {};
    f.observer.stopAtProgress = 2;
    CompareTotals t = f.run(true);
    EXPECT_EQ(t.pairs, 2);
    EXPECT_EQ(f.observer.walk.size(), 2u);
    EXPECT_EQ(f.panes.left, "/l");
    const auto& lines = f.observer.lines;
    const size_t totals = totalsBlock(t).size();
    ASSERT_GE(lines.size(), 2u + totals);
    EXPECT_EQ(lines[lines.size() - 2 - totals].rfind("Compare stopped after 2 of 4 directories\t", 0),
              0u);
    EXPECT_EQ(lines[lines.size() - 1 - totals].rfind("end of subdirectory compare\t", 0), 0u);
}

// Directories the pattern leaves out are neither walked nor reported, on either
// side; the totals after the walk count every kind of line once.
TEST(CompareCommand, WalkLeavesOutExcludedDirectoriesAndEndsWithTheTotals) {
    Fixture f;
    f.panes.files = {{"/l", {"same", "changed", "left"}},
                     {"/r", {"same", "changed", "right"}},
                     {"/l/x", {"a", "b"}},
                     {"/r/x", {"b", "c", "d"}},
                     {"/l/node_modules", {"n"}},
                     {"/r/node_modules", {"m"}}};
    f.panes.subdirs = {{"/l", {"/l/x", "/l/gone", "/l/locked", "/l/node_modules"}},
                       {"/r", {"/r/x", "/r/extra", "/r/node_modules"}}};
    f.attributes = {{"/l/changed", "1"}, {"/r/changed", "2"}};
    f.call.pattern = "*.*;!node_modules/";
    CompareTotals t = f.run(true);
    for (const std::string& line : f.observer.lines)
        EXPECT_EQ(line.find("node_modules"), std::string::npos) << line;
    EXPECT_EQ(t.pairs, 2);
    const std::vector<std::string> expected = {"Total stats:",
                                               " there were 2 directories compared",
                                               " there were 2 files matched",
                                               " there were 1 files different",
                                               " there were 2 files in directory one only",
                                               " there were 3 files in directory two only",
                                               " there were 2 unmatched sub directories",
                                               " there were 1 unreadable sub directories"};
    const auto& lines = f.observer.lines;
    ASSERT_GT(lines.size(), expected.size());
    EXPECT_EQ(lines[lines.size() - expected.size() - 1].rfind("end of subdirectory compare\t", 0),
              0u);
    EXPECT_EQ(std::vector<std::string>(lines.end() - long(expected.size()), lines.end()), expected);
    EXPECT_FALSE(t.allMatched());
}
