#include "settings/itemlist.h"
#include "settings/settings.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"
#include "support/unprivileged.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

using pv::Settings;

TEST(Settings, MissingFileReadsDefaultsAndFirstWriteCreatesIt) {
    pvtest::TempDir dir;
    Settings s(dir / "Pairview.ini");
    EXPECT_EQ(s.GetIniValue("APPLICATION", "EDITOR", "Write.exe"), "Write.exe");
    EXPECT_TRUE(s.write("APPLICATION", "EDITOR", "Write.exe"));
    EXPECT_EQ(pvtest::readFile(dir / "Pairview.ini"), "[APPLICATION]\r\nEDITOR=Write.exe\r\n");
}

TEST(Settings, ReadersDifferOnShortValuesAndReturnDefaultUntrimmed) {
    pvtest::TempDir dir;
    Settings s(dir.write("p.ini", "[A]\nONE=x\nPAD=  Notepad.exe  \nBLANK=   \n"));
    EXPECT_EQ(s.GetIniValue("A", "ONE", "d"), "x");
    EXPECT_EQ(s.GetIniValueMin2("A", "ONE", "d"), "d");
    EXPECT_EQ(s.GetIniValue("A", "PAD", ""), "Notepad.exe");
    EXPECT_EQ(s.GetIniValueMin2("A", "PAD", ""), "Notepad.exe");
    EXPECT_EQ(s.GetIniValue("A", "BLANK", " d "), " d ");
}

// A value of one non-ASCII letter is one character, though two bytes long.
TEST(Settings, ShortValueCountsCharactersNotBytes) {
    pvtest::TempDir dir;
    Settings s(dir.write("p.ini", "[A]\nONE=\xc3\xa9\nTWO=\xc3\xa9\xc3\xa9\n"));
    EXPECT_EQ(s.GetIniValueMin2("A", "ONE", "d"), "d");
    EXPECT_EQ(s.GetIniValue("A", "ONE", "d"), "\xc3\xa9");
    EXPECT_EQ(s.GetIniValueMin2("A", "TWO", "d"), "\xc3\xa9\xc3\xa9");
}

// The first failed write of a run is shown, naming the file and the reason; the
// later ones go to the error output, not a message box at every click.
TEST(Settings, FailedWritesAreShownOnceThenGoToTheErrorOutput) {
    pvtest::TempDir dir;
    pvtest::RecordingPrompter prompter;
    Settings::startRun();
    Settings s(dir / "missing-dir/p.ini");
    EXPECT_FALSE(s.write("A", "K", "v"));
    ASSERT_EQ(prompter.messages.size(), 1u);
    EXPECT_EQ(prompter.messages[0], "The settings file " + (dir / "missing-dir/p.ini") +
                                        " could not be written; the change is not saved.\r\n"
                                        "No such file or directory");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(s.write("A", "K", "w"));
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(prompter.messages.size(), 1u);
    EXPECT_NE(err.find(dir / "missing-dir/p.ini"), std::string::npos) << err;
    EXPECT_EQ(s.GetIniValue("A", "K", "d"), "d");
}

// Two programs writing one settings file at once keep each other's changes, and
// a temporary file that a killed write left is removed; other files stay.
TEST(Settings, ConcurrentWritersLoseNothingAndStaleTemporariesGo) {
    pvtest::TempDir dir;
    dir.write("p.ini.new-Ab12cD", "[A]\r\nHALF");
    dir.write("p.ini.backup", "kept");
    const std::string path = dir / "p.ini";
    constexpr int kWrites = 150;
    pid_t children[2];
    for (int c = 0; c < 2; ++c) {
        children[c] = ::fork();
        if (children[c] == 0) {
            Settings s(path);
            for (int n = 0; n < kWrites; ++n)
                s.write("W" + std::to_string(c), "K" + std::to_string(n), "v");
            ::_exit(0);
        }
    }
    for (pid_t child : children)
        ::waitpid(child, nullptr, 0);
    Settings s(path);
    int missing = 0;
    for (int c = 0; c < 2; ++c)
        for (int n = 0; n < kWrites; ++n)
            missing += s.read("W" + std::to_string(c), "K" + std::to_string(n)).empty();
    EXPECT_EQ(missing, 0);
    EXPECT_FALSE(std::filesystem::exists(dir / "p.ini.new-Ab12cD"));
    EXPECT_EQ(pvtest::readFile(dir / "p.ini.backup"), "kept");
}

// A settings file kept elsewhere and linked in stays linked after a write.
TEST(Settings, WriteThroughALinkKeepsTheLink) {
    pvtest::TempDir dir;
    const std::string real = dir.write("store/real.ini", "[A]\r\nK=old\r\n");
    const std::string link = dir / "Pairview.ini";
    std::filesystem::create_symlink(real, link);
    Settings s(link);
    EXPECT_TRUE(s.write("A", "K", "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(pvtest::readFile(real), "[A]\r\nK=new\r\n");
    EXPECT_EQ(s.GetIniValue("A", "K", ""), "new");
}

// A settings file that exists but cannot be read is never replaced: the run
// goes on with the defaults and says so once.
TEST(Settings, UnreadableFileIsReportedOnceAndNeverWritten) {
    pvtest::TempDir dir;
    const std::string path = dir.write("Pairview.ini", "[APPLICATION]\r\nEDITOR=mine\r\n");
    pvtest::handToUnprivileged(dir.path());
    std::filesystem::permissions(path, std::filesystem::perms::none);
    int code = pvtest::runUnprivileged([&] {
        pvtest::RecordingPrompter prompter;
        Settings::startRun();
        Settings s(path);
        if (s.GetIniValue("APPLICATION", "EDITOR", "Write.exe") != "Write.exe")
            return 1;
        if (s.write("APPLICATION", "EDITOR", "Write.exe") || s.write("A", "K", "v"))
            return 2;
        if (prompter.messages != std::vector<std::string>{"Cannot read the settings file " + path +
                                                          ": Permission denied. Settings will "
                                                          "not be saved in this run."})
            return 3;
        return 0;
    });
    EXPECT_EQ(code, 0);
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    EXPECT_EQ(pvtest::readFile(path), "[APPLICATION]\r\nEDITOR=mine\r\n");
}

TEST(Settings, ForeignFileIsReportedOnceAndNeverWritten) {
    using namespace std::string_literals;
    pvtest::TempDir dir;
    pvtest::RecordingPrompter prompter;
    Settings::startRun();
    const std::string junk = "\177ELF\x02\x01\x01\0\0[A]\nK=v\n"s;
    Settings s(dir.write("junk.ini", junk));
    EXPECT_EQ(s.GetIniValue("A", "K", "d"), "d");
    EXPECT_FALSE(s.write("A", "K", "w"));
    EXPECT_EQ(pvtest::readFile(s.path()), junk);
    ASSERT_EQ(prompter.messages.size(), 1u);
    EXPECT_EQ(prompter.messages[0],
              "Cannot read the settings file " + s.path() +
                  ": it is not a text file (NUL bytes: UTF-16 text needs a "
                  "byte-order mark). Settings will not be saved in this run.");
}

TEST(Settings, Utf16FileIsReadAndWrittenBackAsUtf16) {
    using namespace std::string_literals;
    pvtest::TempDir dir;
    Settings s(dir.write("u.ini", "\xFF\xFE[\0A\0]\0\r\0\n\0K\0=\0\xe9\0\r\0\n\0"s));
    EXPECT_EQ(s.read("A", "K"), "\xc3\xa9");
    EXPECT_TRUE(s.write("A", "L", "x"));
    EXPECT_EQ(pvtest::readFile(s.path()),
              "\xFF\xFE[\0A\0]\0\r\0\n\0K\0=\0\xe9\0\r\0\n\0L\0=\0x\0\r\0\n\0"s);
}

// A key made from a file name cannot smuggle a section and key into the file.
TEST(Settings, KeyThatWouldAddLinesIsRefusedAndNothingWritten) {
    pvtest::TempDir dir;
    pvtest::RecordingPrompter prompter;
    Settings::startRun();
    Settings s(dir.write("p.ini", "[SHELLSCRIPTS]\r\n"));
    EXPECT_FALSE(s.write("SHELLSCRIPTS", "\"/x/a\n[COMPARECONTROL]\nFC_LB=>victim.txt ^\"", "p"));
    EXPECT_EQ(pvtest::readFile(s.path()), "[SHELLSCRIPTS]\r\n");
    ASSERT_EQ(prompter.messages.size(), 1u);
    EXPECT_NE(prompter.messages[0].find("the key holds a line break"), std::string::npos)
        << prompter.messages[0];
}

TEST(Settings, SwitchAndYesNoReaders) {
    EXPECT_TRUE(pv::IniBool("TRUE"));
    EXPECT_TRUE(pv::IniBool("true"));
    EXPECT_FALSE(pv::IniBool("1"));
    EXPECT_FALSE(pv::IniBool("Yes"));
    EXPECT_FALSE(pv::IniBool(""));
    EXPECT_FALSE(pv::IniYes("no"));
    EXPECT_TRUE(pv::IniYes("1"));
    EXPECT_TRUE(pv::IniYes("YES"));
}

TEST(ItemList, GapEndsReadButNotFixedScan) {
    pvtest::TempDir dir;
    Settings s(dir.write("p.ini", "[FAVORITES]\nITEM0=/a\nITEM1=\nITEM2=/c\n"));
    EXPECT_EQ(pv::readItemList(s, "FAVORITES"), std::vector<std::string>{"/a"});
    auto scan = pv::scanItems(s, "FAVORITES", 0, 3);
    ASSERT_EQ(scan.size(), 4u);
    EXPECT_EQ(scan[0], "/a");
    EXPECT_FALSE(scan[1]);
    EXPECT_EQ(scan[2], "/c");
    EXPECT_FALSE(scan[3]);
    EXPECT_EQ(pv::firstFreeItem(s, "FAVORITES"), 1);
}

TEST(ItemList, DeleteRenumbersAndEmptiesOldEnd) {
    pvtest::TempDir dir;
    Settings s(dir.write("p.ini", "[L]\nITEM0=A\nITEM1=B\nITEM2=C\n"));
    pv::deleteItem(s, "L", pv::readItemList(s, "L"), 1);
    EXPECT_EQ(pvtest::readFile(s.path()), "[L]\r\nITEM0=A\r\nITEM1=C\r\nITEM2=\r\n");
    EXPECT_EQ(pv::readItemList(s, "L"), (std::vector<std::string>{"A", "C"}));
}
