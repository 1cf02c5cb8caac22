#include "platform/drives.h"
#include "platform/programdir.h"
#include "support/envguard.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <cstdlib>

using pvtest::EnvGuard;

TEST(ProgramDirectory, HomeVariableWinsIsCreatedAndLosesTrailingSeparator) {
    pvtest::TempDir dir;
    EnvGuard env("PAIRVIEW_HOME", dir / "home/");
    EXPECT_EQ(pv::resolveProgramDirectory(), dir / "home");
    EXPECT_TRUE(std::filesystem::is_directory(dir / "home"));
}

// The program directory is made current at start; a relative name must not move
// every working file one level deeper afterwards.
TEST(ProgramDirectory, RelativeHomeVariableBecomesAbsolute) {
    pvtest::TempDir dir;
    const auto oldCwd = std::filesystem::current_path();
    std::filesystem::current_path(dir.str());
    EnvGuard env("PAIRVIEW_HOME", "./rel/../pvhome/");
    const std::string resolved = pv::resolveProgramDirectory();
    std::filesystem::current_path(oldCwd);
    EXPECT_EQ(resolved, dir / "pvhome");
    EXPECT_TRUE(std::filesystem::is_directory(dir / "pvhome"));
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
