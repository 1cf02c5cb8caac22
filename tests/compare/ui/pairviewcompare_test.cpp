#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairview.h"
#include "results/ui/resultslist.h"
#include "settings/settings.h"
#include "support/envguard.h"
#include "support/qt/runningprogram.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

using pv::Side;

namespace {

class PairviewCompareTest : public pvtest::RunningProgramTest {
  protected:
    void SetUp() override {
        RunningProgramTest::SetUp();
        ini = home.write("Pairview.ini", "[COMPARECONTROL]\r\nLIST_Length=True\r\n");
        left = tree.mkdir("left");
        right = tree.mkdir("right");
    }
    void start() {
        RunningProgramTest::start();
        point(left, right);
    }
    void point(const std::string& l, const std::string& r) {
        window->dir(Side::Left)->setPath(l);
        window->dir(Side::Right)->setPath(r);
        ASSERT_EQ(window->files(Side::Left)->path(), l);
        ASSERT_EQ(window->files(Side::Right)->path(), r);
    }
    void pressCompare() { window->findChild<QPushButton*>("Compare_Button")->click(); }
    std::vector<std::string> results() const {
        pv::ResultsList* r = pv::ResultsList::instance(false);
        return r ? r->lines() : std::vector<std::string>{};
    }
    long count(const std::string& prefix) const {
        long n = 0;
        for (const auto& l : results())
            n += l.rfind(prefix, 0) == 0;
        return n;
    }

    pvtest::TempDir tree;
    std::string left, right;
    // Scripts are "started" by a program that does nothing.
    pvtest::EnvGuard m_pvcmd{"PAIRVIEW_PVCMD", "/bin/true"};
};

} // namespace

TEST_F(PairviewCompareTest, CompareFillsResultsListScriptAndResultsFile) {
    tree.write("left/a.cpp", "same");
    tree.write("right/a.cpp", "same");
    tree.write("left/b.h", "left only");
    tree.write("left/c.txt", "short");
    tree.write("right/c.txt", "longer!");
    start();
    pressCompare();
    EXPECT_TRUE(prompts.messages.empty()) << prompts.messages.front();
    // The engine's lines, statistics and script are tested with the engine: here
    // only that they reach the window's list and that the script was started.
    ASSERT_EQ(results().size(), 4u + 3u + 7u + 1u);
    EXPECT_EQ(results()[6], "2 -different- 1  - 5  - 7 c.txt");
    EXPECT_GT(window->lastTask, 0);
    // The attributes of the last pair stay for the status line.
    EXPECT_EQ(window->attrOne, " - 5");
    EXPECT_EQ(window->attrTwo, " - 7");

    // A second compare appends to the list and, with Append, keeps the results file.
    pv::Settings(ini).write("COMPARECONTROL", "FC_B", "True");
    window->findChild<QRadioButton*>("OutputOptionAppend")->setChecked(true);
    home.write("Pairview.txt", "fc reports\r\n");
    pressCompare();
    EXPECT_EQ(count("Start\t"), 2);
    EXPECT_EQ(pvtest::readFile(home / "Pairview.txt"), "fc reports\r\n");
    EXPECT_NE(pvtest::readFile(home / "Pairview.cmd").find("fc /lb100 /2 /b \""),
              std::string::npos);
}

TEST_F(PairviewCompareTest, FailureIsReportedAndTheScriptIsNotStarted) {
    tree.write("left/a", "1");
    tree.write("right/a", "1");
    home.mkdir("Pairview.txt"); // the results file cannot be written
    start();
    window->lastTask = 0;
    pressCompare();
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0].rfind("Compare:fall through error:", 0), 0u);
    EXPECT_EQ(window->lastTask, 0);
}

// A click on the stop box reaches a running walk; the next press clears it, walks
// and puts the panes back.
TEST_F(PairviewCompareTest, SubDirectoryWalkStopsOnAClickAndRestoresThePanes) {
    tree.write("left/top.txt", "1");
    tree.write("right/top.txt", "1");
    tree.write("left/x/in.txt", "1");
    tree.write("right/x/in.txt", "1");
    tree.write("left/y/z/deep.txt", "1"); // y is missing on the right
    start();
    frame->action("mnu_Options_Compare_Include_Sub_Directories")->setChecked(true);
    auto* stop = window->findChild<QCheckBox*>("StopProcessing");
    // Delivered by the event loop, so only when the walk lets events through.
    QTimer::singleShot(0, stop, [stop] { stop->setChecked(true); });
    pressCompare();
    EXPECT_TRUE(stop->isChecked());
    EXPECT_EQ(count("Directory 1: "), 0);

    pressCompare();
    EXPECT_FALSE(stop->isChecked());
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_EQ(count("Directory 1: "), 2);
    ASSERT_GE(results().size(), 9u); // the end line, then the block of totals
    EXPECT_EQ(results()[results().size() - 9].rfind("end of subdirectory compare\t", 0), 0u);
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    EXPECT_EQ(window->files(Side::Right)->path(), right);
    EXPECT_NE(pvtest::readFile(home / "Pairview.cmd").find("\"" + left + "/x/in.txt\""),
              std::string::npos);
    // The last left directory the walk visited (x, then y and y/z).
    EXPECT_EQ(pv::Settings(ini).read("LASTFILE", "COMPARECURRENTDIR"), left + "/y/z");
}

// The menu's check item writes its key, and the next compare reads the bytes.
TEST_F(PairviewCompareTest, ContentsSwitchIsStoredAndUsedByTheNextCompare) {
    pvtest::setMTime(tree.write("left/v.json", "1.0.0"), 1'700'000'000);
    pvtest::setMTime(tree.write("right/v.json", "1.0.1"), 1'700'000'000);
    start();
    pressCompare();
    EXPECT_EQ(count("0 -matched-   0"), 1);
    frame->action("mnu_Options_Compare_List_Contents")->trigger();
    EXPECT_EQ(pv::Settings(ini).read("COMPARECONTROL", "LIST_Contents"), "True");
    pressCompare();
    EXPECT_EQ(count("0 -different- 0  - 5 [contents]  - 5 [contents] v.json"), 1);
}

// The pattern's exclusions reach the file lists and the walk.
TEST_F(PairviewCompareTest, ExclusionsLeaveFilesAndDirectoriesOut) {
    for (const char* side : {"left", "right"}) {
        tree.write(std::string(side) + "/a.c", "1");
        tree.write(std::string(side) + "/a.o", side);
        tree.write(std::string(side) + "/node_modules/m.js", side);
    }
    start();
    window->filePatternCombo()->setEditText("*.*;!*.o;!node_modules/");
    window->FilePatternCombo_Change();
    EXPECT_EQ(window->files(Side::Left)->names(), std::vector<std::string>{"a.c"});
    frame->action("mnu_Options_Compare_Include_Sub_Directories")->setChecked(true);
    pressCompare();
    EXPECT_EQ(count("Directory 1: "), 1);
    EXPECT_EQ(count(" there were 0 files different"), 1);
}

TEST_F(PairviewCompareTest, StatusLineClicksAndSwitchBoxes) {
    tree.write("left/f.txt", "12345");
    tree.write("right/f.txt", "1234567");
    start();
    window->files(Side::Right)->setListIndex(0);
    window->FileList_Click(Side::Right);
    window->files(Side::Left)->setListIndex(0);
    window->FileList_Click(Side::Left);
    // Each side's attributes reach its own panels.
    EXPECT_EQ(window->statusPanel(2), " 5");
    EXPECT_EQ(window->statusPanel(4), " 7");

    window->findChild<QLineEdit*>("fc_lb")->setText("/lb7");
    window->findChild<QLineEdit*>("fc_nnnn")->setText("");
    EXPECT_EQ(pv::Settings(ini).read("COMPARECONTROL", "FC_LB"), "/lb7");
    EXPECT_EQ(pv::Settings(ini).read("COMPARECONTROL", "FC_NNNN"), "");

    // A click on a panel compares the two selected files through the command file.
    window->lastTask = 0;
    auto* panel = window->findChild<QLabel*>("StatusBar1_Panel3");
    ASSERT_NE(panel, nullptr);
    QTest::mouseClick(panel, Qt::LeftButton);
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_GT(window->lastTask, 0);
}

TEST_F(PairviewCompareTest, AttributesViewShowsTheChosenFile) {
    tree.write("left/f.txt", "12345");
    tree.write("right/g.txt", "1234567");
    pv::Settings(ini).write("COMPARECONTROL", "LIST_DateTime", "True");
    pvtest::setMTime(left + "/f.txt", 1778144707); // 2026-05-07 09:05:07 UTC
    start();
    QAction* attributes = frame->action("mnu_FileAttributes");
    window->files(Side::Left)->setListIndex(-1);
    window->files(Side::Right)->setListIndex(-1);
    attributes->trigger();
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0],
              "Please select a file to open. I will use the last file you clicked on.");
    window->files(Side::Left)->setListIndex(0);
    window->files(Side::Right)->setListIndex(0);
    pv::globals().setClicked(pv::ClickedControl::FileOne);
    attributes->trigger();
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.titles[1], left + "/f.txt");
    EXPECT_NE(prompts.messages[1].find("Length:  5\r\n"), std::string::npos);
    // Both selected and the right side clicked last: the right file.
    pv::globals().setClicked(pv::ClickedControl::Dir2);
    pv::Settings(ini).write("COMPARECONTROL", "LIST_DateTime", "False");
    attributes->trigger();
    EXPECT_EQ(prompts.messages.back(), " - 7");
}
