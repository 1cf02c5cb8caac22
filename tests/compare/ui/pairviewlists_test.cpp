#include "compare/ui/dirlistbox.h"
#include "compare/ui/filelistbox.h"
#include "support/qt/runningprogram.h"

#include <QListWidget>
#include <QPushButton>
#include <QTest>

using pv::Side;

namespace {

class PairviewCopyTest : public pvtest::TwoTreesTest {};

} // namespace

TEST_F(PairviewCopyTest, CopySelectedCopiesIntoTheOtherPaneWithoutRereadingIt) {
    start();
    window->dir(Side::Left)->setPath(left);
    window->dir(Side::Right)->setPath(right);
    auto* copyList = window->findChild<QListWidget*>("CopyList");
    ASSERT_EQ(copyList->currentRow(), 0);

    // A click anywhere in the direction list selects one of its two items.
    QTest::mouseClick(copyList->viewport(), Qt::LeftButton, {},
                      copyList->visualItemRect(copyList->item(1)).center());
    EXPECT_EQ(copyList->currentRow(), 1);

    // Only the left file is selected: the direction turns to left to right.
    window->files(Side::Left)->setListIndex(1);
    prompts.confirmAnswers.push_back(true);
    window->findChild<QPushButton*>("CopySelected")->click();
    EXPECT_EQ(copyList->currentRow(), 0);
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.messages[0], "Confirm copy of " + left + "/b.h\r\nTo " + right + "/b.h\r\n");
    EXPECT_EQ(prompts.messages[1], "sucessful copy");
    EXPECT_EQ(pvtest::readFile(right + "/b.h"), "2");
    EXPECT_EQ(window->files(Side::Right)->names(), std::vector<std::string>{"a.cpp"});
}
