#include "about/aboutbox.h"

#include "support/recordingprompter.h"
#include "support/standins.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

TEST(AboutBox, DocumentationTextHasOneParagraphPerSectionInOrder) {
    pvtest::TempDir dir;
    pv::Settings none(dir / "missing.ini");
    std::string empty = "Documentation:";
    for (int i = 0; i < 10; ++i)
        empty += "\r\n\r\nempty";
    EXPECT_EQ(pv::documentationText(none), empty);

    pv::Settings some(dir.write("p.ini", "[DOCUMENTATION]\nISQL=query tool\nAPPLICATION=  the "
                                         "program  \nEDITORS=\nLASTFILE=panes\n"));
    EXPECT_EQ(pv::documentationText(some),
              "Documentation:\r\n\r\nthe program\r\n\r\npanes\r\n\r\nempty\r\n\r\nempty\r\n\r\n"
              "empty\r\n\r\nempty\r\n\r\nempty\r\n\r\nempty\r\n\r\nempty\r\n\r\nquery tool");
}

TEST(AboutBox, SystemInformationProgramIsChosenInOrder) {
    auto finds = [](std::vector<std::string> present) {
        return [present](const std::string& name) {
            return std::find(present.begin(), present.end(), name) != present.end();
        };
    };
    pvtest::EnvGuard unset("PAIRVIEW_SYSINFO", "");
    EXPECT_EQ(pv::sysInfoProgram(finds({"hardinfo", "gnome-system-monitor"})), "hardinfo");
    EXPECT_EQ(pv::sysInfoProgram(finds({"gnome-system-monitor", "hardinfo", "kinfocenter"})),
              "kinfocenter");
    EXPECT_EQ(pv::sysInfoProgram(finds({})), "");
    pvtest::EnvGuard chosen("PAIRVIEW_SYSINFO", "/opt/mine");
    EXPECT_EQ(pv::sysInfoProgram(finds({"kinfocenter"})), "/opt/mine");
}

TEST(AboutBox, StartSysInfoStartsTheProgramOrSaysItIsUnavailable) {
    pvtest::TempDir tools;
    pvtest::RecordingPrompter prompts;
    pvtest::EnvGuard path("PATH", tools.str());
    {
        pvtest::EnvGuard unset("PAIRVIEW_SYSINFO", "");
        pv::StartSysInfo();
        ASSERT_EQ(prompts.messages.size(), 1u);
        EXPECT_EQ(prompts.messages[0], "System Information Is Unavailable At This Time");
    }
    const std::string log = tools / "started.log";
    pvtest::EnvGuard chosen("PAIRVIEW_SYSINFO", pvtest::writeRecorder(tools, "my sysinfo", log));
    pv::StartSysInfo();
    EXPECT_EQ(pvtest::waitForLine(log), "\n");
    EXPECT_EQ(prompts.messages.size(), 1u);
}
