#include "results/ui/resultslist.h"
#include "results/ui/resultsview.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>

using namespace pv;

namespace {

struct Clicked {
    std::string file1, dir1, file2, dir2;
};

void fill(ResultsList& r, const std::vector<std::string>& lines) {
    for (const auto& l : lines)
        r.addLine(l);
}

const std::vector<std::string> kBlocks = {
    "Start\t2026-05-07 09:05:07",
    "Directory 1: /a ",
    "Directory 2: /b ",
    "seq 1\tmessage\tseq 2\tCreateDate\tFile length\tFilename",
    "0 -different- 0  - 1  - 2 x.txt",
    "1 -one only-  1  - 1      y.txt",
    "Compare stats:",
    "Start\t2026-05-07 09:05:08",
    "Directory 1: /a/s ",
    "Directory 2: /b/s ",
    "0 -matched-   0   z.txt",
    "1 -different- 1  - 4  - 5 w.txt",
};

std::string fileNameOfSelected(ResultsView* list) {
    std::string line = list->currentIndex().data().toString().toStdString();
    return line.substr(line.find_last_of(' ') + 1);
}

// Clicks the mouse on a row of the list.
void clickRow(ResultsView* list, int row) {
    QRect rect = list->visualRect(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rect.center());
}

} // namespace

TEST(ResultsList, ControlsCarryTheirNames) {
    ResultsList r;
    EXPECT_EQ(r.windowTitle(), "ResultsList");
    for (const char* name :
         {"List1", "NextDifference", "PrintButton", "ProgressBar1", "ProgressPercentage"})
        EXPECT_NE(r.findChild<QWidget*>(name), nullptr) << name;
    EXPECT_EQ(r.findChild<QPushButton*>("NextDifference")->text(), "Next Difference");
    EXPECT_EQ(r.findChild<QPushButton*>("PrintButton")->text(), "print");
    // A fixed-pitch font is asked for (whether one is installed is the system's matter).
    EXPECT_TRUE(r.findChild<ResultsView*>("List1")->font().fixedPitch());
}

TEST(ResultsList, ClicksCompareOnlyMatchedAndDifferentLinesWithTheirBlocksDirectories) {
    ResultsList r;
    std::vector<Clicked> clicks;
    r.setSingleCompare([&](const std::string& f1, const std::string& d1, const std::string& f2,
                           const std::string& d2) {
        clicks.push_back({f1, d1, f2, d2});
    });
    fill(r, kBlocks);
    r.selectLine(5);  // one only: nothing
    r.selectLine(6);  // statistics: nothing
    r.selectLine(10); // matched, second block
    r.selectLine(4);  // different, first block
    ASSERT_EQ(clicks.size(), 2u);
    EXPECT_EQ(clicks[0].file1, "z.txt");
    EXPECT_EQ(clicks[0].dir1, "/a/s");
    EXPECT_EQ(clicks[0].dir2, "/b/s");
    EXPECT_EQ(clicks[1].file2, "x.txt");
    EXPECT_EQ(clicks[1].dir1, "/a");
    // A real mouse click on the selected line compares it again.
    auto* list = r.findChild<ResultsView*>("List1");
    r.show();
    clickRow(list, 4);
    EXPECT_EQ(clicks.size(), 3u);
    // While a compare runs, selections do nothing.
    r.setCntl("Process");
    r.selectLine(11);
    EXPECT_EQ(clicks.size(), 3u);
}

// A mouse click on the line that is already selected compares it again, however
// the line came to be selected.
TEST(ResultsList, ClickOnTheSelectedLineComparesAgain) {
    struct Row {
        const char* name;
        std::function<void(ResultsList&, ResultsView*)> select;
    };
    const Row rows[] = {
        {"selected by the arrow keys",
         [](ResultsList&, ResultsView* list) {
             list->setFocus();
             list->setCurrentIndex(list->model()->index(10, 0));
             QTest::keyClick(list, Qt::Key_Down);
         }},
        {"selected by a running compare",
         [](ResultsList& r, ResultsView*) {
             r.setCntl("Process");
             r.addLine("2 -matched-   2   v.txt");
             QTest::qWait(
                 60); // the list is painted, and follows its last line, at most every 40 ms
             r.repaint();
             r.setCntl("");
         }},
        {"selected by Next Difference",
         [](ResultsList& r, ResultsView*) { r.NextDifference_Click(); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ResultsList r;
        std::vector<std::string> compared;
        r.setSingleCompare([&](const std::string& f, const std::string&, const std::string&,
                               const std::string&) { compared.push_back(f); });
        fill(r, kBlocks);
        ASSERT_EQ(r.lineCount(), static_cast<int>(kBlocks.size()));
        r.show();
        auto* list = r.findChild<ResultsView*>("List1");
        row.select(r, list);
        ASSERT_GE(r.selectedLine(), 4);
        size_t before = compared.size();
        clickRow(list, r.selectedLine());
        ASSERT_EQ(compared.size(), before + 1);
        EXPECT_EQ(compared.back(), fileNameOfSelected(list));
    }
}

TEST(ResultsList, NextDifferenceStepsWrapsAndSaysSo) {
    pvtest::RecordingPrompter prompter;
    ResultsList r;
    std::vector<std::string> compared;
    r.setSingleCompare([&](const std::string& f, const std::string&, const std::string&,
                           const std::string&) { compared.push_back(f); });
    r.NextDifference_Click();
    EXPECT_EQ(prompter.messages, std::vector<std::string>{"Not found"});
    fill(r, kBlocks);
    r.NextDifference_Click();
    EXPECT_EQ(r.selectedLine(), 4);
    r.NextDifference_Click();
    EXPECT_EQ(r.selectedLine(), 11);
    r.NextDifference_Click();
    EXPECT_EQ(r.selectedLine(), 1);
    EXPECT_EQ(prompter.messages.back(), "End of list. Reset search to position 1");
    r.NextDifference_Click();
    EXPECT_EQ(r.selectedLine(), 4);
    EXPECT_EQ(compared, (std::vector<std::string>{"x.txt", "w.txt", "x.txt"}));
}

TEST(ResultsList, PrintWritesTheListAndOpensIt) {
    pvtest::TempDir dir;
    ResultsList r;
    std::vector<std::string> opened;
    r.setListFilePath(dir / "PairviewList.txt");
    r.setEditorLauncher([&](const std::string& p) { opened.push_back(p); });
    r.PrintButton_Click();
    EXPECT_EQ(pvtest::readFile(dir / "PairviewList.txt"), "Print file compare:Start\r\n\r\n");
    fill(r, {"a", "b\tc "});
    r.PrintButton_Click();
    EXPECT_EQ(pvtest::readFile(dir / "PairviewList.txt"),
              "Print file compare:Start\r\n\r\na\r\nb\tc \r\n");
    EXPECT_EQ(opened,
              (std::vector<std::string>{dir / "PairviewList.txt", dir / "PairviewList.txt"}));
    // An unwritable list file is passed over; the editor is still asked.
    r.setListFilePath(dir / "no/such/dir/PairviewList.txt");
    r.PrintButton_Click();
    EXPECT_EQ(opened.size(), 3u);
}

TEST(ResultsList, ProgressOperations) {
    ResultsList r;
    auto* bar = r.findChild<QProgressBar*>("ProgressBar1");
    r.InitializeProgressBar1(0);
    EXPECT_EQ(bar->maximum(), 200);
    r.CompleteProgressBar1();
    EXPECT_EQ(r.progressText(), "100");
    EXPECT_EQ(bar->value(), 200);
    r.InitializeProgressBar1(100000); // beyond 16 bits
    for (int n = 0; n < 33333; ++n)
        r.IncrementProgressBar1();
    r.setCntl("");
    r.repaint();
    EXPECT_EQ(r.progressCount(), 33333);
    EXPECT_EQ(bar->maximum(), 100000);
    EXPECT_EQ(bar->value(), 33333);
    EXPECT_EQ(r.progressText(), "33.333");
}

// However the paints fell while a compare appended, it ends with its last line
// selected, and that selection compares nothing.
TEST(ResultsList, CompareEndsWithItsLastLineSelected) {
    ResultsList r;
    int compares = 0;
    r.setSingleCompare([&](const std::string&, const std::string&, const std::string&,
                           const std::string&) { ++compares; });
    fill(r, kBlocks);
    r.show();
    r.setCntl("Process");
    for (int n = 0; n < 2000; ++n) {
        r.addLine(std::to_string(n) + " -matched-   " + std::to_string(n) + "   f.txt");
        if (n == 10)
            QTest::qWait(60); // the next repaint paints, and selects this line
        r.repaint();
    }
    r.setCntl("");
    EXPECT_EQ(r.lineCount(), static_cast<int>(kBlocks.size()) + 2000);
    EXPECT_EQ(r.selectedLine(), r.lineCount() - 1);
    EXPECT_EQ(compares, 0);
}
