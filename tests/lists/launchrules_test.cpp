#include "lists/launchrules.h"

#include <gtest/gtest.h>

namespace {

TEST(LaunchRules, ExecutableTypeIsASubstringTest) {
    struct Row {
        const char* path;
        bool executable;
    } rows[] = {
        {"/a/setup.exe", true},
        {"/a/run.CMD", true},
        {"/a/x.bat", true},
        {"/a/keys.reg", true},
        {"/tools.exe.d/readme.txt", true},
        {"/a/readme.txt", false},
        {"/a/exe", false},
        {"/a/x.ex", false},
        {"\"/a/b.Bat\"", true},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::isExecutableType(r.path), r.executable) << r.path;
}

TEST(LaunchRules, DoubledQuotesCollapseLeftToRight) {
    struct Row {
        const char* in;
        const char* out;
    } rows[] = {
        {"e  c -f \"\"/a b\"\"", "e  c -f \"/a b\""},
        {"\"\"\"", "\"\""}, // three quotes: the first pair collapses, the third stays
        {"\"\"\"\"", "\"\""},
        {"no quotes", "no quotes"},
        {"\"one\"", "\"one\""},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::collapseDoubledQuotes(r.in), r.out) << r.in;
}

TEST(LaunchRules, ChosenConnectionIsTheLastCheckedFromOne) {
    EXPECT_EQ(pv::chosenConnectionIndex({}), 1);
    EXPECT_EQ(pv::chosenConnectionIndex({true, false, false}), 1); // item 0 is not searched
    EXPECT_EQ(pv::chosenConnectionIndex({false, false, false, true}), 3);
    EXPECT_EQ(pv::chosenConnectionIndex({false, false, true, false, true}), 4);
}

TEST(LaunchRules, FileToOpenFollowsSelectionAndLastClickedSide) {
    const pv::PaneSelection left{"/l", "a.txt"}, right{"/r", "b.txt"};
    const pv::PaneSelection leftNone{"/l", std::nullopt}, rightNone{"/r", std::nullopt};
    const pv::PaneSelection rootPane{"/", "c.txt"};
    EXPECT_EQ(pv::fileToOpen(left, right, true), "\"/r/b.txt\"");
    EXPECT_EQ(pv::fileToOpen(left, right, false), "\"/l/a.txt\"");
    EXPECT_EQ(pv::fileToOpen(leftNone, right, false), "\"/r/b.txt\"");
    EXPECT_EQ(pv::fileToOpen(left, rightNone, true), "\"/l/a.txt\"");
    EXPECT_EQ(pv::fileToOpen(leftNone, rightNone, true), std::nullopt);
    EXPECT_EQ(pv::fileToOpen(rootPane, rightNone, false), "\"/c.txt\"");
}

} // namespace
