#include "results/resultsnavigation.h"

#include <gtest/gtest.h>

using namespace pv;

namespace {
const std::vector<std::string> kTwoBlocks = {
    "Start\t2026-05-07 09:05:07",
    "Directory 1: /a ",
    "Directory 2: /b ",
    "seq 1\tmessage\tseq 2\tCreateDate\tFile length\tFilename",
    "0 -different- 0  - 1  - 2 x.txt",
    "Compare stats:",
    "Start\t2026-05-07 09:05:08",
    "Directory 1: /a/sub ",
    "Directory 2: /b/sub dir ",
    "0 -matched-   0   y.txt",
    "1 -one only-  1    z.txt",
};
} // namespace

TEST(ResultsNavigation, LineNamesAndDirectories) {
    EXPECT_EQ(fileNameOfLine("0 -matched-   0   y.txt"), "y.txt");
    EXPECT_EQ(fileNameOfLine("0 -matched-   0   my file.txt"), "file.txt");
    EXPECT_TRUE(lineNamesPair(kTwoBlocks[4]));
    EXPECT_TRUE(lineNamesPair(kTwoBlocks[9]));
    EXPECT_FALSE(lineNamesPair(kTwoBlocks[10]));
    EXPECT_FALSE(lineNamesPair("Compare stats:"));
    LineDirectories second = directoriesOfLine(kTwoBlocks, 9);
    EXPECT_EQ(second.dir1, "/a/sub");
    EXPECT_EQ(second.dir2, "/b/sub dir");
    LineDirectories first = directoriesOfLine(kTwoBlocks, 4);
    EXPECT_EQ(first.dir1, "/a");
    EXPECT_EQ(first.dir2, "/b");
    // Line 0 is never looked at.
    LineDirectories none = directoriesOfLine({"Directory 1: /x ", "0 -matched-   0   y"}, 1);
    EXPECT_EQ(none.dir1, "");
}

TEST(ResultsNavigation, NextDifference) {
    NextDifference fromNone = findNextDifference(kTwoBlocks, -1);
    EXPECT_EQ(fromNone.kind, NextDifference::Kind::Found);
    EXPECT_EQ(fromNone.index, 4);
    NextDifference pastLast = findNextDifference(kTwoBlocks, 4);
    EXPECT_EQ(pastLast.kind, NextDifference::Kind::Wrapped);
    EXPECT_EQ(pastLast.index, 1);
    // After wrapping to 1 the search starts at 2 and finds the difference again.
    EXPECT_EQ(findNextDifference(kTwoBlocks, 1).index, 4);
    EXPECT_EQ(findNextDifference({"a", "b"}, -1).kind, NextDifference::Kind::NotFound);
    EXPECT_EQ(findNextDifference({"a", "b"}, 0).kind, NextDifference::Kind::NotFound);
    EXPECT_EQ(findNextDifference({}, -1).kind, NextDifference::Kind::NotFound);
}

TEST(ResultsNavigation, PercentAndPrintText) {
    EXPECT_EQ(progressPercentText(1, 3), "33.33333");
    EXPECT_EQ(progressPercentText(2, 3), "66.66666");
    EXPECT_EQ(progressPercentText(1, 2), "50");
    EXPECT_EQ(progressPercentText(200, 200), "100");
    EXPECT_EQ(progressPercentText(1, 100000), "0.001");
    EXPECT_EQ(printListText({}), "Print file compare:Start\r\n\r\n");
    EXPECT_EQ(printListText({"a", "b "}), "Print file compare:Start\r\n\r\na\r\nb \r\n");
}
