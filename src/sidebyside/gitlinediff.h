#pragma once
// The line alignment of two texts, computed by git's own diff engine (xdiff,
// through libgit2): the blocks of lines that differ, in order.

#include <cstddef>
#include <string_view>
#include <vector>

namespace pv {

// One block of differing lines: `leftCount` lines from `leftStart` in the left
// text stand where `rightCount` lines from `rightStart` stand in the right text
// (0-based; a count of 0 means an insertion or deletion before that index).
struct DiffHunk {
    size_t leftStart = 0;
    size_t leftCount = 0;
    size_t rightStart = 0;
    size_t rightCount = 0;
    friend bool operator==(const DiffHunk&, const DiffHunk&) = default;
};

enum class DiffAlgorithm {
    Myers,    // git's default, with its heuristics that bound the work on very different texts
    Patience, // aligns on lines that occur once in each text: better for moved code
    Minimal,  // the shortest edit, whatever it costs
};

// Both texts are lines each ended by "\n". Lines are compared as bytes.
// Throws RuntimeError when the engine fails (out of memory).
std::vector<DiffHunk> diffLines(std::string_view left, std::string_view right,
                                DiffAlgorithm algorithm);

} // namespace pv
