#include "pvcmdtestutil.h"
#include "support/unprivileged.h"

#include "pvcmd/dirformat.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

using pvcmd::DirFormat;

namespace {

// Times of the crafted tree (UTC).
constexpr long long kAlpha = 1651641420;  // 05/04/2022 05:17 AM
constexpr long long kBeta = 1101812700;   // 11/30/2004 11:05 AM
constexpr long long kSub = 1568985480;    // 09/20/2019 01:18 PM
constexpr long long kTop = 1609545600;    // 01/02/2021 12:00 AM
constexpr long long kInner = 1592224200;  // 06/15/2020 12:30 PM
constexpr long long kHidden = 1677887940; // 03/03/2023 11:59 PM

std::string golden(const std::string& name) {
    return pvtest::readFile(std::string(PV_TEST_DATA_DIR) + "/golden/" + name);
}

class DirListing : public ::testing::Test {
  protected:
    void SetUp() override {
        setenv("TZ", "UTC", 1);
        tzset();
        struct File {
            const char* name;
            std::string bytes;
            long long time;
        };
        for (const File& f :
             {File{"alpha.txt", std::string(12345, 'a'), kAlpha}, File{"Beta.log", "", kBeta},
              File{".hid", "abc", kHidden}, File{"sub/c.txt", "c", kBeta},
              File{"sub/inner.txt", std::string(1000, 'i'), kInner}})
            pvtest::setMTime(m_dir.write(std::string("top/") + f.name, f.bytes), f.time);
        pvtest::setMTime(m_dir / "top/sub", kSub);
        pvtest::setMTime(m_dir / "top", kTop);
        pvtest::setMTime(m_dir.str(), kTop);
    }

    // Output with the machine-dependent parts replaced: volume lines, the temporary
    // directory, the free space. Checks the CR LF line ends and drops the CRs.
    std::string normalised(const std::string& out) const {
        EXPECT_EQ(std::count(out.begin(), out.end(), '\r'),
                  std::count(out.begin(), out.end(), '\n'))
            << "every line ends in CR LF";
        std::string text = std::regex_replace(out, std::regex("\r\n"), "\n");
        text =
            std::regex_replace(text, std::regex("^ Volume in drive \\S+ (has no label\\.|is .+)\n"),
                               " Volume in drive VOLUME has no label.\n");
        text = std::regex_replace(text,
                                  std::regex(" Volume Serial Number is [0-9A-F]{4}-[0-9A-F]{4}\n"),
                                  " Volume Serial Number is XXXX-XXXX\n");
        text = std::regex_replace(text, std::regex(" Dir\\(s\\) +[0-9,]+ bytes free"),
                                  " Dir(s)  FREE bytes free");
        size_t pos;
        while ((pos = text.find(m_dir.str())) != std::string::npos)
            text.replace(pos, m_dir.str().size(), "ROOT");
        return text;
    }

    pvcmdtest::ToolResult run(pvcmd::ToolArgs args, const std::string& where = "top") {
        return pvcmdtest::runTool(pvcmd::dirMain, m_dir / where, args);
    }

    pvtest::TempDir m_dir;
};

TEST_F(DirListing, LayoutsMatchTheirGoldenFiles) {
    EXPECT_EQ(normalised(run({}).out), golden("tools-dir-default.txt"));
    EXPECT_EQ(normalised(run({"/s", "*.txt"}).out), golden("tools-dir-s.txt"));
    for (int i = 0; i < 9; ++i)
        m_dir.write("top/file" + std::to_string(i) + ".dat", "x");
    EXPECT_EQ(normalised(run({"/w"}).out), golden("tools-dir-w.txt"));
    EXPECT_EQ(normalised(run({"/d"}).out), golden("tools-dir-d.txt"));
}

// A link counts as a file or directory of its own, without its target's size.
TEST_F(DirListing, LinksCountWithoutTheirTargetsSize) {
    std::filesystem::create_symlink("alpha.txt", m_dir / "top/link.txt");
    std::filesystem::create_directory_symlink("sub", m_dir / "top/dlink");
    std::string out = normalised(run({}).out);
    EXPECT_NE(out.find("               3 File(s)         12,345 bytes\n"), std::string::npos)
        << out;
    EXPECT_NE(out.find("               4 Dir(s)  FREE bytes free\n"), std::string::npos) << out;
}

// Each row lists only the entry lines (between the blank lines) of one run in "top".
struct EntryRow {
    const char* name;
    pvcmd::ToolArgs args;
    std::vector<std::string> names; // the names, in order, as the last column shows them
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const EntryRow& row, std::ostream* os) {
    *os << row.name;
}

class DirEntries : public DirListing, public ::testing::WithParamInterface<EntryRow> {};

TEST_P(DirEntries, ListsTheseNamesInOrder) {
    // Entry lines start with the date; the name is their last column.
    const std::string out = run(GetParam().args).out;
    const std::regex entry("(^|\n)\\d\\d/\\d\\d/\\d{4}  [^\r]* ([^ \r]+)\r");
    std::vector<std::string> names;
    for (std::sregex_iterator it(out.begin(), out.end(), entry), end; it != end; ++it)
        names.push_back((*it)[2]);
    EXPECT_EQ(names, GetParam().names);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Switches, DirEntries, ::testing::Values(
    EntryRow{"DefaultHidesDotFiles", {}, {".", "..", "alpha.txt", "Beta.log", "sub"}},
    EntryRow{"AllAttributes", {"/a"}, {".", "..", ".hid", "alpha.txt", "Beta.log", "sub"}},
    EntryRow{"OnlyDirectories", {"/a:d"}, {".", "..", "sub"}},
    EntryRow{"NoDirectoriesShowsHidden", {"/a-d"}, {".hid", "alpha.txt", "Beta.log"}},
    EntryRow{"OnlyHidden", {"/ah"}, {".hid"}},
    EntryRow{"NeverSystem", {"/a:s"}, {}},
    EntryRow{"FilesNotHidden", {"/a:-d-h"}, {"alpha.txt", "Beta.log"}},
    EntryRow{"OrderAloneGroupsDirectories", {"/o"}, {".", "..", "sub", "alpha.txt", "Beta.log"}},
    EntryRow{"BySizeReversed", {"/o:-s"}, {".", "..", "alpha.txt", "Beta.log", "sub"}},
    EntryRow{"ByDate", {"/od"}, {".", "..", "Beta.log", "sub", "alpha.txt"}},
    // Independent time toggles can give several letters: the last one decides.
    EntryRow{"SeveralTimeFields", {"/o:d/t:aw"}, {".", "..", "Beta.log", "sub", "alpha.txt"}},
    EntryRow{"ByExtensionThenName", {"/o:en"}, {".", "..", "sub", "Beta.log", "alpha.txt"}},
    EntryRow{"LowerCase", {"/l", "b*"}, {"beta.log"}},
    // Concatenated switches as the find-file script writes them.
    EntryRow{"ConcatenatedSwitches", {"/a:-d/o:-n/l"}, {"beta.log", "alpha.txt", ".hid"}},
    EntryRow{"MaskWithDirectory", {"sub/*.txt"}, {"c.txt", "inner.txt"}},
    EntryRow{"NamedDirectory", {"sub"}, {".", "..", "c.txt", "inner.txt"}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(DirListing, BareNamesAndFullPathsWithS) {
    EXPECT_EQ(run({"/b"}).out, "alpha.txt\r\nBeta.log\r\nsub\r\n");
    auto r = run({"/b", "/s", "*.txt"});
    std::string root = m_dir / "top";
    EXPECT_EQ(r.out,
              root + "/alpha.txt\r\n" + root + "/sub/c.txt\r\n" + root + "/sub/inner.txt\r\n");
}

TEST_F(DirListing, EntryColumnsWithoutSeparatorsOwnerShortNameAndTimeField) {
    auto r = run({"/-c", "/q", "/x", "alpha.txt"});
    std::string out = normalised(r.out);
    EXPECT_NE(out.find("05/04/2022  05:17 AM             12345              "), std::string::npos)
        << out;
    EXPECT_NE(out.find("               1 File(s)          12345 bytes\n"), std::string::npos)
        << out;
    EXPECT_EQ(out.substr(out.find("12345") + 5 + 1 + 12 + 1 + 23, 9), "alpha.txt") << out;
}

TEST_F(DirListing, ErrorsAndHelp) {
    auto r = run({"*.none"});
    EXPECT_EQ(r.err, "File Not Found\r\n");
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(normalised(r.out).find(" Directory of ROOT/top\n"), std::string::npos);
    EXPECT_EQ(normalised(r.out).find("File(s)"), std::string::npos);
    r = run({"nodir/*.txt"});
    EXPECT_EQ(r.err, "The system cannot find the path specified.\r\n");
    EXPECT_EQ(r.code, 1);
    r = run({"/z"});
    EXPECT_EQ(r.err, "Invalid switch - \"z\".\r\n");
    EXPECT_EQ(r.out, "");
    r = run({"/?"});
    EXPECT_EQ(r.out.substr(0, 61),
              "Displays a list of files and subdirectories in a directory.\r\n");
    EXPECT_EQ(r.code, 0);
}

// Wider numbers widen the field instead of being cut.
TEST(DirFormatLines, WideNumbersWidenTheField) {
    EXPECT_EQ(DirFormat::dirsLine(5, 1234567890123456ULL, false),
              "               5 Dir(s)  1234567890123456 bytes free");
}

TEST(DirAccess, UnreadableDirectoryIsReported) {
    pvtest::TempDir dir;
    dir.write("locked/x.txt", "x");
    pvtest::handToUnprivileged(dir.path());
    std::filesystem::permissions(dir / "locked", std::filesystem::perms::owner_read,
                                 std::filesystem::perm_options::remove);
    int code = pvtest::runUnprivileged([&] {
        auto r = pvcmdtest::runTool(pvcmd::dirMain, dir.str(), {"locked"});
        return r.err == "Access is denied.\r\n" && r.code == 1 ? 0 : 1;
    });
    EXPECT_EQ(code, 0);
}

// With /s a directory that cannot be read, and entries that cannot be (a
// directory without search permission), are reported and fail the listing.
TEST(DirAccess, SubdirectoriesAndEntriesThatCannotBeListedAreReported) {
    pvtest::TempDir dir;
    dir.write("top/a.txt", "a");
    dir.write("top/locked/x.txt", "x");
    dir.write("top/noexec/y.txt", "y");
    pvtest::handToUnprivileged(dir.path());
    namespace fs = std::filesystem;
    fs::permissions(dir / "top/locked", fs::perms::owner_read, fs::perm_options::remove);
    fs::permissions(dir / "top/noexec", fs::perms::owner_exec, fs::perm_options::remove);
    int code = pvtest::runUnprivileged([&] {
        auto r = pvcmdtest::runTool(pvcmd::dirMain, dir.str(), {"/s", "/b", "top"});
        bool listed = r.out.find("/top/a.txt\r\n") != std::string::npos;
        return listed && r.code == 1 &&
                       r.err == "Access is denied.\r\n"
                                "Cannot list top/noexec/y.txt: Access is denied.\r\n"
                   ? 0
                   : 1;
    });
    fs::permissions(dir / "top/noexec", fs::perms::owner_exec, fs::perm_options::add);
    fs::permissions(dir / "top/locked", fs::perms::owner_read, fs::perm_options::add);
    EXPECT_EQ(code, 0);
}

} // namespace
