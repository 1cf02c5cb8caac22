#include "compare/compareoptions.h"
#include "compare/fileattributes.h"
#include "platform/filetimes.h"
#include "settings/settings.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
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
    if (::geteuid() != 0) { // root opens anything
        std::string locked = dir.write("locked", "x");
        ::chmod(locked.c_str(), 0);
        EXPECT_EQ(fileAttributeText(locked, false, false), "Can't open the file");
    }
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
    CalendarTime t;
    EXPECT_FALSE(toCalendarUtc(-20000000000LL, t)); // year 1336: before the calendar form
    EXPECT_TRUE(toCalendarUtc(0, t));
    EXPECT_EQ(t.year, 1970);
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
    settings.write("COMPARECONTROL", "FC_LB", "/lb200");
    settings.write("COMPARECONTROL", "FC_W", "TRUE");
    settings.write("COMPARECONTROL", "FC_A", "yes"); // only "True" in any case is on
    settings.write("COMPARECONTROL", "LIST_DateTime", "True");
    settings.write("APPLICATION", "EDITOR", "kate");
    CompareOptions o = readCompareOptions(settings);
    EXPECT_EQ(directoryFcSwitches(o), "/lb200 /2 /w ");
    EXPECT_TRUE(o.listDateTime);
    EXPECT_FALSE(o.listLength);
    EXPECT_EQ(o.editor, "kate");
}

TEST(CompareOptions, ScriptEditor) {
    EXPECT_EQ(scriptEditor("Notepad.exe"), "Notepad.exe");
    EXPECT_EQ(scriptEditor("internal"), "Write.exe");
    EXPECT_EQ(scriptEditor("C:\\Program Files\\ed.exe"), "Write.exe");
    EXPECT_EQ(scriptEditor("/usr/bin/gedit"), "/usr/bin/gedit");
}
