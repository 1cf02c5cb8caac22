#include "compare/compareoptions.h"
#include "compare/fileattributes.h"
#include "platform/filetimes.h"
#include "settings/settings.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <ctime>
#include <grp.h>
#include <random>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace pv;

namespace {
constexpr long long k20260507_090507 = 1778144707; // 2026-05-07 09:05:07 UTC
}

TEST(FileAttributes, TextBySwitches) {
    pvtest::TempDir dir;
    std::string path = dir.write("f.txt", std::string(1234, 'x'));
    pvtest::setMTime(path, k20260507_090507);
    struct Row {
        const char* name;
        bool dateTime, length;
        std::string expected;
    } rows[] = {
        {"both off", false, false, ""},
        {"date only", true, false, "2026\\05\\07 9:5:7"},
        {"length only", false, true, " - 1234"},
        {"both", true, true, "2026\\05\\07 9:5:7 - 1234"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(fileAttributeText(path, row.dateTime, row.length), row.expected);
        // Surrounding blanks of the path are removed.
        EXPECT_EQ(fileAttributeText("  " + path + " ", row.dateTime, row.length), row.expected);
    }
    EXPECT_EQ(fileAttributeText(dir.write("empty"), false, true), " - 0");
}

TEST(FileAttributes, FailureTexts) {
    pvtest::TempDir dir;
    std::string hidden = dir.write(".hidden", "x");
    std::string sub = dir.mkdir("sub");
    EXPECT_EQ(fileAttributeText(dir / "missing", true, true), "Can't find the file");
    EXPECT_EQ(fileAttributeText(hidden, false, false), "Can't find the file");
    EXPECT_EQ(fileAttributeText(sub, true, true), "Can't find the file");
    EXPECT_EQ(fileAttributeText("", true, true), "Can't find the file");
}

TEST(FileAttributes, DirectoryTextsAreThePathTextsFromOneStatEach) {
    pvtest::TempDir dir;
    pvtest::setMTime(dir.write("a.txt", "abc"), k20260507_090507);
    pvtest::setMTime(dir.write("trail", "12345"), 0);
    dir.write(".hidden", "x");
    dir.mkdir("sub");
    // Listed, then gone before the compare looks; a name whose trailing blank the
    // path text drops; a name with a separator goes the long way.
    const std::vector<std::string> names{"a.txt", "vanished", "trail ",      ".hidden",
                                         "sub",   "   ",      "sub/../a.txt"};
    for (bool dateTime : {false, true}) {
        std::vector<std::string> expected;
        for (const std::string& name : names)
            expected.push_back(fileAttributeText(dir / name, dateTime, true));
        EXPECT_EQ(directoryAttributeTexts(dir.str(), names, dateTime, true), expected);
    }
    EXPECT_EQ(directoryAttributeTexts(dir.str(), {"a.txt", "vanished", "trail "}, true, true),
              (std::vector<std::string>{"2026\\05\\07 9:5:7 - 3", "Can't find the file",
                                        "1970\\01\\01 0:0:0 - 5"}));
    // A directory that cannot be opened: every name is looked up by its path.
    EXPECT_EQ(directoryAttributeTexts(dir / "gone", {"a.txt"}, false, true),
              (std::vector<std::string>{"Can't find the file"}));
}

TEST(FileAttributes, UnreadableFileAsAnOrdinaryUser) {
    pvtest::TempDir dir;
    ::chmod(dir.str().c_str(), 0755);
    std::string locked = dir.write("locked", "x");
    std::string open = dir.write("open", "x");
    ::chmod(locked.c_str(), 0600);
    ::chmod(open.c_str(), 0644);
    auto check = [&] {
        return fileAttributeText(locked, false, false) == "Can't open the file" &&
               directoryAttributeTexts(dir.str(), {"locked", "open"}, false, true) ==
                   std::vector<std::string>{"Can't open the file", " - 1"};
    };
    if (::geteuid() != 0) {
        ::chmod(locked.c_str(), 0);
        EXPECT_TRUE(check());
        return;
    }
    // Root reads anything: the check runs in a child that gives up root.
    pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        ::_exit(::setgroups(0, nullptr) == 0 && ::setgid(65534) == 0 && ::setuid(65534) == 0 &&
                        check()
                    ? 0
                    : 1);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    // Root itself opens it.
    EXPECT_EQ(directoryAttributeTexts(dir.str(), {"locked"}, false, true),
              std::vector<std::string>{" - 1"});
}

TEST(FileAttributes, CalendarConversionAgreesWithTheCLibrary) {
    std::mt19937_64 rng(14);
    std::uniform_int_distribution<long long> seconds(-11644473600LL, 253402300799LL); // 1601..9999
    std::vector<long long> values{0, -1, 951782400, 951868799, 4107542399, -11644473600LL};
    for (int n = 0; n < 20000; ++n)
        values.push_back(seconds(rng));
    for (long long v : values) {
        time_t t = static_cast<time_t>(v);
        std::tm tm{};
        ASSERT_TRUE(::gmtime_r(&t, &tm));
        CalendarTime c;
        ASSERT_TRUE(toCalendarUtc(v, c)) << v;
        EXPECT_EQ(std::vector<int>({c.year, c.month, c.day, c.hour, c.minute, c.second}),
                  std::vector<int>({tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour,
                                    tm.tm_min, tm.tm_sec}))
            << v;
    }
    CalendarTime c;
    EXPECT_FALSE(toCalendarUtc(-11644473601LL, c)); // the second before 1601
    EXPECT_FALSE(toCalendarUtc(915151881600LL, c)); // year 30970
}

TEST(FileAttributes, FactsWithoutTimeSayConversionFailed) {
    FileFacts facts;
    facts.status = FileFacts::Status::Ok;
    facts.haveTime = false;
    facts.length = 7;
    EXPECT_EQ(attributeText(facts, true, true), "FileTimeToSystemTime Failed - 7");
    EXPECT_EQ(attributeText(facts, false, false), "");
    facts.status = FileFacts::Status::NoTimes;
    EXPECT_EQ(attributeText(facts, true, true), "Not available");
}

TEST(FileAttributes, ReadsSwitchesFromSettingsAtEveryCall) {
    pvtest::TempDir dir;
    std::string path = dir.write("f", "abc");
    Settings settings(dir / "Pairview.ini");
    EXPECT_EQ(GetFileAttributes(settings, path), "");
    settings.write("COMPARECONTROL", "LIST_Length", "true");
    EXPECT_EQ(GetFileAttributes(settings, path), " - 3");
}

TEST(FileAttributes, MessageLayout) {
    AttributesMessage shortText = attributesMessage(" - 1234");
    EXPECT_EQ(shortText.text, " - 1234");
    EXPECT_FALSE(shortText.titled);
    AttributesMessage full = attributesMessage("2026\\05\\07 9:5:7 - 1234");
    EXPECT_TRUE(full.titled);
    EXPECT_EQ(full.text, "\r\n\r\nDate Last changed (yyyy/mm/dd): 2026\\05\\07 \r\n"
                         "Time Last changed:  9:5:7 \r\nLength:  1234\r\n\r\n");
    // Date and time without a length: the rest after the date is the time.
    AttributesMessage noLength = attributesMessage("2026\\11\\23 12:30:45");
    EXPECT_EQ(noLength.text, "\r\n\r\nDate Last changed (yyyy/mm/dd): 2026\\11\\23 \r\n"
                             "Time Last changed:  12:30:45\r\nLength: \r\n\r\n");
}

TEST(CompareOptions, ReadFromSettingsAndSwitchTexts) {
    pvtest::TempDir dir;
    Settings settings(dir / "Pairview.ini");
    CompareOptions defaults = readCompareOptions(settings);
    EXPECT_EQ(directoryFcSwitches(defaults), "/lb100 /2 ");
    EXPECT_EQ(defaults.editor, "Write.exe");
    EXPECT_FALSE(defaults.listContents);
    EXPECT_EQ(defaults.modifyWindow, 0);
    EXPECT_FALSE(defaults.ignoreHourShift);
    settings.write("COMPARECONTROL", "FC_LB", "/lb200");
    settings.write("COMPARECONTROL", "FC_W", "TRUE");
    settings.write("COMPARECONTROL", "FC_A", "yes"); // only "True" in any case is on
    settings.write("COMPARECONTROL", "LIST_DateTime", "True");
    settings.write("COMPARECONTROL", "LIST_Contents", "true");
    settings.write("COMPARECONTROL", "LIST_Time2s", "True");
    settings.write("COMPARECONTROL", "LIST_HourShift", "True");
    settings.write("APPLICATION", "EDITOR", "kate");
    CompareOptions o = readCompareOptions(settings);
    EXPECT_TRUE(o.listContents);
    EXPECT_EQ(o.modifyWindow, 2);
    EXPECT_TRUE(o.ignoreHourShift);
    EXPECT_EQ(directoryFcSwitches(o), "/lb200 /2 /w ");
    EXPECT_TRUE(o.listDateTime);
    EXPECT_FALSE(o.listLength);
    EXPECT_EQ(o.editor, "kate");
}

// The free texts go as they are into the directory compare's fc lines and trimmed
// into the single compare's; the on/off switches follow in a fixed order.
TEST(CompareOptions, SwitchTexts) {
    CompareOptions o;
    o.fcLb = " /lb7 ";
    o.fcNnnn = "";
    o.fcW = o.fcA = o.fcU = o.fcB = o.fcT = o.fcC = o.fcN = o.fcL = true;
    EXPECT_EQ(directoryFcSwitches(o), " /lb7  /a /b /c /l /n /t /u /w ");
    EXPECT_EQ(singleFcSwitches(o), "/lb7 /a /b /c /l /n /t /u /w ");
}

TEST(CompareOptions, ScriptEditor) {
    EXPECT_EQ(scriptEditor("Notepad.exe"), "Notepad.exe");
    EXPECT_EQ(scriptEditor("internal"), "Write.exe");
    EXPECT_EQ(scriptEditor("C:\\Program Files\\ed.exe"), "Write.exe");
    EXPECT_EQ(scriptEditor("/usr/bin/gedit"), "/usr/bin/gedit");
}
