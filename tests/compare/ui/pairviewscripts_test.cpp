// The search and script commands of a running compare window, end to end: the
// scripts they write run under the built pvcmd, and the desktop editor the
// scripts end with is a recording stand-in.

#include "app/ui/commandsfixture.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairviewcompare.h"
#include "pvcmd/scriptrun.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>

using pv::Side;

namespace {

class PairviewScripts : public pvtest::CommandsTest {
  protected:
    void SetUp() override {
        CommandsTest::SetUp();
        if (!pvtest::havePvcmd())
            GTEST_SKIP() << "pvcmd is not built";
        home.write("left/a.cpp", "int todo;\n");
        home.write("left/b.h", "// todo later\n");
        home.write("left/c.txt", "todo, not searched\n");
    }
    void start() {
        CommandsTest::start();
        window->dir(Side::Left)->setPath(left);
        window->dir(Side::Right)->setPath(right);
    }
    void press(const char* button) {
        auto* b = window->findChild<QPushButton*>(button);
        ASSERT_TRUE(b && b->isEnabled()) << button;
        b->click();
    }
    // The capture file, once the script has opened it in the editor.
    std::string captureAfterRun(const std::string& capture) {
        EXPECT_EQ(editorArgs(), "[" + capture + "]\n");
        std::filesystem::remove(editorLog);
        return pvtest::readFile(capture);
    }

    // The main window's status line, where a command that ends without a window
    // of its own says what it did.
    std::string statusLine() const {
        auto* panel = frame->statusBar()->findChild<QLabel*>("StatusBar1_Panel1");
        return panel ? panel->text().toStdString() : std::string();
    }

    pvtest::EnvGuard m_pvcmd{"PAIRVIEW_PVCMD", pvtest::pvcmdExecutable()};
};

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(PairviewScripts, FindFileListsTheSearchedNameInTheCaptureFile) {
    write("DIRCONTROL", "DIR_B", "True");
    start();
    prompts.inputAnswers = {"*.h"};
    press("FindFile");
    std::string capture = captureAfterRun(home / "PairviewFINDFILE.txt");
    EXPECT_TRUE(contains(capture, "searchFile = '*.h' \r\n")) << capture;
    EXPECT_TRUE(contains(capture, "- \r\nb.h\r\n- \r\n")) << capture;
    EXPECT_FALSE(contains(capture, "a.cpp")) << capture;
    EXPECT_NE(window->lastTask, 0);
}

TEST_F(PairviewScripts, FindTextSearchesTheWindowsPatterns) {
    write("LASTFILE", "FILEPATTERN", "*.cpp;*.h");
    start();
    prompts.inputAnswers = {"todo"};
    frame->action("mnuFindText")->trigger();
    std::string single = captureAfterRun(home / "PairviewFIND.txt");
    EXPECT_TRUE(contains(single, "a.cpp:int todo;\n")) << single;
    EXPECT_TRUE(contains(single, "b.h:// todo later\n")) << single;
    EXPECT_FALSE(contains(single, "c.txt")) << single;
    EXPECT_FALSE(contains(single, "Looking for")) << single;
}

TEST_F(PairviewScripts, TheCopyScriptCopiesTheLeftListIntoTheRightDirectory) {
    write("APPLICATION", "XCOPYPARMS", "/y");
    start();
    frame->action("mnuXcopy")->trigger();
    ASSERT_TRUE(prompts.messages.empty()) << prompts.messages.front();
    EXPECT_EQ(statusLine(),
              "Copy script written: " + home / "Xcopy_FILE.CMD" + " - run it with pvcmd");
    pvtest::runScript(home.str(), "Xcopy_FILE.CMD");
    const std::string results = home / "XCOPY_FILE.TXT";
    EXPECT_EQ(editorArgs(), "[" + results + "]\n");
    for (const char* name : {"a.cpp", "b.h", "c.txt"})
        EXPECT_EQ(pvtest::readFile(right + "/" + name), pvtest::readFile(left + "/" + name))
            << name;
    EXPECT_EQ(pvtest::readFile(results), "\"---\" \r\n" + left + "/a.cpp\r\n1 File(s) copied\r\n" +
                                             left + "/b.h\r\n1 File(s) copied\r\n" + left +
                                             "/c.txt\r\n1 File(s) copied\r\n");
}

TEST_F(PairviewScripts, RunShellStartsTheSelectedFileWithItsParameters) {
    const std::string log = home / "tool.log";
    pvtest::writeRecorder(home, "left/tool.sh", log);
    start();
    pv::FileListBox* list = window->files(Side::Left);
    list->setPath(left);
    for (int i = 0; i < list->listCount(); ++i)
        if (list->item(i) == "tool.sh")
            list->setCurrentRow(i);
    prompts.inputAnswers = {"one \"two three\""};
    press("RunShell");
    EXPECT_EQ(pvtest::waitForLine(log), "[one][two three]\n");
}

TEST_F(PairviewScripts, CompareSingleWithoutBothFilesSaysWhatIsMissing) {
    start();
    window->files(Side::Left)->setListIndex(0);
    press("CompareSingle");
    EXPECT_EQ(statusLine(), pv::kSelectFileInEachList);
    EXPECT_EQ(window->lastTask, 0);
    EXPECT_TRUE(prompts.messages.empty());
}

// dir searches below the directory only with /s: without it the line says so.
TEST_F(PairviewScripts, FindFileSaysWhereTheResultsAreAndWhatWasSearched) {
    start();
    const std::string capture = home / "PairviewFINDFILE.txt";
    for (bool below : {false, true}) {
        SCOPED_TRACE(below);
        write("DIRCONTROL", "DIR_S", below ? "True" : "False");
        prompts.inputAnswers = {"*.h"};
        press("FindFile");
        EXPECT_EQ(statusLine(), "Find File: results in " + capture +
                                    (below ? ""
                                           : " - searched " + left +
                                                 " only; Options > Dir > /s searches below it"));
        captureAfterRun(capture); // the script has ended
    }
    EXPECT_EQ(prompts.messages.size(), 2u) << "the two questions for the name, nothing more";
}

} // namespace
