// Commands of a compare window that end without a window of their own say in
// the main window's status line what they did and where their file is.

#include "app/ui/commandsfixture.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairviewcompare.h"

#include <QLabel>
#include <QPushButton>
#include <QStatusBar>

using pv::Side;

namespace {

class PairviewStatus : public pvtest::CommandsTest {
  protected:
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
    std::string statusLine() const {
        auto* panel = frame->statusBar()->findChild<QLabel*>("StatusBar1_Panel1");
        return panel ? panel->text().toStdString() : std::string();
    }
    pvtest::EnvGuard m_pvcmd{"PAIRVIEW_PVCMD", "/bin/true"};
};

TEST_F(PairviewStatus, CopyScriptSaysWhereItWasWritten) {
    start();
    press("CreateXcopy");
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_EQ(statusLine(), "Copy script written: " + home / "Xcopy_FILE.CMD" + " - run it with pvcmd");
}

TEST_F(PairviewStatus, CompareSingleWithoutBothFilesSaysWhatIsMissing) {
    start();
    window->files(Side::Left)->setListIndex(0);
    press("CompareSingle");
    EXPECT_EQ(statusLine(), pv::kSelectFileInEachList);
    EXPECT_EQ(window->lastTask, 0);
    EXPECT_TRUE(prompts.messages.empty());
}

// dir searches below the directory only with /s: without it the line says so.
TEST_F(PairviewStatus, FindFileSaysWhereTheResultsAreAndWhatWasSearched) {
    start();
    const std::string capture = home / "PairviewFINDFILE.txt";
    prompts.inputAnswers = {"*.h"};
    press("FindFile");
    EXPECT_EQ(statusLine(), "Find File: results in " + capture + " - searched " + left +
                                " only; Options > Dir > /s searches below it");
    write("DIRCONTROL", "DIR_S", "True");
    prompts.inputAnswers = {"*.h"};
    press("FindFile");
    EXPECT_EQ(statusLine(), "Find File: results in " + capture);
    EXPECT_EQ(prompts.messages.size(), 2u) << "the two questions for the name, nothing more";
}

} // namespace
