#include "results/differenceindex.h"
#include "results/resultstree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace pv;

namespace {

// A sub-directory walk of /a against /b and then a single compare of /c and /d,
// as the compare writes them.
const std::vector<std::string> kTwoRuns = {
    "Start\t2026-05-07 09:05:07",                              // 0
    "Start\t2026-05-07 09:05:07",                              // 1
    "Directory 1: /a ",                                        // 2
    "Directory 2: /b ",                                        // 3
    "seq 1\tmessage\tseq 2\tCreateDate\tFile length\tFilename",// 4
    "0 -matched-   0   same.txt",                              // 5
    "Compare stats:",                                          // 6
    "Start\t2026-05-07 09:05:07",                              // 7
    "Directory 1: /a/src ",                                    // 8
    "Directory 2: /b/src ",                                    // 9
    "0 -different- 0 1 - 5  1 - 77 x.c",                       // 10
    "1 -one only-  1  - 5    y.c",                             // 11
    "Unmatched sub directory : '\t/b/src/gone' does not exist",// 12
    "Start\t2026-05-07 09:05:07",                              // 13
    "Directory 1: /a/src/gone/deep ",                          // 14
    "Directory 2: /b/src/gone/deep ",                          // 15
    "0 -two only-  0  - 1    z.c",                             // 16
    "Unreadable sub directory : '/a/locked' Permission denied",// 17
    "Unmatched sub directory : '/b/new' exists only in directory 2", // 18
    "end of subdirectory compare\t2026-05-07 09:05:08",        // 19
    "Start\t2026-05-07 09:06:00",                              // 20
    "Directory 1: /c ",                                        // 21
    "Directory 2: /d ",                                        // 22
    "0 -matched-   0   q",                                     // 23
    "end of Directory compare\t2026-05-07 09:06:00",           // 24
};

// "name[line] different/one/two/directories{children}" for a run's tree.
std::string render(const ResultsRun& run, int id = 0) {
    const ResultsTreeNode& n = run.nodes[size_t(id)];
    std::string out = n.name + "[" + std::to_string(n.line) + "] " + std::to_string(n.below.different) +
                      "/" + std::to_string(n.below.oneOnly) + "/" + std::to_string(n.below.twoOnly) +
                      "/" + std::to_string(n.below.directories);
    if (n.mark == LineKind::UnmatchedDirectory)
        out += " unmatched";
    if (n.mark == LineKind::UnreadableDirectory)
        out += " unreadable";
    if (!n.children.empty()) {
        out += "{";
        for (int c : n.children)
            out += render(run, c) + (c == n.children.back() ? "" : ", ");
        out += "}";
    }
    return out;
}

TEST(ResultsTree, OneTreePerRunWithCountsBelowEachDirectory) {
    ResultsTree tree;
    for (const std::string& line : kTwoRuns)
        tree.add(line);
    ASSERT_EQ(tree.runs().size(), 2u);
    const ResultsRun& walk = tree.runs()[0];
    EXPECT_EQ(walk.firstLine, 0);
    EXPECT_EQ(walk.left, "/a");
    EXPECT_EQ(walk.right, "/b");
    EXPECT_EQ(render(walk),
              "/a[2] 1/1/1/3{src[8] 1/1/1/1{gone[12] 0/0/1/1 unmatched{deep[14] 0/0/1/0}}, "
              "locked[17] 0/0/0/1 unreadable, new[18] 0/0/0/1 unmatched}");
    EXPECT_EQ(walk.nodes[1].own.different, 1);
    EXPECT_EQ(walk.nodes[1].own.oneOnly, 1);
    EXPECT_EQ(walk.nodes[1].own.twoOnly, 0);
    EXPECT_EQ(render(tree.runs()[1]), "/c[21] 0/0/0/0");
    EXPECT_EQ(tree.runs()[1].firstLine, 20);
}

TEST(ResultsTree, TopDirectoryAtTheRootNamesItsChildrenWithoutTheSeparator) {
    ResultsTree tree;
    for (const char* line : {"Start\t1", "Directory 1: / ", "Directory 2: /mnt ", "Start\t1",
                             "Directory 1: /etc ", "Directory 2: /mnt/etc ",
                             "0 -different- 0   passwd"})
        tree.add(line);
    EXPECT_EQ(render(tree.runs()[0]), "/[1] 1/0/0/0{etc[4] 1/0/0/0}");
}

TEST(DifferenceIndex, KeepsDifferencesWithTheirBlocksHeadersOnce) {
    DifferenceIndex index;
    for (const std::string& line : kTwoRuns)
        index.add(line);
    EXPECT_EQ(index.rows(), (std::vector<long>{8, 9, 10, 11, 12, 14, 15, 16, 17, 18}));
    EXPECT_EQ(index.rowAtOrAfter(10), 2);
    EXPECT_EQ(index.rowAtOrAfter(13), 5);
    EXPECT_EQ(index.rowAtOrAfter(19), 10);
}

} // namespace
