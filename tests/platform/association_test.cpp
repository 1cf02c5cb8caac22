#include "platform/association.h"
#include "support/standins.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(DesktopExec, FirstWordOfExecInTheDesktopEntryGroup) {
    struct Row {
        const char* name;
        const char* text;
        const char* program;
    } rows[] = {
        {"plain", "[Desktop Entry]\nName=Kate\nExec=kate -b %U\n", "kate"},
        {"crlf", "[Desktop Entry]\r\nExec=/opt/ed/bin/ed %f\r\n", "/opt/ed/bin/ed"},
        {"quoted", "[Desktop Entry]\nExec=\"/opt/my ed/ed\" %F\n", "/opt/my ed/ed"},
        {"blanks around =", "[Desktop Entry]\nExec = gedit %U\n", "gedit"},
        {"other group first", "[Desktop Action new]\nExec=other\n[Desktop Entry]\nExec=mine\n",
         "mine"},
        {"TryExec is not Exec", "[Desktop Entry]\nTryExec=nope\nExec=yes\n", "yes"},
        {"no entry", "[Desktop Action x]\nExec=other\n", ""},
        {"empty", "", ""},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::desktopExecProgram(r.text), r.program) << r.name;
}

class Association : public testing::Test {
  protected:
    pvtest::FakeDesktop desktop;
    pvtest::TempDir files;
};

TEST_F(Association, FindsTheProgramOfTheFileTypeOrNothing) {
    const std::string file = files.write("a b.txt", "x");
    EXPECT_EQ(pv::findAssociatedProgram(file), desktop.editor);
    EXPECT_EQ(pv::findAssociatedProgram("\"" + file + "\""), desktop.editor); // callers quote
    EXPECT_EQ(pv::findAssociatedProgram(files.write("a.zzz", "x")), "");
    EXPECT_EQ(pv::findAssociatedProgram(files / "gone.txt"), "");
    EXPECT_EQ(pv::findAssociatedProgram(""), "");
    std::filesystem::remove(desktop.data / "applications/vendor/editor.desktop");
    EXPECT_EQ(pv::findAssociatedProgram(file), "");
}

TEST_F(Association, OpensThroughXdgOpenWithThePathUnquoted) {
    const std::string file = files.write("my file.txt", "x");
    EXPECT_GT(pv::openWithDesktop("\"" + file + "\""), 0);
    EXPECT_EQ(pvtest::waitForLine(desktop.openLog), "[" + file + "]\n");
}

} // namespace
