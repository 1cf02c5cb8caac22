#include "app/ui/commandsfixture.h"
#include "app/ui/formregistry.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/filelistbox.h"
#include "editor/ui/frmnotepad.h"
#include "lists/launchrules.h"
#include "platform/clock.h"

#include <QAction>
#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>

#include <filesystem>

using pv::Side;
using pvtest::CommandsTest;

namespace {

// A fixed "now" that counts how often it was asked.
class CountingClock : public pv::Clock {
  public:
    std::chrono::system_clock::time_point now() const override {
        ++calls;
        return std::chrono::system_clock::time_point(std::chrono::seconds(1700000000));
    }
    mutable int calls = 0;
};

std::vector<pv::Pairview*> openCompareWindows() {
    std::vector<pv::Pairview*> out;
    for (QWidget* f : pv::FormRegistry::openForms())
        if (auto* p = qobject_cast<pv::Pairview*>(f))
            out.push_back(p);
    return out;
}

} // namespace

TEST_F(CommandsTest, TimerRefreshesEveryWindowOnTheFifthTickKeepingSelections) {
    CountingClock clock;
    const pv::Clock* old = pv::setProgramClock(&clock);
    start();
    pv::Pairview* second = frame->CompareForm_Additional_Click();
    for (pv::Pairview* w : {window, second}) {
        w->dir(Side::Left)->setPath(left);
        w->files(Side::Left)->setListIndex(1);
    }
    home.write("left/0new.txt", "n"); // sorts first
    home.mkdir("left/sub");
    clock.calls = 0;

    for (int tick = 1; tick <= 4; ++tick)
        frame->Timer1_Timer();
    EXPECT_EQ(value("APPLICATION", "LASTREFRESH"), "");
    EXPECT_EQ(window->files(Side::Left)->listCount(), 3);

    frame->Timer1_Timer();
    EXPECT_EQ(value("APPLICATION", "LASTREFRESH"), pv::formatGeneralDate(clock.now()));
    EXPECT_EQ(clock.calls, 2 + 1); // once per compare window, once by this check
    for (pv::Pairview* w : {window, second}) {
        EXPECT_EQ(w->files(Side::Left)->listCount(), 4);
        EXPECT_EQ(w->files(Side::Left)->listIndex(), 1); // the index is kept, not the name
        EXPECT_EQ(w->dir(Side::Left)->listCount(), 1);
    }
    EXPECT_EQ(frame->refreshTickCount, 5);
    pv::setProgramClock(old);
}

TEST_F(CommandsTest, RefreshCommandRereadsWithoutStamp) {
    start();
    window->dir(Side::Right)->setPath(right);
    home.write("right/z.txt", "z");
    frame->action("mnu_Refresh")->trigger();
    EXPECT_EQ(window->files(Side::Right)->listCount(), 2);
    EXPECT_EQ(value("APPLICATION", "LASTREFRESH"), "");
}

TEST_F(CommandsTest, MatchMovesThePaneNotClickedLast) {
    start();
    window->dir(Side::Left)->setPath(left);
    window->dir(Side::Right)->setPath(right);
    frame->action("mnu_Match")->trigger(); // nothing clicked yet: the right pane moves
    EXPECT_EQ(window->dir(Side::Right)->path(), left);
    EXPECT_EQ(value("LASTFILE", "DIRTWO"), left);

    window->dir(Side::Right)->setPath(right);
    pv::globals().setClicked(pv::ClickedControl::FileTwo);
    frame->action("mnu_Match")->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), right);
    EXPECT_EQ(value("LASTFILE", "DIRONE"), right);
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(CommandsTest, ParallelAppendsTheClickedSidesLastComponent) {
    const std::string oldSrc = home.mkdir("old/src");
    const std::string newer = home.mkdir("new");
    const std::string newSrc = home.mkdir("new/src");
    start();
    window->dir(Side::Left)->setPath(oldSrc);
    window->dir(Side::Right)->setPath(newer);
    pv::globals().setClicked(pv::ClickedControl::Dir1);
    frame->action("mnu_Match_Parallel")->trigger();
    EXPECT_EQ(window->dir(Side::Right)->path(), newSrc);

    // Right clicked last: the right pane is the source; the left goes to old/src/src,
    // which does not exist, so the step is skipped silently.
    pv::globals().setClicked(pv::ClickedControl::Dir2);
    frame->action("mnu_Match_Parallel")->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), oldSrc);
    EXPECT_TRUE(prompts.messages.empty());

    home.mkdir("src");
    window->dir(Side::Left)->setPath(home.str());
    frame->action("mnu_Match_Parallel")->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), home / "src");
}

TEST_F(CommandsTest, AdditionalWindowsTakeNewIndexesTheirCaptionsAndSections) {
    write("LASTFILE1", "DIRONE", left);
    write("LASTFILE2", "DIRONE", right);
    write("NETWORKDRIVES", "ITEM0", "//srv/share");
    start();
    pv::Pairview* one = frame->CompareForm_Additional_Click();
    pv::Pairview* two = frame->CompareForm_Additional_Click();
    EXPECT_EQ(one->windowTitle().toStdString(), "Additional Pairview:1");
    EXPECT_EQ(two->windowTitle().toStdString(), "Additional Pairview:2");
    EXPECT_EQ(one->tag().toStdString(), "1");
    EXPECT_EQ(one->section(), "LASTFILE1");
    EXPECT_EQ(one->dir(Side::Left)->path(), left);
    EXPECT_EQ(two->dir(Side::Left)->path(), right);
    EXPECT_EQ(pv::globals().activeCompareTag, "2");
    EXPECT_EQ(frame->activeCompareWindow(), two);
    // The load runs twice and the network combos are not cleared in between.
    EXPECT_EQ(one->networkDrive(Side::Left)->findText("//srv/share", Qt::MatchExactly), 0);
    int copies = 0;
    for (int i = 0; i < one->networkDrive(Side::Left)->count(); ++i)
        copies += one->networkDrive(Side::Left)->itemText(i) == "//srv/share";
    EXPECT_EQ(copies, 2);

    frame->closeThisForm("PAIRVIEW");
    frame->action("CompareForm_Additional")->trigger();
    QApplication::processEvents();
    auto windows = openCompareWindows();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(windows[0]->windowTitle().toStdString(), "Additional Pairview:3");
}

TEST_F(CommandsTest, CompareFormClosesEveryCompareWindowAndOpensTheFirstAgain) {
    start();
    frame->CompareForm_Additional_Click();
    write("LASTFILE", "DIRONE", left); // read again by the new load
    frame->action("CompareForm")->trigger();
    QApplication::processEvents();
    auto windows = openCompareWindows();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_TRUE(windows[0]->tag().isEmpty());
    EXPECT_EQ(windows[0]->dir(Side::Left)->path(), left);
}

TEST_F(CommandsTest, RecentItemSetsTheLeftPaneAndOpensTheFile) {
    write("RECENTFILES", "ITEM0", left + "/B.H");
    write("APPLICATION", "EDITOR", editor);
    start();
    QAction* item = frame->arrayItem("Recent", 1);
    ASSERT_TRUE(item->isVisible());
    item->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    EXPECT_EQ(window->files(Side::Left)->selectedName(), "b.h");
    EXPECT_EQ(editorArgs(), "[" + left + "/B.H]\n");
    EXPECT_FALSE(frame->arrayItem("Recent", 0)->isEnabled());
}

TEST_F(CommandsTest, RecentItemOfAVanishedDirectoryIsReportedWithItsCaption) {
    write("RECENTFILES", "ITEM0", home / "gone/x.txt");
    start();
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
}

TEST_F(CommandsTest, EditorThatCannotStartIsReportedByTheCommand) {
    write("APPLICATION", "EDITOR", home / "no-such-editor");
    start();
    frame->action("mnu_ShowCaptureFileName")->trigger();
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0].rfind("Capture_FileName in Editor\r\n", 0), 0u);
}

TEST_F(CommandsTest, InternalEditorShowsTheFileOrSaysWhyNot) {
    write("APPLICATION", "EDITOR", "INTERNAL");
    const std::string file = home.write("a b/x.txt", "line one\r\nline two\r\n");
    start();
    EXPECT_EQ(frame->runEditor(file), 0);
    auto* editor = frame->mdiArea()->findChild<pv::frmNotePad*>("frmNotePad");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "line one\nline two\n");
    EXPECT_FALSE(editor->textBox()->isReadOnly());
    EXPECT_EQ(editor->caption(), file);

    frame->runEditor(home / "missing.txt");
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0].rfind("Can't open file: " + home / "missing.txt" + "\r\n", 0),
              0u);
}

TEST_F(CommandsTest, UseAssociatedTogglesAndIsStored) {
    start();
    QAction* a = frame->action("UseAssociated");
    const bool before = a->isChecked();
    a->trigger();
    EXPECT_NE(a->isChecked(), before);
    EXPECT_EQ(value("APPLICATION", "ASSOCIATED"), a->isChecked() ? "YES" : "NO");
    a->trigger();
    EXPECT_EQ(a->isChecked(), before);
    EXPECT_EQ(value("APPLICATION", "ASSOCIATED"), a->isChecked() ? "YES" : "NO");
}

TEST_F(CommandsTest, OpenWithItemsOpenTheSelectedFile) {
    write("EDITORS", "ITEM0", editor);
    start();
    window->dir(Side::Left)->setPath(left);
    window->dir(Side::Right)->setPath(right);
    QAction* item = frame->arrayItem("mnuEditor", 1);
    ASSERT_EQ(item->text().toStdString(), editor);

    item->trigger(); // nothing selected
    EXPECT_EQ(prompts.messages, std::vector<std::string>{pv::kSelectFileLastClicked});

    window->files(Side::Left)->setListIndex(0);
    window->files(Side::Right)->setListIndex(0);
    pv::globals().setClicked(pv::ClickedControl::Dir2);
    item->trigger();
    EXPECT_EQ(editorArgs(), "[" + right + "/a.cpp]\n");
}

TEST_F(CommandsTest, OpenByAssociationNeedsASelection) {
    start();
    window->dir(Side::Left)->setPath(left);
    frame->OpenByAssociation_Click(window);
    EXPECT_EQ(prompts.messages, std::vector<std::string>{pv::kSelectFileFirst});
}

TEST_F(CommandsTest, ArrangeTilesAndCascades) {
    start();
    frame->CompareForm_Additional_Click();
    frame->resize(1000, 800);
    QApplication::processEvents();
    auto subs = frame->mdiArea()->subWindowList();
    ASSERT_EQ(subs.size(), 2);

    frame->action("Vertical")->trigger();
    EXPECT_EQ(subs[0]->y(), subs[1]->y());
    EXPECT_NE(subs[0]->x(), subs[1]->x());
    EXPECT_EQ(subs[0]->width() + subs[1]->width(), frame->mdiArea()->viewport()->width());

    frame->action("Horizontal")->trigger();
    EXPECT_EQ(subs[0]->x(), subs[1]->x());
    EXPECT_NE(subs[0]->y(), subs[1]->y());
    EXPECT_EQ(subs[0]->height() + subs[1]->height(), frame->mdiArea()->viewport()->height());

    frame->action("Cascade")->trigger();
    EXPECT_NE(subs[0]->pos(), subs[1]->pos());
    EXPECT_FALSE(subs[0]->isMaximized());
}

TEST_F(CommandsTest, ShowIniButtonOpensTheSettingsFileInTheTextEditor) {
    start();
    frame->ShowINI_Click(window);
    EXPECT_EQ(editorArgs(), "[" + ini + "]\n");
    EXPECT_GT(window->lastTask, 0);
}

// With associations on, a double click opens the file with the program of its type.
TEST_F(CommandsTest, AssociatedProgramOpensTheFileAndWindowKeepsTheTask) {
    pvtest::EnvGuard path("PATH", tools.str() + ":" + std::string(std::getenv("PATH")));
    pvtest::EnvGuard data("XDG_DATA_HOME", tools / "data");
    pvtest::EnvGuard dirs("XDG_DATA_DIRS", tools / "none");
    pvtest::writeExecutable(
        tools, "xdg-mime",
        "case \"$2\" in filetype) echo text/plain;; default) echo ed.desktop;; esac\n");
    tools.write("data/applications/ed.desktop", "[Desktop Entry]\nExec=ed-program %f\n");
    const std::string openLog = tools / "open.log";
    pvtest::writeRecorder(tools, "xdg-open", openLog);
    write("APPLICATION", "ASSOCIATED", "YES");
    start();
    ASSERT_TRUE(frame->action("UseAssociated")->isChecked());
    window->dir(Side::Left)->setPath(left);
    window->files(Side::Left)->setListIndex(2);
    window->FileOneList_DblClick();
    EXPECT_EQ(pvtest::waitForLine(openLog), "[" + left + "/c.txt]\n");

    // The window's own button keeps the task number of what it started.
    std::filesystem::remove(openLog);
    window->lastTask = 0;
    frame->OpenByAssociation_Click(window);
    EXPECT_EQ(pvtest::waitForLine(openLog), "[" + left + "/c.txt]\n");
    EXPECT_GT(window->lastTask, 0);

    // A script is not run: it opens in the text editor, after a warning.
    home.write("left/run.cmd", "x");
    window->files(Side::Left)->refresh();
    window->files(Side::Left)->setListIndex(window->files(Side::Left)->listCount() - 1);
    ASSERT_EQ(window->files(Side::Left)->selectedName(), "run.cmd");
    window->FileOneList_DblClick();
    EXPECT_EQ(editorArgs(), "[" + left + "/run.cmd]\n");
    EXPECT_EQ(prompts.messages, std::vector<std::string>{pv::kExecutableWarning});
}
