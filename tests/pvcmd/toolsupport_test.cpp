#include "pvcmd/toolsupport.h"

#include <gtest/gtest.h>

namespace {

pvcmd::SwitchRecogniser knownLetters(std::string letters) {
    return [letters](std::string_view piece) {
        return piece.size() == 1 && letters.find(piece[0]) != std::string::npos;
    };
}

TEST(SwitchWords, SwitchesPathsAndBadSwitches) {
    auto word = pvcmd::classifyWord("/b/s", knownLetters("bs"));
    EXPECT_EQ(word.kind, pvcmd::WordKind::Switches);
    EXPECT_EQ(word.switches, (std::vector<std::string>{"b", "s"}));
    word = pvcmd::classifyWord("/q", knownLetters("s"));
    EXPECT_EQ(word.kind, pvcmd::WordKind::BadSwitch);
    EXPECT_EQ(word.badSwitch, "/q");
    // Absolute paths, a path joined onto the root ("//s"), an existing top-level
    // name, and a word with an unknown piece among several are operands.
    for (const char* path : {"/home/user/a.txt", "//s", "relative/s", "/tmp", "/s/q"})
        EXPECT_EQ(pvcmd::classifyWord(path, knownLetters("hs")).kind, pvcmd::WordKind::Operand)
            << path;
}

TEST(Numbers, ThousandsSeparators) {
    EXPECT_EQ(pvcmd::withThousands(0), "0");
    EXPECT_EQ(pvcmd::withThousands(999), "999");
    EXPECT_EQ(pvcmd::withThousands(1000), "1,000");
    EXPECT_EQ(pvcmd::withThousands(10452459520ULL), "10,452,459,520");
}

} // namespace
