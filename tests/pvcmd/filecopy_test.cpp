#include "platform/filecopy.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

struct Way {
    const char* name;
    pv::FileCopier::Methods methods;
};

bool namelessFilesWork(const std::string& dir) {
    int fd = ::open(dir.c_str(), O_TMPFILE | O_RDWR, 0600);
    if (fd >= 0)
        ::close(fd);
    return fd >= 0;
}

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const Way& row, std::ostream* os) {
    *os << row.name;
}

// The quickest way, and each fallback forced: every one gives the same files.
class FileCopyWays : public ::testing::TestWithParam<Way> {};

TEST_P(FileCopyWays, NewAndReplacedFilesAreWholeWithTimeAndMode) {
    const Way& way = GetParam();
    pvtest::TempDir dir;
    const std::string big(300000, 'b');
    std::string src = dir.write("src/big.dat", big);
    std::string empty = dir.write("src/empty.dat", "");
    for (const std::string& from : {src, empty}) {
        ::chmod(from.c_str(), 0444);
        pvtest::setMTime(from, 1101812700);
    }
    dir.write("dst/big.dat", "old contents");
    dir.mkdir("dst");

    pv::FileCopier copier(way.methods);
    struct Copy {
        std::string from, to;
        bool keepMode;
    } copies[] = {{src, dir / "dst/big.dat", false}, // replaces a file
                  {src, dir / "dst/new.dat", true},  // a new name
                  {empty, dir / "dst/empty.dat", false}};
    for (const Copy& c : copies) {
        SCOPED_TRACE(c.to);
        pv::FileCopyResult r = copier.copy(c.from, c.to, c.keepMode, true);
        ASSERT_TRUE(r.ok) << r.error;
        struct stat to {};
        ::stat(c.to.c_str(), &to);
        EXPECT_EQ(pvtest::readFile(c.to), pvtest::readFile(c.from));
        EXPECT_EQ(to.st_mtim.tv_sec, 1101812700);
        EXPECT_EQ(to.st_mode & 07777, c.keepMode ? 0444u : 0644u);
    }
    // A way switched off is not used; the nameless file is, where it works.
    EXPECT_TRUE(copier.usedNamedTemp() == !way.methods.anonymousTemp ||
                (way.methods.anonymousTemp && !namelessFilesWork(dir / "dst")));
    EXPECT_TRUE(way.methods.kernelCopy || copier.usedReadWrite());
    // Nothing but the copies is left behind.
    EXPECT_EQ(std::distance(fs::directory_iterator(dir / "dst"), fs::directory_iterator()), 3);
}

INSTANTIATE_TEST_SUITE_P(Ways, FileCopyWays,
                         ::testing::Values(Way{"Quickest", {true, true}},
                                           Way{"NamedTemp", {false, true}},
                                           Way{"ReadWrite", {true, false}},
                                           Way{"NamedTempReadWrite", {false, false}}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
