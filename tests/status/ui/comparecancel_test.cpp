// The progress of a sub-directory compare in the results window, and its Cancel.

#include "compare/ui/dirlistbox.h"
#include "results/ui/resultslist.h"
#include "status/ui/walkprogressbar.h"
#include "support/envguard.h"
#include "support/qt/runningprogram.h"

#include <QAction>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>

using pv::Side;

namespace {
class CompareCancelTest : public pvtest::RunningProgramTest {};
} // namespace

// Left l with s1, s2, s1/t; right r the same; the Cancel button is clicked, then
// Compare with sub-directories, and the question answered Yes.
TEST_F(CompareCancelTest, ConfirmedCancelStopsTheWalkAndSaysHowFarItGot) {
    pvtest::EnvGuard pvcmd("PAIRVIEW_PVCMD", "/bin/true");
    for (const char* d : {"l/s1/t", "l/s2", "r/s1/t", "r/s2"})
        home.mkdir(d);
    start();
    frame->action("mnu_Options_Compare_Include_Sub_Directories")->setChecked(true);
    window->dir(Side::Left)->setPath(home / "l");
    window->dir(Side::Right)->setPath(home / "r");
    pv::ResultsList* results = pv::ResultsList::instance();
    const int before = results->lineCount();
    results->walkProgressBar()->cancelButton()->click();
    prompts.confirmAnswers = {true};
    window->findChild<QPushButton*>("Compare_Button")->click();
    EXPECT_FALSE(results->walkProgressBar()->isVisible());
    EXPECT_EQ(prompts.messages,
              std::vector<std::string>{"Are you sure you want to cancel this operation?"});
    const std::vector<std::string> all = results->lines();
    auto count = [&](const std::string& start) {
        return std::count_if(all.begin() + before, all.end(),
                             [&](const std::string& l) { return l.rfind(start, 0) == 0; });
    };
    EXPECT_EQ(count("Compare stopped after 1 of 3 directories\t"), 1);
    EXPECT_EQ(count("Directory 1: "), 1); // only the top pair
    EXPECT_EQ(count("end of subdirectory compare\t"), 1);
    EXPECT_EQ(all.back(), " there were 0 unreadable sub directories"); // the totals end the list
}
