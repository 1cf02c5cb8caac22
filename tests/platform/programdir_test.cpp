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

// A copy cut short by a full disk, or left from an older version, is replaced by
// the shipped file; a copy that is already right is left alone.
TEST(ProgramDirectory, ShippedFilesReplaceCopiesThatDiffer) {
    pvtest::TempDir dir;
    dir.write("ship/CompareSelectedFile.cmd", "@echo off\r\nfc %1 %2\r\n");
    dir.write("home/CompareSelectedFile.cmd", "");
    pv::installShippedFiles(dir / "ship", dir / "home");
    EXPECT_EQ(pvtest::readFile(dir / "home/CompareSelectedFile.cmd"), "@echo off\r\nfc %1 %2\r\n");
    pv::installShippedFiles(dir / "ship", dir / "fresh");
    EXPECT_FALSE(std::filesystem::exists(dir / "fresh/CompareSelectedFile.cmd"))
        << "a missing directory gets nothing";
    std::filesystem::create_directory(dir / "fresh");
    pv::installShippedFiles(dir / "ship", dir / "fresh");
    EXPECT_EQ(pvtest::readFile(dir / "fresh/CompareSelectedFile.cmd"), "@echo off\r\nfc %1 %2\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir / "fresh"),
                            std::filesystem::directory_iterator()),
              1)
        << "no temporary file stays behind";
}
