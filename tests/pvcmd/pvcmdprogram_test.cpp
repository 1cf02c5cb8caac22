// The pvcmd program end to end: scripts as Pairview writes them, started the way
// Pairview starts them, and the tools run directly from a shell.

#include "pvcmdtestutil.h"
#include "support/envguard.h"

#include "platform/process.h"
#include "platform/pvversion.h"
#include "pvcmd/tool.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using pvtest::EnvGuard;

namespace {

using pvcmdtest::crlf;
using pvtest::readFile;

const std::string kPvcmd = std::string(PV_BINARY_DIR) + "/pvcmd";

struct ProgramRun {
    int rc = 0;
    std::string out;
    std::string err;
};

ProgramRun runPvcmd(const pvtest::TempDir& dir, const std::vector<std::string>& args) {
    std::string outPath = dir / "stdout.txt";
    std::string errPath = dir / "stderr.txt";
    int outFd = ::open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    int errFd = ::open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    std::vector<std::string> argv = {kPvcmd};
    argv.insert(argv.end(), args.begin(), args.end());
    ProgramRun run;
    run.rc = pv::runAndWait(argv, outFd, errFd);
    ::close(outFd);
    ::close(errFd);
    run.out = readFile(outPath);
    run.err = readFile(errPath);
    return run;
}

TEST(PvcmdProgram, CompareScriptRunsEndToEnd) {
    pvtest::TempDir dir;
    std::string left = dir.mkdir("L");
    std::string right = dir.mkdir("R");
    std::string prog = dir.mkdir("prog");
    dir.write("L/x.txt", "one\r\ntwo\r\nthree\r\n");
    dir.write("R/x.txt", "one\r\n2\r\nthree\r\n");
    dir.write("L/same.txt", "s\r\n");
    dir.write("R/same.txt", "s\r\n");
    // A stand-in editor that records what it was asked to open.
    std::string editor = dir.write("editor.sh", "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" +
                                                    (dir / "editor-args.txt") + "'\n");
    ::chmod(editor.c_str(), 0755);
    EnvGuard editorEnv("PAIRVIEW_EDITOR", editor);
    EnvGuard pvcmdEnv("PAIRVIEW_PVCMD", kPvcmd);

    const std::string results = prog + "/Pairview.txt";
    // Byte for byte what the compare writes, a vanished file included.
    std::string script = "\r\nrem ---------- Start 2026-11-23 01:00:00 -----------\r\n\r\n"
                         "\r\nfc /lb100 /2 \"" +
                         left + "/same.txt\" \"" + right + "/same.txt\"  >> " + results +
                         "\r\n"
                         "\r\nfc /lb100 /2 \"" +
                         left + "/gone.txt\" \"" + right + "/gone.txt\"  >> " + results +
                         "\r\n"
                         "\r\nfc /lb100 /2 \"" +
                         left + "/x.txt\" \"" + right + "/x.txt\"  >> " + results +
                         "\r\n"
                         "\r\nWrite.exe \"" +
                         results + "\"\r\n\r\n";
    std::string scriptPath = dir.write("prog/Pairview.cmd", script);

    long pid = pv::startDetached(pv::quoteArgument(scriptPath), prog);
    ASSERT_GT(pid, 0);
    std::string args;
    for (int i = 0; i < 1000 && (args = readFile(dir / "editor-args.txt")).empty(); ++i)
        ::usleep(10000);
    EXPECT_EQ(args, results + "\n");
    EXPECT_EQ(readFile(results), crlf("Comparing files " + left + "/same.txt and " + right +
                                      "/same.txt\n"
                                      "FC: no differences encountered\n\n"
                                      "FC: cannot open " +
                                      left +
                                      "/gone.txt - No such file or folder\n"
                                      "Comparing files " +
                                      left + "/x.txt and " + right +
                                      "/x.txt\n"
                                      "***** " +
                                      left +
                                      "/x.txt\none\ntwo\nthree\n"
                                      "***** " +
                                      right + "/x.txt\none\n2\nthree\n*****\n\n"));
    // What the script showed outside its redirections went to its log.
    std::string log = readFile(scriptPath + ".log");
    EXPECT_NE(log.find(prog + ">Write.exe \"" + results + "\" "), std::string::npos) << log;
}

TEST(PvcmdProgram, ScriptArgumentsKeepTheirQuotes) {
    pvtest::TempDir dir;
    std::string script = dir.write("single.cmd", "@echo off\r\n"
                                                 "fc %4 %5 %1 %2 > %3\r\n"
                                                 "echo %1 >> %3\r\n");
    std::string a = dir.write("a b.txt", "A\n");
    std::string b = dir.write("b.txt", "A\n");
    std::string out = dir / "result.txt";
    ProgramRun run = runPvcmd(dir, {script, a, b, out, "/lb100", "/2"});
    EXPECT_EQ(run.rc, 0);
    EXPECT_EQ(readFile(out), crlf("Comparing files " + a + " and " + b +
                                  "\nFC: no differences encountered\n\n\"" + a + "\" \n"));
}

TEST(PvcmdProgram, ShippedSingleCompareScriptPassesEverySwitch) {
    pvtest::TempDir dir;
    std::string script =
        dir.write("CompareSelectedFile.cmd",
                  readFile(std::string(PV_TEST_DATA_DIR) + "/../../share/CompareSelectedFile.cmd"));
    std::string a = dir.write("left dir/x 100%.txt", "x  y\n");
    std::string b = dir.write("right/x 100%.txt", "X y\n");
    std::string result = dir / "Pairview Single1.txt";
    // The editor records what it was asked to open.
    std::string editor = dir.write("bin/ed", "#!/bin/sh\nprintf '%s' \"$1\" > \"$0.arg\"\n");
    ::chmod(editor.c_str(), 0755);
    EnvGuard editorVar("PAIRVIEW_EDITOR", pv::quoteArgument(editor));
    // The last switch, /w, is the eleventh argument: only with it (and /c) do the
    // files compare equal.
    ProgramRun run =
        runPvcmd(dir, {script, a, b, result, "/lb100", "/2", "/a", "/c", "/l", "/n", "/t", "/w"});
    EXPECT_EQ(run.rc, 0) << run.err;
    EXPECT_EQ(readFile(result),
              crlf("Comparing files " + a + " and " + b + "\nFC: no differences encountered\n\n"));
    EXPECT_EQ(readFile(editor + ".arg"), result);
}

TEST(PvcmdProgram, ToolsAndUsageFromTheShell) {
    pvtest::TempDir dir;
    std::string a = dir.write("a.txt", "A\n");
    std::string b = dir.write("b.txt", "B\n");
    struct Row {
        const char* name;
        std::vector<std::string> args;
        int rc;
        std::string outContains;
        std::string errContains;
    };
    const Row rows[] = {
        {"Help", {"--help"}, 0, "pvcmd SCRIPT.cmd", ""},
        {"ToolHelp", {"fc", "/?"}, 0, "/LBn", ""},
        {"FindstrHelp", {"findstr", "/?"}, 0, "/C:string", ""},
        {"XcopyHelp", {"XCOPY", "/?"}, 0, "/EXCLUDE:", ""},
        {"Version", {"--version"}, 0, "pvcmd " PAIRVIEW_VERSION "\n", ""},
        {"ToolByUpperCaseExeName", {"FC.EXE", a, a}, 0, "no differences", ""},
        {"Different", {"fc", a, b}, 1, "***** " + b, ""},
        {"MissingFile", {"fc", a, dir / "none.txt"}, 2, "FC: cannot open", ""},
        {"BadSwitch", {"fc", "/z", a, b}, 2, "", "FC: Invalid Switch"},
        {"NoArguments", {}, 2, "", "Usage"},
        {"UnknownOption", {"--frobnicate"}, 2, "", "unknown option"},
        {"MissingScript", {dir / "none.cmd"}, 1, "", "cannot find the file"},
    };
    for (const Row& row : rows) {
        ProgramRun run = runPvcmd(dir, row.args);
        EXPECT_EQ(run.rc, row.rc) << row.name;
        EXPECT_NE(run.out.find(row.outContains), std::string::npos) << row.name << ": " << run.out;
        EXPECT_NE(run.err.find(row.errContains), std::string::npos) << row.name << ": " << run.err;
    }
}

TEST(PvcmdProgram, HelpNamesEveryToolAndCommand) {
    pvtest::TempDir dir;
    const std::string help = runPvcmd(dir, {"--help"}).out;
    for (const char* word : {"fc", "findstr", "dir", "xcopy", "rem", "echo", "cd", "pushd", "popd",
                             "set", "shift", "start", "exit", "pause"})
        EXPECT_NE(help.find("\n  " + std::string(word) + " "), std::string::npos) << word;
}

TEST(PvcmdProgram, UnknownCommandGivesShellNotFoundStatus) {
    pvtest::TempDir dir;
    std::string script = dir.write("s.cmd", "@echo off\r\nno-such-program-here\r\n");
    ProgramRun run = runPvcmd(dir, {script});
    EXPECT_EQ(run.rc, 127);
    EXPECT_EQ(run.err, "'no-such-program-here' is not recognized as an internal or external "
                       "command,\r\noperable program or batch file.\r\n");
}

TEST(FindTool, NamesInAnyCaseWithOrWithoutExe) {
    EXPECT_EQ(pvcmd::findTool("fc"), &pvcmd::fcMain);
    EXPECT_EQ(pvcmd::findTool("Fc.Exe"), &pvcmd::fcMain);
    EXPECT_EQ(pvcmd::findTool("fcx"), nullptr);
    EXPECT_EQ(pvcmd::findTool(".exe"), nullptr);
    EXPECT_EQ(pvcmd::findTool(""), nullptr);
}

} // namespace
