#include "platform/wildcard.h"
#include "pvcmd/filemask.h"

#include <gtest/gtest.h>

namespace {

TEST(Wildcard, MatchesAsTheCommandToolsDo) {
    struct Row {
        const char* mask;
        const char* name;
        bool matches;
    };
    // clang-format off
    const Row rows[] = {
        {"*.*", "noext", true}, {"*.*", "a.b.c", true}, {"*", "", true},
        {"a.*", "a", true}, {"a.*", "ab", false},
        {"*.txt", "a.TXT", true}, {"*.TXT", "read.me.txt", true}, {"*.txt", "a.txt.bak", false},
        {"*.c", "x.cpp", false}, {"Exact.Name", "exact.name", true}, {"[a].txt", "[A].TXT", true},
        {"?.c", "a.c", true}, {"?.c", "ab.c", false}, {"a?c", "ac", false},
        {"a*b*c", "aXbYbZc", true}, {"a*b*c", "aXbYcZ", false},
        {"*a*a*b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaac", false},
    };
    // clang-format on
    for (const Row& row : rows)
        EXPECT_EQ(pv::wildcardMatch(row.name, row.mask), row.matches)
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

} // namespace
