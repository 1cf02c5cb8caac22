#include "lists/launchtestsupport.h"
#include "platform/association.h"

#include <gtest/gtest.h>

#include <cstdlib>

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

// A fake desktop: xdg-mime answers from the file name, desktop files in a temp
// XDG_DATA_HOME, xdg-open records its arguments.
class Association : public testing::Test {
  protected:
    Association()
        : m_path("PATH", m_bin.str() + ":" + std::string(std::getenv("PATH"))),
          m_dataHome("XDG_DATA_HOME", m_data.str()), m_dataDirs("XDG_DATA_DIRS", m_data / "none") {
        pvtest::writeExecutable(m_bin, "xdg-mime",
                                "case \"$2\" in\n"
                                "filetype) case \"$3\" in *.txt) echo text/plain;; *) exit 4;; "
                                "esac;;\n"
                                "default) case \"$3\" in text/plain) echo vendor-editor.desktop;; "
                                "*) echo;; esac;;\n"
                                "esac\n");
        m_editor = pvtest::writeExecutable(m_bin, "fake-editor", "exit 0\n");
        m_data.write("applications/vendor/editor.desktop",
                     "[Desktop Entry]\nType=Application\nExec=fake-editor %U\n");
    }

    pvtest::TempDir m_bin, m_data, m_files;
    pvtest::EnvGuard m_path, m_dataHome, m_dataDirs;
    std::string m_editor;
};

TEST_F(Association, FindsTheProgramOfTheFileType) {
    const std::string file = m_files.write("a b.txt", "x");
    EXPECT_EQ(pv::findAssociatedProgram(file), m_editor);
    EXPECT_EQ(pv::findAssociatedProgram("\"" + file + "\""), m_editor); // callers quote
}

TEST_F(Association, NothingForUnknownTypesOrMissingFiles) {
    EXPECT_EQ(pv::findAssociatedProgram(m_files.write("a.zzz", "x")), "");
    EXPECT_EQ(pv::findAssociatedProgram(m_files / "gone.txt"), "");
    EXPECT_EQ(pv::findAssociatedProgram(""), "");
}

TEST_F(Association, NothingWhenTheDesktopFileIsMissing) {
    std::filesystem::remove(m_data / "applications/vendor/editor.desktop");
    EXPECT_EQ(pv::findAssociatedProgram(m_files.write("a.txt", "x")), "");
}

TEST_F(Association, OpensThroughXdgOpenWithThePathUnquoted) {
    const std::string log = m_files / "open.log";
    pvtest::writeRecorder(m_bin, "xdg-open", log);
    const std::string file = m_files.write("my file.txt", "x");
    EXPECT_GT(pv::openWithDesktop("\"" + file + "\""), 0);
    EXPECT_EQ(pvtest::waitForLine(log), "[" + file + "]\n");
}

} // namespace
