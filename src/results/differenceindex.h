#pragma once
// The lines the "differences only" view shows, as indexes into the whole list,
// kept up to date as lines arrive: every line that reports a difference, and
// each block's "Directory 1:" and "Directory 2:" lines once, before its first
// file that differs.
// The list itself keeps every line, so its indexes stay those of the whole list.

#include "results/linekind.h"

#include <string_view>
#include <vector>

namespace pv {

class DifferenceIndex {
  public:
    // Takes the next line of the list (lines arrive in order, from index 0).
    void add(std::string_view line);
    // The same, with the line's kind already known.
    void add(std::string_view line, LineKind kind);
    const std::vector<long>& rows() const { return m_rows; }
    // The row that shows the line, or the first row after it (rows().size() when none).
    long rowAtOrAfter(long line) const;

  private:
    std::vector<long> m_rows;
    long m_next = 0;
    long m_header1 = -1, m_header2 = -1; // the open block's headers, until shown
};

} // namespace pv
