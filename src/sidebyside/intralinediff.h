#pragma once
// Which characters of a changed pair of lines differ: a character diff of the
// two lines, under the same switches as the lines.

#include "sidebyside/linediff.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace pv {

// Bytes [begin, end) of a line.
struct ByteSpan {
    size_t begin = 0;
    size_t end = 0;
    friend bool operator==(const ByteSpan&, const ByteSpan&) = default;
};

struct IntraLineSpans {
    std::vector<ByteSpan> left;
    std::vector<ByteSpan> right;
};

// The differing characters of each line, as ordered, non-adjacent byte spans.
// A character is a UTF-8 sequence (a stray byte stands for itself); with /w a run
// of blanks and tabs counts as one blank and those at either end never differ.
// Lines that share less than half their characters are marked whole.
IntraLineSpans intraLineSpans(std::string_view left, std::string_view right,
                              const DiffOptions& options);

} // namespace pv
