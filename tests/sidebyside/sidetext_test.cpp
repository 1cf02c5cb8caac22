#include "sidebyside/binarysummary.h"
#include "sidebyside/filepairdiff.h"
#include "sidebyside/sidetext.h"

#include "platform/runtimeerror.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

namespace {

TEST(SideText, KeepsLinesAsFcSplitsThemWithoutAUtf8Mark) {
    const pv::SideText t = pv::SideText::fromBytes("\xEF\xBB\xBF"
                                                   "first\r\n\nlong line\r\nlast");
    ASSERT_EQ(t.lineCount(), 4u);
    EXPECT_EQ(t.line(0), "first");
    EXPECT_EQ(t.line(1), "");
    EXPECT_EQ(t.line(3), "last");
    EXPECT_EQ(t.longestLine(), 9u);
    EXPECT_EQ(t.buffer(), "first\n\nlong line\nlast\n");
    EXPECT_FALSE(t.decodedFromUtf16());
    EXPECT_TRUE(pv::SideText::fromBytes(std::string("\xFE\xFF\0x", 4)).decodedFromUtf16());
    EXPECT_EQ(pv::SideText::fromBytes("").lineCount(), 0u);
}

TEST(SideText, AFileThatCannotBeReadNamesItself) {
    pvtest::TempDir dir;
    const std::string missing = dir / "gone.txt";
    try {
        pv::SideText::readFile(missing);
        FAIL() << "no error";
    } catch (const pv::RuntimeError& e) {
        EXPECT_NE(e.description().find(missing), std::string::npos) << e.description();
    }
    EXPECT_THROW(pv::SideText::readFile(dir.str()), pv::RuntimeError) << "a directory";
}

struct BinaryCase {
    const char* name;
    std::string left;
    std::string right;
    std::optional<std::uint64_t> firstDifference;
};

TEST(BinarySummary, FindsTheFirstDifferenceAndBothLengths) {
    // The block size of the reader is 256 KiB: a difference past it, and files
    // whose lengths end in different blocks, check the offsets across blocks.
    const std::string big(256 * 1024 + 10, 'x');
    std::string bigChanged = big;
    bigChanged[256 * 1024 + 3] = 'y';
    const BinaryCase rows[] = {
        {"Equal", "abc", "abc", std::nullopt},
        {"DifferAt2", std::string("ab\0d", 4), std::string("ab\1d", 4), 2},
        {"FirstByte", "xbc", "abc", 0},
        {"PrefixOfTheOther", "ab", "abcdef", std::nullopt},
        {"PastTheFirstBlock", big, bigChanged, 256 * 1024 + 3},
        {"LongerAcrossBlocks", "x", big + big, std::nullopt},
        {"EmptyAgainstFull", "", "abc", std::nullopt},
    };
    pvtest::TempDir dir;
    for (const BinaryCase& row : rows) {
        const std::string a = dir.write("a.bin", row.left);
        const std::string b = dir.write("b.bin", row.right);
        const pv::BinarySummary s = pv::compareBinaryFiles(a, b);
        EXPECT_EQ(s.firstDifference, row.firstDifference) << row.name;
        EXPECT_EQ(s.leftSize, row.left.size()) << row.name;
        EXPECT_EQ(s.rightSize, row.right.size()) << row.name;
        EXPECT_EQ(s.identical(), row.left == row.right) << row.name;
    }
}

TEST(BinarySummary, DecidesWhatIsBinary) {
    EXPECT_TRUE(pv::looksBinary("/d/tool.EXE", "plain text"));
    EXPECT_TRUE(pv::looksBinary("/d/data.bin", ""));
    EXPECT_TRUE(pv::looksBinary("/d/x.txt", std::string("ab\0c", 4)));
    EXPECT_FALSE(pv::looksBinary("/d/x.txt", std::string("\xFF\xFEx\0", 4))) << "UTF-16 text";
    EXPECT_FALSE(pv::looksBinary("/d/x.txt", "plain"));
    EXPECT_FALSE(pv::looksBinary("/d.exe/x", "plain")) << "the directory's dot";
    EXPECT_EQ(pv::binarySummaryText({26, 30, 31}),
              "Binary files, first difference at offset 0000001A (26); left 30 bytes, right 31 "
              "bytes");
}

TEST(FilePairDiff, ReadsTextPairsAndRealignsUnderOtherSwitches) {
    pvtest::TempDir dir;
    const std::string a = dir.write("a.txt", "One\ntwo\n");
    const std::string b = dir.write("b.txt", "one\ntwo\n");
    pv::FilePairDiff pair(a, b, {});
    EXPECT_FALSE(pair.isBinary());
    EXPECT_EQ(pair.diff().changes().size(), 1u);
    pv::DiffOptions caseless;
    caseless.ignoreCase = true;
    pair.setOptions(caseless);
    EXPECT_TRUE(pair.diff().changes().empty());

    const std::string exe = dir.write("a.exe", "One\ntwo\n");
    pv::FilePairDiff binary(exe, b, {});
    EXPECT_TRUE(binary.isBinary());
    EXPECT_EQ(binary.binarySummary().firstDifference, 0u);
}

} // namespace
