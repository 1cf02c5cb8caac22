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

struct Pair {
    std::string file1, dir1, file2, dir2;
    bool operator==(const Pair&) const = default;
};
using Pairs = std::vector<Pair>;

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

// A results list holding kBlocks, recording the single compares and the
// side-by-side views it asks for.
struct Recorded {
    ResultsList r;
    ResultsView* list = r.findChild<ResultsView*>("List1");
    Pairs compared, shown;
    explicit Recorded(bool filled = true) {
        r.setSingleCompare([this](const std::string& f1, const std::string& d1,
                                  const std::string& f2, const std::string& d2) {
            compared.push_back({f1, d1, f2, d2});
        });
        r.setSideBySide([this](const std::string& f1, const std::string& d1, const std::string& f2,
                               const std::string& d2) {
            shown.push_back({f1, d1, f2, d2});
        });
        if (filled)
            add(kBlocks);
    }
    void add(const std::vector<std::string>& lines) {
        for (const auto& l : lines)
            r.addLine(l);
        r.lineCount(); // hands the lines to the view
    }
    // Clicks the mouse on a row of the list.
    void click(int row) {
        QRect rect = list->visualRect(list->model()->index(row, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rect.center());
    }
};

} // namespace

TEST(ResultsList, CaptionsAndFixedPitchFont) {
    ResultsList r;
    EXPECT_EQ(r.windowTitle(), "ResultsList");
    EXPECT_EQ(r.findChild<QPushButton*>("NextDifference")->text(), "Next Difference");
    EXPECT_EQ(r.findChild<QPushButton*>("PrintButton")->text(), "print");
    EXPECT_EQ(r.findChild<QPushButton*>("SideBySide")->text(), "Side by Side");
    // A fixed-pitch font is asked for (whether one is installed is the system's matter).
    EXPECT_TRUE(r.findChild<ResultsView*>("List1")->font().fixedPitch());
}

TEST(ResultsList, SelectingAPairLineComparesItWithItsBlocksDirectories) {
    Recorded t;
    t.r.selectLine(5); // one only: nothing
    t.r.selectLine(10);
    EXPECT_EQ(t.compared, (Pairs{{"z.txt", "/a/s", "z.txt", "/b/s"}}));
    // While a compare runs, selections do nothing.
    t.r.setCntl("Process");
    t.r.selectLine(11);
    EXPECT_EQ(t.compared.size(), 1u);
}

// A mouse click on the line that is already selected compares it again, however
// the line came to be selected.
TEST(ResultsList, ClickOnTheSelectedLineComparesAgain) {
    struct Row {
        const char* name;
        std::function<void(Recorded&)> select;
    };
    const Row rows[] = {
        {"selected by a single compare", [](Recorded& t) { t.r.selectLine(4); }},
        {"selected by the arrow keys",
         [](Recorded& t) {
             t.list->setFocus();
             t.list->setCurrentIndex(t.list->model()->index(10, 0));
             QTest::keyClick(t.list, Qt::Key_Down);
         }},
        {"selected by a running compare",
         [](Recorded& t) {
             t.r.setCntl("Process");
             t.r.initializeProgress(1);
             t.r.addLine("2 -matched-   2   v.txt");
             // The list is painted, and follows its last line, at most every 40 ms.
             QTest::qWait(60);
             t.r.repaint();
             t.r.completeProgress();
             t.r.setCntl("");
         }},
        {"selected by Next Difference", [](Recorded& t) { t.r.NextDifference_Click(); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Recorded t;
        t.r.show();
        row.select(t);
        ASSERT_GE(t.r.selectedLine(), 4);
        const size_t before = t.compared.size();
        t.click(t.r.selectedLine());
        ASSERT_EQ(t.compared.size(), before + 1);
        const std::string line = t.list->currentIndex().data().toString().toStdString();
        EXPECT_EQ(t.compared.back().file1, line.substr(line.find_last_of(' ') + 1));
    }
}

TEST(ResultsList, SideBySideShowsThePairOfTheSelectedLineOnPurposeOnly) {
    Recorded t;
    t.r.show();
    t.r.selectLine(4); // a click: fc only
    EXPECT_EQ(t.compared.size(), 1u);
    EXPECT_TRUE(t.shown.empty());
    auto* button = t.r.findChild<QPushButton*>("SideBySide");
    button->click();
    t.r.selectLine(6); // statistics: no pair
    button->click();
    t.list->setFocus();
    t.r.selectLine(10);
    QTest::keyClick(t.list, Qt::Key_Return);
    // A double-click reaches a widget as a press, a release, then the double-click.
    t.click(11);
    QRect rect = t.list->visualRect(t.list->model()->index(11, 0));
    QTest::mouseDClick(t.list->viewport(), Qt::LeftButton, {}, rect.center());
    EXPECT_EQ(t.shown, (Pairs{{"x.txt", "/a", "x.txt", "/b"},
                              {"z.txt", "/a/s", "z.txt", "/b/s"},
                              {"w.txt", "/a/s", "w.txt", "/b/s"}}));
    EXPECT_EQ(t.r.selectedLine(), 11) << "Enter does not move the selection";
}

TEST(ResultsList, NextDifferenceStepsWrapsAndSaysSo) {
    pvtest::RecordingPrompter prompter;
    Recorded t(false);
    t.r.NextDifference_Click();
    EXPECT_EQ(prompter.messages, std::vector<std::string>{"Not found"});
    t.add(kBlocks);
    for (int expected : {4, 11, 1, 4}) {
        t.r.NextDifference_Click();
        EXPECT_EQ(t.r.selectedLine(), expected);
    }
    EXPECT_EQ(prompter.messages.back(), "End of list. Reset search to position 1");
    EXPECT_EQ(t.compared.size(), 3u); // the wrap selects line 1, which names no pair
}

TEST(ResultsList, PrintWritesTheListAndOpensIt) {
    pvtest::TempDir dir;
    ResultsList r;
    std::vector<std::string> opened;
    r.setListFilePath(dir / "PairviewList.txt");
    r.setEditorLauncher([&](const std::string& p) { opened.push_back(p); });
    r.addLine("b\tc ");
    r.PrintButton_Click();
    EXPECT_EQ(pvtest::readFile(dir / "PairviewList.txt"),
              "Print file compare:Start\r\n\r\nb\tc \r\n");
    // An unwritable list file is passed over; the editor is still asked.
    r.setListFilePath(dir / "no/such/dir/PairviewList.txt");
    r.PrintButton_Click();
    EXPECT_EQ(opened, (std::vector<std::string>{dir / "PairviewList.txt",
                                                dir / "no/such/dir/PairviewList.txt"}));
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
    EXPECT_EQ(bar->maximum(), 100000);
    EXPECT_EQ(bar->value(), 33333);
    EXPECT_EQ(r.progressText(), "33.333");
}

// However the paints fell while a compare appended, it ends with its last entry
// line selected (the statistics after it do not move the selection), and that
// selection compares nothing.
TEST(ResultsList, CompareEndsWithItsLastEntrySelected) {
    Recorded t;
    t.r.show();
    t.r.setCntl("Process");
    t.r.addLine("Start\t2026-05-07 09:05:09");
    t.r.repaint();
    t.r.initializeProgress(2000);
    for (int n = 0; n < 2000; ++n) {
        t.r.addLine(std::to_string(n) + " -matched-   " + std::to_string(n) + "   f.txt");
        if (n == 10)
            QTest::qWait(60); // the next repaint paints, and selects this line
        t.r.repaint();
    }
    const int lastEntry = static_cast<int>(kBlocks.size()) + 2000;
    t.r.completeProgress();
    t.r.addLine("Compare stats:");
    t.r.addLine(" there were 2000 items in list one");
    QTest::qWait(60);
    t.r.repaint();
    t.r.setCntl("");
    EXPECT_EQ(t.r.lineCount(), lastEntry + 3);
    EXPECT_EQ(t.r.selectedLine(), lastEntry);
    EXPECT_TRUE(t.compared.empty());

    // A compare without entries leaves the selection where it was.
    t.r.setCntl("Process");
    t.r.initializeProgress(0);
    t.r.completeProgress();
    t.r.addLine("Compare stats:");
    t.r.repaint();
    t.r.setCntl("");
    EXPECT_EQ(t.r.selectedLine(), lastEntry);
}
