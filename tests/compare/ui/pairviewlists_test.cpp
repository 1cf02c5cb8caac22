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

TEST_F(PairviewCopyTest, CopySelectedCopiesIntoTheOtherPaneAndRereadsIt) {
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
    // The right list is read again.
    EXPECT_EQ(window->files(Side::Right)->names(), (std::vector<std::string>{"a.cpp", "b.h"}));

    // A file another program made moves the selected b.h down: the selection
    // follows the name.
    home.write("right/0.h", "other");
    window->files(Side::Right)->setListIndex(1); // b.h
    window->files(Side::Left)->setListIndex(2);  // c.txt
    prompts.confirmAnswers.push_back(true);
    window->findChild<QPushButton*>("CopySelected")->click();
    EXPECT_EQ(window->files(Side::Right)->names(),
              (std::vector<std::string>{"0.h", "a.cpp", "b.h", "c.txt"}));
    EXPECT_EQ(window->files(Side::Right)->selectedName(), "b.h");
}
