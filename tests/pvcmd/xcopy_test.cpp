#include "pvcmdtestutil.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

#include "support/unprivileged.h"

namespace fs = std::filesystem;

namespace {

constexpr long long kOld = 1101812700; // 2004
constexpr long long kNew = 1651641420; // 2022

class Xcopy : public ::testing::Test {
  protected:
    void SetUp() override {
        unsetenv("COPYCMD");
        m_dir.write("L/a.txt", "alpha");
        m_dir.write("L/b.log", "beta");
        m_dir.write("L/.hidden", "h");
        m_dir.write("L/sub/c.txt", "gamma");
        m_dir.mkdir("L/empty");
        m_dir.mkdir("R");
        m_dir.mkdir("N/a/b"); // a tree without files
    }
    pvcmdtest::ToolResult run(pvcmd::ToolArgs args, const std::string& input = {}) {
        return pvcmdtest::runTool(pvcmd::xcopyMain, m_dir.str(), args, input);
    }
    std::string read(const std::string& rel) const { return pvtest::readFile(m_dir / rel); }
    bool exists(const std::string& rel) const { return fs::exists(m_dir / rel); }

    pvtest::TempDir m_dir;
};

// Runs in the fresh tree: what is listed and reported, which paths then exist
// and which do not.
TEST_F(Xcopy, RunsInAFreshTree) {
    m_dir.write("skip.lst", "sub/\r\n");
    m_dir.write("more.lst", ".log\r\n");
    const std::string askNew = "Does new specify a file name\r\nor directory name on the target\r\n"
                               "(F = file, D = directory)? ";
    struct Row {
        const char* name;
        pvcmd::ToolArgs args;
        std::string input;
        std::optional<std::string> out; // not checked when unset
        std::string err;
        int code;
        std::vector<std::string> present;
        std::vector<std::string> absent;
    };
    // clang-format off
    const Row rows[] = {
        // The copy line Pairview's script writes: absolute paths, "dir/*.*" target.
        {"FileIntoDirectoryGivenAsStarDotStar", {m_dir / "L/a.txt", m_dir / "R/*.*"}, "", m_dir / "L/a.txt" + "\r\n1 File(s) copied\r\n", "", 0, {"R/a.txt"}, {}},
        {"FullNames", {"/f", "L/a.txt", "R"}, "", m_dir / "L/a.txt" + " -> " + m_dir / "R/a.txt" + "\r\n1 File(s) copied\r\n", "", 0, {}, {}},
        {"WildcardSkipsHidden", {"L/*", "R"}, "", "L/a.txt\r\nL/b.log\r\n2 File(s) copied\r\n", "", 0, {"R/b.log"}, {"R/.hidden"}},
        {"HiddenWithH", {"/h", "L/*", "R"}, "", "L/.hidden\r\nL/a.txt\r\nL/b.log\r\n3 File(s) copied\r\n", "", 0, {"R/.hidden"}, {}},
        {"SubdirectoriesButNotEmptyOnes", {"L", "S", "/s", "/i"}, "", "L/a.txt\r\nL/b.log\r\nL/sub/c.txt\r\n3 File(s) copied\r\n", "", 0,
         {"S/sub/c.txt"}, {"S/empty"}},
        {"EmptyOnesWithE", {"L", "E", "/e", "/i", "/q"}, "", "3 File(s) copied\r\n", "", 0, {"E/empty"}, {}},
        {"MaskAppliesInEverySubdirectory", {"L/*.txt", "M/", "/s"}, "", "L/a.txt\r\nL/sub/c.txt\r\n2 File(s) copied\r\n", "", 0,
         {"M/sub/c.txt"}, {"M/b.log"}},
        {"TreeWithoutFilesCopiesNothing", {"N", "NS", "/s", "/i"}, "", "0 File(s) copied\r\n", "", 0, {}, {"NS"}},
        {"TreeWithoutFilesWithEMakesItsDirectories", {"N", "NE", "/s", "/e", "/i"}, "", "0 File(s) copied\r\n", "", 0, {"NE/a/b"}, {}},
        {"EmptySourceWithEMakesTheDestination", {"L/empty", "EE", "/s", "/e", "/i"}, "", "0 File(s) copied\r\n", "", 0, {"EE"}, {}},
        {"TreeOnly", {"L", "T", "/t", "/e", "/i"}, "", "0 File(s) copied\r\n", "", 0, {"T/sub", "T/empty"}, {"T/sub/c.txt"}},
        // Without /e the tree leaves out directories that hold nothing to copy.
        {"TreeWithoutEmptyOnes", {"L", "U", "/t", "/s", "/i"}, "", "0 File(s) copied\r\n", "", 0, {"U/sub"}, {"U/empty", "U/sub/c.txt"}},
        {"ExcludeListsJoinedByPlus", {"L", "X", "/s", "/i", "/exclude:skip.lst+more.lst"}, "", "L/a.txt\r\n1 File(s) copied\r\n", "", 0,
         {"X/a.txt"}, {"X/b.log", "X/sub"}},
        {"AcceptedSwitchesChangeNothing", {"L/a.txt", "R", "/z/b/j/g/n/o/x/a/m/v"}, "", "L/a.txt\r\n1 File(s) copied\r\n", "", 0, {"R/a.txt"}, {}},
        {"AsksFileForUnknownTarget", {"L/a.txt", "new"}, "f\n", askNew + "f\r\nL/a.txt\r\n1 File(s) copied\r\n", "", 0, {"new"}, {"new/a.txt"}},
        {"AsksAgainThenDirectory", {"L/a.txt", "new"}, "x\nd\n", std::nullopt, "", 0, {"new/a.txt"}, {}},
        {"NoAnswerCopiesNothing", {"L/a.txt", "new"}, "", std::nullopt, "", 2, {}, {"new"}},
        {"NothingMatches", {"L/*.none", "R"}, "", "0 File(s) copied\r\n", "File not found - *.none\r\n", 1, {}, {}},
        {"InvalidSwitch", {"L/a.txt", "R", "/z9"}, "", "", "Invalid switch - /z9\r\n", 4, {}, {"R/a.txt"}},
        {"NoParameters", {}, "", "", "Invalid number of parameters\r\n", 4, {}, {}},
        {"CyclicCopy", {"L", "L/sub/x", "/s", "/i"}, "", std::nullopt, "Cannot perform a cyclic copy\r\n", 4, {}, {"L/sub/x"}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto r = run(row.args, row.input);
        EXPECT_EQ(row.out.value_or(r.out), r.out);
        EXPECT_EQ(r.err, row.err);
        EXPECT_EQ(r.code, row.code);
        for (const std::string& path : row.present)
            EXPECT_TRUE(exists(path)) << path;
        for (const std::string& path : row.absent)
            EXPECT_FALSE(exists(path)) << path;
        for (const char* made : {"R/a.txt", "R/b.log", "R/.hidden", "new"})
            fs::remove_all(m_dir / made);
    }
}

// Overwrite answers, read from the input; end of input answers No.
struct OverwriteRow {
    const char* name;
    pvcmd::ToolArgs switches;
    std::string input;
    std::string expectedOut;
    std::string aContent, bContent;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const OverwriteRow& row, std::ostream* os) {
    *os << row.name;
}

class XcopyOverwrite : public Xcopy, public ::testing::WithParamInterface<OverwriteRow> {};

TEST_P(XcopyOverwrite, AsksOrNot) {
    m_dir.write("R/a.txt", "old a");
    m_dir.write("R/b.log", "old b");
    pvcmd::ToolArgs args = {"L/*.*", "R"};
    args.insert(args.end(), GetParam().switches.begin(), GetParam().switches.end());
    auto r = run(args, GetParam().input);
    EXPECT_EQ(r.out, GetParam().expectedOut);
    EXPECT_EQ(read("R/a.txt"), GetParam().aContent);
    EXPECT_EQ(read("R/b.log"), GetParam().bContent);
}

const char* kAskA = "Overwrite R/a.txt (Yes/No/All)? ";
const char* kAskB = "Overwrite R/b.log (Yes/No/All)? ";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Answers, XcopyOverwrite, ::testing::Values(
    OverwriteRow{"EndOfInputIsNo", {}, "", kAskA + std::string("\r\n") + kAskB + "\r\n0 File(s) copied\r\n", "old a", "old b"},
    OverwriteRow{"YesThenNo", {}, "y\nn\n", kAskA + std::string("y\r\nL/a.txt\r\n") + kAskB + "n\r\n1 File(s) copied\r\n", "alpha", "old b"},
    OverwriteRow{"AllStopsAsking", {}, "All\r\n", kAskA + std::string("All\r\nL/a.txt\r\nL/b.log\r\n2 File(s) copied\r\n"), "alpha", "beta"},
    OverwriteRow{"YesSwitch", {"/y"}, "", "L/a.txt\r\nL/b.log\r\n2 File(s) copied\r\n", "alpha", "beta"},
    OverwriteRow{"QuietAndYes", {"/q", "/y"}, "", "2 File(s) copied\r\n", "alpha", "beta"},
    OverwriteRow{"ListOnlyCopiesNothing", {"/l"}, "", "L/a.txt\r\nL/b.log\r\n2 File(s)\r\n", "old a", "old b"},
    // A later /-y wins over an earlier /y.
    OverwriteRow{"PromptSwitchWins", {"/y", "/-y"}, "n\nn\n", kAskA + std::string("n\r\n") + kAskB + "n\r\n0 File(s) copied\r\n", "old a", "old b"}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(Xcopy, CopycmdCanSayYes) {
    m_dir.write("R/a.txt", "old a");
    setenv("COPYCMD", "/Y", 1);
    auto r = run({"L/a.txt", "R"});
    unsetenv("COPYCMD");
    EXPECT_EQ(r.out, "L/a.txt\r\n1 File(s) copied\r\n");
}

TEST_F(Xcopy, NewerOnlyAndSinceDate) {
    m_dir.write("R/a.txt", "old a");
    m_dir.write("R/b.log", "old b");
    m_dir.write("L/same.txt", "same time");
    m_dir.write("R/same.txt", "same time");
    pvtest::setMTime(m_dir / "L/a.txt", kNew);
    pvtest::setMTime(m_dir / "R/a.txt", kOld);
    pvtest::setMTime(m_dir / "L/b.log", kOld);
    pvtest::setMTime(m_dir / "R/b.log", kNew);
    // Equal times are not newer.
    pvtest::setMTime(m_dir / "L/same.txt", kOld);
    pvtest::setMTime(m_dir / "R/same.txt", kOld);
    auto r = run({"/d", "/y", "L/*.*", "R"});
    EXPECT_EQ(r.out, "L/a.txt\r\n1 File(s) copied\r\n");
    setenv("TZ", "UTC", 1);
    r = run({"/d:01-01-2010", "/l", "L/*.*", "R"});
    EXPECT_EQ(r.out, "L/a.txt\r\n1 File(s)\r\n");
}

TEST_F(Xcopy, OnlyExistingWithU) {
    m_dir.write("R/b.log", "old b");
    auto r = run({"/u", "/y", "L/*.*", "R"});
    EXPECT_EQ(r.out, "L/b.log\r\n1 File(s) copied\r\n");
}

TEST_F(Xcopy, ReadOnlyTargetNeedsR) {
    m_dir.write("R/a.txt", "old a");
    fs::permissions(m_dir / "R/a.txt", fs::perms::owner_write, fs::perm_options::remove);
    auto r = run({"/y", "L/a.txt", "R"});
    EXPECT_EQ(r.err, "Access denied\r\n");
    EXPECT_EQ(r.code, 5);
    EXPECT_EQ(read("R/a.txt"), "old a");
    r = run({"/y", "/r", "L/a.txt", "R"});
    EXPECT_EQ(read("R/a.txt"), "alpha");
    EXPECT_TRUE((fs::status(m_dir / "R/a.txt").permissions() & fs::perms::owner_write) !=
                fs::perms::none);
}

TEST_F(Xcopy, ReadOnlySourceGivesWritableCopyUnlessK) {
    fs::permissions(m_dir / "L/a.txt", fs::perms::owner_write, fs::perm_options::remove);
    run({"L/a.txt", "R"});
    run({"/k", "L/a.txt", "K/"});
    EXPECT_NE(fs::status(m_dir / "R/a.txt").permissions() & fs::perms::owner_write,
              fs::perms::none);
    EXPECT_EQ(fs::status(m_dir / "K/a.txt").permissions() & fs::perms::owner_write,
              fs::perms::none);
}

TEST_F(Xcopy, ContinueOnErrors) {
    m_dir.mkdir("R/a.txt"); // a directory where a file should go
    auto r = run({"/y", "L/*.*", "R"});
    EXPECT_EQ(r.out, "0 File(s) copied\r\n");
    EXPECT_EQ(r.code, 5);
    r = run({"/y", "/c", "L/*.*", "R"});
    EXPECT_EQ(r.out, "L/b.log\r\n1 File(s) copied\r\n");
}

// An unreadable subdirectory is reported where the walk meets it; without /c
// the copy stops there, with /c it goes on; either way the exit code says so.
TEST_F(Xcopy, UnreadableSubdirectoryIsReportedAndFailsTheCopy) {
    m_dir.write("U/a.txt", "a");
    m_dir.write("U/locked/x.txt", "x");
    m_dir.write("U/z/y.txt", "y");
    pvtest::handToUnprivileged(m_dir.path());
    fs::permissions(m_dir / "U/locked", fs::perms::owner_read, fs::perm_options::remove);
    struct Row {
        pvcmd::ToolArgs args;
        std::string out;
    };
    const Row rows[] = {
        {{"U", "D1", "/s", "/e", "/i"}, "U/a.txt\r\n1 File(s) copied\r\n"},
        {{"U", "D2", "/s", "/e", "/i", "/c"}, "U/a.txt\r\nU/z/y.txt\r\n2 File(s) copied\r\n"},
    };
    for (const Row& row : rows) {
        int code = pvtest::runUnprivileged([&] {
            auto r = run(row.args);
            return r.out == row.out && r.err == "Access denied - U/locked\r\n" ? r.code : 99;
        });
        EXPECT_EQ(code, 5) << row.args[1];
    }
    fs::permissions(m_dir / "U/locked", fs::perms::owner_read, fs::perm_options::add);
}

// A file whose path is longer than the system takes is listed, tried and
// reported as the tool reports it; the files beside it are copied.
TEST_F(Xcopy, PathOverTheSystemLimitIsReported) {
    m_dir.write("P/a.txt", "a");
    const std::string top = fs::current_path();
    ASSERT_EQ(::chdir((m_dir / "P").c_str()), 0);
    const std::string name(200, 'd');
    int depth = 0;
    for (; depth < 20; ++depth)
        ASSERT_TRUE(::mkdir(name.c_str(), 0755) == 0 && ::chdir(name.c_str()) == 0);
    std::ofstream(std::string(150, 'f')) << "deep";
    ASSERT_EQ(::chdir(top.c_str()), 0);
    auto r = run({"P", "D", "/s", "/i", "/c", "/q"});
    EXPECT_EQ(r.out, "1 File(s) copied\r\n");
    EXPECT_EQ(r.err, "Insufficient memory\r\n");
    EXPECT_EQ(r.code, 4);
    EXPECT_TRUE(exists("D/a.txt"));
    // The tree is deeper than a path can name: taken apart step by step.
    ASSERT_EQ(::chdir((m_dir / "P").c_str()), 0);
    for (int i = 0; i < depth; ++i)
        ASSERT_EQ(::chdir(name.c_str()), 0);
    ::unlink(std::string(150, 'f').c_str());
    for (; depth > 0; --depth)
        ASSERT_TRUE(::chdir("..") == 0 && ::rmdir(name.c_str()) == 0);
    ASSERT_EQ(::chdir(top.c_str()), 0);
}

} // namespace
