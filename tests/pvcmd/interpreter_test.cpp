#include "pvcmdtestutil.h"

#include "platform/process.h"
#include "pvcmd/interpreter.h"
#include "pvcmd/scriptline.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using pvcmdtest::crlf;
using pvtest::readFile;

struct Captured {
    int rc = 0;
    std::string out;
    std::string err;
};

Captured runScriptText(const std::string& text, const std::vector<std::string>& args = {}) {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    pvcmd::ToolIo io{in, out, err};
    pvcmd::Interpreter interpreter(io);
    Captured c;
    c.rc = interpreter.runText(text, args);
    c.out = out.str();
    c.err = err.str();
    return c;
}

std::string cwd() {
    char buf[4096];
    return ::getcwd(buf, sizeof buf) ? buf : "";
}

struct ParseCase {
    const char* name;
    const char* raw;
    const char* text;
    std::vector<pvcmd::Redirection> redirections;
    bool hidden;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const ParseCase& row, std::ostream* os) {
    *os << row.name;
}

class ScriptLineParse : public ::testing::TestWithParam<ParseCase> {};

TEST_P(ScriptLineParse, SplitsTextAndRedirections) {
    const ParseCase& c = GetParam();
    pvcmd::ScriptLine line = pvcmd::ScriptLine::parse(c.raw);
    EXPECT_EQ(line.text(), c.text);
    EXPECT_EQ(line.hidden(), c.hidden);
    EXPECT_TRUE(line.redirections() == c.redirections);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ScriptLineParse,
    ::testing::Values(
        ParseCase{
            "BlankBeforeOperatorIsText", "echo foo >>f", "echo foo ", {{1, true, "f"}}, false},
        ParseCase{"NoBlank", "echo foo>f", "echo foo", {{1, false, "f"}}, false},
        ParseCase{"QuotedTargetWithBlanks",
                  "fc \"a\" \"b\"  >> \"/p q/r.txt\"",
                  "fc \"a\" \"b\"  ",
                  {{1, true, "/p q/r.txt"}},
                  false},
        ParseCase{"OperatorInsideQuotesIsText", "echo \"a > b\"", "echo \"a > b\"", {}, false},
        ParseCase{"CaretEscapes", "echo a^>b^^c", "echo a>b^c", {}, false},
        ParseCase{"LoneDigitIsHandle", "cmd 2>>err.txt", "cmd ", {{2, true, "err.txt"}}, false},
        ParseCase{"AttachedDigitIsText", "echo a2>f", "echo a2", {{1, false, "f"}}, false},
        ParseCase{"HandleDuplication",
                  "cmd >o 2>&1",
                  "cmd  ",
                  {{1, false, "o"}, {2, false, "&1"}},
                  false},
        ParseCase{"TextAfterTargetKept", "echo a > f b", "echo a  b", {{1, false, "f"}}, false},
        ParseCase{"AtHides", "  @echo off", "echo off", {}, true},
        ParseCase{"PercentIsLiteralHere", "fc \"100%.txt\" x", "fc \"100%.txt\" x", {}, false}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ExpandArguments, ReplacesOnlyKnownForms) {
    const std::vector<std::string> args = {"s.cmd", "\"a b\"", "x"};
    EXPECT_EQ(pvcmd::expandArguments("%0 %1 %~1 %2 [%3] %% 100%", args),
              "s.cmd \"a b\" a b x [] % 100");
    EXPECT_EQ(pvcmd::expandArguments("%* end", args), "\"a b\" x end");
    // Variables are looked up without regard to case; an unknown one is empty.
    EXPECT_EQ(pvcmd::expandArguments("%path%|%PV_NO_SUCH_VAR% %~9", args),
              std::string(std::getenv("PATH")) + "| ");
    EXPECT_EQ(pvcmd::expandArguments("50% off 20%", args), "50 off 20");
}

struct EchoCase {
    const char* name;
    const char* script; // run with @echo off first
    const char* file;   // expected contents of f (LF for CR LF), or null
    const char* out;    // expected standard output
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const EchoCase& row, std::ostream* os) {
    *os << row.name;
}

class Echo : public ::testing::TestWithParam<EchoCase> {};

TEST_P(Echo, WritesWhatTheSystemWrites) {
    const EchoCase& c = GetParam();
    pvcmdtest::InTempDir here;
    Captured run = runScriptText(std::string("@echo off\r\n") + c.script);
    EXPECT_EQ(run.out, crlf(c.out));
    EXPECT_EQ(run.err, "");
    if (c.file) {
        EXPECT_EQ(readFile(here.dir() / "f"), crlf(c.file));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Echo,
    ::testing::Values(
        EchoCase{"BlankBeforeAppendIsWritten", "echo foo >>f\r\n", "foo \n", ""},
        EchoCase{"NoBlankNoTrailingBlank", "echo foo>f\r\n", "foo\n", ""},
        EchoCase{"AppendAppends", "echo one>f\r\necho two >> f\r\n", "one\ntwo \n", ""},
        EchoCase{"TruncateReplaces", "echo one>f\r\nECHO \"---\" > \"f\"\r\n", "\"---\" \n", ""},
        EchoCase{"ExtraBlanksKept", "echo  two  blanks\r\n", nullptr, " two  blanks\n"},
        EchoCase{"DotPrintsEmptyLine", "echo.\r\necho:\r\n", nullptr, "\n\n"},
        EchoCase{"SpaceDotPrintsDot", "echo .\r\necho -\r\n", nullptr, ".\n-\n"},
        EchoCase{"AloneShowsState", "echo\r\necho on\r\n@echo\r\n", nullptr,
                 "ECHO is off.\nECHO is on.\n"},
        EchoCase{"EscapedOperators", "echo a^>b ^^ c\r\n", nullptr, "a>b ^ c\n"},
        EchoCase{"HandleTwoLeavesOutput", "echo x 2>f\r\n", "", "x \n"},
        EchoCase{"AttachedDigitIsText", "echo a2>f\r\n", "a2\n", ""},
        EchoCase{"NulSwallowsOutput", "echo gone > NUL\r\necho kept>f 2>nul\r\n", "kept \n", ""},
        EchoCase{"LfOnlyScript", "echo a\necho b\n", nullptr, "a\nb\n"},
        EchoCase{"RemRunsNothing", "rem echo x > f & echo y\r\nREM\r\n:: echo z\r\n", nullptr, ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(Interpreter, EchoOnShowsPromptAndCommand) {
    pvcmdtest::InTempDir here;
    Captured run = runScriptText("echo hi >>f\r\n\r\nrem note\r\n");
    std::string prompt = cwd() + ">";
    EXPECT_EQ(run.out, "\r\n" + prompt + "echo hi  1>>f\r\n\r\n" + prompt + "rem note \r\n");
    EXPECT_EQ(readFile(here.dir() / "f"), "hi \r\n");
}

// Output that cannot reach its file (a full disk) is named with the file, the
// script goes on, and its status says that something was lost.
TEST(Interpreter, FailingRedirectionReportsGoesOnAndFailsTheScript) {
    pvcmdtest::InTempDir here;
    here.dir().mkdir("adir");
    Captured run = runScriptText("@echo off\r\n"
                                 "echo lost >> missing/dir/out.txt\r\n"
                                 "echo lost > adir\r\n"
                                 "echo lost > /dev/full\r\n"
                                 "echo x >\r\n"
                                 "echo kept >> ok.txt\r\n");
    EXPECT_EQ(run.err, crlf("The system cannot find the path specified.\n"
                            "Access is denied.\n"
                            "Cannot write to /dev/full: There is not enough space on the disk.\n"
                            "The syntax of the command is incorrect.\n"));
    EXPECT_EQ(readFile(here.dir() / "ok.txt"), "kept \r\n");
    EXPECT_EQ(run.rc, 1);
    EXPECT_EQ(runScriptText("echo lost > /dev/full\r\necho kept >> ok.txt\r\n").rc, 1);
    EXPECT_EQ(runScriptText("echo kept >> ok.txt\r\n").rc, 0);
}

// A directory deeper than the system's path limit: popd still returns to it.
TEST(Interpreter, PopdReturnsToADirectoryDeeperThanThePathLimit) {
    pvcmdtest::InTempDir here;
    const std::string top = cwd();
    here.dir().mkdir("elsewhere");
    const std::string name(200, 'd');
    int depth = 0;
    for (; depth < 25; ++depth)
        ASSERT_TRUE(::mkdir(name.c_str(), 0755) == 0 && ::chdir(name.c_str()) == 0);
    Captured run = runScriptText("@echo off\r\npushd " + top +
                                 "/elsewhere\r\npopd\r\n"
                                 "echo deep > mark\r\n");
    bool markedHere = ::access("mark", F_OK) == 0;
    ::unlink("mark");
    for (; depth > 0; --depth)
        ASSERT_TRUE(::chdir("..") == 0 && ::rmdir(name.c_str()) == 0);
    EXPECT_TRUE(markedHere) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_FALSE(std::filesystem::exists(top + "/elsewhere/mark"));
}

// When popd cannot go back (its directory was removed), the lines after it do
// not run in the wrong directory: the script stops.
TEST(Interpreter, FailedPopdStopsTheScript) {
    pvcmdtest::InTempDir here;
    const std::string top = cwd();
    here.dir().mkdir("left");
    here.dir().mkdir("other");
    ASSERT_EQ(::chdir("left"), 0);
    Captured run = runScriptText("@echo off\r\npushd " + top + "/other\r\nrmdir " + top +
                                 "/left\r\npopd\r\necho wrong > mark\r\n");
    EXPECT_EQ(run.rc, 1);
    EXPECT_NE(run.err.find("The system cannot find the path specified.\r\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(top + "/other/mark"));
    EXPECT_EQ(::chdir(top.c_str()), 0);
}

TEST(Interpreter, DirectoryCommands) {
    pvcmdtest::InTempDir here;
    std::string top = cwd();
    here.dir().mkdir("sub dir/inner");
    here.dir().mkdir("other");
    Captured run = runScriptText("@echo off\r\n"
                                 "cd sub dir\r\n"
                                 "echo 1 > mark1\r\n"
                                 "cd /d \"inner\"  \r\n"
                                 "echo 2 > mark2\r\n"
                                 "cd..\r\n"
                                 "cd ..\r\n"
                                 "pushd other\r\n"
                                 "echo 3 > mark3\r\n"
                                 "popd\r\n"
                                 "echo 4 > mark4\r\n"
                                 "cd nowhere\r\n"
                                 "pushd nowhere\r\n"
                                 "popd\r\n"
                                 "C:\r\n"
                                 "/\r\n"
                                 "\"" +
                                 top +
                                 "\"\r\n"
                                 "echo 5 > mark5\r\n");
    EXPECT_EQ(readFile(top + "/sub dir/mark1"), "1 \r\n");
    EXPECT_EQ(readFile(top + "/sub dir/inner/mark2"), "2 \r\n");
    EXPECT_EQ(readFile(top + "/other/mark3"), "3 \r\n");
    EXPECT_EQ(readFile(top + "/mark4"), "4 \r\n");
    // Drive lines and a lone directory line change nothing.
    EXPECT_EQ(readFile(top + "/mark5"), "5 \r\n");
    EXPECT_EQ(run.err, crlf("The system cannot find the path specified.\n"
                            "The system cannot find the path specified.\n"));
    EXPECT_EQ(cwd(), top);
}

TEST(Interpreter, UnquotedResultsPathWithBlanksIsOneTarget) {
    pvcmdtest::InTempDir here;
    const std::string top = cwd();
    here.dir().mkdir("prog dir");
    std::string a = here.dir().write("a.txt", "A\n");
    std::string b = here.dir().write("b.txt", "A\n");
    Captured run = runScriptText("@echo off\r\n"
                                 "fc /lb100 /2 \"" +
                                 a + "\" \"" + b + "\"  >> " + top +
                                 "/prog dir/Pairview1.txt\r\n"
                                 // A blank only in the file name part: text after the target.
                                 "echo a > " +
                                 top + "/f b\r\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(readFile(top + "/prog dir/Pairview1.txt"),
              crlf("Comparing files " + a + " and " + b + "\nFC: no differences encountered\n\n"));
    EXPECT_EQ(readFile(top + "/f"), "a  b\r\n");
}

TEST(Interpreter, CommandRunsEvenWhereAFolderHasItsName) {
    pvcmdtest::InTempDir here;
    here.dir().mkdir("fc");
    Captured run = runScriptText("@echo off\r\nfc\r\n");
    EXPECT_EQ(run.err, crlf("FC: Insufficient number of file specifications\n"));
    EXPECT_EQ(run.rc, 2);
}

TEST(Interpreter, ArgumentsExpandOnlyWhenGiven) {
    pvcmdtest::InTempDir here;
    const std::string script = "@echo off\r\necho %1 %~2 %% 100%.txt>f\r\n";
    runScriptText(script, {"s.cmd", "\"a b\"", "\"c\""});
    EXPECT_EQ(readFile(here.dir() / "f"), "\"a b\" c % 100.txt\r\n");
    runScriptText(script);
    EXPECT_EQ(readFile(here.dir() / "f"), "%1 %~2 %% 100%.txt\r\n");
}

TEST(Interpreter, ShiftMovesTheArguments) {
    pvcmdtest::InTempDir here;
    // After "shift" the first argument is %0; "shift /2" keeps %0 and %1.
    runScriptText(
        "@echo off\r\nshift\r\necho [%0][%1][%9]>f\r\nshift /1\r\necho [%0][%1][%2]>>f\r\n",
        {"s.cmd", "a", "b", "c", "d", "e", "f", "g", "h", "i", "j"});
    EXPECT_EQ(readFile(here.dir() / "f"), "[a][b][j]\r\n[a][c][d]\r\n");
    Captured bad = runScriptText("shift /9\r\n", {"s.cmd", "a"});
    EXPECT_EQ(bad.err, "The syntax of the command is incorrect.\r\n");
}

TEST(Interpreter, SetVariablesExpandInScriptsWithArguments) {
    pvcmdtest::InTempDir here;
    // The quoted form keeps blanks and % of the value literal; "set NAME=" removes it.
    runScriptText("@echo off\r\nset \"PV_T1=%~1\"\r\nshift\r\necho [%PV_T1%][%1]>f\r\n"
                  "set PV_T1=\r\necho [%PV_T1%][%PV_UNSET%]>>f\r\n",
                  {"s.cmd", "\"a&b 100%\"", "next"});
    EXPECT_EQ(readFile(here.dir() / "f"), "[a&b 100%][next]\r\n[][]\r\n");
    EXPECT_EQ(std::getenv("PV_T1"), nullptr);
    Captured bad = runScriptText("set =x\r\n", {"s.cmd"});
    EXPECT_EQ(bad.err, "The syntax of the command is incorrect.\r\n");
}

TEST(Interpreter, ProgramsRunAndUnknownCommandsAreReported) {
    pvcmdtest::InTempDir here;
    std::string tool = here.dir().write("bin/tool", "#!/bin/sh\necho \"[$1][$2]\"\nexit 4\n");
    ::chmod(tool.c_str(), 0755);
    std::string local = here.dir().write("localtool", "#!/bin/sh\necho local\n");
    ::chmod(local.c_str(), 0755);
    const char* oldPath = std::getenv("PATH");
    std::string savedPath = oldPath ? oldPath : "";
    ::setenv("PATH", (here.dir().str() + "/bin:/usr/bin:/bin").c_str(), 1);
    Captured run = runScriptText("@echo off\r\n"
                                 "tool \"a b\" c >> out.txt\r\n"
                                 "tool.exe x > out2.txt\r\n"
                                 "localtool > out3.txt\r\n"
                                 "nosuchcommand arg\r\n");
    EXPECT_EQ(run.rc, pvcmd::Interpreter::kNotRecognized);
    EXPECT_EQ(run.err, crlf("'nosuchcommand' is not recognized as an internal or external "
                            "command,\noperable program or batch file.\n"));
    run = runScriptText("@echo off\r\ntool 1 2 > out4.txt\r\n");
    EXPECT_EQ(run.rc, 4) << "the script's status is its last command's";
    ::setenv("PATH", savedPath.c_str(), 1);
    EXPECT_EQ(readFile(here.dir() / "out.txt"), "[a b][c]\n");
    EXPECT_EQ(readFile(here.dir() / "out2.txt"), "[x][]\n");
    EXPECT_EQ(readFile(here.dir() / "out3.txt"), "local\n");
}

TEST(Interpreter, ExitStopsTheScript) {
    pvcmdtest::InTempDir here;
    Captured run = runScriptText("@echo off\r\necho a\r\nexit /b 3\r\necho b\r\n");
    EXPECT_EQ(run.out, "a\r\n");
    EXPECT_EQ(run.rc, 3);
}

TEST(Interpreter, LinesTooLongOrWithNulAreHandled) {
    pvcmdtest::InTempDir here;
    std::string longLine = "echo " + std::string(9000, 'x') + "\r\n";
    Captured run = runScriptText("@echo off\r\n" + longLine + std::string("echo a\0b\r\n", 10) +
                                 "echo after\r\n");
    EXPECT_EQ(run.err, "The input line is too long.\r\n");
    EXPECT_EQ(run.out, "a\r\nafter\r\n");
}

} // namespace

namespace {

TEST(Interpreter, StartWaitsOnlyWhenAsked) {
    pvcmdtest::InTempDir here;
    std::string prog = here.dir().write("prog.sh", "#!/bin/sh\nsleep 0.2\necho \"$1\" > \"$2\"\n");
    ::chmod(prog.c_str(), 0755);
    const std::string waited = here.dir() / "waited.txt";
    const std::string detached = here.dir() / "detached.txt";
    Captured run = runScriptText("@echo off\r\n"
                                 "start \"title\" /wait /min " +
                                 prog + " w " + waited +
                                 "\r\n"
                                 "start " +
                                 prog + " d " + detached +
                                 "\r\n"
                                 "cd\r\n");
    // The waited program finished before the next line; the detached one need not have.
    EXPECT_EQ(pvtest::readFile(waited), "w\n");
    EXPECT_EQ(run.out, cwd() + "\r\n");
    EXPECT_EQ(run.rc, 0);
    std::string text;
    for (int i = 0; i < 500 && (text = pvtest::readFile(detached)).empty(); ++i)
        ::usleep(10000);
    EXPECT_EQ(text, "d\n");
}

} // namespace
