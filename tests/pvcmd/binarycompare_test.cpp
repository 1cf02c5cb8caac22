#include "pvcmd/binarycompare.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

TEST(BinaryCompare, FirstDifferenceAtWordAndPageEdges) {
    const size_t n = 3 * 4096 + 5; // whole pages, then a ragged tail
    const std::string a(n, 'q');
    struct Row {
        const char* name;
        size_t differs; // n: nowhere
        size_t from;
    };
    // clang-format off
    const Row rows[] = {
        {"FirstByte", 0, 0}, {"LastByteOfAWord", 7, 0}, {"FirstByteOfAWord", 8, 0},
        {"LastByteOfAPage", 4095, 0}, {"FirstByteOfAPage", 4096, 0}, {"InTheTail", n - 3, 0},
        {"LastByte", n - 1, 0}, {"Nowhere", n, 0}, {"BeforeTheStartIsSkipped", 4, 5},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::string b = a;
        if (row.differs < n)
            b[row.differs] = 'Q';
        size_t expected = row.differs < row.from ? n : row.differs;
        EXPECT_EQ(pvcmd::firstDifference(a.data(), b.data(), row.from, n), expected);
    }
}

std::FILE* memoryFile(const std::string& bytes) {
    std::FILE* f = std::tmpfile();
    std::fwrite(bytes.data(), 1, bytes.size(), f);
    std::rewind(f);
    return f;
}

TEST(BinaryCompare, DifferencesAtTheEdgesOfAReadBlockAreAllListed) {
    const size_t block = 256 * 1024;
    std::string one(2 * block + 10, '\x11');
    std::string two = one;
    for (size_t at : {size_t{0}, block - 1, block, 2 * block + 9})
        two[at] = '\x22';
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> f1(memoryFile(one), std::fclose);
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> f2(memoryFile(two), std::fclose);
    std::ostringstream out;
    EXPECT_EQ(pvcmd::BinaryCompare(out).run(f1.get(), "one", f2.get(), "two"), 1);
    EXPECT_EQ(out.str(), "00000000: 11 22\r\n0003FFFF: 11 22\r\n00040000: 11 22\r\n"
                         "00080009: 11 22\r\n\r\n");
}

} // namespace
