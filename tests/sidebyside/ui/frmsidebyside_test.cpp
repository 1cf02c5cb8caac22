#include "app/programpaths.h"
#include "app/ui/formregistry.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/filelistbox.h"
#include "platform/runtimeerror.h"
#include "results/ui/resultslist.h"
#include "sidebyside/ui/diffpane.h"
#include "sidebyside/ui/frmsidebyside.h"
#include "sidebyside/ui/sidebysidecommands.h"
#include "support/qt/runningprogram.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

using namespace pv;

namespace {

// 200 lines, one of them long enough to scroll sideways. Against the left side
// the right one has line 10 changed, a line inserted after line 60, line 150
// removed, and blanks added inside line 3 (equal under /w).
struct Pair {
    std::string left, right;
};

Pair writePair(const pvtest::TempDir& dir) {
    std::string l, r;
    for (int i = 1; i <= 200; ++i) {
        std::string line = "line " + std::to_string(i);
        if (i == 20)
            line += std::string(400, '=');
        l += line + "\n";
        if (i == 3)
            r += "line   3\n";
        else if (i == 10)
            r += "line ten\n";
        else if (i != 150)
            r += line + "\n";
        if (i == 60)
            r += "inserted\n";
    }
    return {dir.write("old/notes.txt", l), dir.write("new/notes.txt", r)};
}

frmSideBySide* openedWindow() {
    frmSideBySide* opened = nullptr;
    for (QWidget* form : FormRegistry::openForms())
        if (auto* w = qobject_cast<frmSideBySide*>(form))
            opened = w;
    return opened;
}

class SideBySideWindow : public ::testing::Test {
  protected:
    void SetUp() override {
        m_oldSettings = globals().paths.settingsPath;
        globals().paths.settingsPath = dir.write("pv.ini", "[COMPARECONTROL]\r\nFC_W=True\r\n");
        files = writePair(dir);
    }
    void TearDown() override {
        for (QWidget* form : FormRegistry::openForms())
            if (form->objectName() == "frmSideBySide")
                delete form;
        globals().paths.settingsPath = m_oldSettings;
    }
    size_t firstRowOf(frmSideBySide& w, size_t change) {
        return w.pair().diff().changes()[change].firstRow;
    }
    bool inView(DiffPane* pane, size_t row) {
        return int(row) >= pane->firstVisibleRow() &&
               int(row) < pane->firstVisibleRow() + pane->visibleRows();
    }

    pvtest::TempDir dir;
    Pair files;

  private:
    std::string m_oldSettings;
};

TEST_F(SideBySideWindow, ShowsThePairAndStepsThroughItsChanges) {
    frmSideBySide* w = frmSideBySide::open(files.left, files.right);
    ASSERT_NE(w, nullptr);
    w->resize(900, 300);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(w));
    w->activateWindow();
    EXPECT_EQ(w->windowTitle(), "notes.txt <-> notes.txt - Side by Side");
    EXPECT_EQ(w->findChild<QLabel*>("RightPath")->text().toStdString(), files.right);

    // /w starts on from the settings, so line 3's extra blanks are no change.
    EXPECT_TRUE(w->findChild<QCheckBox*>("CompressWhite")->isChecked());
    EXPECT_EQ(w->statusText().toStdString(), "change 1 of 3");
    DiffPane* left = w->pane(0);
    DiffPane* right = w->pane(1);
    const size_t first = firstRowOf(*w, 0);
    EXPECT_EQ(right->lineNumberAt(first), 10);
    EXPECT_TRUE(inView(left, first));

    QTest::keyClick(right, Qt::Key_F7);
    EXPECT_EQ(w->statusText().toStdString(), "change 2 of 3");
    const size_t inserted = firstRowOf(*w, 1);
    EXPECT_EQ(left->lineNumberAt(inserted), 0) << "an empty band on the left";
    EXPECT_EQ(right->lineNumberAt(inserted), 61);
    EXPECT_TRUE(inView(left, inserted));
    EXPECT_TRUE(inView(right, inserted));

    QTest::keyClick(left, Qt::Key_F7);
    QTest::keyClick(left, Qt::Key_F7); // the last change: stays
    EXPECT_EQ(w->statusText().toStdString(), "change 3 of 3");

    QTest::keyClick(right, Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_EQ(w->statusText().toStdString(), "change 2 of 3");
    QTest::mouseClick(w->findChild<QPushButton*>("PreviousChange"), Qt::LeftButton);
    EXPECT_EQ(w->statusText().toStdString(), "change 1 of 3");

    // Without /w line 3 differs too: a change above the view, which stays where it was.
    const int topLine = left->lineNumberAt(size_t(left->firstVisibleRow()));
    w->findChild<QCheckBox*>("CompressWhite")->setChecked(false);
    EXPECT_EQ(w->pair().diff().changes().size(), 4u);
    EXPECT_EQ(left->lineNumberAt(size_t(left->firstVisibleRow())), topLine);
    EXPECT_EQ(w->statusText().toStdString(), "change 2 of 4");
}

TEST_F(SideBySideWindow, PanesScrollTogether) {
    frmSideBySide* w = frmSideBySide::open(files.left, files.right);
    w->resize(700, 300);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(w));
    QScrollBar* lv = w->pane(0)->verticalScrollBar();
    QScrollBar* rv = w->pane(1)->verticalScrollBar();
    ASSERT_GT(lv->maximum(), 100);
    rv->setValue(37);
    EXPECT_EQ(lv->value(), 37);
    // The wheel over the left pane (whose own bar is hidden) moves both.
    QWidget* viewport = w->pane(0)->viewport();
    QWheelEvent wheel(QPointF(10, 10), viewport->mapToGlobal(QPointF(10, 10)), QPoint(),
                      QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &wheel);
    EXPECT_GT(lv->value(), 37);
    EXPECT_EQ(rv->value(), lv->value());

    auto* shared = w->findChild<QScrollBar*>("HScroll");
    ASSERT_GT(shared->maximum(), 0) << "line 20 is wider than the pane";
    shared->setValue(shared->maximum() / 2);
    EXPECT_EQ(w->pane(1)->horizontalScrollBar()->value(), shared->maximum() / 2);
    w->pane(1)->horizontalScrollBar()->setValue(5);
    EXPECT_EQ(w->pane(0)->horizontalScrollBar()->value(), 5);
}

TEST_F(SideBySideWindow, BinaryFilesShowTheirSummary) {
    const std::string a = dir.write("a.bin", std::string("ab\0cd", 5));
    const std::string b = dir.write("b.bin", std::string("ab\0xd!", 6));
    frmSideBySide* w = frmSideBySide::open(a, b);
    EXPECT_EQ(w->statusText().toStdString(), "binary files");
    EXPECT_TRUE(w->findChild<QLabel*>("BinarySummary")
                    ->text()
                    .startsWith("Binary files, first difference at offset 00000003 (3)"));
    EXPECT_FALSE(w->findChild<QCheckBox*>("IgnoreCase")->isEnabled());
}

TEST_F(SideBySideWindow, AFileThatCannotBeReadOpensNoWindow) {
    EXPECT_THROW(frmSideBySide::open(files.left, dir / "missing.txt"), RuntimeError);
    EXPECT_EQ(openedWindow(), nullptr);
}

class SideBySideFromCompareWindow : public pvtest::TwoTreesTest {};

TEST_F(SideBySideFromCompareWindow, ViewItemShowsTheSelectedPair) {
    start();
    window->dir(Side::Left)->setPath(left);
    window->dir(Side::Right)->setPath(right);
    window->files(Side::Left)->setListIndex(0); // a.cpp
    QAction* item = frame->action("ShowCompareResults_SideBySide");
    item->trigger();
    ASSERT_EQ(prompts.messages.size(), 1u) << "nothing selected on the right";
    EXPECT_EQ(prompts.messages[0],
              "Compare_Results_Side_by_Side\r\n" + std::string(kSelectBothFiles));

    window->files(Side::Right)->setListIndex(0);
    item->trigger();
    frmSideBySide* opened = openedWindow();
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->pair().rightPath(), right + "/a.cpp");
    EXPECT_EQ(opened->statusText().toStdString(), "no differences");
}

// In the main window the side-by-side window opens whole inside the frame,
// scrolled to its first change as F7 shows it, and Esc or Ctrl+W closes it.
TEST_F(SideBySideFromCompareWindow, OpensInsideTheFrameAtItsChangeAndClosesByKey) {
    std::string l, r;
    for (int i = 1; i <= 60; ++i) {
        l += "line " + std::to_string(i) + "\n";
        r += (i == 50 ? std::string("changed") : "line " + std::to_string(i)) + "\n";
    }
    const std::string leftFile = home.write("left/long.txt", l);
    const std::string rightFile = home.write("right/long.txt", r);
    start();
    frame->resize(1600, 1000);
    frame->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(frame.get()));
    for (const auto& key : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
        frmSideBySide* w = frmSideBySide::open(leftFile, rightFile);
        auto* sub = qobject_cast<QMdiSubWindow*>(w->parentWidget());
        ASSERT_NE(sub, nullptr);
        EXPECT_FALSE(sub->isMaximized());
        EXPECT_TRUE(frame->mdiArea()->viewport()->rect().contains(sub->geometry()));
        EXPECT_EQ(w->statusText().toStdString(), "change 1 of 1");
        const size_t row = w->pair().diff().changes()[0].firstRow;
        EXPECT_EQ(w->pane(1)->lineNumberAt(row), 50);
        EXPECT_EQ(w->pane(0)->firstVisibleRow(),
                  std::min(int(row) - 3, w->pane(1)->verticalScrollBar()->maximum()));
        EXPECT_NE(w->findChild<QLabel*>("Status")->toolTip().indexOf("Esc or Ctrl+W"), -1);

        QApplication::setActiveWindow(frame.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
        w->pane(1)->setFocus();
        QTest::keySequence(w->pane(1), key);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(openedWindow(), nullptr) << key.toString().toStdString();
    }
}

TEST_F(SideBySideWindow, EnterOnAResultsLineOpensItsPair) {
    ResultsList* results = ResultsList::instance();
    const std::string oldDir = files.left.substr(0, files.left.rfind('/'));
    const std::string newDir = files.right.substr(0, files.right.rfind('/'));
    for (const std::string& line :
         {std::string("Start\t2026-05-07 09:05:07"), "Directory 1: " + oldDir + " ",
          "Directory 2: " + newDir + " ", std::string("0 -different- 0  - 1  - 2 notes.txt")})
        results->addLine(line);
    results->show();
    results->selectLine(3);
    auto* list = results->findChild<QWidget*>("List1");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    frmSideBySide* opened = openedWindow();
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->pair().leftPath(), files.left);
    EXPECT_EQ(opened->pair().rightPath(), files.right);
    delete results;
}

} // namespace
