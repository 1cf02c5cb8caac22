#include "compare/compareengine.h"
#include "compare/linesink.h"
#include "platform/process.h"
#include "recordingobserver.h"
#include "support/temptree.h"
#include "support/unprivileged.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sys/stat.h>

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

namespace {

// One pair "f", its attributes given as facts: the text shows the time and
// length as the listing would, so texts differ whenever either does.
EngineRun compareFacts(const CompareOptions& options, EntryAttributes one, EntryAttributes two) {
    EngineRun r;
    CompareEngine engine(options, [&](const std::string& dir, const std::vector<std::string>&) {
        EntryAttributes e = dir == "/a" ? one : two;
        if (e.found)
            e.text = std::to_string(e.time) + " - " + std::to_string(e.length);
        return std::vector<EntryAttributes>{e};
    });
    const std::vector<std::string> names = {"f"};
    CompareInput in{"/a", "/b", &names, &names, "/prog/Pairview1.txt"};
    r.counts = engine.run(in, r.observer, r.script);
    return r;
}

EntryAttributes facts(std::int64_t time, std::uint64_t length = 10) {
    EntryAttributes e;
    e.haveTime = e.haveLength = true;
    e.time = time;
    e.length = length;
    return e;
}

} // namespace

TEST(CompareEngine, TimeTolerances) {
    struct Row {
        const char* name;
        int window;
        bool hourShift;
        std::int64_t apart;
        std::uint64_t rightLength;
        bool matched;
    };
    constexpr std::int64_t hour = 3600;
    const Row rows[] = {
        {"no tolerance: one second is different", 0, false, 1, 10, false},
        {"window: one second", 2, false, 1, 10, true},
        {"window: two seconds", 2, false, -2, 10, true},
        {"window: three seconds", 2, false, 3, 10, false},
        {"window: equal times but lengths differ", 2, false, 1, 11, false},
        {"hour shift: one hour", 0, true, hour, 10, true},
        {"hour shift: two hours back", 0, true, -2 * hour, 10, true},
        {"hour shift: three hours", 0, true, 3 * hour, 10, false},
        {"hour shift: one hour and a second", 0, true, hour + 1, 10, false},
        {"hour shift within the window: one hour and a second", 2, true, hour + 1, 10, true},
        {"hour shift within the window: one hour less three seconds", 2, true, hour - 3, 10, false},
        {"window alone: one hour", 2, false, hour, 10, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        CompareOptions o;
        o.listDateTime = o.listLength = true;
        o.modifyWindow = row.window;
        o.ignoreHourShift = row.hourShift;
        const std::int64_t t = 1'700'000'000;
        EngineRun r = compareFacts(o, facts(t), facts(t + row.apart, row.rightLength));
        // The attribute texts stay as they are.
        EXPECT_EQ(r.observer.lines[0], std::string(row.matched ? "0 -matched-   0 " : "0 -different- 0 ") +
                                           std::to_string(t) + " - 10 " +
                                           std::to_string(t + row.apart) + " - " +
                                           std::to_string(row.rightLength) + " f");
    }
}

namespace {

// Compares the files "l/f" and "r/f" of `dir` (or those of the sub-directories
// named) with contents on and both switches off (empty attribute texts); the
// lengths come from the listing unless `lengthsKnown` is false. Gives the entry line.
std::string contentsLine(const pvtest::TempDir& dir, bool lengthsKnown = true,
                         const std::string& left = "l", const std::string& right = "r") {
    CompareOptions o;
    o.listContents = true;
    CompareEngine engine(o, [&](const std::string& d, const std::vector<std::string>& names) {
        std::vector<EntryAttributes> entries(names.size());
        for (size_t n = 0; n < names.size(); ++n) {
            std::error_code ec;
            entries[n].haveLength = lengthsKnown;
            entries[n].length = std::filesystem::file_size(d + "/" + names[n], ec);
        }
        return entries;
    });
    const std::vector<std::string> names = {"f"};
    pvtest::RecordingObserver observer;
    StringLineSink script;
    engine.run({dir / left, dir / right, &names, &names, "/prog/Pairview1.txt"}, observer, script);
    return observer.lines.at(0);
}

void writePair(const pvtest::TempDir& dir, const std::string& left, const std::string& right) {
    dir.write("l/f", left);
    dir.write("r/f", right);
}

} // namespace

TEST(CompareEngine, ContentsDecideWhenTheAttributesAgree) {
    struct Row {
        const char* name;
        std::string left, right;
        bool lengthsKnown;
        std::string line;
    };
    const std::string big(18 << 20, 'x'); // read as ranges by both readers
    auto changedAt = [&](size_t at) {
        std::string s = big;
        s[at] = 'y';
        return s;
    };
    const Row rows[] = {
        {"same bytes", "abc", "abc", true, "0 -matched-   0   f"},
        {"equal length, different bytes", "abc", "abd", true,
         "0 -different- 0 [contents] [contents] f"},
        {"different length", "abc", "abcd", true, "0 -different- 0 [length] [length] f"},
        {"different length found by the reader", "abc", "ab", false,
         "0 -different- 0 [length] [length] f"},
        {"empty files", "", "", false, "0 -matched-   0   f"},
        {"large and the same", big, big, true, "0 -matched-   0   f"},
        {"large, differing where the second range starts", big, changedAt(4 << 20), true,
         "0 -different- 0 [contents] [contents] f"},
        {"large, differing in the last byte", big, changedAt(big.size() - 1), true,
         "0 -different- 0 [contents] [contents] f"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        pvtest::TempDir dir;
        writePair(dir, row.left, row.right);
        EXPECT_EQ(contentsLine(dir, row.lengthsKnown), row.line);
    }
}

// A pair of different lengths is judged without opening either file: an
// unreadable one says so only when it must be read.
TEST(CompareEngine, UnreadableFileIsReadOnlyWhenTheLengthsAgree) {
    pvtest::TempDir dir;
    dir.write("l/f", "abc");
    dir.write("r/f", "abcd");
    dir.write("r2/f", "abc");
    ::chmod((dir / "l/f").c_str(), 0);
    pvtest::handToUnprivileged(dir.str());
    const int status = pvtest::runUnprivileged([&] {
        if (contentsLine(dir) != "0 -different- 0 [length] [length] f")
            return 1;
        return contentsLine(dir, true, "l", "r2") ==
                       "0 -different- 0 Can't open the file " + std::string(20, ' ') + "f"
                   ? 0
                   : 2;
    });
    ASSERT_NE(status, pvtest::kCannotDropPrivileges);
    EXPECT_EQ(status, 0);
}

// Failure texts that agree are never a match when contents are compared.
TEST(CompareEngine, FailureTextsOnBothSidesAreDifferentWithContents) {
    CompareOptions o;
    o.listContents = true;
    EntryAttributes gone;
    gone.found = false;
    gone.text = "Can't find the file";
    EngineRun r = compareFacts(o, gone, gone);
    EXPECT_EQ(r.counts.different, 1);
    o.listContents = false;
    EXPECT_EQ(compareFacts(o, gone, gone).counts.different, 0);
}
