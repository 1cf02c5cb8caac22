#include "pvcmdtestutil.h"

#include "pvcmd/tool.h"

#include <gtest/gtest.h>

namespace {

using pvcmdtest::crlf;

struct Golden {
    const char* name;
    std::vector<std::string> switches;
    std::string file1;  // contents of a.txt
    std::string file2;  // contents of b.txt
    std::string report; // LF here, CR LF in the real report
    int rc;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const Golden& row, std::ostream* os) {
    *os << row.name;
}

class FcGolden : public ::testing::TestWithParam<Golden> {};

TEST_P(FcGolden, ReportMatches) {
    const Golden& g = GetParam();
    pvcmdtest::InTempDir here;
    here.dir().write("a.txt", g.file1);
    here.dir().write("b.txt", g.file2);
    pvcmd::ToolArgs args = g.switches;
    args.push_back("a.txt");
    args.push_back("b.txt");
    pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, args);
    EXPECT_EQ(run.out, crlf(g.report));
    EXPECT_EQ(run.rc, g.rc);
    EXPECT_EQ(run.err, "");
}

const char* kHeader = "Comparing files a.txt and b.txt\n";

std::string report(const std::string& body) {
    return kHeader + body;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FcGolden,
    ::testing::Values(
        Golden{
            "Identical", {}, "A\nB\n", "A\nB\n", report("FC: no differences encountered\n\n"), 0},
        Golden{"TwoEmptyFiles", {}, "", "", report("FC: no differences encountered\n\n"), 0},
        Golden{"LineEndsDoNotMatter",
               {},
               "A\r\nB",
               "A\nB\n",
               report("FC: no differences encountered\n\n"),
               0},
        // Context line before, resync line after the changed line.
        Golden{"OneChangedLine",
               {},
               "A\nB\nC\nD\nE\n",
               "A\nB\nB\nD\nE\n",
               report("***** a.txt\nB\nC\nD\n***** b.txt\nB\nB\nD\n*****\n\n"),
               1},
        Golden{"InsertedBlock",
               {},
               "A\nB\nC\nD\n",
               "A\nB\nN1\nN2\nC\nD\n",
               report("***** a.txt\nB\nC\n***** b.txt\nB\nN1\nN2\nC\n*****\n\n"),
               1},
        Golden{"DeletedBlock",
               {},
               "A\nB\nC\nD\nE\n",
               "A\nD\nE\n",
               report("***** a.txt\nA\nB\nC\nD\n***** b.txt\nA\nD\n*****\n\n"),
               1},
        Golden{"ChangeOnFirstLineHasNoContext",
               {},
               "X\nB\nC\n",
               "A\nB\nC\n",
               report("***** a.txt\nX\nB\n***** b.txt\nA\nB\n*****\n\n"),
               1},
        Golden{"ChangeOnLastLine",
               {},
               "A\nB\nC\n",
               "A\nB\nX\n",
               report("***** a.txt\nB\nC\n***** b.txt\nB\nX\n*****\n\n"),
               1},
        Golden{"ExtraTailLines",
               {},
               "x\ny\nmango\n",
               "x\ny\n",
               report("***** a.txt\nmango\n***** b.txt\n*****\n\n"),
               1},
        Golden{"TwoBlocks",
               {},
               "1\n2\n3\n4\n5\n6\n7\n",
               "1\nx\n3\n4\n5\ny\n7\n",
               report("***** a.txt\n1\n2\n3\n***** b.txt\n1\nx\n3\n*****\n\n"
                      "***** a.txt\n5\n6\n7\n***** b.txt\n5\ny\n7\n*****\n\n"),
               1},
        Golden{"ResyncFailedWhenBufferFull",
               {"/lb2"},
               "A\nB\n",
               "C\nC\n",
               report("Resync Failed.  Files are too different.\n"
                      "***** a.txt\nA\nB\n***** b.txt\nC\nC\n*****\n\n"),
               1},
        // One full window is enough to give up; the other file may be at its end.
        Golden{"ResyncFailedWhenOnlyTheFirstFillsTheBuffer",
               {"/lb2"},
               "A\nB\nC\n",
               "X\n",
               report("Resync Failed.  Files are too different.\n"
                      "***** a.txt\nA\nB\n***** b.txt\nX\n*****\n\n"),
               1},
        Golden{"ResyncFailedWhenOnlyTheSecondFillsTheBuffer",
               {"/lb2"},
               "X\n",
               "A\nB\nC\n",
               report("Resync Failed.  Files are too different.\n"
                      "***** a.txt\nX\n***** b.txt\nA\nB\n*****\n\n"),
               1},
        Golden{"MoreDifferingLinesThanBuffer",
               {"/lb3"},
               "A\nB\nC\nD\nE\nF\n",
               "A\n1\n2\n3\n4\nF\n",
               report("Resync Failed.  Files are too different.\n"
                      "***** a.txt\nA\nB\nC\n***** b.txt\nA\n1\n2\n*****\n\n"),
               1},
        // Near the end of a full buffer a single matching line resynchronises.
        Golden{"ShortResyncAtBufferEnd",
               {"/lb3"},
               "A\nB\nC\nD\nE\n",
               "C\nC\nC\nD\nE\n",
               report("***** a.txt\nA\nB\nC\n***** b.txt\nC\nC\n*****\n\n"
                      "***** a.txt\nC\nD\n***** b.txt\nC\nC\nD\n*****\n\n"),
               1},
        // A window that matched completely is dropped, context and all.
        Golden{"DifferenceAfterFullWindowHasNoContext",
               {"/lb2"},
               "A\nB\nC\n",
               "A\nB\nX\n",
               report("***** a.txt\nC\n***** b.txt\nX\n*****\n\n"),
               1},
        Golden{"ResyncCountOne",
               {"/1"},
               "1\n2\n3\n4\n5\n6\n7\n8\n9\n",
               "1\nx\n3\ny\n5\n6\nz\n8\n9\n",
               report("***** a.txt\n1\n2\n3\n***** b.txt\n1\nx\n3\n*****\n\n"
                      "***** a.txt\n3\n4\n5\n***** b.txt\n3\ny\n5\n*****\n\n"
                      "***** a.txt\n6\n7\n8\n***** b.txt\n6\nz\n8\n*****\n\n"),
               1},
        Golden{"ResyncCountTwo",
               {"/2"},
               "1\n2\n3\n4\n5\n6\n7\n8\n9\n",
               "1\nx\n3\ny\n5\n6\nz\n8\n9\n",
               report("***** a.txt\n1\n2\n3\n4\n5\n***** b.txt\n1\nx\n3\ny\n5\n*****\n\n"
                      "***** a.txt\n6\n7\n8\n***** b.txt\n6\nz\n8\n*****\n\n"),
               1},
        Golden{"ResyncCountThree",
               {"/3"},
               "1\n2\n3\n4\n5\n6\n7\n8\n9\n",
               "1\nx\n3\ny\n5\n6\nz\n8\n9\n",
               report("***** a.txt\n1\n2\n3\n4\n5\n6\n7\n8\n"
                      "***** b.txt\n1\nx\n3\ny\n5\n6\nz\n8\n*****\n\n"),
               1},
        Golden{"IgnoreCase",
               {"/c"},
               "Hello World\n",
               "HELLO world\n",
               report("FC: no differences encountered\n\n"),
               0},
        Golden{"IgnoreCaseFoldsEveryLetter",
               {"/c"},
               "abcdefghijklmnopqrstuvwxyz\n",
               "ABCDEFGHIJKLMNOPQRSTUVWXYZ\n",
               report("FC: no differences encountered\n\n"),
               0},
        Golden{"IgnoreCaseShowsOriginalText",
               {"/C"},
               "Same\nabc\n",
               "SAME\nxyz\n",
               report("***** a.txt\nSame\nabc\n***** b.txt\nSAME\nxyz\n*****\n\n"),
               1},
        Golden{"CaseCountsWithoutSwitch",
               {},
               "abc\n",
               "ABC\n",
               report("***** a.txt\nabc\n***** b.txt\nABC\n*****\n\n"),
               1},
        Golden{"CompressBlanks",
               {"/w"},
               "a  b \t\n\tc\n",
               "  a b\nc   \n",
               report("FC: no differences encountered\n\n"),
               0},
        Golden{"CompressBlanksKeepsInnerBlank",
               {"/w"},
               "  A \n",
               "AB\n",
               report("***** a.txt\n  A \n***** b.txt\nAB\n*****\n\n"),
               1},
        Golden{"TabsExpandToEight",
               {},
               "ab\tX\n\tY\n",
               "ab      X\n        Y\n",
               report("FC: no differences encountered\n\n"),
               0},
        Golden{"KeepTabs",
               {"/t"},
               "\tY\n",
               "        Y\n",
               report("***** a.txt\n\tY\n***** b.txt\n        Y\n*****\n\n"),
               1},
        Golden{"LineNumbers",
               {"/n"},
               "A\nB\nC\nD\nE\n",
               "A\nB\nB\nD\nE\n",
               report("***** a.txt\n    2:  B\n    3:  C\n    4:  D\n"
                      "***** b.txt\n    2:  B\n    3:  B\n    4:  D\n*****\n\n"),
               1},
        Golden{"AbbreviateLongSideOnly",
               {"/a"},
               "A\nB\nC\nD\n",
               "A\nB\nN1\nN2\nC\nD\n",
               report("***** a.txt\nB\nC\n***** b.txt\nB\n...\nC\n*****\n\n"),
               1},
        Golden{"AbbreviateWithNumbers",
               {"/a", "/n"},
               "A\nB\nC\nD\n",
               "A\nB\nN1\nN2\nC\nD\n",
               report("***** a.txt\n    2:  B\n    3:  C\n"
                      "***** b.txt\n    2:  B\n...\n    5:  C\n*****\n\n"),
               1},
        Golden{
            "BinaryEqual", {"/b"}, "ABC", "ABC", report("FC: no differences encountered\n\n"), 0},
        Golden{"BinarySameLength",
               {"/b"},
               "ABCD",
               "AXCY",
               report("00000001: 42 58\n00000003: 44 59\n\n"),
               1},
        Golden{"BinarySecondLonger",
               {"/B"},
               "ABC",
               "ABDE",
               report("00000002: 43 44\nFC: b.txt longer than a.txt\n\n"),
               1},
        Golden{"BinaryFirstLonger",
               {"/b"},
               "ABCDE",
               "ABC",
               report("FC: a.txt longer than b.txt\n\n"),
               1},
        Golden{"Utf16",
               {"/u"},
               std::string("\xFF\xFE"
                           "A\0\n\0B\0\n\0",
                           10),
               std::string("\xFF\xFE"
                           "A\0\n\0\xE9\0\n\0",
                           10),
               report("***** a.txt\nA\nB\n***** b.txt\nA\n\xC3\xA9\n*****\n\n"),
               1},
        Golden{"OfflineSwitchIsAccepted",
               {"/OFFLINE", "/off"},
               "A\n",
               "A\n",
               report("FC: no differences encountered\n\n"),
               0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(Fc, BinaryExtensionsCompareBytesUnlessForcedToText) {
    pvcmdtest::InTempDir here;
    here.dir().write("p.BIN", "A\nB\n");
    here.dir().write("q.txt", "A\nC\n");
    pvcmdtest::ToolRun bytes = pvcmdtest::runTool(&pvcmd::fcMain, {"p.BIN", "q.txt"});
    EXPECT_EQ(bytes.out, crlf("Comparing files p.BIN and q.txt\n00000002: 42 43\n\n"));
    pvcmdtest::ToolRun text = pvcmdtest::runTool(&pvcmd::fcMain, {"/l", "p.BIN", "q.txt"});
    EXPECT_EQ(text.out, crlf("Comparing files p.BIN and q.txt\n***** p.BIN\nA\nB\n***** q.txt\n"
                             "A\nC\n*****\n\n"));
}

TEST(Fc, ErrorsAndExitCodes) {
    pvcmdtest::InTempDir here;
    here.dir().write("a.txt", "A\n");
    here.dir().mkdir("sub");
    struct Row {
        const char* name;
        pvcmd::ToolArgs args;
        std::string out;
        std::string err;
        int rc;
    };
    const Row rows[] = {
        {"MissingSecond",
         {"a.txt", "nope.txt"},
         "FC: cannot open nope.txt - No such file or folder\n",
         "",
         2},
        {"MissingFirst",
         {"nope.txt", "a.txt"},
         "FC: cannot open nope.txt - No such file or folder\n",
         "",
         2},
        {"DirectoryIsNotAFile",
         {"sub", "a.txt"},
         "FC: cannot open sub - No such file or folder\n",
         "",
         2},
        {"OneName", {"a.txt"}, "", "FC: Insufficient number of file specifications\n", 2},
        {"NoName", {"/b"}, "", "FC: Insufficient number of file specifications\n", 2},
        {"ThreeNames", {"a.txt", "a.txt", "a.txt"}, "", "FC: Too many file specifications\n", 2},
        {"UnknownSwitch", {"/x", "a.txt", "a.txt"}, "", "FC: Invalid Switch\n", 2},
        {"ZeroBuffer", {"/lb0", "a.txt", "a.txt"}, "", "FC: Invalid Switch\n", 2},
        {"ZeroResync", {"/0", "a.txt", "a.txt"}, "", "FC: Invalid Switch\n", 2},
        {"MaskWithoutMatch",
         {"*.cfg", "a.txt"},
         "FC: cannot open *.cfg - No such file or folder\n",
         "",
         2},
    };
    for (const Row& row : rows) {
        pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, row.args);
        EXPECT_EQ(run.out, crlf(row.out)) << row.name;
        EXPECT_EQ(run.err, crlf(row.err)) << row.name;
        EXPECT_EQ(run.rc, row.rc) << row.name;
    }
}

TEST(Fc, AbsolutePathsAreFilesNotSwitches) {
    pvcmdtest::InTempDir here;
    std::string a = here.dir().write("a.txt", "A\n");
    std::string b = here.dir().write("b.txt", "A\n");
    pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, {"/lb100", "/2", a, b});
    EXPECT_EQ(run.out,
              crlf("Comparing files " + a + " and " + b + "\nFC: no differences encountered\n\n"));
    EXPECT_EQ(run.rc, 0);
}

TEST(Fc, HelpGoesToOutput) {
    pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, {"/?"});
    EXPECT_EQ(run.rc, 0);
    EXPECT_NE(run.out.find("/LBn"), std::string::npos);
}

TEST(Fc, MasksComparePairByPair) {
    pvcmdtest::InTempDir here;
    here.dir().write("L/a.txt", "same\n");
    here.dir().write("L/b.TXT", "left\n");
    here.dir().write("L/c.log", "ignored\n");
    here.dir().write("R/a.txt", "same\n");
    here.dir().write("R/b.TXT", "right\n");
    pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, {"L/*.txt", "R/*.txt"});
    // "*.txt" matches regardless of case; the second mask keeps the source's
    // name part and takes its own extension; a pair that cannot be opened is
    // reported without a header and the others still compare.
    EXPECT_EQ(run.out, crlf("Comparing files L/a.txt and R/a.txt\n"
                            "FC: no differences encountered\n\n"
                            "FC: cannot open R/b.txt - No such file or folder\n"));
    EXPECT_EQ(run.rc, 2);

    pvcmdtest::ToolRun intoDir = pvcmdtest::runTool(&pvcmd::fcMain, {"L/b.TXT", "R"});
    EXPECT_EQ(intoDir.out, crlf("Comparing files L/b.TXT and R/b.TXT\n"
                                "***** L/b.TXT\nleft\n***** R/b.TXT\nright\n*****\n\n"));
    EXPECT_EQ(intoDir.rc, 1);
}

TEST(Fc, WildcardCharactersInRealFileNamesAreLiteral) {
    pvcmdtest::InTempDir here;
    here.dir().write("L/a?.txt", "same\n");
    here.dir().write("L/ab.txt", "left\n");
    here.dir().write("R/a?.txt", "same\n");
    here.dir().write("R/ab.txt", "right\n");
    here.dir().write("R/a*.txt", "other\n");
    struct Row {
        const char* name;
        std::vector<std::string> args;
        std::string out;
        int rc;
    };
    const Row rows[] = {
        {"BothExist",
         {"L/a?.txt", "R/a?.txt"},
         "Comparing files L/a?.txt and R/a?.txt\nFC: no differences encountered\n\n",
         0},
        {"IntoDirectory",
         {"L/a?.txt", "R"},
         "Comparing files L/a?.txt and R/a?.txt\nFC: no differences encountered\n\n",
         0},
        {"OtherLiteral",
         {"L/a?.txt", "R/a*.txt"},
         "Comparing files L/a?.txt and R/a*.txt\n***** L/a?.txt\nsame\n***** R/a*.txt\nother\n"
         "*****\n\n",
         1},
    };
    for (const Row& row : rows) {
        pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, row.args);
        EXPECT_EQ(run.out, crlf(row.out)) << row.name;
        EXPECT_EQ(run.rc, row.rc) << row.name;
    }
}

TEST(Fc, LongLinesAndGarbageAreCompared) {
    pvcmdtest::InTempDir here;
    std::string longLine(200000, 'x');
    here.dir().write("a.txt", "head\n" + longLine + "\ntail\n");
    here.dir().write("b.txt", "head\n" + longLine + "\ntail\n");
    EXPECT_EQ(pvcmdtest::runTool(&pvcmd::fcMain, {"a.txt", "b.txt"}).rc, 0);
    std::string changed = longLine;
    changed[150000] = 'y';
    here.dir().write("b.txt", "head\n" + changed + "\ntail\n");
    pvcmdtest::ToolRun run = pvcmdtest::runTool(&pvcmd::fcMain, {"/n", "a.txt", "b.txt"});
    EXPECT_EQ(run.rc, 1);
    // The long line is read in pieces of 64 KiB: the change sits in its third
    // piece (line 4), shown with the pieces around it as context.
    EXPECT_EQ(run.out.find("    2:  "), std::string::npos);
    EXPECT_NE(run.out.find("    3:  xxx"), std::string::npos);
    EXPECT_NE(run.out.find("    4:  xxx"), std::string::npos);
    EXPECT_NE(run.out.find("    5:  xxx"), std::string::npos);
    EXPECT_EQ(run.out.find("tail"), std::string::npos);
}

} // namespace
