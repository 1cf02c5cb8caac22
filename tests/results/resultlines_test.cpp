#include "results/resultlines.h"

#include <gtest/gtest.h>

using namespace pv;

// Lines land in blocks of a mebibyte; every line must read back whole wherever
// the block ends, an empty line and one longer than a block included.
TEST(ResultLines, ReadBackAcrossBlocks) {
    ResultLines lines;
    std::vector<std::string> expected;
    auto add = [&](std::string line) {
        lines.append(line);
        expected.push_back(std::move(line));
    };
    add("");
    for (int n = 0; n < 30000; ++n)
        add("line " + std::to_string(n) + std::string(static_cast<size_t>(n % 61), '.'));
    add(std::string((std::size_t{1} << 20) + 5, 'x'));
    add("after the long one");
    add("");
    ASSERT_EQ(lines.size(), static_cast<long>(expected.size()));
    EXPECT_EQ(lines.toVector(), expected);
    EXPECT_EQ(lines.longest(), (std::size_t{1} << 20) + 5);
    EXPECT_FALSE(lines.empty());
    EXPECT_TRUE(ResultLines().empty());
}
