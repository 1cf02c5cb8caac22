#pragma once
// Byte-for-byte comparison of file pairs for "Compare on Contents in list": the
// pairs are read on a small pool of reader threads (one per core, at most two),
// in large blocks, and a large pair is split into ranges so both cores share it.
// Pairs of known different lengths are never opened.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace pv {

enum class ContentVerdict {
    Same,
    Differ,          // same length, different bytes
    LengthDiffers,   // told by the lengths, neither file read
    LeftUnreadable,  // the left file could not be opened or read
    RightUnreadable, // likewise the right one
    NotRead,         // the reading was stopped before this pair
};

struct ContentPair {
    std::string left;
    std::string right;
    bool lengthsKnown = false; // from the listing; otherwise the files are asked
    std::uint64_t leftLength = 0;
    std::uint64_t rightLength = 0;
};

// Compares every pair, the verdicts in the order of the pairs. `poll` runs on the
// calling thread about every 40 ms while the readers work, with the number of
// pairs finished; when it returns false the readers stop and the pairs not yet
// finished are NotRead.
std::vector<ContentVerdict>
compareContents(const std::vector<ContentPair>& pairs,
                const std::function<bool(std::size_t done, std::size_t total)>& poll = {});

} // namespace pv
