#include "results/linekind.h"

#include <gtest/gtest.h>

using namespace pv;

namespace {

struct KindRow {
    const char* name;
    const char* line;
    LineKind kind;
    const char* attributes1;
    const char* attributes2;
    const char* file; // "" when the line is no entry line
};

void PrintTo(const KindRow& row, std::ostream* os) { *os << row.name; }

class LineKinds : public ::testing::TestWithParam<KindRow> {};

TEST_P(LineKinds, KindAndFields) {
    const KindRow& row = GetParam();
    EXPECT_EQ(lineKind(row.line), row.kind);
    EntryFields fields = entryFields(row.line);
    if (*row.file == '\0') {
        EXPECT_EQ(fields.kind, LineKind::Plain);
        return;
    }
    EXPECT_EQ(fields.kind, row.kind);
    EXPECT_EQ(fields.attributes1, row.attributes1);
    EXPECT_EQ(fields.attributes2, row.attributes2);
    EXPECT_EQ(fields.name, row.file);
}

const char* kDate = "2026\\05\\07 9:05:07 - 12";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, LineKinds, ::testing::Values(
    KindRow{"Matched", "0 -matched-   0 2026\\05\\07 9:05:07 - 12 2026\\05\\07 9:05:07 - 12 a b.txt", LineKind::Matched, kDate, kDate, "a b.txt"},
    KindRow{"Different", "3  -different- 10 2026\\05\\07 9:05:07 - 5   2026\\05\\08 10:15:17 - 77 x", LineKind::Different, "2026\\05\\07 9:05:07 - 5", "2026\\05\\08 10:15:17 - 77", "x"},
    KindRow{"DifferentNoAttributes", "0 -different- 0   x.txt", LineKind::Different, "", "", "x.txt"},
    KindRow{"OneOnlyShowsTheLeftText", "1 -one only-  1  - 5    z z.txt", LineKind::OneOnly, " - 5", "", "z z.txt"},
    KindRow{"TwoMaxedIsOnlyOnTheLeft", "2 -two maxed- 1  - 5    z", LineKind::OneOnly, " - 5", "", "z"},
    KindRow{"TwoOnlyShowsTheRightText", "1 -two only-  1  - 5    y", LineKind::TwoOnly, "", " - 5", "y"},
    KindRow{"OneMaxedIsOnlyOnTheRight", "2 -one maxed- 1    y", LineKind::TwoOnly, "", "", "y"},
    KindRow{"FailureTextOnOneSide", "0 -different- 0 Can't find the file  2026\\05\\07 9:5:7 - 3 g.txt", LineKind::Different, "Can't find the file", "2026\\05\\07 9:5:7 - 3", "g.txt"},
    // Widths where a date's words would line up on both sides (11, 22) are not
    // the columns: the texts there have no attribute's shape.
    KindRow{"DateColumnsNotFooledByAlignedWords", "0 -different- 0 2026\\11\\25 11:22:40 - 2 2026\\11\\25 11:22:40 - 3 file 1.txt", LineKind::Different, "2026\\11\\25 11:22:40 - 2", "2026\\11\\25 11:22:40 - 3", "file 1.txt"},
    KindRow{"FailureTextAgainstTwoDigitTime", "0 -different- 0 Can't find the file     2026\\05\\07 10:05:07 - 3 g h.txt", LineKind::Different, "Can't find the file", "2026\\05\\07 10:05:07 - 3", "g h.txt"},
    KindRow{"ContentsMarker", "12 -different- 12 2026\\05\\07 9:5:7 - 3 [contents] 2026\\05\\07 9:5:7 - 3 [contents] x", LineKind::Different, "2026\\05\\07 9:5:7 - 3 [contents]", "2026\\05\\07 9:5:7 - 3 [contents]", "x"},
    KindRow{"NotReadMarker", "0 -different- 0  - 3 [not read]  - 3 [not read] y", LineKind::Different, " - 3 [not read]", " - 3 [not read]", "y"},
    KindRow{"TagWithoutSequenceIsPlain", "x -different- 0 a", LineKind::Plain, "", "", ""},
    KindRow{"StatisticsArePlain", " there were 3 items with different datetimes and or lengths. See results for details.", LineKind::Plain, "", "", ""},
    KindRow{"HeaderIsPlain", "Directory 1: /a -different- ", LineKind::Plain, "", "", ""},
    KindRow{"RightMissing", "Unmatched sub directory : '\t/b/y' does not exist", LineKind::UnmatchedDirectory, "", "", ""},
    KindRow{"RightOnly", "Unmatched sub directory : '/b/new' exists only in directory 2", LineKind::UnmatchedDirectory, "", "", ""},
    KindRow{"PanesApart", "Unmatched sub directory : 1:'/a/x' <> 2:'/b/X'", LineKind::UnmatchedDirectory, "", "", ""},
    KindRow{"Unreadable", "Unreadable sub directory : '/a/locked' Permission denied", LineKind::UnreadableDirectory, "", "", ""},
    KindRow{"Loop", "Sub directory loop : '/a/up' leads to '/a', not entered", LineKind::UnreadableDirectory, "", "", ""},
    KindRow{"TooDeep", "Directory is too deep to process in this version", LineKind::UnreadableDirectory, "", "", ""}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

} // namespace
