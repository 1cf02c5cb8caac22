#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairview.h"
#include "platform/runtimeerror.h"
#include "settings/settings.h"
#include "support/envguard.h"
#include "support/qt/runningprogram.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFocusEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

using pv::Side;

namespace {

class PairviewTest : public pvtest::TwoTreesTest {
  protected:
    std::vector<std::string> names(Side side) const { return window->files(side)->names(); }
};

} // namespace

TEST_F(PairviewTest, FirstStartWritesEditorAndPatternAndOpensFrame) {
    pvtest::TempDir user;
    pvtest::EnvGuard userHome("HOME", user.str());
    start();
    // The panes show the user's files, not the program directory.
    EXPECT_EQ(window->dir(Side::Left)->path(), user.str());
    EXPECT_EQ(window->dir(Side::Right)->path(), user.str());
    // A new settings file is seeded: its pattern and editor lists fill the boxes.
    EXPECT_EQ(window->filePatternCombo()->findText("*.cpp;*.h"), 14);
    EXPECT_EQ(window->editorList()->itemText(0).toStdString(), "Write.exe");
    // A maximized child adds its caption to the frame's.
    EXPECT_EQ(frame->windowTitle().left(17).toStdString(), "Pairview Utility ");
    EXPECT_EQ(window->windowTitle().toStdString(), "Directory Comparisons");
    EXPECT_EQ(pv::globals().paths.settingsPath, ini);
    EXPECT_EQ(QDir::currentPath().toStdString(), home.str());
    EXPECT_EQ(value("APPLICATION", "EDITOR"), "Write.exe");
    EXPECT_EQ(value("LASTFILE", "FILEPATTERN"), "*.*");
    EXPECT_TRUE(frame->timer()->isActive());
    EXPECT_EQ(frame->timer()->interval(), 60000);
    EXPECT_TRUE(prompts.messages.empty());
    // The editor list always offers the internal editor.
    EXPECT_GE(window->editorList()->findText("INTERNAL"), 0);
}

TEST_F(PairviewTest, EveryPaneChangeIsWrittenAndRestoredAtNextStart) {
    start();
    window->dir(Side::Left)->setPath(left);
    window->dir(Side::Right)->setPath(right);
    EXPECT_EQ(value("LASTFILE", "DIRONE"), left);
    EXPECT_EQ(value("LASTFILE", "DIRTWO"), right);
    EXPECT_EQ(names(Side::Left), (std::vector<std::string>{"a.cpp", "b.h", "c.txt"}));

    window->filePatternCombo()->setEditText("*.cpp;*.h");
    window->FilePatternCombo_Change();
    EXPECT_EQ(value("LASTFILE", "FILEPATTERN"), "*.cpp;*.h");
    EXPECT_EQ(names(Side::Left), (std::vector<std::string>{"a.cpp", "b.h"}));
    EXPECT_EQ(names(Side::Right), (std::vector<std::string>{"a.cpp"}));

    window->editorList()->setCurrentIndex(window->editorList()->findText("INTERNAL"));
    window->EditorList_Change();
    EXPECT_EQ(value("APPLICATION", "EDITOR"), "INTERNAL");

    // A second start with a pattern list that holds the stored pattern.
    pv::Settings(ini).write("APPLICATION", "FILEPATTERNLIST", "*.*,*.cpp;*.h");
    frame.reset();
    start();
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    EXPECT_EQ(window->dir(Side::Right)->path(), right);
    EXPECT_EQ(window->filePatternCombo()->count(), 2);
    EXPECT_EQ(window->filePatternCombo()->currentIndex(), 1);
    EXPECT_EQ(names(Side::Left), (std::vector<std::string>{"a.cpp", "b.h"}));
    EXPECT_EQ(window->editorList()->currentText(), "INTERNAL");
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(PairviewTest, VanishedDriveAndDirectoryFallBackToRootWithOneMessageEach) {
    pv::Settings s(ini);
    s.write("LASTFILE", "DRIVE1", "/media/no-such-drive");
    s.write("LASTFILE", "DIRONE", left);
    s.write("LASTFILE", "DIRTWO", home / "moved-away");
    start();
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(
        prompts.messages[0].rfind("SetDrive:Error The Drive 1 set was invalid. Setting to /\r\n"
                                  "This is sometimes due to changing network configurations. ",
                                  0),
        0u);
    EXPECT_EQ(prompts.messages[1].rfind("Directory:Error The Directory 2 set was invalid. Setting "
                                        "to /\r\nThis is sometimes due to changing network "
                                        "configurations or moving a folder. ",
                                        0),
              0u);
    EXPECT_EQ(window->drive(Side::Left)->drive(), "/");
    // The left directory is restored from the root, not from the stored DIRONE.
    EXPECT_EQ(window->dir(Side::Left)->path(), "/");
    EXPECT_EQ(window->dir(Side::Right)->path(), "/");
    EXPECT_EQ(value("LASTFILE", "DIRTWO"), "/");
}

// A directory removed after it was listed cannot be opened, by a change of the
// pane or a double-click: the pane keeps its stored directory and says why.
TEST_F(PairviewTest, DirectoryThatVanishesKeepsStoredValueAndSaysWhy) {
    start();
    pv::DirListBox* dir = window->dir(Side::Left);
    dir->setPath(left);
    dir->setPath(home.str());
    ASSERT_EQ(dir->item(dir->listCount() - 1), right);
    std::filesystem::remove_all(right);
    QListWidget* rows = dir;
    emit rows->itemDoubleClicked(rows->item(rows->count() - 1));
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0].rfind("Error: ", 0), 0u);
    EXPECT_NE(prompts.messages[0].find(right), std::string::npos);
    EXPECT_EQ(dir->path(), home.str());
    EXPECT_EQ(value("LASTFILE", "DIRONE"), home.str());

    dir->setPath(left);
    std::filesystem::remove_all(left);
    window->Dir1_Change();
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.messages[1].rfind("Error: ", 0), 0u);
    EXPECT_EQ(value("LASTFILE", "DIRONE"), left);
}

TEST_F(PairviewTest, SettingsFillMenusAndLists) {
    pv::Settings s(ini);
    s.write("EDITORS", "ITEM0", "Notepad.exe");
    s.write("EDITORS", "ITEM1", "internal");
    s.write("RECENTFILES", "ITEM0", "/new.txt");
    s.write("RECENTFILES", "ITEM1", "/old.txt");
    s.write("FAVORITES", "ITEM0", "/fav0");
    s.write("FAVORITES", "ITEM2", "/fav2");
    s.write("NETWORKDRIVES", "ITEM0", "//server/share");
    s.write("DIRCONTROL", "DIR_AA", "True");
    s.write("DIRCONTROL", "DIR_AA_NOT", "true");
    s.write("COMPARECONTROL", "FC_LB", "/lb50");
    s.write("ISQL", "ITEM1", "-S srv -E");
    start();
    // "internal" in any case counts: no second internal entry.
    EXPECT_EQ(window->editorList()->count(), 2);
    EXPECT_EQ(frame->arrayItem("mnuEditor", 0)->text(), "Open by association");
    EXPECT_EQ(frame->arrayItem("mnuEditor", 2)->text(), "internal");
    EXPECT_TRUE(frame->arrayItem("mnuEditor", 2)->isVisible());
    EXPECT_FALSE(frame->arrayItem("mnuEditor", 3)->isVisible());
    // The newest recent file comes last.
    EXPECT_EQ(frame->arrayItem("Recent", 1)->text(), "/old.txt");
    EXPECT_EQ(frame->arrayItem("Recent", 2)->text(), "/new.txt");
    EXPECT_FALSE(frame->arrayItem("Recent", 3)->isVisible());
    EXPECT_TRUE(frame->arrayItem("mnuFavorites", 2)->isVisible());
    EXPECT_FALSE(frame->arrayItem("mnuFavorites", 1)->isVisible());
    EXPECT_EQ(window->networkDrive(Side::Right)->findText("//server/share"), 0);
    // The load sets each item from its own key, even a contradictory pair.
    EXPECT_TRUE(frame->action("mnu_Dir_a_a")->isChecked());
    EXPECT_TRUE(frame->action("mnu_Dir_a_a_not")->isChecked());
    EXPECT_EQ(window->findChild<QLineEdit*>("fc_lb")->text(), "/lb50");
    EXPECT_TRUE(frame->arrayItem("mnu_isql", 1)->isChecked());
    EXPECT_FALSE(frame->arrayItem("mnu_isql", 0)->isVisible());
}

TEST_F(PairviewTest, SwitchClicksFollowTheExclusionRules) {
    start();
    frame->action("mnu_Options_Compare_Binary")->trigger();
    EXPECT_EQ(value("COMPARECONTROL", "FC_B"), "True");
    frame->action("mnu_Options_Compare_Ascii_a")->trigger();
    // The exclusion rules are the switch table's: here only that they reach the menu.
    EXPECT_FALSE(frame->action("mnu_Options_Compare_Binary")->isChecked());
    EXPECT_EQ(value("COMPARECONTROL", "FC_B"), "False");
}

TEST_F(PairviewTest, LastClickedFlagsFollowThePanes) {
    start();
    window->dir(Side::Left)->setPath(home.str());
    QTest::mouseClick(window->files(Side::Left)->viewport(), Qt::LeftButton);
    QTest::mousePress(window->files(Side::Left)->viewport(), Qt::RightButton);
    if (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
    EXPECT_TRUE(pv::globals().clickedFileOne);
    window->Dir_Click(Side::Right);
    EXPECT_FALSE(pv::globals().clickedFileOne);
    EXPECT_TRUE(pv::globals().clickedDir2);
    EXPECT_TRUE(pv::globals().rightSideClicked());
}

TEST_F(PairviewTest, EnterOnHighlightedDirectoryOpensIt) {
    start();
    window->dir(Side::Left)->setPath(home.str());
    pv::DirListBox* dir = window->dir(Side::Left);
    int sub = -1;
    for (int i = 0; i < dir->listCount(); ++i)
        if (dir->item(i) == left)
            sub = i;
    ASSERT_GE(sub, 0);
    dir->setListIndex(sub);
    QTest::keyClick(dir, Qt::Key_Return);
    EXPECT_EQ(dir->path(), left);
    EXPECT_EQ(value("LASTFILE", "DIRONE"), left);
    EXPECT_TRUE(pv::globals().clickedDir1);
    EXPECT_EQ(names(Side::Left).size(), 3u);
}

// The network boxes list the stored paths but select none: leaving a box, or
// opening its list, must not move the pane to the first path.
TEST_F(PairviewTest, NetworkPathsMoveThePaneOnlyWhenChosen) {
    const std::string share = home.mkdir("share");
    pv::Settings(ini).write("NETWORKDRIVES", "ITEM0", share);
    start();
    window->dir(Side::Left)->setPath(left);
    QComboBox* network = window->networkDrive(Side::Left);
    EXPECT_EQ(network->currentIndex(), -1);
    EXPECT_EQ(network->currentText().toStdString(), "UNC paths from INI");

    QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(network, &leave);
    EXPECT_EQ(window->dir(Side::Left)->path(), left);

    // Choosing the path moves the pane; opening the list later does not move it back.
    network->setCurrentIndex(0);
    emit network->activated(0);
    EXPECT_EQ(window->dir(Side::Left)->path(), share);
    window->dir(Side::Left)->setPath(left);
    QFocusEvent popup(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(network, &popup);
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    QApplication::sendEvent(network, &leave);
    EXPECT_EQ(window->dir(Side::Left)->path(), share);
    EXPECT_EQ(value("LASTFILE", "DIRONE"), share);
    EXPECT_TRUE(prompts.messages.empty());
}

// A missing path typed into the network box is reported once, though the box
// loses the focus to the message; the pane stays where it was.
TEST_F(PairviewTest, MissingNetworkPathIsReportedOnce) {
    start();
    window->dir(Side::Left)->setPath(left);
    QComboBox* network = window->networkDrive(Side::Left);
    network->clearEditText();
    QTest::keyClicks(network, QString::fromStdString(home / "gone"));
    QTest::keyClick(network, Qt::Key_Return);
    QFocusEvent leave(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(network, &leave);
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0].rfind(home / "gone" + " \r\n", 0), 0u);
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    EXPECT_EQ(value("LASTFILE", "DIRONE"), left);
}

// Enter opens the path as typed: a path visited before that begins with the
// typed text (or differs only in case) is offered, never opened in its place.
TEST_F(PairviewTest, NetworkPathOpensWhatWasTyped) {
    const std::string share = home.mkdir("usr/share");
    const std::string usr = home / "usr";
    home.mkdir("USR");
    start();
    frame->show();
    QApplication::setActiveWindow(frame.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    QComboBox* network = window->networkDrive(Side::Left);
    network->setFocus(); // completion comes only to a box that has the focus
    auto typeAndEnter = [network](const std::string& path) {
        network->clearEditText();
        QTest::keyClicks(network, QString::fromStdString(path));
        QTest::keyClick(network, Qt::Key_Return);
    };
    typeAndEnter(share);
    EXPECT_EQ(window->dir(Side::Left)->path(), share);
    typeAndEnter(usr);
    EXPECT_EQ(window->dir(Side::Left)->path(), usr);
    typeAndEnter(home / "USR");
    EXPECT_EQ(window->dir(Side::Left)->path(), home / "USR");
    EXPECT_TRUE(prompts.messages.empty());
}

// The drive list is read again when it drops down: a drive mounted after start can
// be chosen (the pane moves there, drive then directory stored), and the pane's own
// drive stays listed after it is unmounted.
TEST_F(PairviewTest, DriveListFollowsMountsWhenItDropsDown) {
    const std::string usb = home.mkdir("usb");
    home.write("usb/on-usb.txt", "x");
    auto mounts = std::make_shared<std::vector<std::string>>(std::vector<std::string>{"/"});
    auto previous = pv::DriveListBox::setDriveSource([mounts] { return *mounts; });
    start();
    pv::DriveListBox* drive = window->drive(Side::Left);
    EXPECT_EQ(drive->findText(QString::fromStdString(usb)), -1);
    EXPECT_THROW(drive->setDrive(usb), pv::RuntimeError);

    mounts->push_back(usb);
    drive->showPopup();
    drive->hidePopup();
    const int at = drive->findText(QString::fromStdString(usb));
    ASSERT_GE(at, 0);
    drive->setCurrentIndex(at);
    emit drive->activated(at);
    EXPECT_EQ(window->dir(Side::Left)->path(), usb);
    EXPECT_EQ(names(Side::Left), std::vector<std::string>{"on-usb.txt"});
    EXPECT_EQ(value("LASTFILE", "DRIVE1"), usb);
    EXPECT_EQ(value("LASTFILE", "DIRONE"), usb);

    mounts->pop_back();
    drive->showPopup();
    drive->hidePopup();
    EXPECT_EQ(drive->currentText().toStdString(), usb);
    EXPECT_EQ(drive->drive(), usb);
    // Unmounted, it can no longer be set from the settings or a command.
    drive->setDrive("/");
    EXPECT_THROW(drive->setDrive(usb), pv::RuntimeError);
    pv::DriveListBox::setDriveSource(previous);
}

// A pattern typed into the box is stored but is no item of the list: the next
// start shows it and filters the lists by it.
TEST_F(PairviewTest, StoredPatternNotInTheListIsShownAndApplied) {
    pv::Settings s(ini);
    s.write("APPLICATION", "FILEPATTERNLIST", "*.txt,*.cpp");
    s.write("LASTFILE", "FILEPATTERN", "*.h");
    s.write("LASTFILE", "DIRONE", left);
    start();
    QComboBox* combo = window->filePatternCombo();
    EXPECT_EQ(combo->count(), 2);
    EXPECT_EQ(combo->currentText().toStdString(), "*.h");
    EXPECT_EQ(names(Side::Left), std::vector<std::string>{"b.h"});
    EXPECT_EQ(value("LASTFILE", "FILEPATTERN"), "*.h");
}

TEST_F(PairviewTest, WindowsStayOpenWhileACompareRunsAndAskItToStop) {
    start();
    pv::globals().runningCompares = 1;
    frame->Close_Click();
    QApplication::processEvents();
    EXPECT_EQ(frame->defaultCompareWindow(false), window);
    EXPECT_TRUE(window->findChild<QCheckBox*>("StopProcessing")->isChecked());
    pv::globals().runningCompares = 0;
    frame->Close_Click();
    QApplication::processEvents();
    EXPECT_EQ(frame->defaultCompareWindow(false), nullptr);
    EXPECT_EQ(frame->activeCompareWindow(), nullptr);
    // The compare form comes back when asked for.
    EXPECT_NE(frame->defaultCompareWindow(true), nullptr);
}

TEST_F(PairviewTest, ArrowKeysInAFileListActLikeAClick) {
    start();
    window->dir(Side::Left)->setPath(left);
    window->dir(Side::Right)->setPath(right);
    window->Dir_Click(Side::Right);
    pv::FileListBox* files = window->files(Side::Left);
    files->setListIndex(0);
    QTest::keyClick(files, Qt::Key_Down);
    EXPECT_EQ(files->selectedName(), "b.h");
    EXPECT_TRUE(pv::globals().clickedFileOne);
    EXPECT_EQ(window->statusPanel(5).toStdString(), "file one:");
    EXPECT_EQ(window->statusPanel(6).toStdString(), "b.h");
}
