#include "sidebyside/linediff.h"
#include "sidebyside/sidetext.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using pv::DiffOptions;
using pv::LineDiff;
using pv::RowKind;
using pv::SideText;
using Rows = std::vector<std::string>;

// Each row as "  A" (same), "- A" (left only), "+ A" (right only) or "~ A|B"
// (changed).
Rows render(const std::string& leftBytes, const std::string& rightBytes,
            const DiffOptions& options = {}) {
    const SideText left = SideText::fromBytes(leftBytes);
    const SideText right = SideText::fromBytes(rightBytes);
    const LineDiff diff(left, right, options);
    Rows out;
    for (const pv::DiffRow& row : diff.rows()) {
        const std::string l = row.left < 0 ? "" : std::string(left.line(size_t(row.left)));
        const std::string r = row.right < 0 ? "" : std::string(right.line(size_t(row.right)));
        if (row.kind == RowKind::Changed)
            out.push_back("~ " + l + "|" + r);
        else
            out.push_back(row.kind == RowKind::Same      ? "  " + l
                          : row.kind == RowKind::Deleted ? "- " + l
                                                         : "+ " + r);
    }
    return out;
}

DiffOptions with(bool ignoreCase, bool compressWhite, bool expandTabs = true) {
    DiffOptions o;
    o.ignoreCase = ignoreCase;
    o.compressWhite = compressWhite;
    o.expandTabs = expandTabs;
    return o;
}

struct AlignCase {
    const char* name;
    std::string left;
    std::string right;
    DiffOptions options;
    Rows rows;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const AlignCase& row, std::ostream* os) {
    *os << row.name;
}


class Alignment : public ::testing::TestWithParam<AlignCase> {};

TEST_P(Alignment, RowsPairTheLines) {
    EXPECT_EQ(render(GetParam().left, GetParam().right, GetParam().options), GetParam().rows);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, Alignment, ::testing::Values(
    AlignCase{"InsertionAtStart", "B\nC\n", "A\nB\nC\n", {}, {"+ A", "  B", "  C"}},
    AlignCase{"InsertionAtEnd", "A\nB\n", "A\nB\nC\nD\n", {}, {"  A", "  B", "+ C", "+ D"}},
    AlignCase{"DeletionInTheMiddle", "A\nB\nC\n", "A\nC\n", {}, {"  A", "- B", "  C"}},
    // A changed line and an inserted one in one block: the pair lines up at its
    // top, the inserted line stands against an empty band.
    AlignCase{"ChangeNextToInsertion", "A\nB\nC\n", "A\nX\nY\nC\n", {}, {"  A", "~ B|X", "+ Y", "  C"}},
    AlignCase{"MovedBlockLeavesAndArrives", "X\nY\nA\nB\nC\nD\n", "A\nB\nC\nD\nX\nY\n", {},
              {"- X", "- Y", "  A", "  B", "  C", "  D", "+ X", "+ Y"}},
    AlignCase{"CrLfEqualsLf", "A\r\nB\r\n", "A\nB", {}, {"  A", "  B"}},
    AlignCase{"EmptyAgainstFull", "", "A\nB\n", {}, {"+ A", "+ B"}},
    AlignCase{"FullAgainstEmpty", "A\n", "", {}, {"- A"}},
    AlignCase{"CaseCountsWithoutC", "Hello\n", "HELLO\n", {}, {"~ Hello|HELLO"}},
    AlignCase{"CaseIgnoredWithC", "Hello\nab\n", "HELLO\nac\n", with(true, false), {"  Hello", "~ ab|ac"}},
    AlignCase{"BlanksCountWithoutW", "a  b\n", "a b\n", {}, {"~ a  b|a b"}},
    AlignCase{"BlankRunsAndEndsIgnoredWithW", "  a \t b  \nab\n", "a b\na b\n", with(false, true),
              {"    a \t b  ", "~ ab|a b"}},
    AlignCase{"TabEqualsBlanksToTheNextStop", "x\ty\n", "x       y\n", {}, {"  x\ty"}},
    AlignCase{"TabKeptWithT", "x\ty\n", "x       y\n", with(false, false, false), {"~ x\ty|x       y"}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST(LineDiff, Utf16AndUtf8OfTheSameTextAreEqual) {
    // "Grüße" CR LF "zwei" in UTF-16 little-endian with its mark, against UTF-8
    // with its own mark.
    const std::string utf16("\xFF\xFE"
                            "G\0r\0\xFC\0\xDF\0e\0\r\0\n\0z\0w\0e\0i\0",
                            24);
    const std::string utf8 = "\xEF\xBB\xBFGr\xC3\xBC\xC3\x9F"
                             "e\nzwei\n";
    EXPECT_EQ(render(utf16, utf8), (Rows{"  Gr\xC3\xBC\xC3\x9F"
                                         "e",
                                         "  zwei"}));
}

TEST(LineDiff, ChangesAreTheBlocksInOrder) {
    const SideText left = SideText::fromBytes("a\nb\nc\nd\ne\nf\n");
    const SideText right = SideText::fromBytes("a\nB\nc\nd\nf\ng\n");
    const LineDiff diff(left, right, {});
    ASSERT_EQ(diff.changes().size(), 3u);
    EXPECT_EQ(diff.changes()[0].firstRow, 1u);
    EXPECT_EQ(diff.changes()[1].firstRow, 4u);
    EXPECT_EQ(diff.changes()[2].firstRow, 6u);
    EXPECT_EQ(diff.changeAtRow(0), 3u) << "a same row is in no change";
    EXPECT_EQ(diff.changeAtRow(1), 0u);
    EXPECT_EQ(diff.changeAtRow(4), 1u);
    EXPECT_EQ(diff.changeAtRow(5), 3u);
    EXPECT_EQ(diff.changeAtRow(6), 2u);
    EXPECT_EQ(diff.rows().back(), (pv::DiffRow{pv::DiffRow::kNone, 5, RowKind::Inserted}));
}

TEST(LineDiff, TooDifferentWithinTheBudgetPairsTheMiddleFromTheTop) {
    const SideText left = SideText::fromBytes("same\na\nb\nc\nend\n");
    const SideText right = SideText::fromBytes("same\nx\ny\nend\n");
    const LineDiff enough(left, right, {});
    EXPECT_TRUE(enough.aligned());
    const LineDiff starved(left, right, {}, 2);
    EXPECT_FALSE(starved.aligned());
    ASSERT_EQ(starved.changes().size(), 1u);
    EXPECT_EQ(starved.changes()[0].firstRow, 1u) << "the common start stays aligned";
    EXPECT_EQ(starved.rows()[1], (pv::DiffRow{1, 1, RowKind::Changed}));
    EXPECT_EQ(starved.rows()[3], (pv::DiffRow{3, pv::DiffRow::kNone, RowKind::Deleted}));
    EXPECT_EQ(starved.rows()[4], (pv::DiffRow{4, 3, RowKind::Same})) << "and the common end";
}

TEST(CompareKey, FollowsFcSwitches) {
    EXPECT_EQ(pv::compareKey("ab\tc", {}), "ab      c");
    EXPECT_EQ(pv::compareKey("abcdefgh\tc", {}), "abcdefgh        c") << "a full stop expands to 8";
    EXPECT_EQ(pv::compareKey(" \t a\t\t b \t", with(false, true)), "a b");
    EXPECT_EQ(pv::compareKey("aZ\xC3\xA9", with(true, false)), "AZ\xC3\xA9");
}

} // namespace
