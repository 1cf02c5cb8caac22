#pragma once
// One findstr run over buffers: finds the lines to report (matching, or with /v
// not matching) and writes them with their prefixes, as "name:line:offset:text".

#include "pvcmd/findstrmatcher.h"

#include <string>
#include <string_view>
#include <vector>

namespace pvcmd {

struct FindstrReportOptions {
    bool invert = false;      // /v
    bool lineNumbers = false; // /n
    bool offsets = false;     // /o
    bool namesOnly = false;   // /m
    bool showNames = false;   // more than one file can be searched
};

// Where a file's scan stands between chunks.
struct FindstrScanState {
    size_t offset = 0;     // of the chunk's first byte in the file
    size_t lineNumber = 1; // of the chunk's first line
    bool reported = false;
    bool done = false; // /m found its line: the rest of the file does not matter
    // Numbers of the lines the search gave up on since the caller last took them;
    // they are neither reported nor, with /v, listed as not matching.
    std::vector<size_t> tooComplexLines;
};

class FindstrSearch {
  public:
    FindstrSearch(const FindstrMatcher& matcher, const FindstrReportOptions& options)
        : m_matcher(matcher), m_options(options) {}

    // Searches a file's bytes in pieces, appending the report to `out`, so that a
    // large file need not be in memory at once: each chunk but the last ends just
    // after a LF. `finish` writes the /m name and says whether anything was reported.
    void scanChunk(std::string_view name, std::string_view chunk, bool last,
                   FindstrScanState& state, std::string& out) const;
    bool finish(std::string_view name, const FindstrScanState& state, std::string& out) const;

  private:
    const FindstrMatcher& m_matcher;
    FindstrReportOptions m_options;
};

// True when `bytes` holds a control character other than tab, LF, VT, FF and CR
// (what /p skips).
bool hasNonPrintable(std::string_view bytes);

} // namespace pvcmd
