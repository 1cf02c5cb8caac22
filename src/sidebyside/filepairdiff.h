#pragma once
// What a side-by-side window shows for two files: either both texts with their
// line alignment, or, for files that are not text, a byte compare's summary.

#include "sidebyside/binarysummary.h"
#include "sidebyside/linediff.h"
#include "sidebyside/sidetext.h"

#include <string>

namespace pv {

class FilePairDiff {
  public:
    // Reads both files and compares them. Throws RuntimeError naming the file
    // that cannot be read.
    FilePairDiff(std::string leftPath, std::string rightPath, const DiffOptions& options);

    const std::string& leftPath() const { return m_leftPath; }
    const std::string& rightPath() const { return m_rightPath; }
    bool isBinary() const { return m_binary; }
    const BinarySummary& binarySummary() const { return m_summary; }
    const SideText& left() const { return m_left; }
    const SideText& right() const { return m_right; }
    const LineDiff& diff() const { return m_diff; }
    const DiffOptions& options() const { return m_options; }

    // Aligns the texts again under other switches (the files are not read again).
    void setOptions(const DiffOptions& options);

  private:
    std::string m_leftPath;
    std::string m_rightPath;
    DiffOptions m_options;
    bool m_binary = false;
    BinarySummary m_summary;
    SideText m_left;
    SideText m_right;
    LineDiff m_diff;
};

// The status line's words for the current change (0-based) of `count`:
// "change 3 of 12"; "no differences" when there are none.
std::string changeStatusText(size_t current, size_t count);

// The summary of two binary files in words.
std::string binarySummaryText(const BinarySummary& summary);

} // namespace pv
