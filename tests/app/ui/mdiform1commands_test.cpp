#include "app/ui/commandsfixture.h"
#include "app/ui/formregistry.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/filelistbox.h"
#include "editor/ui/frmnotepad.h"
#include "lists/launchrules.h"
#include "platform/clock.h"
#include "support/fakeclock.h"

#include <QAction>
#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <filesystem>

using pv::Side;
using pvtest::CommandsTest;

namespace {

std::vector<pv::Pairview*> openCompareWindows() {
    std::vector<pv::Pairview*> out;
    for (QWidget* f : pv::FormRegistry::openForms())
        if (auto* p = qobject_cast<pv::Pairview*>(f))
            out.push_back(p);
    return out;
}

} // namespace

TEST_F(CommandsTest, RefreshRereadsEveryWindowKeepingSelectionsTheTimerOnTheFifthTick) {
    pvtest::FakeClock clock;
    const pv::Clock* old = pv::setProgramClock(&clock);
    start();
    pv::Pairview* second = frame->CompareForm_Additional_Click();
    for (pv::Pairview* w : {window, second}) {
        w->dir(Side::Left)->setPath(left);
        w->files(Side::Left)->setListIndex(1);
    }
    home.write("left/0new.txt", "n"); // sorts first
    frame->action("mnu_Refresh")->trigger();
    EXPECT_EQ(window->files(Side::Left)->listCount(), 4);
    EXPECT_EQ(value("APPLICATION", "LASTREFRESH"), "");

    home.mkdir("left/sub");
    for (int tick = 1; tick <= 4; ++tick)
        frame->Timer1_Timer();
    EXPECT_EQ(window->dir(Side::Left)->listCount(), 0);
    frame->Timer1_Timer();
    EXPECT_EQ(value("APPLICATION", "LASTREFRESH"), pv::formatGeneralDate(clock.now()));
    for (pv::Pairview* w : {window, second}) {
        EXPECT_EQ(w->files(Side::Left)->listIndex(), 1); // the index is kept, not the name
        EXPECT_EQ(w->dir(Side::Left)->listCount(), 1);
    }
    pv::setProgramClock(old);
}

TEST_F(CommandsTest, MatchAndParallelMoveThePaneNotClickedLast) {
    const std::string oldSrc = home.mkdir("old/src");
    home.mkdir("new/src");
    start();
    window->dir(Side::Left)->setPath(oldSrc);
    window->dir(Side::Right)->setPath(home / "new");
    frame->action("mnu_Match_Parallel")->trigger(); // nothing clicked yet: the right pane moves
    EXPECT_EQ(window->dir(Side::Right)->path(), home / "new/src");
    // Right clicked last: the left pane would go to old/src/src, which does not
    // exist, so the step is skipped silently.
    pv::globals().setClicked(pv::ClickedControl::Dir2);
    frame->action("mnu_Match_Parallel")->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), oldSrc);
    EXPECT_TRUE(prompts.messages.empty());

    frame->action("mnu_Match")->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), home / "new/src");
    pv::globals().setClicked(pv::ClickedControl::FileOne);
    window->dir(Side::Left)->setPath(right);
    frame->action("mnu_Match")->trigger();
    EXPECT_EQ(window->dir(Side::Right)->path(), right);
}

TEST_F(CommandsTest, AdditionalWindowsTakeNewIndexesTheirCaptionsAndSections) {
    write("LASTFILE2", "DIRONE", right);
    write("NETWORKDRIVES", "ITEM0", "//srv/share");
    start();
    pv::Pairview* one = frame->CompareForm_Additional_Click();
    pv::Pairview* two = frame->CompareForm_Additional_Click();
    EXPECT_EQ(one->windowTitle().toStdString(), "Additional Pairview:1");
    EXPECT_EQ(two->section(), "LASTFILE2");
    EXPECT_EQ(two->dir(Side::Left)->path(), right);
    // The load runs twice and the network combos are not cleared in between.
    ASSERT_EQ(one->networkDrive(Side::Left)->count(), 2);
    EXPECT_EQ(one->networkDrive(Side::Left)->itemText(1).toStdString(), "//srv/share");

    // Closed windows do not give their numbers back; Compare Form opens the first
    // window afresh on its own section.
    frame->closeThisForm("PAIRVIEW");
    frame->action("CompareForm_Additional")->trigger();
    QApplication::processEvents();
    auto windows = openCompareWindows();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(windows[0]->windowTitle().toStdString(), "Additional Pairview:3");
    write("LASTFILE", "DIRONE", left);
    frame->action("CompareForm")->trigger();
    QApplication::processEvents();
    windows = openCompareWindows();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_TRUE(windows[0]->tag().isEmpty());
    EXPECT_EQ(windows[0]->dir(Side::Left)->path(), left);
}

TEST_F(CommandsTest, RecentItemSetsTheLeftPaneAndOpensTheFileOrSaysWhyNot) {
    write("RECENTFILES", "ITEM0", left + "/B.H");
    write("RECENTFILES", "ITEM1", home / "gone/x.txt"); // the menu lists the newest last
    write("APPLICATION", "EDITOR", editor);
    start();
    frame->arrayItem("Recent", 2)->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    EXPECT_EQ(window->files(Side::Left)->selectedName(), "b.h");
    EXPECT_EQ(editorArgs(), "[" + left + "/B.H]\n");

    frame->arrayItem("Recent", 1)->trigger();
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0].rfind(home / "gone/x.txt" + "\r\n", 0), 0u);
}

TEST_F(CommandsTest, ViewCommandsOpenTheActiveWindowsFiles) {
    start();
    struct Row {
        const char* item;
        std::string path;
    } rows[] = {
        {"ShowINI", ini},
        {"mnu_ShowCaptureFileName", home / "CaptureFile.txt"},
        {"mnu_ShowCapture_Xcopy", home / "Xcopy_FILE.CMD"},
        {"ShowFindResults", home / "PairviewFIND1.txt"},
        {"mnuFindFile_results", home / "PairviewFINDFILE1.txt"},
        {"mnu_notes", "Notes.txt"},
    };
    frame->CompareForm_Additional_Click(); // the active window has the tag "1"
    for (const Row& r : rows) {
        std::filesystem::remove(editorLog);
        frame->action(r.item)->trigger();
        EXPECT_EQ(editorArgs(), "[" + r.path + "]\n") << r.item;
    }
    EXPECT_TRUE(prompts.messages.empty());

    // The compare window's own button keeps the task number of what it started.
    std::filesystem::remove(editorLog);
    frame->ShowINI_Click(window);
    EXPECT_EQ(editorArgs(), "[" + ini + "]\n");
    EXPECT_GT(window->lastTask, 0);

    write("APPLICATION", "EDITOR", home / "no-such-editor");
    frame->action("mnu_ShowCaptureFileName")->trigger();
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0].rfind("Capture_FileName in Editor\r\n", 0), 0u);
}

TEST_F(CommandsTest, InternalEditorShowsTheFile) {
    write("APPLICATION", "EDITOR", "INTERNAL");
    const std::string file = home.write("a b/x.txt", "line one\r\nline two\r\n");
    start();
    EXPECT_EQ(frame->runEditor(file), 0);
    auto* editor = frame->mdiArea()->findChild<pv::frmNotePad*>("frmNotePad");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "line one\nline two\n");
    EXPECT_EQ(editor->caption(), file);
}

TEST_F(CommandsTest, OpenWithItemsOpenTheSelectedFile) {
    write("EDITORS", "ITEM0", editor);
    start();
    window->dir(Side::Left)->setPath(left);
    window->dir(Side::Right)->setPath(right);
    frame->OpenByAssociation_Click(window);
    EXPECT_EQ(prompts.messages, std::vector<std::string>{pv::kSelectFileFirst});
    QAction* item = frame->arrayItem("mnuEditor", 1);
    ASSERT_EQ(item->text().toStdString(), editor);
    item->trigger(); // nothing selected
    EXPECT_EQ(prompts.messages.back(), pv::kSelectFileLastClicked);

    window->files(Side::Left)->setListIndex(0);
    window->files(Side::Right)->setListIndex(0);
    pv::globals().setClicked(pv::ClickedControl::Dir2);
    item->trigger();
    EXPECT_EQ(editorArgs(), "[" + right + "/a.cpp]\n");
}

TEST_F(CommandsTest, TilingSharesTheArea) {
    start();
    frame->CompareForm_Additional_Click();
    frame->resize(1000, 800);
    QApplication::processEvents();
    auto subs = frame->mdiArea()->subWindowList();
    ASSERT_EQ(subs.size(), 2);
    frame->action("Vertical")->trigger();
    EXPECT_EQ(subs[0]->y(), subs[1]->y());
    EXPECT_EQ(subs[0]->width() + subs[1]->width(), frame->mdiArea()->viewport()->width());
    frame->action("Horizontal")->trigger();
    EXPECT_EQ(subs[0]->x(), subs[1]->x());
    EXPECT_EQ(subs[0]->height() + subs[1]->height(), frame->mdiArea()->viewport()->height());
}

// With associations on, a double click opens the file with the program of its type.
TEST_F(CommandsTest, AssociatedProgramOpensTheFileAndWindowKeepsTheTask) {
    pvtest::FakeDesktop desktop;
    write("APPLICATION", "ASSOCIATED", "YES");
    start();
    ASSERT_TRUE(frame->action("UseAssociated")->isChecked());
    window->dir(Side::Left)->setPath(left);
    window->files(Side::Left)->setListIndex(2);
    window->FileOneList_DblClick();
    EXPECT_EQ(pvtest::waitForLine(desktop.openLog), "[" + left + "/c.txt]\n");

    std::filesystem::remove(desktop.openLog);
    window->lastTask = 0;
    frame->OpenByAssociation_Click(window);
    EXPECT_EQ(pvtest::waitForLine(desktop.openLog), "[" + left + "/c.txt]\n");
    EXPECT_GT(window->lastTask, 0);

    // A script is not run: it opens in the text editor, after a warning.
    home.write("left/run.cmd", "x");
    window->files(Side::Left)->refresh();
    window->files(Side::Left)->setListIndex(window->files(Side::Left)->listCount() - 1);
    window->FileOneList_DblClick();
    EXPECT_EQ(editorArgs(), "[" + left + "/run.cmd]\n");
    EXPECT_EQ(prompts.messages, std::vector<std::string>{pv::kExecutableWarning});

    frame->action("UseAssociated")->trigger();
    EXPECT_EQ(value("APPLICATION", "ASSOCIATED"), "NO");
    EXPECT_FALSE(frame->action("UseAssociated")->isChecked());
}
