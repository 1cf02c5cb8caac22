// The pvcmd program end to end: scripts with arguments, and the tools run directly
// from a shell. The compare's own script runs under pvcmd in the pvcompare tests.

#include "pvcmdtestutil.h"
#include "support/envguard.h"
#include "support/standins.h"

#include "platform/process.h"
#include "platform/pvversion.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace {

using pvcmdtest::crlf;
using pvtest::readFile;

pvcmdtest::ToolResult runPvcmd(const pvtest::TempDir& dir, const std::vector<std::string>& args) {
    std::string outPath = dir / "stdout.txt";
    std::string errPath = dir / "stderr.txt";
    int outFd = ::open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    int errFd = ::open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    std::vector<std::string> argv = {std::string(PV_BINARY_DIR) + "/pvcmd"};
    argv.insert(argv.end(), args.begin(), args.end());
    int code = pv::runAndWait(argv, outFd, errFd);
    ::close(outFd);
    ::close(errFd);
    return {code, readFile(outPath), readFile(errPath)};
}

// The script's arguments keep their quotes, up to the eleventh.
TEST(PvcmdProgram, ShippedSingleCompareScriptPassesEverySwitch) {
    pvtest::TempDir dir;
    std::string script =
        dir.write("CompareSelectedFile.cmd",
                  readFile(std::string(PV_TEST_DATA_DIR) + "/../../share/CompareSelectedFile.cmd"));
    std::string a = dir.write("left dir/x 100%.txt", "x  y\n");
    std::string b = dir.write("right/x 100%.txt", "X y\n");
    std::string result = dir / "Pairview Single1.txt";
    // The editor records what it was asked to open.
    std::string editor =
        pvtest::writeExecutable(dir, "bin/ed", "printf '%s' \"$1\" > \"$0.arg\"\n");
    pvtest::EnvGuard editorVar("PAIRVIEW_EDITOR", pv::quoteArgument(editor));
    // The last switch, /w, is the eleventh argument: only with it (and /c) do the
    // files compare equal.
    auto run =
        runPvcmd(dir, {script, a, b, result, "/lb100", "/2", "/a", "/c", "/l", "/n", "/t", "/w"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(readFile(result),
              crlf("Comparing files " + a + " and " + b + "\nFC: no differences encountered\n\n"));
    EXPECT_EQ(readFile(editor + ".arg"), result);
}

TEST(PvcmdProgram, ToolsScriptsAndUsageFromTheShell) {
    pvtest::TempDir dir;
    std::string a = dir.write("a.txt", "A\n");
    std::string b = dir.write("b.txt", "B\n");
    std::string unknown = dir.write("s.cmd", "@echo off\r\nno-such-program-here\r\n");
    struct Row {
        const char* name;
        std::vector<std::string> args;
        int code;
        std::string outContains;
        std::string errContains;
    };
    // clang-format off
    const Row rows[] = {
        {"Help", {"--help"}, 0, "pvcmd SCRIPT.cmd", ""},
        {"Version", {"--version"}, 0, "pvcmd " PAIRVIEW_VERSION "\n", ""},
        {"Different", {"fc", a, b}, 1, "***** " + b, ""},
        {"BadSwitch", {"fc", "/z", a, b}, 2, "", "FC: Invalid Switch"},
        {"NoArguments", {}, 2, "", "Usage"},
        {"UnknownOption", {"--frobnicate"}, 2, "", "unknown option"},
        {"MissingScript", {dir / "none.cmd"}, 1, "", "cannot find the file"},
        // The interpreter's "not recognized" becomes the shell's "not found".
        {"UnknownCommandInScript", {unknown}, 127, "", "'no-such-program-here' is not recognized"},
    };
    // clang-format on
    for (const Row& row : rows) {
        auto run = runPvcmd(dir, row.args);
        EXPECT_EQ(run.code, row.code) << row.name;
        EXPECT_NE(run.out.find(row.outContains), std::string::npos) << row.name << ": " << run.out;
        EXPECT_NE(run.err.find(row.errContains), std::string::npos) << row.name << ": " << run.err;
    }
}

// Each "start /wait" of itself is a new pvcmd; the depth is counted across them.
TEST(PvcmdProgram, ScriptsStartingThemselvesAreBounded) {
    pvcmdtest::InTempDir dir;
    dir.write("self.cmd", "@echo off\r\necho x>>count\r\nstart /wait self.cmd\r\n");
    pvtest::EnvGuard pvcmd("PAIRVIEW_PVCMD", std::string(PV_BINARY_DIR) + "/pvcmd");
    auto run = runPvcmd(dir, {"self.cmd"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "Scripts are nested more than 32 deep (call, start /wait or pvcmd within "
                       "a script); the script stops.\r\n");
    EXPECT_EQ(readFile(dir / "count").size(), 32u * 3);
}

TEST(FindTool, NamesInAnyCaseWithOrWithoutExe) {
    EXPECT_EQ(pvcmd::findTool("fc"), &pvcmd::fcMain);
    EXPECT_EQ(pvcmd::findTool("Fc.Exe"), &pvcmd::fcMain);
    EXPECT_EQ(pvcmd::findTool("FINDSTR"), &pvcmd::findstrMain);
    EXPECT_EQ(pvcmd::findTool("dir.exe"), &pvcmd::dirMain);
    EXPECT_EQ(pvcmd::findTool("Xcopy"), &pvcmd::xcopyMain);
    EXPECT_EQ(pvcmd::findTool("fcx"), nullptr);
    EXPECT_EQ(pvcmd::findTool(".exe"), nullptr);
    EXPECT_EQ(pvcmd::findTool(""), nullptr);
}

} // namespace
