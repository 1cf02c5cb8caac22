#include "pvcmdtestutil.h"

#include "pvcmd/interpreter.h"
#include "pvcmd/scriptline.h"
#include "support/envguard.h"
#include "support/standins.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using pvcmdtest::crlf;
using pvtest::readFile;

pvcmdtest::ToolResult runScriptText(const std::string& text,
                                    const std::vector<std::string>& args = {}) {
    std::istringstream in;
    std::ostringstream out, err;
    pvcmd::ToolIo io{in, out, err};
    pvcmd::Interpreter interpreter(io);
    int code = interpreter.runText(text, args);
    return {code, out.str(), err.str()};
}

std::string cwd() {
    return std::filesystem::current_path().string();
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

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, ScriptLineParse, ::testing::Values(
    ParseCase{"BlankBeforeOperatorIsText", "echo foo >>f", "echo foo ", {{1, true, "f"}}, false},
    ParseCase{"NoBlank", "echo foo>f", "echo foo", {{1, false, "f"}}, false},
    ParseCase{"QuotedTargetWithBlanks", "fc \"a\" \"b\"  >> \"/p q/r.txt\"", "fc \"a\" \"b\"  ", {{1, true, "/p q/r.txt"}}, false},
    ParseCase{"OperatorInsideQuotesIsText", "echo \"a > b\"", "echo \"a > b\"", {}, false},
    ParseCase{"CaretEscapes", "echo a^>b^^c", "echo a>b^c", {}, false},
    ParseCase{"LoneDigitIsHandle", "cmd 2>>err.txt", "cmd ", {{2, true, "err.txt"}}, false},
    ParseCase{"AttachedDigitIsText", "echo a2>f", "echo a2", {{1, false, "f"}}, false},
    ParseCase{"HandleDuplication", "cmd >o 2>&1", "cmd  ", {{1, false, "o"}, {2, false, "&1"}}, false},
    ParseCase{"TextAfterTargetKept", "echo a > f b", "echo a  b", {{1, false, "f"}}, false},
    ParseCase{"AtHides", "  @echo off", "echo off", {}, true},
    ParseCase{"PercentIsLiteralHere", "fc \"100%.txt\" x", "fc \"100%.txt\" x", {}, false}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST(ExpandPercents, WithArgumentsEveryForm) {
    pvcmd::PercentContext context{{"s.cmd", "\"a b\"", "x"}, true, 9009};
    EXPECT_EQ(pvcmd::expandPercents("%0 %1 %~1 %2 [%3] %% 100%", context),
              "s.cmd \"a b\" a b x [] % 100");
    EXPECT_EQ(pvcmd::expandPercents("%* end", context), "\"a b\" x end");
    // Variables are looked up without regard to case; an unknown one is empty.
    EXPECT_EQ(pvcmd::expandPercents("%path%|%PV_NO_SUCH_VAR% %~9", context),
              std::string(std::getenv("PATH")) + "| ");
    EXPECT_EQ(pvcmd::expandPercents("50% off 20%", context), "50 off 20");
    EXPECT_EQ(pvcmd::expandPercents("P%ERRORLEVEL%S %errorlevel%", context), "P9009S 9009");
}

TEST(ExpandPercents, WithoutArgumentsOnlyPairsAndKnownVariablesOutsideQuotes) {
    pvcmd::PercentContext context{{"s.cmd"}, false, 1};
    EXPECT_EQ(pvcmd::expandPercents("%% %1 100% %PV_NO_SUCH_VAR% P%ERRORLEVEL%S", context),
              "% %1 100% %PV_NO_SUCH_VAR% P1S");
    EXPECT_EQ(pvcmd::expandPercents("fc \"100%%PATH%.txt\" %%PATH%%", context),
              "fc \"100%%PATH%.txt\" %PATH%");
    pvtest::EnvGuard set("ERRORLEVEL", "7");
    EXPECT_EQ(pvcmd::expandPercents("%ErrorLevel%", context), "7") << "a variable wins";
}

TEST(ScriptLineContinuation, OnlyAnUnescapedCaretOutsideQuotes) {
    EXPECT_TRUE(pvcmd::endsInContinuation("echo a^"));
    EXPECT_TRUE(pvcmd::endsInContinuation("echo a^^^"));
    EXPECT_FALSE(pvcmd::endsInContinuation("echo a^^"));
    EXPECT_FALSE(pvcmd::endsInContinuation("echo \"a^"));
    EXPECT_FALSE(pvcmd::endsInContinuation("echo a^ "));
}

struct ScriptCase {
    const char* name;
    std::string script;            // run with @echo off first
    std::vector<std::string> args; // %0, %1, ...; with none nothing is expanded
    std::string file;              // expected contents of f (LF for CR LF); "" also for none
    std::string out;
    std::string err;
    int code;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const ScriptCase& row, std::ostream* os) {
    *os << row.name;
}

class Script : public ::testing::TestWithParam<ScriptCase> {};

TEST_P(Script, WritesWhatTheSystemWrites) {
    const ScriptCase& c = GetParam();
    pvcmdtest::InTempDir here;
    here.mkdir("fc"); // a folder with a tool's name
    here.mkdir("adir");
    auto run = runScriptText("@echo off\r\n" + c.script, c.args);
    EXPECT_EQ(run.out, crlf(c.out));
    EXPECT_EQ(run.err, crlf(c.err));
    EXPECT_EQ(run.code, c.code);
    EXPECT_EQ(readFile(here / "f"), crlf(c.file)) << "the file f";
    for (const auto& entry : std::filesystem::directory_iterator(here.path())) {
        std::string name = entry.path().filename().string();
        EXPECT_TRUE(name == "fc" || name == "adir" || name == "f" || name.ends_with(".cmd"))
            << "a file the script must not create: " << name;
    }
    EXPECT_EQ(std::getenv("PV_T1"), nullptr) << "set reaches no further than the script";
}

const std::vector<std::string> kElevenArgs = {"s.cmd", "a", "b", "c", "d", "e",
                                              "f",     "g", "h", "i", "j"};
const char* kSyntax = "The syntax of the command is incorrect.\n";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, Script, ::testing::Values(
    ScriptCase{"AppendAppendsBlankIncluded", "echo one>f\r\necho two >> f\r\n", {}, "one\ntwo \n", "", "", 0},
    ScriptCase{"TruncateReplaces", "echo one>f\r\nECHO \"---\" > \"f\"\r\n", {}, "\"---\" \n", "", "", 0},
    ScriptCase{"ExtraBlanksKept", "echo  two  blanks\r\n", {}, "", " two  blanks\n", "", 0},
    ScriptCase{"DotPrintsEmptyLine", "echo.\r\necho:\r\n", {}, "", "\n\n", "", 0},
    ScriptCase{"SpaceDotPrintsDot", "echo .\r\necho -\r\n", {}, "", ".\n-\n", "", 0},
    ScriptCase{"AloneShowsState", "echo\r\necho on\r\n@echo\r\n", {}, "", "ECHO is off.\nECHO is on.\n", "", 0},
    ScriptCase{"HandleTwoLeavesOutput", "echo x 2>f\r\n", {}, "", "x \n", "", 0},
    ScriptCase{"NulSwallowsOutput", "echo gone > NUL\r\necho kept>f 2>nul\r\n", {}, "kept \n", "", "", 0},
    ScriptCase{"LfOnlyScript", "echo a\necho b\n", {}, "", "a\nb\n", "", 0},
    ScriptCase{"RemRunsNothing", "rem echo x > f & echo y\r\nREM\r\n:: echo z\r\n", {}, "", "", "", 0},
    // Without arguments only %% and variables that are set are read, and not in quotes.
    ScriptCase{"ArgumentsExpandOnlyWhenGiven", "echo %1 %~2 %% 100%.txt \"%%\" %PV_UNSET_X%>f\r\n", {},
               "%1 %~2 % 100%.txt \"%%\" %PV_UNSET_X%\n", "", "", 0},
    // Echoed user text written with the interpreter's escapes comes out as typed.
    ScriptCase{"EscapedTextEchoesAsTyped", "echo searchText = 'a ^> b ^| c ^& d ^^ %%PATH%%' >> \"f\"\r\n", {},
               "searchText = 'a > b | c & d ^ %PATH%' \n", "", "", 0},
    ScriptCase{"ErrorLevel", "echo P%ERRORLEVEL%S>f\r\nnosuch-pv-cmd\r\necho %errorlevel%>>f\r\n"
               "set errorlevel=7\r\necho %ERRORLEVEL%>>f\r\nset errorlevel=\r\n", {"s.cmd", "x"}, "P0S\n9009\n7\n", "",
               "'nosuch-pv-cmd' is not recognized as an internal or external command,\noperable program or batch file.\n", 0},
    ScriptCase{"SetKeepsTrailingBlank", "set PV_T1=foo \r\necho '%PV_T1%'>f\r\nset PV_T1=\r\n", {"s.cmd", "x"}, "'foo '\n", "", "", 0},
    ScriptCase{"CaretContinuesTheLine", "echo hello^\r\nworld>f\r\necho ^\r\n>x>>f\r\n", {}, "helloworld\n>x\n", "", "", 0},
    // "foot" runs foot.cmd, which does not return to the lines after it.
    ScriptCase{"ScriptTakesOverWithoutExtension", "echo echo ran foot^>^>f>foot.cmd\r\nfoot\r\necho not reached>>f\r\n",
               {}, "ran foot\n", "", "", 0},
    ScriptCase{"ScriptTakingOverKeepsTheRedirection", "echo echo inner>foot.cmd\r\nfoot >f\r\necho not reached>>f\r\n",
               {}, "inner\n", "", "", 0},
    ScriptCase{"CallReturns", "echo echo ran %%1^>^>f>foot.cmd\r\ncall foot.cmd one\r\necho back>>f\r\n",
               {}, "ran one\nback\n", "", "", 0},
    // After "shift" the first argument is %0; "shift /1" keeps %0.
    ScriptCase{"Shift", "shift\r\necho [%0][%1][%9]>f\r\nshift /1\r\necho [%0][%1][%2]>>f\r\n", kElevenArgs,
               "[a][b][j]\n[a][c][d]\n", "", "", 0},
    ScriptCase{"ShiftBeyondNine", "shift /9\r\n", {"s.cmd", "a"}, "", "", kSyntax, 1},
    // The quoted form keeps blanks and % of the value literal; "set NAME=" removes it.
    ScriptCase{"Set", "set \"PV_T1=%~1\"\r\nshift\r\necho [%PV_T1%][%1]>f\r\nset PV_T1=\r\necho [%PV_T1%][%PV_UNSET%]>>f\r\n",
               {"s.cmd", "\"a&b 100%\"", "next"}, "[a&b 100%][next]\n[][]\n", "", "", 0},
    ScriptCase{"SetWithoutName", "set =x\r\n", {"s.cmd"}, "", "", kSyntax, 1},
    ScriptCase{"ExitStopsTheScript", "echo a\r\nexit /b 3\r\necho b\r\n", {}, "", "a\n", "", 3},
    ScriptCase{"LinesTooLongOrWithNul", "echo " + std::string(9000, 'x') + "\r\n" + std::string("echo a\0b\r\n", 10) + "echo after\r\n",
               {}, "", "a\nafter\n", "The input line is too long.\n", 0},
    // Output that cannot reach its file (a full disk) is named with the file, the
    // script goes on, and its status says that something was lost.
    ScriptCase{"FailingRedirections", "echo lost >> missing/dir/out.txt\r\necho lost > adir\r\necho lost > /dev/full\r\necho x >\r\n"
               "echo kept >> f\r\n", {}, "kept \n", "", "The system cannot find the path specified.\nAccess is denied.\n"
               "Cannot write to /dev/full: There is not enough space on the disk.\n" + std::string(kSyntax), 1},
    ScriptCase{"ToolRunsWhereAFolderHasItsName", "fc\r\n", {}, "", "", "FC: Insufficient number of file specifications\n", 2}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST(Interpreter, EchoOnShowsPromptAndCommand) {
    pvcmdtest::InTempDir here;
    auto run = runScriptText("echo hi >>f\r\n\r\nrem note\r\necho.\r\necho:word\r\n");
    std::string prompt = cwd() + ">";
    // "echo." and "echo:word" are shown without a blank after them.
    EXPECT_EQ(run.out, "\r\n" + prompt + "echo hi  1>>f\r\n\r\n" + prompt + "rem note \r\n\r\n" +
                           prompt + "echo.\r\n\r\n\r\n" + prompt + "echo:word\r\nword\r\n");
    EXPECT_EQ(readFile(here / "f"), "hi \r\n");
}

// A directory deeper than the system's path limit: popd still returns to it.
TEST(Interpreter, PopdReturnsToADirectoryDeeperThanThePathLimit) {
    pvcmdtest::InTempDir here;
    const std::string top = cwd();
    here.mkdir("elsewhere");
    const std::string name(200, 'd');
    int depth = 0;
    for (; depth < 25; ++depth)
        ASSERT_TRUE(::mkdir(name.c_str(), 0755) == 0 && ::chdir(name.c_str()) == 0);
    auto run =
        runScriptText("@echo off\r\npushd " + top + "/elsewhere\r\npopd\r\necho deep > mark\r\n");
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
    here.mkdir("left");
    here.mkdir("other");
    ASSERT_EQ(::chdir("left"), 0);
    auto run = runScriptText("@echo off\r\npushd " + top + "/other\r\nrmdir " + top +
                             "/left\r\npopd\r\necho wrong > mark\r\n");
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("The system cannot find the path specified.\r\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(top + "/other/mark"));
}

TEST(Interpreter, DirectoryCommands) {
    pvcmdtest::InTempDir here;
    std::string top = cwd();
    here.mkdir("sub dir/inner");
    here.mkdir("other");
    auto run = runScriptText("@echo off\r\ncd sub dir\r\necho 1 > mark1\r\n"
                             "cd /d \"inner\"  \r\necho 2 > mark2\r\ncd..\r\ncd ..\r\n"
                             "pushd other\r\necho 3 > mark3\r\npopd\r\necho 4 > mark4\r\n"
                             "cd nowhere\r\npushd nowhere\r\npopd\r\n"
                             "C:\r\n/\r\n\"" +
                             top + "\"\r\necho 5 > mark5\r\n");
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

// The results line the compare script writes: its target directory has a blank
// and is not quoted. A blank only in the file name part ends the target.
TEST(Interpreter, UnquotedResultsPathWithBlanksIsOneTarget) {
    pvcmdtest::InTempDir here;
    const std::string top = cwd();
    here.mkdir("prog dir");
    auto run = runScriptText("@echo off\r\necho x  >> " + top +
                             "/prog dir/Pairview1.txt\r\necho a > " + top + "/f b\r\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(readFile(top + "/prog dir/Pairview1.txt"), "x  \r\n");
    EXPECT_EQ(readFile(top + "/f"), "a  b\r\n");
}

TEST(Interpreter, ProgramsRunAndUnknownCommandsAreReported) {
    pvcmdtest::InTempDir here;
    pvtest::writeExecutable(here, "bin/tool", "echo \"[$1][$2]\"\nexit 4\n");
    pvtest::writeExecutable(here, "localtool", "echo local\n");
    pvtest::EnvGuard path("PATH", here.str() + "/bin:/usr/bin:/bin");
    auto run = runScriptText("@echo off\r\ntool \"a b\" c >> out.txt\r\n"
                             "tool.exe x > out2.txt\r\nlocaltool > out3.txt\r\n"
                             "nosuchcommand arg\r\n");
    EXPECT_EQ(run.code, pvcmd::Interpreter::kNotRecognized);
    EXPECT_EQ(run.err, crlf("'nosuchcommand' is not recognized as an internal or external "
                            "command,\noperable program or batch file.\n"));
    EXPECT_EQ(runScriptText("@echo off\r\ntool 1 2 > out4.txt\r\n").code, 4)
        << "the script's status is its last command's";
    EXPECT_EQ(readFile(here / "out.txt"), "[a b][c]\n");
    EXPECT_EQ(readFile(here / "out2.txt"), "[x][]\n");
    EXPECT_EQ(readFile(here / "out3.txt"), "local\n");
}

// An empty line after a closing "^" is an escaped line feed; the line after it
// continues the command.
TEST(Interpreter, CaretThenEmptyLineKeepsALineFeed) {
    pvcmdtest::InTempDir here;
    auto run = runScriptText("@echo off\r\necho one^\r\n\r\ntwo\r\necho three\r\n");
    EXPECT_EQ(run.out, "one\ntwo\r\nthree\r\n");
}

// A script found on the search path by its name without extension; the
// current directory's program of the same name comes first.
TEST(Interpreter, ScriptsAreFoundLikePrograms) {
    pvcmdtest::InTempDir here;
    here.write("bin/foot.bat", "@echo bat %1\r\n");
    here.write("bin/foot.cmd", "@echo cmd\r\n");
    here.write("bin/cmdonly.CMD", "@echo upper\r\n");
    pvtest::writeExecutable(here, "prog", "echo program > prog.out\n");
    here.write("prog.cmd", "@echo script\r\n");
    pvtest::EnvGuard path("PATH", here.str() + "/bin:/usr/bin:/bin");
    EXPECT_EQ(runScriptText("@echo off\r\nfoot \"a b\"\r\n").out, "bat \"a b\"\r\n");
    EXPECT_EQ(runScriptText("@echo off\r\ncall cmdonly.CMD\r\ncall prog\r\n").out, "upper\r\n");
    EXPECT_EQ(readFile(here / "prog.out"), "program\n");
    auto missing = runScriptText("@echo off\r\nmissing.cmd\r\n");
    EXPECT_EQ(missing.code, pvcmd::Interpreter::kNotRecognized);
}

// A script that calls itself stops at the nesting limit, once, with a message;
// no level goes on after it.
TEST(Interpreter, CallRecursionIsBounded) {
    pvcmdtest::InTempDir here;
    here.write("self.cmd", "@echo off\r\necho x>>count\r\ncall self.cmd\r\necho unwound>>f\r\n");
    auto run = runScriptText("@echo off\r\ncall self.cmd\r\necho after>>f\r\n");
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "Scripts are nested more than 32 deep (call, start /wait or pvcmd within a "
                       "script); the script stops.\r\n");
    // The text itself is the first level.
    EXPECT_EQ(readFile(here / "count").size(), 31u * 3);
    EXPECT_FALSE(std::filesystem::exists(here / "f"));
    EXPECT_EQ(std::getenv(pvcmd::Interpreter::kNestingVariable), nullptr);
}

// Control passes for good, so a script naming itself loops; it is stopped.
TEST(Interpreter, ScriptTakingOverFromItselfIsStopped) {
    pvcmdtest::InTempDir here;
    here.write("self.cmd", "@echo x>>count\r\n@self\r\n@echo never>>f\r\n");
    auto run = runScriptText("@echo off\r\nself.cmd\r\necho never>>f\r\n");
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "A script took over from itself more than 32 times; the script stops.\r\n");
    EXPECT_EQ(readFile(here / "count").size(), 33u * 3);
    EXPECT_FALSE(std::filesystem::exists(here / "f"));
}

TEST(Interpreter, StartWaitsOnlyWhenAsked) {
    pvcmdtest::InTempDir here;
    std::string prog =
        pvtest::writeExecutable(here, "prog.sh", "sleep 0.2\necho \"$1\" > \"$2\"\n");
    const std::string waited = here / "waited.txt";
    const std::string detached = here / "detached.txt";
    auto run = runScriptText("@echo off\r\nstart \"title\" /wait /min " + prog + " w " + waited +
                             "\r\nstart " + prog + " d " + detached + "\r\ncd\r\n");
    // The waited program finished before the next line; the detached one need not have.
    EXPECT_EQ(readFile(waited), "w\n");
    EXPECT_EQ(run.out, cwd() + "\r\n");
    EXPECT_EQ(run.code, 0);
    std::string text;
    for (int i = 0; i < 500 && (text = readFile(detached)).empty(); ++i)
        ::usleep(10000);
    EXPECT_EQ(text, "d\n");
}

} // namespace
