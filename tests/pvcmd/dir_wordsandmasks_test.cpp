#include "pvcmd/toolsupport.h"
#include "pvcmd/wildcard.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

struct MaskRow {
    const char* mask;
    const char* name;
    bool matches;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const MaskRow& row, std::ostream* os) {
    *os << row.mask << " vs " << row.name;
}

class MaskMatching : public ::testing::TestWithParam<MaskRow> {};

TEST_P(MaskMatching, AsTheCommandToolsDo) {
    EXPECT_EQ(pvcmd::Wildcard(GetParam().mask).matches(GetParam().name), GetParam().matches)
        << GetParam().mask << " vs " << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(
    Masks, MaskMatching,
    ::testing::Values(MaskRow{"*.*", "noext", true}, MaskRow{"*.*", "a.b.c", true},
                      MaskRow{"a.*", "a", true}, MaskRow{"a.*", "ab", false},
                      MaskRow{"*.TXT", "read.me.txt", true}, MaskRow{"*.c", "x.cpp", false},
                      MaskRow{"?.c", "ab.c", false}, MaskRow{"?.c", "a.c", true},
                      MaskRow{"a*b*c", "aXbYbZc", true}, MaskRow{"a*b*c", "aXbYcZ", false},
                      MaskRow{"Exact.Name", "exact.name", true}));

pvcmd::SwitchRecogniser knownLetters(std::string letters) {
    return [letters](std::string_view piece) {
        return piece.size() == 1 && letters.find(piece[0]) != std::string::npos;
    };
}

TEST(SwitchWords, ConcatenatedSwitchesSplit) {
    auto word = pvcmd::classifyWord("/b/s", knownLetters("bs"));
    EXPECT_EQ(word.kind, pvcmd::WordKind::Switches);
    EXPECT_EQ(word.switches, (std::vector<std::string>{"b", "s"}));
}

TEST(SwitchWords, AbsolutePathsAreOperands) {
    EXPECT_EQ(pvcmd::classifyWord("/home/user/a.txt", knownLetters("hs")).kind,
              pvcmd::WordKind::Operand);
    // Two separators in a row: a path joined onto the root, never switches.
    EXPECT_EQ(pvcmd::classifyWord("//s", knownLetters("s")).kind, pvcmd::WordKind::Operand);
    EXPECT_EQ(pvcmd::classifyWord("relative/s", knownLetters("s")).kind, pvcmd::WordKind::Operand);
}

TEST(SwitchWords, ExistingTopLevelNameIsAPath) {
    EXPECT_EQ(pvcmd::classifyWord("/tmp", knownLetters("s")).kind, pvcmd::WordKind::Operand);
}

TEST(SwitchWords, UnknownSwitchIsNamed) {
    auto word = pvcmd::classifyWord("/q", knownLetters("s"));
    EXPECT_EQ(word.kind, pvcmd::WordKind::BadSwitch);
    EXPECT_EQ(word.badSwitch, "/q");
    // With an unknown piece among several, the word reads as a path instead.
    EXPECT_EQ(pvcmd::classifyWord("/s/q", knownLetters("s")).kind, pvcmd::WordKind::Operand);
}

TEST(Numbers, ThousandsSeparators) {
    EXPECT_EQ(pvcmd::withThousands(0), "0");
    EXPECT_EQ(pvcmd::withThousands(999), "999");
    EXPECT_EQ(pvcmd::withThousands(1000), "1,000");
    EXPECT_EQ(pvcmd::withThousands(10452459520ULL), "10,452,459,520");
}

} // namespace
