#include "pvcmdtestutil.h"

#include <gtest/gtest.h>

namespace {

using pvcmdtest::crlf;
using pvcmdtest::runTool;

const std::string kSame = "FC: no differences encountered\n\n";

struct Golden {
    const char* name;
    pvcmd::ToolArgs switches;
    std::string file1; // a.txt
    std::string file2; // b.txt
    std::string body;  // the report after its header, LF for CR LF
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const Golden& row, std::ostream* os) {
    *os << row.name;
}

class FcGolden : public ::testing::TestWithParam<Golden> {};

TEST_P(FcGolden, ReportMatches) {
    const Golden& g = GetParam();
    pvtest::TempDir dir;
    dir.write("a.txt", g.file1);
    dir.write("b.txt", g.file2);
    pvcmd::ToolArgs args = g.switches;
    args.insert(args.end(), {"a.txt", "b.txt"});
    pvcmdtest::ToolResult run = runTool(&pvcmd::fcMain, dir.str(), args);
    EXPECT_EQ(run.out, crlf("Comparing files a.txt and b.txt\n" + g.body));
    EXPECT_EQ(run.code, g.body == kSame ? 0 : 1);
    EXPECT_EQ(run.err, "");
}

// clang-format off
const std::string kUtf16a("\xFF\xFE" "A\0\n\0B\0\n\0", 10);
const std::string kUtf16b("\xFF\xFE" "A\0\n\0\xE9\0\n\0", 10);
const char* kNine = "1\n2\n3\n4\n5\n6\n7\n8\n9\n";
const char* kNineEdited = "1\nx\n3\ny\n5\n6\nz\n8\n9\n";

INSTANTIATE_TEST_SUITE_P(Rows, FcGolden, ::testing::Values(
    Golden{"Identical", {}, "A\nB\n", "A\nB\n", kSame},
    Golden{"TwoEmptyFiles", {}, "", "", kSame},
    Golden{"DeletedBlock", {}, "A\nB\nC\nD\nE\n", "A\nD\nE\n",
           "***** a.txt\nA\nB\nC\nD\n***** b.txt\nA\nD\n*****\n\n"},
    Golden{"ChangeOnFirstLineHasNoContext", {}, "X\nB\nC\n", "A\nB\nC\n",
           "***** a.txt\nX\nB\n***** b.txt\nA\nB\n*****\n\n"},
    Golden{"ChangeOnLastLine", {}, "A\nB\nC\n", "A\nB\nX\n",
           "***** a.txt\nB\nC\n***** b.txt\nB\nX\n*****\n\n"},
    Golden{"ExtraTailLines", {}, "x\ny\nmango\n", "x\ny\n",
           "***** a.txt\nmango\n***** b.txt\n*****\n\n"},
    // One full window is enough to give up; the other file may be at its end.
    Golden{"ResyncFailedWhenOnlyTheFirstFillsTheBuffer", {"/lb2"}, "A\nB\nC\n", "X\n",
           "Resync Failed.  Files are too different.\n***** a.txt\nA\nB\n***** b.txt\nX\n*****\n\n"},
    Golden{"ResyncFailedWhenOnlyTheSecondFillsTheBuffer", {"/lb2"}, "X\n", "A\nB\nC\n",
           "Resync Failed.  Files are too different.\n***** a.txt\nX\n***** b.txt\nA\nB\n*****\n\n"},
    Golden{"MoreDifferingLinesThanBuffer", {"/lb3"}, "A\nB\nC\nD\nE\nF\n", "A\n1\n2\n3\n4\nF\n",
           "Resync Failed.  Files are too different.\n"
           "***** a.txt\nA\nB\nC\n***** b.txt\nA\n1\n2\n*****\n\n"},
    // Near the end of a full buffer a single matching line resynchronises.
    Golden{"ShortResyncAtBufferEnd", {"/lb3"}, "A\nB\nC\nD\nE\n", "C\nC\nC\nD\nE\n",
           "***** a.txt\nA\nB\nC\n***** b.txt\nC\nC\n*****\n\n"
           "***** a.txt\nC\nD\n***** b.txt\nC\nC\nD\n*****\n\n"},
    // A window that matched completely is dropped, context and all.
    Golden{"DifferenceAfterFullWindowHasNoContext", {"/lb2"}, "A\nB\nC\n", "A\nB\nX\n",
           "***** a.txt\nC\n***** b.txt\nX\n*****\n\n"},
    Golden{"ResyncCountOne", {"/1"}, kNine, kNineEdited,
           "***** a.txt\n1\n2\n3\n***** b.txt\n1\nx\n3\n*****\n\n"
           "***** a.txt\n3\n4\n5\n***** b.txt\n3\ny\n5\n*****\n\n"
           "***** a.txt\n6\n7\n8\n***** b.txt\n6\nz\n8\n*****\n\n"},
    Golden{"ResyncCountDefaultsToTwo", {}, kNine, kNineEdited,
           "***** a.txt\n1\n2\n3\n4\n5\n***** b.txt\n1\nx\n3\ny\n5\n*****\n\n"
           "***** a.txt\n6\n7\n8\n***** b.txt\n6\nz\n8\n*****\n\n"},
    Golden{"ResyncCountThree", {"/3"}, kNine, kNineEdited,
           "***** a.txt\n1\n2\n3\n4\n5\n6\n7\n8\n***** b.txt\n1\nx\n3\ny\n5\n6\nz\n8\n*****\n\n"},
    Golden{"IgnoreCaseFoldsEveryLetter", {"/c"}, "abcdefghijklmnopqrstuvwxyz\n",
           "ABCDEFGHIJKLMNOPQRSTUVWXYZ\n", kSame},
    Golden{"IgnoreCaseShowsOriginalText", {"/C"}, "Same\nabc\n", "SAME\nxyz\n",
           "***** a.txt\nSame\nabc\n***** b.txt\nSAME\nxyz\n*****\n\n"},
    Golden{"CaseCountsWithoutSwitch", {}, "abc\n", "ABC\n",
           "***** a.txt\nabc\n***** b.txt\nABC\n*****\n\n"},
    Golden{"CompressBlanks", {"/w"}, "a  b \t\n\tc\n", "  a b\nc   \n", kSame},
    Golden{"CompressBlanksKeepsInnerBlank", {"/w"}, "  A \n", "AB\n",
           "***** a.txt\n  A \n***** b.txt\nAB\n*****\n\n"},
    Golden{"TabsExpandToEight", {}, "ab\tX\n\tY\n", "ab      X\n        Y\n", kSame},
    Golden{"KeepTabs", {"/t"}, "\tY\n", "        Y\n",
           "***** a.txt\n\tY\n***** b.txt\n        Y\n*****\n\n"},
    Golden{"LineNumbers", {"/n"}, "A\nB\nC\nD\nE\n", "A\nB\nB\nD\nE\n",
           "***** a.txt\n    2:  B\n    3:  C\n    4:  D\n"
           "***** b.txt\n    2:  B\n    3:  B\n    4:  D\n*****\n\n"},
    // Four lines or more are abbreviated, three are not.
    Golden{"AbbreviateLongSideOnly", {"/a"}, "A\nB\nX\nC\nD\n", "A\nB\nN1\nN2\nC\nD\n",
           "***** a.txt\nB\nX\nC\n***** b.txt\nB\n...\nC\n*****\n\n"},
    Golden{"AbbreviateWithNumbers", {"/a", "/n"}, "A\nB\nC\nD\n", "A\nB\nN1\nN2\nC\nD\n",
           "***** a.txt\n    2:  B\n    3:  C\n***** b.txt\n    2:  B\n...\n    5:  C\n*****\n\n"},
    Golden{"BinaryEqual", {"/b"}, "ABC", "ABC", kSame},
    Golden{"BinarySameLength", {"/b"}, "ABCD", "AXCY", "00000001: 42 58\n00000003: 44 59\n\n"},
    Golden{"BinarySecondLonger", {"/B"}, "ABC", "ABDE", "00000002: 43 44\nFC: b.txt longer than a.txt\n\n"},
    Golden{"BinaryFirstLonger", {"/b"}, "ABCDE", "ABC", "FC: a.txt longer than b.txt\n\n"},
    Golden{"Utf16", {"/u"}, kUtf16a, kUtf16b, "***** a.txt\nA\nB\n***** b.txt\nA\n\xC3\xA9\n*****\n\n"},
    Golden{"OfflineSwitchIsAccepted", {"/OFFLINE", "/off"}, "A\n", "A\n", kSame}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST(Fc, BinaryExtensionsCompareBytesUnlessForcedToText) {
    pvtest::TempDir dir;
    dir.write("p.BIN", "A\nB\n");
    dir.write("q.txt", "A\nC\n");
    EXPECT_EQ(runTool(&pvcmd::fcMain, dir.str(), {"p.BIN", "q.txt"}).out,
              crlf("Comparing files p.BIN and q.txt\n00000002: 42 43\n\n"));
    EXPECT_EQ(
        runTool(&pvcmd::fcMain, dir.str(), {"/l", "p.BIN", "q.txt"}).out,
        crlf("Comparing files p.BIN and q.txt\n***** p.BIN\nA\nB\n***** q.txt\nA\nC\n*****\n\n"));
}

// Bad command lines and files that cannot be opened; also what a name is taken
// for: an absolute path is a file, and "?" or "*" in a name that exists is literal.
TEST(Fc, CommandLinesAndTheirOutcome) {
    pvtest::TempDir dir;
    const std::string a = dir.write("a.txt", "A\n");
    const std::string b = dir.write("b.txt", "A\n");
    dir.mkdir("sub");
    dir.write("L/a?.txt", "same\n");
    dir.write("L/ab.txt", "left\n");
    dir.write("R/a?.txt", "same\n");
    dir.write("R/ab.txt", "right\n");
    dir.write("R/a*.txt", "other\n");
    const std::string cannotOpen = "FC: cannot open nope.txt - No such file or folder\n";
    const std::string tooFew = "FC: Insufficient number of file specifications\n";
    const std::string invalid = "FC: Invalid Switch\n";
    struct Row {
        const char* name;
        pvcmd::ToolArgs args;
        std::string out;
        std::string err;
        int code;
    };
    // clang-format off
    const Row rows[] = {
        {"MissingSecond", {"a.txt", "nope.txt"}, cannotOpen, "", 2},
        {"MissingFirst", {"nope.txt", "a.txt"}, cannotOpen, "", 2},
        {"DirectoryIsNotAFile", {"sub", "a.txt"}, "FC: cannot open sub - No such file or folder\n", "", 2},
        {"MaskWithoutMatch", {"*.cfg", "a.txt"}, "FC: cannot open *.cfg - No such file or folder\n", "", 2},
        {"OneName", {"a.txt"}, "", tooFew, 2},
        {"NoName", {"/b"}, "", tooFew, 2},
        {"ThreeNames", {"a.txt", "a.txt", "a.txt"}, "", "FC: Too many file specifications\n", 2},
        {"UnknownSwitch", {"/x", "a.txt", "a.txt"}, "", invalid, 2},
        {"ZeroBuffer", {"/lb0", "a.txt", "a.txt"}, "", invalid, 2},
        {"ZeroResync", {"/0", "a.txt", "a.txt"}, "", invalid, 2},
        {"AbsolutePaths", {"/lb100", "/2", a, b}, "Comparing files " + a + " and " + b + "\n" + kSame, "", 0},
        {"LiteralQuestionMark", {"L/a?.txt", "R/a?.txt"}, "Comparing files L/a?.txt and R/a?.txt\n" + kSame, "", 0},
        {"LiteralIntoDirectory", {"L/a?.txt", "R"}, "Comparing files L/a?.txt and R/a?.txt\n" + kSame, "", 0},
        {"OtherLiteral", {"L/a?.txt", "R/a*.txt"},
         "Comparing files L/a?.txt and R/a*.txt\n***** L/a?.txt\nsame\n***** R/a*.txt\nother\n*****\n\n", "", 1},
    };
    // clang-format on
    for (const Row& row : rows) {
        pvcmdtest::ToolResult run = runTool(&pvcmd::fcMain, dir.str(), row.args);
        EXPECT_EQ(run.out, crlf(row.out)) << row.name;
        EXPECT_EQ(run.err, crlf(row.err)) << row.name;
        EXPECT_EQ(run.code, row.code) << row.name;
    }
    EXPECT_NE(runTool(&pvcmd::fcMain, dir.str(), {"/?"}).out.find("/LBn"), std::string::npos);
}

TEST(Fc, MasksComparePairByPair) {
    pvtest::TempDir dir;
    dir.write("L/a.txt", "same\n");
    dir.write("L/b.TXT", "left\n");
    dir.write("L/c.log", "ignored\n");
    dir.write("R/a.txt", "same\n");
    dir.write("R/b.TXT", "right\n");
    pvcmdtest::ToolResult run = runTool(&pvcmd::fcMain, dir.str(), {"L/*.txt", "R/*.txt"});
    // "*.txt" matches regardless of case; the second mask keeps the source's
    // name part and takes its own extension; a pair that cannot be opened is
    // reported without a header and the others still compare.
    EXPECT_EQ(run.out, crlf("Comparing files L/a.txt and R/a.txt\n" + kSame +
                            "FC: cannot open R/b.txt - No such file or folder\n"));
    EXPECT_EQ(run.code, 2);
    pvcmdtest::ToolResult intoDir = runTool(&pvcmd::fcMain, dir.str(), {"L/b.TXT", "R"});
    EXPECT_EQ(intoDir.out, crlf("Comparing files L/b.TXT and R/b.TXT\n"
                                "***** L/b.TXT\nleft\n***** R/b.TXT\nright\n*****\n\n"));
    EXPECT_EQ(intoDir.code, 1);
}

} // namespace
