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

// The quickest way, and each fallback forced: every one gives the same files.
class FileCopyWays : public ::testing::TestWithParam<Way> {};

TEST_P(FileCopyWays, NewAndReplacedFilesAreWholeWithTimeAndMode) {
    const Way& way = GetParam();
    pvtest::TempDir dir;
    const std::string big(300000, 'b');
    std::string src = dir.write("src/big.dat", big);
    std::string empty = dir.write("src/empty.dat", "");
    ::chmod(src.c_str(), 0444);
    pvtest::setMTime(src, 1101812700);
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
        struct stat from {
        }, to{};
        ::stat(c.from.c_str(), &from);
        ::stat(c.to.c_str(), &to);
        EXPECT_EQ(pvtest::readFile(c.to), pvtest::readFile(c.from));
        EXPECT_EQ(to.st_mtim.tv_sec, from.st_mtim.tv_sec);
        EXPECT_EQ(to.st_mode & 07777, c.keepMode ? 0444u : 0644u);
    }
    // A way switched off is not used; the nameless file is, where it works.
    if (!way.methods.anonymousTemp || namelessFilesWork(dir / "dst")) {
        EXPECT_EQ(copier.usedNamedTemp(), !way.methods.anonymousTemp);
    }
    if (!way.methods.kernelCopy) {
        EXPECT_TRUE(copier.usedReadWrite());
    }
    // Nothing but the copies is left behind.
    int entries = 0;
    for (const auto& e : fs::directory_iterator(dir / "dst")) {
        (void)e;
        ++entries;
    }
    EXPECT_EQ(entries, 3);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, FileCopyWays,
    ::testing::Values(Way{"Quickest", {true, true}}, Way{"NamedTemp", {false, true}},
                      Way{"ReadWrite", {true, false}}, Way{"NamedTempReadWrite", {false, false}}),
    [](const ::testing::TestParamInfo<Way>& info) { return std::string(info.param.name); });

} // namespace
