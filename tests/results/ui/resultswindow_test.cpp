#include "compare/ui/dirlistbox.h"
#include "results/ui/resultslist.h"
#include "support/envguard.h"
#include "support/qt/runningprogram.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>

#include <algorithm>

using pv::Side;

namespace {

class ResultsWindowTest : public pvtest::RunningProgramTest {
  protected:
    void pressCompare() { window->findChild<QPushButton*>("Compare_Button")->click(); }
    QWidget* activeChild() const {
        QMdiSubWindow* sub = frame->mdiArea()->activeSubWindow();
        return sub ? sub->widget() : nullptr;
    }
    // The window list of the "&Window" menu as it is when the menu opens.
    std::vector<QAction*> windowList() {
        emit frame->menu("Window")->aboutToShow();
        std::vector<QAction*> out;
        for (QAction* a : frame->menu("Window")->actions())
            if (a->objectName() == "WindowList")
                out.push_back(a);
        return out;
    }
    pvtest::EnvGuard m_pvcmd{"PAIRVIEW_PVCMD", "/bin/true"};
};

} // namespace

// Compare brings the results window forward even when it is open but covered,
// and ends with the compare's last line selected; a click on a pair line then
// compares the file named there, blanks and all.
TEST_F(ResultsWindowTest, CompareShowsTheResultsWindowWithItsLastLineSelected) {
    const std::string left = home.mkdir("left"), right = home.mkdir("right");
    for (int n = 0; n < 1500; ++n) {
        const std::string name = "file " + std::to_string(n) + ".txt";
        home.write("left/" + name, "1");
        home.write("right/" + name, n % 3 ? "1" : "22");
    }
    // Lengths only: a new settings file would also list the times.
    write("COMPARECONTROL", "LIST_Length", "True");
    start();
    window->dir(Side::Left)->setPath(left);
    window->dir(Side::Right)->setPath(right);
    for (int run = 0; run < 2; ++run) {
        SCOPED_TRACE(run);
        // The compare window in front, covering the results window.
        frame->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(window->parentWidget()));
        ASSERT_EQ(activeChild(), window);
        pressCompare();
        pv::ResultsList* results = pv::ResultsList::instance(false);
        ASSERT_NE(results, nullptr);
        EXPECT_EQ(activeChild(), results);
        // The last entry line is selected; the statistics below it are not.
        const std::vector<std::string> lines = results->lines();
        const auto stats = std::find(lines.rbegin(), lines.rend(), "Compare stats:");
        ASSERT_NE(stats, lines.rend());
        const int lastEntry = static_cast<int>(lines.rend() - stats) - 2;
        EXPECT_NE(lines[size_t(lastEntry)].find("file 999.txt"), std::string::npos);
        EXPECT_EQ(results->selectedLine(), lastEntry);
        EXPECT_EQ(lines.back().rfind("end of Directory compare\t", 0), 0u);
    }
    pv::ResultsList* results = pv::ResultsList::instance(false);
    // No difference after the last entry: the search starts over at line 1.
    results->NextDifference_Click();
    EXPECT_EQ(prompts.messages.back(), "End of list. Reset search to position 1");
    EXPECT_EQ(results->selectedLine(), 1);
    std::vector<std::string> compared;
    results->setSingleCompare(
        [&](const std::string& f1, const std::string&, const std::string& f2, const std::string&) {
            compared = {f1, f2};
        });
    const std::vector<std::string> lines = results->lines();
    for (int n = 0; n < static_cast<int>(lines.size()); ++n)
        if (lines[static_cast<size_t>(n)].find("file 42.txt") != std::string::npos) {
            results->selectLine(n);
            break;
        }
    EXPECT_EQ(compared, (std::vector<std::string>{"file 42.txt", "file 42.txt"}));
}

TEST_F(ResultsWindowTest, WindowMenuListsTheChildWindowsAndActivatesTheChosenOne) {
    start();
    pv::ResultsList* results = pv::ResultsList::instance();
    frame->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(window->parentWidget()));
    std::vector<QAction*> items = windowList();
    ASSERT_EQ(items.size(), 2u);
    std::vector<std::pair<QString, bool>> shown;
    for (QAction* a : items)
        shown.emplace_back(a->text(), a->isChecked());
    EXPECT_EQ(shown, (std::vector<std::pair<QString, bool>>{{window->windowTitle(), true},
                                                            {"ResultsList", false}}));
    items[1]->trigger();
    EXPECT_EQ(activeChild(), results);
    // The list follows the windows: it is built afresh each time the menu opens.
    items = windowList();
    ASSERT_EQ(items.size(), 2u);
    EXPECT_TRUE(items[1]->isChecked());
    EXPECT_FALSE(items[0]->isChecked());
    frame->mdiArea()->activeSubWindow()->close();
    QApplication::processEvents();
    EXPECT_EQ(windowList().size(), 1u);
}
