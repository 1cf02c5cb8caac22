#pragma once
// The results list handed on: a CSV table of what the lines report, or one
// self-contained HTML page with the colours, the directory tree and each file's
// two attribute texts. Both are made from the list's lines, so they say exactly
// what the window shows.

#include "results/resultlines.h"
#include "results/resultstree.h"

#include <string>
#include <vector>

namespace pv {

// The lines from `first` up to (not including) `last`.
struct LineRange {
    long first = 0;
    long last = 0;
};

// The lines of the latest compare run, or all lines.
LineRange latestRun(const ResultLines& lines, const ResultsTree& tree);

// One record a file or directory line: kind, both directories of its block, the
// name (a directory line: its text), both attribute texts. Fields are quoted
// as CSV requires; bytes are written as they are.
std::string reportCsv(const ResultLines& lines, LineRange range);

// An HTML page (UTF-8) with a tree of the runs that start inside the range and a
// table of every line of the range, tinted by kind.
std::string reportHtml(const ResultLines& lines, LineRange range, const ResultsTree& tree);

} // namespace pv
