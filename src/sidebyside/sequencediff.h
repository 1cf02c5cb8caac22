#pragma once
// The alignment of two sequences (the lines of two files, the characters of
// two lines), computed by the dtl library (Wu, Manber and Myers' O(NP)
// algorithm): the blocks of elements that differ, in order. Elements are ids;
// equal ids are equal elements.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pv {

// One block of differing elements: `leftCount` elements from `leftStart` stand
// where `rightCount` elements from `rightStart` stand (0-based; a count of 0 is
// an insertion or deletion before that index).
struct DiffHunk {
    size_t leftStart = 0;
    size_t leftCount = 0;
    size_t rightStart = 0;
    size_t rightCount = 0;
    friend bool operator==(const DiffHunk&, const DiffHunk&) = default;
};

struct SequenceDiff {
    std::vector<DiffHunk> hunks;
    // False when the alignment would have needed more element comparisons than
    // allowed (the cost grows with the length times the number of differences,
    // so two large unrelated files would keep the program busy for minutes):
    // then everything between the common start and end is one block.
    bool aligned = true;
};

// A common start and end are taken off first (they are in every shortest edit);
// the rest goes to dtl with at most `budget` comparisons.
SequenceDiff diffSequences(const std::vector<std::uint32_t>& left,
                           const std::vector<std::uint32_t>& right, std::uint64_t budget);

} // namespace pv
