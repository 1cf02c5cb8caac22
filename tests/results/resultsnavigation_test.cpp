#include "results/resultsnavigation.h"

#include "compare/compareengine.h"
#include "compare/linesink.h"
#include "compare/recordingobserver.h"

#include <gtest/gtest.h>
#include <map>

using namespace pv;

namespace {
const ResultLines kTwoBlocks = {
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

// The name column is where the compare puts the name, whatever the attribute
// texts look like: each row is one compare whose pair lines must give back
// their names, blanks included.
TEST(ResultsNavigation, NameComesFromTheNameColumnOfTheComparesLines) {
    struct Row {
        const char* name;
        std::map<std::string, std::string> left, right; // name -> attribute text
    };
    const std::string date = "2026\\05\\07 9:5:7", later = "2026\\05\\08 10:15:17";
    const Row rows[] = {
        {"no attributes", {{"my notes.txt", ""}, {"b", ""}}, {{"my notes.txt", ""}, {"b", ""}}},
        {"date, time and length",
         {{"a b.txt", date + " - 12"}, {"c  d", date + " - 7"}},
         {{"a b.txt", later + " - 12345"}, {"c  d", date + " - 7"}}},
        {"length only",
         {{"x - 5 y", " - 5"}, {"z", " - 100"}},
         {{"x - 5 y", " - 77"}, {"z", " - 100"}}},
        {"date only", {{"two  blanks", date}}, {{"two  blanks", later}}},
        {"a failure text on one side",
         {{"gone now.txt", "Can't find the file"}},
         {{"gone now.txt", date + " - 3"}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<std::string> left, right;
        std::map<std::string, std::string> attrs;
        for (const auto& [name, attr] : row.left) {
            left.push_back(name);
            attrs["/l/" + name] = attr;
        }
        for (const auto& [name, attr] : row.right) {
            right.push_back(name);
            attrs["/r/" + name] = attr;
        }
        CompareEngine engine({}, [&](const std::string& path) { return attrs.at(path); });
        pvtest::RecordingObserver out;
        StringLineSink script;
        engine.run({"/l", "/r", &left, &right, "res.txt"}, out, script, {});
        std::vector<std::string> named;
        for (const std::string& line : out.lines)
            if (lineNamesPair(line))
                named.push_back(fileNameOfLine(line));
        EXPECT_EQ(named, left);
    }
}

TEST(ResultsNavigation, LineNamesAndDirectories) {
    EXPECT_EQ(fileNameOfLine("0 -matched-   0   y.txt"), "y.txt");
    // Lines not laid out as a pair line keep the text after the last blank.
    EXPECT_EQ(fileNameOfLine("Directory 1: /a b"), "b");
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
