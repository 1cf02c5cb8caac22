#include "compare/panecopy.h"

#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using pv::CopyPane;
using pv::kLeftToRight;
using pv::kRightToLeft;

TEST(PaneCopy, DirectionFollowsTheSelections) {
    const CopyPane left{"/l", "a.txt", {"a.txt", "b.txt"}};
    const CopyPane right{"/r", "z.txt", {"z.txt", "A.TXT"}};
    const CopyPane leftNone{"/l", std::nullopt, {"a.txt"}};
    const CopyPane rightNone{"/r", std::nullopt, {"A.TXT"}};
    struct Row {
        const char* name;
        CopyPane left, right;
        std::optional<int> direction;
        bool planned;
        int direction2;
        const char* source;
        const char* destination;
        bool overwrite;
    } rows[] = {
        {"only the right selected switches to right to left", leftNone, right, kLeftToRight, true,
         kRightToLeft, "/r/z.txt", "/l/z.txt", false},
        {"only the left selected switches to left to right", left, rightNone, kRightToLeft, true,
         kLeftToRight, "/l/a.txt", "/r/a.txt", true},
        {"both selected: the chosen direction stands", left, right, kLeftToRight, true,
         kLeftToRight, "/l/a.txt", "/r/a.txt", true},
        {"both selected, right to left", left, right, kRightToLeft, true, kRightToLeft, "/r/z.txt",
         "/l/z.txt", false},
        {"no direction chosen", left, right, std::nullopt, false, 0, "", "", false},
        {"nothing selected", leftNone, rightNone, kLeftToRight, false, 0, "", "", false},
    };
    for (const Row& r : rows) {
        auto plan = pv::planCopy(r.left, r.right, r.direction);
        ASSERT_EQ(plan.has_value(), r.planned) << r.name;
        if (!plan)
            continue;
        EXPECT_EQ(plan->direction, r.direction2) << r.name;
        EXPECT_EQ(plan->source, r.source) << r.name;
        EXPECT_EQ(plan->destination, r.destination) << r.name;
        EXPECT_EQ(plan->overwrite, r.overwrite) << r.name;
    }
    EXPECT_EQ(pv::normalizeCopyDirection(true), kLeftToRight);
    EXPECT_EQ(pv::normalizeCopyDirection(false), kRightToLeft);
}

TEST(PaneCopy, QuestionWarnsOnlyWhenTheDestinationIsListed) {
    pv::CopyPlan plan{kLeftToRight, "/l/readme.txt", "/r/readme.txt", false};
    EXPECT_EQ(pv::copyConfirmationText(plan),
              "Confirm copy of /l/readme.txt\r\nTo /r/readme.txt\r\n");
    plan.overwrite = true;
    EXPECT_EQ(pv::copyConfirmationText(plan),
              "Confirm copy of /l/readme.txt\r\nTo /r/readme.txt\r\n\r\n"
              "!!! THE DESTINATION file will be OVERLAYED !!!");
}

class PaneCopyFiles : public ::testing::Test {
  protected:
    PaneCopyFiles() {
        left = dir.mkdir("left");
        right = dir.mkdir("right");
        source = dir.write("left/a.txt", "new text");
        pvtest::setMTime(source, 1000000000);
    }
    std::optional<int> copy(const std::string& rightPath) {
        return pv::copySelected({left, "a.txt", {"a.txt"}}, {rightPath, std::nullopt, {}},
                                kRightToLeft);
    }
    pvtest::TempDir dir;
    pvtest::RecordingPrompter prompts;
    std::string left, right, source;
};

// The destination list is empty, but the file is on disk: the warning is given.
TEST_F(PaneCopyFiles, YesCopiesContentAndModificationTime) {
    dir.write("right/a.txt", "old");
    prompts.confirmAnswers.push_back(true);
    EXPECT_EQ(copy(right), kLeftToRight);
    EXPECT_EQ(prompts.messages[0],
              "Confirm copy of " + source + "\r\nTo " + right +
                  "/a.txt\r\n\r\n!!! THE DESTINATION file will be OVERLAYED !!!");
    EXPECT_EQ(pvtest::readFile(right + "/a.txt"), "new text");
    struct stat st;
    ASSERT_EQ(::stat((right + "/a.txt").c_str(), &st), 0);
    EXPECT_EQ(st.st_mtime, 1000000000);
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.titles[0], "Copy Confirmation");
    EXPECT_EQ(prompts.messages[1], "sucessful copy");
}

TEST_F(PaneCopyFiles, NoCopiesNothing) {
    prompts.confirmAnswers.push_back(false);
    copy(right);
    EXPECT_FALSE(std::filesystem::exists(right + "/a.txt"));
    EXPECT_EQ(prompts.messages.back(), "Aborting copy by client request");
}

TEST_F(PaneCopyFiles, NoSelectionIsACriticalStop) {
    EXPECT_EQ(pv::copySelected({left, std::nullopt, {}}, {right, std::nullopt, {}}, kLeftToRight),
              kLeftToRight);
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0], "Please select an item form either of the file lists");
    EXPECT_EQ(prompts.titles[0], "Chose from lists");
    EXPECT_EQ(prompts.icons[0], pv::MessageIcon::Critical);
}

TEST_F(PaneCopyFiles, FailureGivesTheSystemsReasonAndChangesNothing) {
    prompts.confirmAnswers.push_back(true);
    copy(dir / "gone");
    EXPECT_EQ(prompts.messages.back(), "failed 0\r\nresult 0\r\nNo such file or directory");
    if (::geteuid() == 0)
        GTEST_SKIP() << "permissions do not bind the superuser";
    const std::string kept = dir.write("right/a.txt", "old");
    ::chmod(right.c_str(), 0555);
    prompts.confirmAnswers.push_back(true);
    copy(right);
    EXPECT_EQ(prompts.messages.back(), "failed 0\r\nresult 0\r\nPermission denied");
    EXPECT_EQ(pvtest::readFile(kept), "old");
    ::chmod(right.c_str(), 0755);
    ::chmod(kept.c_str(), 0444);
    prompts.confirmAnswers.push_back(true);
    copy(right);
    EXPECT_EQ(prompts.messages.back(), "failed 0\r\nresult 0\r\nPermission denied");
    EXPECT_EQ(pvtest::readFile(kept), "old");
}
