#include "compare/compareengine.h"
#include "compare/linesink.h"
#include "platform/process.h"
#include "recordingobserver.h"

#include <gtest/gtest.h>

#include <map>

using namespace pv;

namespace {

struct EngineRun {
    pvtest::RecordingObserver observer;
    StringLineSink script;
    CompareCounts counts;
    std::vector<std::pair<std::string, std::string>> captured;
};

// Runs the engine on two name lists; attributes come from a table of full paths
// (missing paths give "").
EngineRun compare(const std::vector<std::string>& left, const std::vector<std::string>& right,
                  const std::map<std::string, std::string>& attrs = {},
                  CaptureSelection capture = CaptureSelection::None) {
    EngineRun r;
    CompareEngine engine({}, [&](const std::string& path) {
        auto it = attrs.find(path);
        return it == attrs.end() ? std::string() : it->second;
    });
    CompareInput in{"/a", "/b", &left, &right, "/prog/Pairview1.txt", capture};
    r.counts =
        engine.run(in, r.observer, r.script, [&](const std::string& d, const std::string& n) {
            r.captured.emplace_back(d, n);
        });
    return r;
}

std::vector<std::string> statsLines(long c1, long c2, long m, long o1, long o2, long d) {
    auto n = [](long v) { return std::to_string(v); };
    return {"Compare stats:",
            " there were " + n(c1) + " items in list one",
            " there were " + n(c2) + " items in list two",
            " there were " + n(m) + " items that matched items",
            " there were " + n(o1) + " unmatched file one items",
            " there were " + n(o2) + " unmatched file two items",
            " there were " + n(d) +
                " items with different datetimes and or lengths. See results for details."};
}

std::string fc(const std::string& left, const std::string& right) {
    return "\r\nfc /lb100 /2 \"/a/" + left + "\" \"/b/" + right + "\"  >> /prog/Pairview1.txt\r\n";
}

} // namespace

TEST(CompareEngine, TwoEmptyListsGiveOnlyStatistics) {
    EngineRun r = compare({}, {});
    EXPECT_EQ(r.observer.lines, statsLines(0, 0, 0, 0, 0, 0));
    EXPECT_EQ(r.script.text(), "");
    EXPECT_EQ(r.observer.progressMax, 0);
    EXPECT_TRUE(r.observer.completed);
}

// Every count differs from the others, so a statistics line that shows the wrong
// one is caught.
TEST(CompareEngine, EntryLinesStatisticsScriptAndProgress) {
    EngineRun r = compare({"b", "d", "f"}, {"a", "c", "d", "e", "g"});
    std::vector<std::string> expected = {"0 -two only-  0    a", "0 -one only-  1    b",
                                         "1 -two only-  1    c", "1 -matched-   2   d",
                                         "2 -two only-  3    e", "2 -one only-  4    f",
                                         "3 -one maxed- 4    g"};
    for (const std::string& line : statsLines(3, 5, 1, 2, 4, 0))
        expected.push_back(line);
    EXPECT_EQ(r.observer.lines, expected);
    EXPECT_EQ(r.script.text(), fc("d", "d"));
    // The bar counts the steps of the longer (right) list.
    EXPECT_EQ(r.observer.progress, 5);
    EXPECT_EQ(r.observer.progressMax, 5);
}

TEST(CompareEngine, AttributeColumnsArePaddedToTheLongestTextPlusOne) {
    std::map<std::string, std::string> attrs = {
        {"/a/x", "2026\\05\\07 9:5:7 - 12"}, // the longest, 21: attrWidth 22
        {"/b/x", "2026\\05\\07 9:5:8 - 12"},
        {"/a/only", " - 5"},
        {"/b/two", "Can't find the file"},
    };
    EngineRun r = compare({"only", "x"}, {"two", "x"}, attrs);
    std::string a1 = attrs["/a/x"], a2 = attrs["/b/x"];
    EXPECT_EQ(r.observer.lines[0], "0 -one only-  0  - 5" + std::string(24, ' ') + "only");
    EXPECT_EQ(r.observer.lines[1],
              "1 -two only-  0 Can't find the file" + std::string(24, ' ') + "two");
    EXPECT_EQ(r.observer.lines[2], "1 -different- 1 " + a1 + std::string(22 - a1.size(), ' ') + a2 +
                                       std::string(22 - a2.size(), ' ') + "x");
    EXPECT_EQ(r.observer.lines.back(), statsLines(2, 2, 1, 1, 1, 1).back());
    EXPECT_EQ(r.counts.attrOne, a1);
    EXPECT_EQ(r.counts.attrTwo, a2);
}

TEST(CompareEngine, NameMatchRules) {
    struct Row {
        const char* name;
        std::vector<std::string> left, right;
        std::vector<std::string> entries;
        std::string script;
        long matched, progress;
    };
    const Row rows[] = {
        {"vssver.scc is passed over, not counted, but both lists advance and the bar moves",
         {"VSSVER.SCC", "z"},
         {"vssver.scc", "z"},
         {"1 -matched-   1   z"},
         fc("z", "z"),
         1,
         2},
        {"names differing in case match; each side's own name goes to fc",
         {"Readme.TXT"},
         {"README.txt"},
         {"0 -matched-   0   Readme.TXT"},
         fc("Readme.TXT", "README.txt"),
         1,
         1},
        // Upper case puts AAB first, lower case a_b; as they stand "_" sorts
        // before "a", so the right entry is reported first.
        {"a_b against aab: the tie-break reports the right entry",
         {"a_b"},
         {"aab"},
         {"0 -two only-  0    aab", "0 -two maxed- 1    a_b"},
         "",
         0,
         1},
        {"surrounding blanks do not stop a match",
         {" x "},
         {"x"},
         {"0 -matched-   0    x "},
         fc(" x ", "x"),
         1,
         1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EngineRun r = compare(row.left, row.right);
        std::vector<std::string> entries(r.observer.lines.begin(), r.observer.lines.end() - 7);
        EXPECT_EQ(entries, row.entries);
        EXPECT_EQ(r.script.text(), row.script);
        EXPECT_EQ(r.counts.matched, row.matched);
        EXPECT_EQ(r.observer.progress, row.progress);
    }
}

TEST(CompareEngine, CaptureSelections) {
    EngineRun procs =
        compare({"a.prc", "B.PRC.txt", "c.txt", "one.prc"}, {"a.prc", "B.PRC.txt", "c.txt"}, {},
                CaptureSelection::ProcsDifferent);
    EXPECT_EQ(procs.captured, (std::vector<std::pair<std::string, std::string>>{
                                  {"/a", "a.prc"}, {"/a", "B.PRC.txt"}}));
    EngineRun only = compare({"a", "m", "z"}, {"m", "q"}, {}, CaptureSelection::OneOnly);
    // "a" is one only; "z" is reported after the right list ran out, which is
    // a maxed entry and so not captured.
    EXPECT_EQ(only.captured, (std::vector<std::pair<std::string, std::string>>{{"/a", "a"}}));
    EXPECT_EQ(captureSelectionFromItem("1OnlyCapture"), CaptureSelection::OneOnly);
    EXPECT_EQ(captureSelectionFromItem("1Procs different"), CaptureSelection::ProcsDifferent);
    EXPECT_EQ(captureSelectionFromItem(" --- Please select ---"), CaptureSelection::None);
}

TEST(CompareEngine, NamesThatCannotStandInAScriptAreLeftOutAndSaidSo) {
    EngineRun r = compare({"a\"b", "c%PATH%&calc", "l\nf"}, {"a\"b", "c%PATH%&calc", "l\nf"});
    ASSERT_EQ(r.observer.lines.size(), 5u + 7u);
    EXPECT_EQ(r.observer.lines[0], "0 -matched-   0   a\"b");
    EXPECT_EQ(r.observer.lines[1],
              std::string(16, ' ') +
                  "left out of the compare script: the name holds a double quote");
    EXPECT_EQ(r.observer.lines[4],
              std::string(16, ' ') + "left out of the compare script: the name holds a line break");
    // The generated script is taken literally: % and & stay as they are, inside the
    // quotes.
    EXPECT_EQ(r.script.text(), fc("c%PATH%&calc", "c%PATH%&calc"));
    EXPECT_EQ(r.counts.matched, 3);
}

TEST(CompareEngine, WidthsAndProgressBeyondSixteenBitCounts) {
    std::vector<std::string> left, right;
    for (int n = 0; n < 100000; ++n) {
        char buf[16];
        std::snprintf(buf, sizeof buf, "f%06d", n);
        left.push_back(buf);
        if (n % 1000 != 0)
            right.push_back(buf);
    }
    EngineRun r = compare(left, right);
    EXPECT_EQ(r.counts.oneOnly, 100);
    EXPECT_EQ(r.observer.lines[99999], "99999  -matched-   99899    f099999");
    EXPECT_EQ(r.observer.progressMax, 100000);
    EXPECT_EQ(r.observer.progress, 100000);
    // The width follows the larger count, at the step from 9 to 10.
    EXPECT_EQ(CompareEngine::seqWidth(9, 10), 3);
}

// A name ending in a backslash is an ordinary POSIX name; in the fc line the
// splitter must give back both paths whole, not read an escaped quote.
TEST(CompareEngine, NameEndingInBackslashSplitsBackToItself) {
    EngineRun r = compare({"tail\\\\"}, {"tail\\\\"});
    EXPECT_EQ(r.script.text(), fc("tail\\\\\\\\", "tail\\\\\\\\"));
    std::vector<std::string> words = pv::splitCommandLine(r.script.text().substr(2));
    ASSERT_GE(words.size(), 5u);
    EXPECT_EQ(words[3], "/a/tail\\\\");
    EXPECT_EQ(words[4], "/b/tail\\\\");
}
