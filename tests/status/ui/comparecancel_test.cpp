// The progress of a sub-directory compare in the results window, and its Cancel.

#include "compare/ui/dirlistbox.h"
#include "results/ui/resultslist.h"
#include "status/ui/walkprogressbar.h"
#include "support/envguard.h"
#include "support/qt/runningprogram.h"

#include <QAction>
#include <QProgressBar>
#include <QPushButton>

using pv::Side;

namespace {

class CompareCancelTest : public pvtest::RunningProgramTest {
  protected:
    // Left l with s1, s2, s1/t; right r the same. Runs a compare with
    // sub-directories, the Cancel button clicked first; returns the list's lines
    // of that run.
    std::vector<std::string> compareWithCancel(bool confirm) {
        const std::string left = home.mkdir("l"), right = home.mkdir("r");
        for (const char* d : {"l/s1/t", "l/s2", "r/s1/t", "r/s2"})
            home.mkdir(d);
        start();
        frame->action("mnu_Options_Compare_Include_Sub_Directories")->setChecked(true);
        window->dir(Side::Left)->setPath(left);
        window->dir(Side::Right)->setPath(right);
        pv::ResultsList* results = pv::ResultsList::instance();
        const int before = results->lineCount();
        results->walkProgressBar()->cancelButton()->click();
        prompts.confirmAnswers = {confirm};
        window->findChild<QPushButton*>("Compare_Button")->click();
        EXPECT_FALSE(results->walkProgressBar()->isVisible());
        const std::vector<std::string> all = results->lines();
        return {all.begin() + before, all.end()};
    }
    pvtest::EnvGuard m_pvcmd{"PAIRVIEW_PVCMD", "/bin/true"};
};

int linesStarting(const std::vector<std::string>& lines, const std::string& start) {
    int n = 0;
    for (const std::string& l : lines)
        n += l.rfind(start, 0) == 0;
    return n;
}

} // namespace

TEST_F(CompareCancelTest, ConfirmedCancelStopsTheWalkAndSaysHowFarItGot) {
    const std::vector<std::string> lines = compareWithCancel(true);
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0], "Are you sure you want to cancel this operation?");
    EXPECT_EQ(linesStarting(lines, "Compare stopped after 1 of 3 directories\t"), 1);
    EXPECT_EQ(linesStarting(lines, "Directory 1: "), 1); // only the top pair
    EXPECT_EQ(lines.back().rfind("end of subdirectory compare\t", 0), 0u);
}

TEST_F(CompareCancelTest, NoLetsTheWalkFinish) {
    const std::vector<std::string> lines = compareWithCancel(false);
    EXPECT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(linesStarting(lines, "Compare stopped"), 0);
    EXPECT_EQ(linesStarting(lines, "Directory 1: "), 4);
    EXPECT_EQ(lines.back().rfind("end of subdirectory compare\t", 0), 0u);
}
