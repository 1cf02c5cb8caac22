#include "pvcmdtestutil.h"

#include "pvcmd/findstrmatcher.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <future>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

using pvcmd::FindstrMatcher;
using pvcmdtest::runTool;

namespace {

struct MatchRow {
    const char* name;
    pvcmd::ToolArgs args; // switches and strings; the file "t.txt" is appended
    std::string expected;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const MatchRow& row, std::ostream* os) {
    *os << row.name;
}

// The file every matching row searches: CR LF and LF lines, last line unterminated.
const char* kText = "Hello world\r\n"
                    "hello there\n"
                    "say hello\r\n"
                    "\n"
                    "a^bc and $5\n"
                    "x.y.z\n"
                    "the end";

class FindstrMatching : public ::testing::TestWithParam<MatchRow> {};

TEST_P(FindstrMatching, ReportsTheExpectedLines) {
    pvtest::TempDir dir;
    dir.write("t.txt", kText);
    pvcmd::ToolArgs args = GetParam().args;
    args.push_back("t.txt");
    auto r = runTool(pvcmd::findstrMain, dir.str(), args);
    EXPECT_EQ(r.out, GetParam().expected);
    EXPECT_EQ(r.code, GetParam().expected.empty() ? 1 : 0);
    EXPECT_EQ(r.err, "");
}

INSTANTIATE_TEST_SUITE_P(
    Switches, FindstrMatching,
    ::testing::Values(
        MatchRow{"CaseSensitiveByDefault", {"hello"}, "hello there\nsay hello\r\n"},
        MatchRow{"IgnoreCase", {"/i", "hello"}, "Hello world\r\nhello there\nsay hello\r\n"},
        MatchRow{"WordsMatchAny", {"there end"}, "hello there\nthe end"},
        MatchRow{"QuotedStringIsOne", {"/c:say hello"}, "say hello\r\n"},
        MatchRow{"SeveralCStrings", {"/c:the end", "/c:world"}, "Hello world\r\nthe end"},
        MatchRow{"BeginOfLine", {"/b", "hello"}, "hello there\n"},
        // The CR before LF is line end, not text; the unterminated last line has none.
        MatchRow{"EndOfLine", {"/e", "hello"}, "say hello\r\n"},
        MatchRow{"EndNeedsNewline", {"/e", "end"}, ""},
        MatchRow{"WholeLine", {"/x", "/c:say hello"}, "say hello\r\n"},
        MatchRow{"WholeLineRejectsPart", {"/x", "hello"}, ""},
        MatchRow{"Invert", {"/v", "/i", "hello"}, "\na^bc and $5\nx.y.z\nthe end"},
        MatchRow{"LineNumbers", {"/n", "hello"}, "2:hello there\n3:say hello\r\n"},
        MatchRow{"Offsets", {"/o", "hello"}, "13:hello there\n25:say hello\r\n"},
        MatchRow{"NumbersAndOffsets", {"/n", "/o", "/i", "world"}, "1:0:Hello world\r\n"},
        MatchRow{"NamesOnly", {"/m", "hello"}, "t.txt\r\n"},
        MatchRow{"DotMatchesAnyChar", {"y.z"}, "x.y.z\n"},
        MatchRow{"LiteralSwitchKeepsDot", {"/l", "y.z"}, "x.y.z\n"},
        MatchRow{"LiteralDotNotAny", {"/l", "e.d"}, ""},
        MatchRow{"CStringLiteralByDefault", {"/c:x.y"}, "x.y.z\n"},
        MatchRow{"CStringLiteralDotNotAny", {"/c:h.llo"}, ""},
        MatchRow{"CStringRegexWithR", {"/r", "/c:h.llo"}, "hello there\nsay hello\r\n"},
        MatchRow{"CaretInsideIsLiteral", {"/r", "a^bc"}, "a^bc and $5\n"},
        MatchRow{"DollarInsideIsLiteral", {"/r", "$5"}, "a^bc and $5\n"},
        MatchRow{"AnchoredRegex", {"/r", "^hel.*re$"}, "hello there\n"},
        MatchRow{"Class", {"/r", "[xyz]\\.z"}, "x.y.z\n"},
        MatchRow{"NegatedClass", {"/r", "^[^hsaxt]"}, "Hello world\r\n"},
        MatchRow{"Range", {"/r", "^[A-H]"}, "Hello world\r\n"},
        MatchRow{"WordStart", {"/r", "\\<there"}, "hello there\n"},
        MatchRow{"WordStartRejectsInside", {"/r", "\\<ello"}, ""},
        MatchRow{"WordEnd", {"/r", "ell\\>"}, ""},
        MatchRow{"WordEndAfterWord", {"/r", "hello\\>"}, "hello there\nsay hello\r\n"},
        // Neither "." nor a class takes the CR or LF of a line end.
        MatchRow{"DotStopsAtCarriageReturn", {"/r", "world."}, ""},
        MatchRow{"ClassStopsAtCarriageReturn", {"/r", "world[\x01-~]$"}, ""},
        MatchRow{"ClassStopsAtLineFeed", {"/r", "there[\x01-~]say"}, ""},
        MatchRow{"ClassInsideTheLine", {"/r", "/n", "a[\x01-~]bc"}, "5:a^bc and $5\n"},
        MatchRow{"EmptyLineByRegex", {"/r", "/n", "^$"}, "4:\n"},
        // No "+" or "?" in the dialect: they are plain characters.
        MatchRow{"PlusIsLiteral", {"/r", "l+o"}, ""},
        MatchRow{"StarRepeatsPrevious", {"/r", "/n", "hel*o"}, "2:hello there\n3:say hello\r\n"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(FindstrRegexTranslation, KeepsMetacharactersOfPcreLiteral) {
    EXPECT_EQ(FindstrMatcher::translateRegex("a+(b)|c?"), "a\\+\\(b\\)\\|c\\?");
    EXPECT_EQ(FindstrMatcher::translateRegex("[a-c]*$"), "(?:(?![\\r\\n])[a-c])*(?=\\r?\\n)");
    // An unterminated class is a literal bracket, not an error.
    EXPECT_EQ(FindstrMatcher::translateRegex("[ab"), "\\[ab");
    // A "*" right after a "*" repeats nothing and is a plain star; "-" before "]" is
    // a plain dash.
    EXPECT_EQ(FindstrMatcher::translateRegex("a**"), "a*\\*");
    EXPECT_EQ(FindstrMatcher::translateRegex("[a-]"), "(?:(?![\\r\\n])[a\\-])");
}

TEST(FindstrRegexDetection, DecidesTheDefaultMode) {
    for (const char* regex : {"a.b", "^ab", "ab$"})
        EXPECT_TRUE(FindstrMatcher::looksLikeRegex(regex)) << regex;
    for (const char* literal : {"a^b", "a$b", "plain words"})
        EXPECT_FALSE(FindstrMatcher::looksLikeRegex(literal)) << literal;
}

// File selection in a tree with two levels, dot files and a dot directory.
TEST(FindstrFiles, SelectsFilesAndNamesThem) {
    pvtest::TempDir dir;
    dir.write("a.c", "int needle;\n");
    dir.write("b.h", "// needle here\r\nnothing\r\n");
    dir.write("c.txt", "needle in text\n");
    dir.write(".hidden.c", "needle hidden\n");
    dir.write("sub/d.c", "no match\nneedle deep\n");
    dir.write("sub/deeper/e.H", "needle upper mask\n");
    dir.write(".git/f.c", "needle in dot dir\n");
    dir.write("strings.lst", "deep\r\nint\r\n");
    dir.write("bin.dat", std::string("needle\0\x01\n", 9));
    const std::string bad = "FINDSTR: Bad command line\r\n";
    struct Row {
        const char* name;
        pvcmd::ToolArgs args;
        std::string input;
        std::string out;
        std::string err;
        int code;
    };
    // clang-format off
    const Row rows[] = {
        {"SingleNamedFileHasNoPrefix", {"needle", "a.c"}, "", "int needle;\n", "", 0},
        {"SeveralNamesGetPrefixes", {"/n", "needle", "c.txt", "a.c"}, "", "c.txt:1:needle in text\na.c:1:int needle;\n", "", 0},
        {"MasksInCurrentDirectorySkipDotFiles", {"needle", "*.c", "*.H"}, "", "a.c:int needle;\nb.h:// needle here\r\n", "", 0},
        {"SubdirectoriesAreRelativeToStart", {"/s", "/c:needle", "*.c", "*.h"}, "",
         "a.c:int needle;\nb.h:// needle here\r\nsub/d.c:needle deep\nsub/deeper/e.H:needle upper mask\n", "", 0},
        {"SubdirectoriesGiveAPlainNameItsPath", {"/s", "needle", "d.c"}, "", "sub/d.c:needle deep\n", "", 0},
        {"MaskWithDirectoryPart", {"/n", "needle", "sub/*.c"}, "", "sub/d.c:2:needle deep\n", "", 0},
        {"MissingFilesAreReportedAndSearchGoesOn", {"needle", "nope.txt", "*.cfg", "a.c"}, "", "a.c:int needle;\n",
         "FINDSTR: Cannot open nope.txt\r\nFINDSTR: Cannot open *.cfg\r\n", 0},
        {"MissingFileWithoutMatchIsAnError", {"needle", "nope.txt"}, "", "", "FINDSTR: Cannot open nope.txt\r\n", 2},
        {"DirectoryListSwitch", {"/d:sub;sub/deeper", "needle", "*.*"}, "", "sub/d.c:needle deep\nsub/deeper/e.H:needle upper mask\n", "", 0},
        {"FileListFromStandardInput", {"/f:/", "needle"}, "c.txt\r\nsub/d.c\r\n", "c.txt:needle in text\nsub/d.c:needle deep\n", "", 0},
        {"StringsFromFile", {"/g:strings.lst", "/s", "*.c"}, "", "a.c:int needle;\nsub/d.c:needle deep\n", "", 0},
        {"StandardInputWithoutFiles", {"/n", "b"}, "a\nb\nc\n", "2:b\n", "", 0},
        // Piped input ends its last line with CR LF; a file keeps it as it is.
        {"PipedLastLineGetsALineEnd", {"/e", "c"}, "a\nbc", "bc\r\n", "", 0},
        {"CWithoutColonIsIgnoredNotAPath", {"/c", "needle", "a.c"}, "", "int needle;\n", "FINDSTR: /C ignored\r\n", 0},
        // "/s ... /x" would otherwise search the whole file system for "x".
        {"SwitchAfterTheTextIsNoPath", {"/s", "needle", "/x"}, "", "", bad, 2},
        {"NonPrintableFileSkippedWithP", {"/p", "/m", "needle", "*.dat"}, "", "", "", 1},
        {"NonPrintableFileSearchedWithoutP", {"/m", "needle", "*.dat"}, "", "bin.dat\r\n", "", 0},
        {"OfflineAndColourAccepted", {"/offline", "/a:1f", "needle", "a.c"}, "", "int needle;\n", "", 0},
        {"AbsolutePathIsAFileNotASwitch", {"/c:needle", dir / "a.c"}, "", "int needle;\n", "", 0},
        {"NoArguments", {}, "", "", bad, 2},
        {"UnknownSwitch", {"/q", "x", "a.c"}, "", "", bad, 2},
        {"NoString", {"/i"}, "", "", bad, 2},
    };
    // clang-format on
    for (const Row& row : rows) {
        auto r = runTool(pvcmd::findstrMain, dir.str(), row.args, row.input);
        EXPECT_EQ(r.out, row.out) << row.name;
        EXPECT_EQ(r.err, row.err) << row.name;
        EXPECT_EQ(r.code, row.code) << row.name;
    }
}

// A line on which PCRE2 gives up (it backtracks past its match limit) is named on
// the error output; the lines after it are still searched, also with /v.
TEST(FindstrTooComplex, NamesTheLineAndSearchesOn) {
    pvtest::TempDir dir;
    dir.write("t.txt", "first c d\n" + std::string(4000, 'a') + " d\nlast a c d\n");
    const std::string pattern = "a*a*a*a*a*a*a*a*[bc] d";
    auto r = runTool(pvcmd::findstrMain, dir.str(), {"/r", "/n", pattern, "t.txt"});
    EXPECT_EQ(r.out, "1:first c d\n3:last a c d\n");
    EXPECT_EQ(r.err, "FINDSTR: Line 2 of t.txt is too complex to search; it was skipped.\r\n");
    EXPECT_EQ(r.code, 0);
    auto v = runTool(pvcmd::findstrMain, dir.str(), {"/r", "/v", pattern, "t.txt"});
    EXPECT_EQ(v.out, "");
}

// Files larger than the read chunk: numbers and offsets must run on across chunks,
// and a line longer than a chunk must come out whole.
TEST(FindstrLargeFile, NumbersAndOffsetsAcrossChunks) {
    pvtest::TempDir dir;
    std::string text;
    std::string expected;
    size_t line = 1;
    auto add = [&](const std::string& content) {
        if (content.find("needle") != std::string::npos)
            expected +=
                std::to_string(line) + ":" + std::to_string(text.size()) + ":" + content + "\n";
        text += content + "\n";
        ++line;
    };
    for (int i = 0; i < 400000; ++i)
        add(i % 99991 == 0 ? "a needle " + std::to_string(i) : "filler line " + std::to_string(i));
    add(std::string(5 << 20, 'x') + " needle at the end of a long line");
    for (int i = 0; i < 1000; ++i)
        add(i == 999 ? "last needle" : "tail");
    dir.write("big.txt", text);
    auto r = runTool(pvcmd::findstrMain, dir.str(), {"/n", "/o", "needle", "big.txt"});
    EXPECT_EQ(r.out.size(), expected.size());
    EXPECT_TRUE(r.out == expected);
    auto m = runTool(pvcmd::findstrMain, dir.str(), {"/m", "/v", "filler", "big.txt"});
    EXPECT_EQ(m.out, "big.txt\r\n");
}

// Appends everything written to a file, as a ">>" redirection does; stops writing
// after `cap` bytes so that a search that feeds on its own output still ends.
struct AppendToFile : std::streambuf {
    AppendToFile(const std::string& path, size_t cap)
        : fd(::open(path.c_str(), O_WRONLY | O_APPEND)), left(cap) {}
    ~AppendToFile() override { ::close(fd); }
    std::streamsize xsputn(const char* s, std::streamsize n) override {
        size_t now = std::min(left, static_cast<size_t>(n));
        left -= now;
        return now == 0 || ::write(fd, s, now) == static_cast<ssize_t>(now) ? n : 0;
    }
    int overflow(int c) override {
        char ch = static_cast<char>(c);
        return c == EOF || xsputn(&ch, 1) == 1 ? c : EOF;
    }
    int fd;
    size_t left;
};

// The capture file lies in the searched tree and receives the report: it is searched
// as it was when opened, not again through the lines just appended to it.
TEST(FindstrOwnOutput, CaptureFileInTheTreeIsReadAsItWas) {
    pvcmdtest::InTempDir here;
    std::string lines;
    for (int i = 0; i < 10000; ++i)
        lines += "needle line\n";
    here.write("cap.txt", lines);
    {
        AppendToFile buffer(here / "cap.txt", size_t(8) << 20);
        std::ostream out(&buffer);
        std::istringstream in;
        std::ostringstream err;
        pvcmd::ToolIo io{in, out, err};
        EXPECT_EQ(pvcmd::findstrMain({"/s", "/c:needle", "*.*"}, io), 0);
    }
    // The old lines, and each of them once more with the file's name before it.
    EXPECT_EQ(pvtest::readFile(here / "cap.txt").size(), 2 * lines.size() + 10000 * 8);
}

// Runs `tool` and, should it still wait after a few seconds, opens the pipe for
// writing once so that a reader blocked on it gets its end and the test can fail.
pvcmdtest::ToolResult runBesidePipe(pvcmd::ToolMain tool, const std::string& dir,
                                    const pvcmd::ToolArgs& args, const std::string& pipe) {
    auto running = std::async(std::launch::async, [&] { return runTool(tool, dir, args); });
    if (running.wait_for(std::chrono::seconds(5)) == std::future_status::timeout) {
        int fd = ::open(pipe.c_str(), O_WRONLY | O_NONBLOCK);
        if (fd >= 0)
            ::close(fd);
        ADD_FAILURE() << "the tool waited on the pipe";
    }
    return running.get();
}

// Masks select regular files: a named pipe in the tree is neither opened nor copied.
TEST(ToolsAndPipes, MasksPassOverNamedPipes) {
    pvtest::TempDir dir;
    dir.write("src/a.txt", "needle\n");
    std::string pipe = dir / "src/pipe.txt";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    auto found = runBesidePipe(pvcmd::findstrMain, dir / "src", {"/s", "needle", "*.txt"}, pipe);
    EXPECT_EQ(found.out, "a.txt:needle\n");
    EXPECT_EQ(found.err, "");

    auto copied = runBesidePipe(pvcmd::xcopyMain, dir.str(), {"src/*.txt", "dst/"}, pipe);
    EXPECT_EQ(copied.out, "src/a.txt\r\n1 File(s) copied\r\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "dst/pipe.txt"));
}

} // namespace
