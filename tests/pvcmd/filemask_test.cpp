#include "pvcmd/filemask.h"

#include <gtest/gtest.h>

namespace {

struct MaskCase {
    const char* mask;
    const char* name;
    bool matches;
};

TEST(FileMask, MatchesWithoutCase) {
    const MaskCase rows[] = {
        {"*.txt", "a.TXT", true},
        {"*.txt", "a.txt.bak", false},
        {"a?c", "abc", true},
        {"a?c", "ac", false},
        {"*.*", "noext", true},
        {"*", "", true},
        {"*a*a*b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaac", false},
        {"x*y*z", "xAyBz", true},
        {"[a].txt", "[A].TXT", true},
    };
    for (const MaskCase& row : rows)
        EXPECT_EQ(pvcmd::FileMask(row.mask).matches(row.name), row.matches)
            << row.mask << " ~ " << row.name;
}

TEST(FileMask, MapsTargetNames) {
    EXPECT_EQ(pvcmd::FileMask::mapName("*", "a.txt"), "a.txt");
    EXPECT_EQ(pvcmd::FileMask::mapName("*.*", "a.b.txt"), "a.b.txt");
    EXPECT_EQ(pvcmd::FileMask::mapName("*.bak", "a.b.txt"), "a.b.bak");
    EXPECT_EQ(pvcmd::FileMask::mapName("?x*", "abc"), "axc");
    EXPECT_EQ(pvcmd::FileMask::mapName("new_*", "abcdef"), "new_ef") << "literals consume source";
    EXPECT_EQ(pvcmd::FileMask::mapName("*.*", "noext"), "noext");
}

TEST(FileMask, SplitsDirectoryAndPattern) {
    pvcmd::FileMask mask("some/dir/*.txt");
    EXPECT_EQ(mask.directory(), "some/dir/");
    EXPECT_EQ(mask.pattern(), "*.txt");
    EXPECT_TRUE(pvcmd::FileMask("nope/*.x").expand().empty());
}

} // namespace
