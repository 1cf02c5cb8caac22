#pragma once
// The rows of a side-by-side view: which line of each text stands on each row,
// and the changes (runs of rows that differ) that the view steps through.
// Lines are compared as fc compares them under the chosen switches.

#include "sidebyside/sequencediff.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pv {

class SideText;

struct DiffOptions {
    bool ignoreCase = false;    // fc /c: letters compare without case
    bool compressWhite = false; // fc /w: runs of blanks and tabs are one blank, none at the ends
    bool expandTabs = true; // without fc /t a tab equals the blanks up to the next multiple of 8
};

// What a line is compared as; the line itself when no switch changes it.
std::string compareKey(std::string_view line, const DiffOptions& options);

enum class RowKind : std::uint8_t {
    Same,     // equal lines on both sides
    Changed,  // a line on each side, different
    Deleted,  // a line only on the left; the right shows an empty band
    Inserted, // a line only on the right; the left shows an empty band
};

struct DiffRow {
    static constexpr std::int32_t kNone = -1;
    std::int32_t left = kNone; // 0-based line index, or kNone
    std::int32_t right = kNone;
    RowKind kind = RowKind::Same;
    friend bool operator==(const DiffRow&, const DiffRow&) = default;
};

struct DiffChange {
    size_t firstRow = 0;
    size_t rowCount = 0;
};

class LineDiff {
  public:
    // Enough for two 20 MB files with a thousand scattered changes, about a
    // second's work; two unrelated files of that size would need hundreds of times more.
    static constexpr std::uint64_t kDefaultBudget = 1'500'000'000;

    LineDiff() = default;
    LineDiff(const SideText& left, const SideText& right, const DiffOptions& options,
             std::uint64_t budget = kDefaultBudget);

    const std::vector<DiffRow>& rows() const { return m_rows; }
    const std::vector<DiffChange>& changes() const { return m_changes; }
    // The change that holds a row, or the number of changes when none does.
    size_t changeAtRow(size_t row) const;
    // False when the texts were too different to align within the budget: then
    // everything between their common start and end is one change, paired line
    // by line from the top.
    bool aligned() const { return m_aligned; }

  private:
    std::vector<DiffRow> m_rows;
    std::vector<DiffChange> m_changes;
    bool m_aligned = true;
};

} // namespace pv
