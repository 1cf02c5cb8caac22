// Runs the pvcompare program on real trees: output, files and exit status.

#include "support/temptree.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Result {
    int status = -1;
    std::string out;
};

std::string shellQuote(const std::string& s) {
    std::string q = "'";
    for (char c : s)
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

Result pvcompare(const std::string& home, const std::string& args) {
    std::string cmd = "PAIRVIEW_HOME=" + shellQuote(home) +
                      " PAIRVIEW_EDITOR=true PAIRVIEW_PVCMD=" +
                      shellQuote(std::string(PV_BINARY_DIR) + "/pvcmd") + " " +
                      shellQuote(std::string(PV_BINARY_DIR) + "/pvcompare") + " " + args + " 2>&1";
    Result r;
    FILE* p = ::popen(cmd.c_str(), "r");
    if (!p)
        return r;
    char buf[4096];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, p)) > 0)
        r.out.append(buf, n);
    int st = ::pclose(p);
    r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    return r;
}

class PvCompare : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(std::string(PV_BINARY_DIR) + "/pvcompare"))
            GTEST_SKIP() << "pvcompare is not built";
        home.write("Pairview.ini", "[COMPARECONTROL]\r\nLIST_Length=True\r\n");
    }
    pvtest::TempDir home, tree;
};

} // namespace

TEST_F(PvCompare, ExitStatusSaysWhetherEverythingMatched) {
    tree.write("l/same.txt", "abc");
    tree.write("r/same.txt", "xyz");
    tree.write("l/.hidden", "left only but hidden");
    const std::string ini = "-ini " + shellQuote(home / "Pairview.ini") + " ";
    EXPECT_EQ(
        pvcompare(home.str(), ini + shellQuote(tree / "l") + " " + shellQuote(tree / "r")).status,
        0);
    tree.write("r/same.txt", "longer");
    Result r = pvcompare(home.str(), ini + shellQuote(tree / "l") + " " + shellQuote(tree / "r/"));
    EXPECT_EQ(r.status, 1);
    // The engine's lines go to the output as they are; the statistics are its own test.
    EXPECT_NE(r.out.find("\n0 -different- 0  - 3  - 6 same.txt\n"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("\nend of Directory compare\t"), std::string::npos);
    // A trailing separator on a directory argument is dropped.
    EXPECT_NE(r.out.find("Directory 2: " + (tree / "r") + " \n"), std::string::npos);
}

TEST_F(PvCompare, SubDirectoriesPatternAndAppend) {
    tree.write("l/a.txt", "1");
    tree.write("l/a.log", "1");
    tree.write("r/a.txt", "1");
    tree.write("l/sub/b.txt", "1");
    tree.write("r/sub/b.txt", "1");
    home.write("Pairview.txt", "kept\r\n");
    std::string dirs = shellQuote(tree / "l") + " " + shellQuote(tree / "r");
    Result r = pvcompare(home.str(), "-s -p '*.TXT' --no-date --append " + dirs);
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_NE(r.out.find("Directory 1: " + (tree / "l/sub") + " \n"), std::string::npos);
    EXPECT_EQ(r.out.find("a.log"), std::string::npos);
    EXPECT_NE(r.out.find("end of subdirectory compare"), std::string::npos);
    EXPECT_EQ(pvtest::readFile(home / "Pairview.txt"), "kept\r\n");
    tree.mkdir("l/extra");
    EXPECT_EQ(pvcompare(home.str(), "-s -p '*.TXT' --no-date " + dirs).status, 1);
    std::filesystem::remove(tree / "l/extra");
    tree.mkdir("r/sub/new");
    // A directory only on the right also tells the trees apart.
    EXPECT_EQ(pvcompare(home.str(), "-s -p '*.TXT' --no-date " + dirs).status, 1);
}

// Without -ini, a changed time or length tells the trees apart; with -ini the file
// decides (here: length only); a flag overrides either.
TEST_F(PvCompare, TimeAndLengthAreOnWithoutASettingsFileAndFlagsOverride) {
    tree.write("l/a.txt", "abc");
    tree.write("r/a.txt", "xyz");
    namespace fs = std::filesystem;
    fs::last_write_time(tree / "r/a.txt",
                        fs::last_write_time(tree / "l/a.txt") - std::chrono::hours(1));
    const std::string dirs = shellQuote(tree / "l") + " " + shellQuote(tree / "r");
    const std::string ini = "-ini " + shellQuote(home / "Pairview.ini") + " ";
    struct Row {
        const char* args;
        int status;
    } rows[] = {{"", 1}, {"--no-date ", 0}, {"", 0}, {"--date ", 1}};
    for (int i = 0; i < 4; ++i) {
        const std::string args = (i >= 2 ? ini : "") + rows[i].args;
        EXPECT_EQ(pvcompare(home.str(), args + dirs).status, rows[i].status) << args;
    }
    tree.write("r/a.txt", "longer");
    fs::last_write_time(tree / "r/a.txt", fs::last_write_time(tree / "l/a.txt"));
    EXPECT_EQ(pvcompare(home.str(), "--no-length " + dirs).status, 0);
    EXPECT_EQ(pvcompare(home.str(), ini + "--no-length " + dirs).status, 0);
}

TEST_F(PvCompare, ErrorsGiveStatusTwo) {
    Result missing =
        pvcompare(home.str(), shellQuote(tree / "nope") + " " + shellQuote(tree.str()));
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.out.find("nope"), std::string::npos);
    EXPECT_EQ(pvcompare(home.str(), shellQuote(tree.str())).status, 2);
    EXPECT_EQ(pvcompare(home.str(), "--bogus a b").status, 2);
    Result help = pvcompare(home.str(), "--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("Exit status"), std::string::npos);
    EXPECT_EQ(pvcompare(home.str(), "--version").out.rfind("pvcompare ", 0), 0u);
}

// Names a script could misread (an ampersand, a percent sign, a trailing
// backslash, a blank) reach fc whole, and its reports reach the results file.
TEST_F(PvCompare, StartedScriptFillsTheResultsFileWithFcReports) {
    if (!std::filesystem::exists(std::string(PV_BINARY_DIR) + "/pvcmd"))
        GTEST_SKIP() << "pvcmd is not built";
    const std::vector<std::string> same = {"same", "q&calc", "100%PATH%.txt", "tail\\"};
    for (const std::string& name : same)
        for (const char* side : {"l/", "r/"})
            tree.write(side + name, "s\r\n");
    tree.write("l/x 100.txt", "a\r\nb\r\n");
    tree.write("r/x 100.txt", "a\r\nccc\r\n");
    Result r =
        pvcompare(home.str(), "--run " + shellQuote(tree / "l") + " " + shellQuote(tree / "r"));
    ASSERT_EQ(r.status, 1) << r.out;
    // --run waits for the script.
    std::string results = pvtest::readFile(home / "Pairview.txt");
    for (const std::string& name : same)
        EXPECT_NE(results.find("Comparing files " + (tree / "l/") + name + " and " + (tree / "r/") +
                               name + "\r\nFC: no differences encountered"),
                  std::string::npos)
            << name << "\n"
            << results;
    EXPECT_NE(results.find("***** " + (tree / "l/x 100.txt") + "\r\na\r\nb\r\n"), std::string::npos)
        << results;
}

// A results file that cannot take the reports (a full disk) fails the run: the
// error is shown and the status is 2, not the compare's 1.
TEST_F(PvCompare, ScriptThatLosesOutputFailsTheRun) {
    tree.write("l/a.txt", "1\r\n");
    tree.write("r/a.txt", "2\r\n");
    std::filesystem::create_directories(home.str());
    std::filesystem::create_symlink("/dev/full", home / "Pairview.txt");
    Result r = pvcompare(home.str(),
                         "--append --run " + shellQuote(tree / "l") + " " + shellQuote(tree / "r"));
    EXPECT_EQ(r.status, 2) << r.out;
    EXPECT_NE(r.out.find("Cannot write to " + (home / "Pairview.txt") +
                         ": There is not enough space on the disk."),
              std::string::npos)
        << r.out;
}

namespace {

// The lines of `out` that carry `tag`, each reduced to its file name (the last
// word).
std::vector<std::string> namesTagged(const std::string& out, const std::string& tag) {
    std::vector<std::string> names;
    size_t at = 0;
    while (at < out.size()) {
        size_t end = out.find('\n', at);
        std::string line = out.substr(at, end - at);
        if (line.find(tag) != std::string::npos)
            names.push_back(line.substr(line.rfind(' ') + 1));
        at = end == std::string::npos ? out.size() : end + 1;
    }
    return names;
}

} // namespace

TEST_F(PvCompare, ContentsFindSameLengthChangesInRealTrees) {
    const long long when = 1'700'000'000;
    auto pair = [&](const std::string& path, const std::string& left, const std::string& right) {
        pvtest::setMTime(tree.write("l/" + path, left), when);
        pvtest::setMTime(tree.write("r/" + path, right), when);
    };
    pair("same.txt", "unchanged", "unchanged");
    pair("package.json", "{\"version\": \"7.8.0\"}", "{\"version\": \"7.8.1\"}");
    pair("longer.txt", "short", "longer");
    pair("lib/deep.js", "a = 1", "a = 2");
    pair("lib/kept.js", "k", "k");
    pair("node_modules/x.js", "1", "2");
    const std::string dirs = shellQuote(tree / "l") + " " + shellQuote(tree / "r");

    Result content = pvcompare(home.str(), "-s --content --exclude=node_modules/ " + dirs);
    EXPECT_EQ(content.status, 1) << content.out;
    EXPECT_EQ(namesTagged(content.out, "-different-"),
              (std::vector<std::string>{"longer.txt", "package.json", "deep.js"}));
    EXPECT_EQ(namesTagged(content.out, "-matched-"),
              (std::vector<std::string>{"same.txt", "kept.js"}));

    Result quick = pvcompare(home.str(), "-s --no-content --exclude=node_modules/ " + dirs);
    EXPECT_EQ(quick.status, 1);
    EXPECT_EQ(namesTagged(quick.out, "-different-"), std::vector<std::string>{"longer.txt"});

    Result summary = pvcompare(home.str(), "-s --content --summary " + dirs);
    EXPECT_EQ(summary.out, "Total stats:\n"
                           " there were 3 directories compared\n"
                           " there were 2 files matched\n"
                           " there were 4 files different\n"
                           " there were 0 files in directory one only\n"
                           " there were 0 files in directory two only\n"
                           " there were 0 unmatched sub directories\n"
                           " there were 0 unreadable sub directories\n");
    EXPECT_EQ(summary.status, 1);

    // Every option has its line in the help.
    const std::string help = pvcompare(home.str(), "--help").out;
    for (const char* option : {"--ini FILE", "-s ", "-p PATTERN", "--exclude PATTERN",
                               "--[no-]date", "--[no-]length", "--[no-]content",
                               "--modify-window N", "--[no-]ignore-hour-shift", "--summary",
                               "--replace", "--append", "--run", "--version"})
        EXPECT_NE(help.find("\n  " + std::string(option)), std::string::npos) << option;
}

TEST_F(PvCompare, TimeToleranceFlags) {
    const long long when = 1'700'000'000;
    pvtest::setMTime(tree.write("l/moved.txt", "x"), when);
    pvtest::setMTime(tree.write("r/moved.txt", "x"), when + 3600 + 2);
    const std::string dirs = shellQuote(tree / "l") + " " + shellQuote(tree / "r");
    EXPECT_EQ(pvcompare(home.str(), dirs).status, 1);
    EXPECT_EQ(pvcompare(home.str(), "--ignore-hour-shift " + dirs).status, 1);
    EXPECT_EQ(pvcompare(home.str(), "--ignore-hour-shift --modify-window=2 " + dirs).status, 0);
    EXPECT_EQ(pvcompare(home.str(), "--modify-window=3602 " + dirs).status, 0);
    EXPECT_EQ(pvcompare(home.str(), "--modify-window=two " + dirs).status, 2);
}
