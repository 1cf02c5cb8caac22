#include "platform/process.h"
#include "platform/runtimeerror.h"
#include "support/envguard.h"
#include "support/standins.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <random>
#include <unistd.h>

using pvtest::EnvGuard;

namespace {

using Words = std::vector<std::string>;

struct SplitCase {
    const char* name;
    const char* line;
    Words words;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const SplitCase& row, std::ostream* os) {
    *os << row.name;
}

class SplitCommandLine : public ::testing::TestWithParam<SplitCase> {};

TEST_P(SplitCommandLine, FollowsTheWindowsRules) {
    EXPECT_EQ(pv::splitCommandLine(GetParam().line), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SplitCommandLine,
    ::testing::Values(
        SplitCase{"Empty", "", {}}, SplitCase{"OnlyBlanks", " \t  ", {}},
        SplitCase{"BlanksAndTabsSeparate", "a  b\tc ", {"a", "b", "c"}},
        SplitCase{"QuotesGroupBlanks", "fc \"C:/a b/x.txt\" y", {"fc", "C:/a b/x.txt", "y"}},
        SplitCase{"QuoteInsideWordJoins", "ab\"c d\"e", {"abc de"}},
        SplitCase{"EmptyQuotesAreAnEmptyWord", "a \"\" b", {"a", "", "b"}},
        SplitCase{"BackslashesWithoutQuoteAreLiteral", "a\\\\b\\ c\\", {"a\\\\b\\", "c\\"}},
        SplitCase{"OddBackslashesEscapeQuote", "a\\\"b", {"a\"b"}},
        SplitCase{"EvenBackslashesThenQuoteToggles", "\"a\\\\\" b", {"a\\", "b"}},
        SplitCase{"ThreeBackslashesQuote", "a\\\\\\\"b", {"a\\\"b"}},
        SplitCase{"DoubledQuoteInsideQuotesIsLiteral", "\"a\"\"b\" c", {"a\"b", "c"}},
        SplitCase{"UnclosedQuoteRunsToEnd", "x \"a b", {"x", "a b"}},
        SplitCase{
            "RedirectionIsPlainText", "fc a b  >> out.txt", {"fc", "a", "b", ">>", "out.txt"}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(QuoteArgument, RoundTripsThroughSplit) {
    const Words fixed = {"",        "plain",   "with blank",    "tab\there",
                         "q\"uote", "trail\\", "trail blank\\", "\\\\server\\share",
                         "a\\\"b",  "\"",      "\\\"\\"};
    for (const std::string& arg : fixed)
        EXPECT_EQ(pv::splitCommandLine("prog " + pv::quoteArgument(arg)), (Words{"prog", arg}))
            << "argument [" << arg << "]";

    std::mt19937 rng(1234);
    const std::string alphabet = "ab \t\\\"x";
    for (int round = 0; round < 2000; ++round) {
        Words args;
        std::string line;
        int count = 1 + static_cast<int>(rng() % 4);
        for (int k = 0; k < count; ++k) {
            std::string arg;
            int len = static_cast<int>(rng() % 8);
            for (int c = 0; c < len; ++c)
                arg += alphabet[rng() % alphabet.size()];
            args.push_back(arg);
            line += (k ? " " : "") + pv::quoteArgument(arg);
        }
        ASSERT_EQ(pv::splitCommandLine(line), args) << "line [" << line << "]";
    }
}

TEST(QuoteArgument, LeavesPlainWordsAlone) {
    EXPECT_EQ(pv::quoteArgument("/lb100"), "/lb100");
    EXPECT_EQ(pv::quoteArgument("a b"), "\"a b\"");
    EXPECT_EQ(pv::quoteArgument(""), "\"\"");
}

class ResolveProgram : public ::testing::Test {
  protected:
    pvtest::TempDir m_bin;
    EnvGuard m_path{"PATH", ""};

    void SetUp() override { ::setenv("PATH", m_bin.str().c_str(), 1); }
};

TEST_F(ResolveProgram, EditorNamesUsePairviewEditorInAnyCase) {
    EnvGuard editor("PAIRVIEW_EDITOR", "\"/opt/my ed/ed\" --new-window");
    for (const char* name :
         {"Write.exe", "WRITE.EXE", "notepad.exe", "NotePad.Exe", "write", "Notepad"})
        EXPECT_EQ(pv::resolveProgram(name), (Words{"/opt/my ed/ed", "--new-window"})) << name;
}

TEST_F(ResolveProgram, EditorNamedWithoutPathIsFoundOnTheSearchPath) {
    std::string onPath = pvtest::writeExecutable(m_bin, "myeditor", "exit 0\n");
    EnvGuard editor("PAIRVIEW_EDITOR", "myeditor --wait");
    EXPECT_EQ(pv::resolveProgram("Write.exe"), (Words{onPath, "--wait"}));
}

TEST_F(ResolveProgram, EditorFallsBackToXdgOpen) {
    ::unsetenv("PAIRVIEW_EDITOR");
    EnvGuard editor("PAIRVIEW_EDITOR", "");
    Words argv = pv::resolveProgram("Write.exe");
    ASSERT_EQ(argv.size(), 1u);
    EXPECT_EQ(argv[0], "xdg-open");
    std::string onPath = pvtest::writeExecutable(m_bin, "xdg-open", "exit 0\n");
    EXPECT_EQ(pv::resolveProgram("Notepad.exe"), Words{onPath});
}

TEST_F(ResolveProgram, ScriptsRunUnderTheInterpreter) {
    EnvGuard pvcmd("PAIRVIEW_PVCMD", "/opt/pv/pvcmd");
    EXPECT_EQ(pv::resolveProgram("/prog/Pairview1.cmd"),
              (Words{"/opt/pv/pvcmd", "/prog/Pairview1.cmd"}));
    EXPECT_EQ(pv::resolveProgram("Xcopy_FILE.CMD"), (Words{"/opt/pv/pvcmd", "Xcopy_FILE.CMD"}));
    EXPECT_EQ(pv::resolveProgram("find.Bat"), (Words{"/opt/pv/pvcmd", "find.Bat"}));
}

TEST_F(ResolveProgram, PathsStandAndNamesAreSearched) {
    EXPECT_EQ(pv::resolveProgram("/no/such/tool"), Words{"/no/such/tool"});
    EXPECT_EQ(pv::resolveProgram("./rel/tool"), Words{"./rel/tool"});
    EXPECT_TRUE(pv::resolveProgram("tool").empty());
    EXPECT_TRUE(pv::resolveProgram("").empty());

    std::string tool = pvtest::writeExecutable(m_bin, "tool", "exit 0\n");
    EXPECT_EQ(pv::resolveProgram("tool"), Words{tool});
    // "x.exe" finds "x" only when no "x.exe" is there.
    EXPECT_EQ(pv::resolveProgram("tool.exe"), Words{tool});
    EXPECT_EQ(pv::resolveProgram("TOOL.EXE"), Words{}) << "the stem keeps its case";
    std::string exe = pvtest::writeExecutable(m_bin, "tool.exe", "exit 0\n");
    EXPECT_EQ(pv::resolveProgram("tool.exe"), Words{exe});

    // A file without execute permission is not a program.
    m_bin.write("plain", "data");
    EXPECT_TRUE(pv::resolveProgram("plain").empty());
}

TEST(RunAndWait, ReturnsExitCodeAndSignal) {
    EXPECT_EQ(pv::runAndWait({"/bin/sh", "-c", "exit 0"}), 0);
    EXPECT_EQ(pv::runAndWait({"/bin/sh", "-c", "exit 3"}), 3);
    EXPECT_EQ(pv::runAndWait({"/bin/sh", "-c", "kill -9 $$"}), 128 + 9);
}

TEST(RunAndWait, RedirectsOutputAndErrorToGivenFiles) {
    pvtest::TempDir dir;
    std::string out = dir / "out.txt";
    std::string err = dir / "err.txt";
    int outFd = ::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    int errFd = ::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    ASSERT_GE(outFd, 0);
    ASSERT_GE(errFd, 0);
    EXPECT_EQ(pv::runAndWait({"/bin/sh", "-c", "echo to-out; echo to-err >&2"}, outFd, errFd), 0);
    ::close(outFd);
    ::close(errFd);
    EXPECT_EQ(pvtest::readFile(out), "to-out\n");
    EXPECT_EQ(pvtest::readFile(err), "to-err\n");
}

TEST(RunAndWait, MissingProgramThrowsWithErrno) {
    try {
        pv::runAndWait({"/no/such/program"});
        FAIL() << "expected an error";
    } catch (const pv::RuntimeError& e) {
        EXPECT_EQ(e.number(), ENOENT);
        EXPECT_NE(e.description().find("/no/such/program"), std::string::npos);
    }
}

TEST(StartDetached, ScriptRunsUnderInterpreterWithLogBesideIt) {
    pvtest::TempDir dir;
    std::string record = dir / "args.txt";
    // A stand-in interpreter: records its arguments and its working directory,
    // and prints to its standard output and error, which must land in the log.
    std::string fake = pvtest::writeExecutable(
        dir, "fakepvcmd",
        "printf '%s|' \"$@\" > '" + record + ".tmp'; pwd >> '" + record + ".tmp'\n" +
            "echo printed; echo complained >&2\n" + "mv '" + record + ".tmp' '" + record + "'\n");
    EnvGuard pvcmd("PAIRVIEW_PVCMD", fake);
    std::string script = dir.write("work/Pairview1.cmd", "rem\r\n");

    long pid = pv::startDetached(pv::quoteArgument(script) + " \"a b\" c", dir.str());
    EXPECT_GT(pid, 0);
    std::string args = pvtest::waitForLine(record);
    EXPECT_EQ(args, script + "|a b|c|" + dir.str() + "\n");
    std::string log = pvtest::waitForLine(script + ".log", "complained");
    EXPECT_NE(log.find("printed\n"), std::string::npos);
    EXPECT_NE(log.find("complained\n"), std::string::npos);
}

TEST(StartDetached, FailuresCarryErrnoAndName) {
    pvtest::TempDir dir;
    EnvGuard path("PATH", dir.str());
    struct Row {
        const char* name;
        std::string commandLine;
        int expected;
        std::string mentions;
    };
    std::string notExecutable = dir.write("data.txt", "x");
    const Row rows[] = {
        {"NotOnPath", "nosuchprogram arg", ENOENT, "nosuchprogram"},
        {"MissingPath", "/no/such/dir/prog", ENOENT, "/no/such/dir/prog"},
        {"NotExecutable", notExecutable, EACCES, "data.txt"},
        {"Empty", "   ", ENOENT, ""},
    };
    try {
        pv::startDetached("/bin/true", dir / "no-such-dir");
        ADD_FAILURE() << "expected an error for a missing working directory";
    } catch (const pv::RuntimeError& e) {
        EXPECT_EQ(e.number(), ENOENT);
        EXPECT_NE(e.description().find("no-such-dir"), std::string::npos) << e.description();
    }
    for (const Row& row : rows) {
        try {
            pv::startDetached(row.commandLine);
            ADD_FAILURE() << row.name << ": expected an error";
        } catch (const pv::RuntimeError& e) {
            EXPECT_EQ(e.number(), row.expected) << row.name;
            EXPECT_NE(e.description().find(row.mentions), std::string::npos)
                << row.name << ": " << e.description();
        }
    }
}

} // namespace
