#include "platform/drives.h"
#include "platform/programdir.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

// Sets an environment variable for the scope of a test.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const std::string& value) : m_name(name) {
        if (const char* old = std::getenv(name))
            m_old = old;
        ::setenv(name, value.c_str(), 1);
    }
    ~ScopedEnv() {
        if (m_old)
            ::setenv(m_name, m_old->c_str(), 1);
        else
            ::unsetenv(m_name);
    }

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

} // namespace

TEST(ProgramDirectory, HomeVariableWinsIsCreatedAndLosesTrailingSeparator) {
    pvtest::TempDir dir;
    ScopedEnv env("PAIRVIEW_HOME", dir / "home/");
    EXPECT_EQ(pv::resolveProgramDirectory(), dir / "home");
    EXPECT_TRUE(std::filesystem::is_directory(dir / "home"));
}

TEST(ProgramDirectory, ExecutableDirectoryHasNoTrailingSeparator) {
    std::string exe = pv::executableDirectory();
    ASSERT_FALSE(exe.empty());
    EXPECT_NE(exe.back(), '/');
    EXPECT_TRUE(std::filesystem::exists(exe + "/test_platform"));
}

TEST(Drives, RootFirstAndPathsMapToLongestMountPoint) {
    auto drives = pv::mountedDrives();
    ASSERT_FALSE(drives.empty());
    EXPECT_EQ(drives.front(), "/");
    std::vector<std::string> fake{"/", "/media/usb", "/media/usb2"};
    EXPECT_EQ(pv::driveOfPath("/media/usb2/x", fake), "/media/usb2");
    EXPECT_EQ(pv::driveOfPath("/media/usb", fake), "/media/usb");
    EXPECT_EQ(pv::driveOfPath("/media/usbx", fake), "/");
}
