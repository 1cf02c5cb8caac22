#pragma once
// Reading the results list: which pair a line names, where the next difference
// is, the progress percentage text and the list file's text.

#include "results/resultlines.h"

#include <string>
#include <string_view>
#include <vector>

namespace pv {

// The file name of a matched or different line, taken from its name column, so
// that a name with blanks comes whole. Such a line is: the left sequence number
// padded to the sequence width, the tag, the right number likewise, then both
// attribute texts each padded to one common width (the block's longest attribute
// plus one), then the name. Attribute texts never hold two blanks in a row nor end
// in one, and both sides start alike and have the same number of blanks (they
// come from the same switches; a failure text may break the count); the narrowest
// width that fits is taken. A line of another form gives
// the text after its last blank. Surrounding blanks are removed.
std::string fileNameOfLine(std::string_view line);

// Whether a click on the line compares its pair ("-matched-" and "-different-").
bool lineNamesPair(std::string_view line);

// The directories of the block a line belongs to: the nearest "Directory 1:" and
// "Directory 2:" lines at or above `index`, down to index 1 (index 0 is never
// looked at). A directory not found stays empty.
struct LineDirectories {
    std::string dir1;
    std::string dir2;
};
LineDirectories directoriesOfLine(const ResultLines& lines, long index);

// The outcome of "Next Difference" from the selected index (-1: none selected).
struct NextDifference {
    enum class Kind { Found, NotFound, Wrapped } kind = Kind::NotFound;
    long index = -1; // the line to select (Found, Wrapped)
};
NextDifference findNextDifference(const ResultLines& lines, long selected);

// value / maximum * 100 in single precision, as the shortest text with at most
// seven significant digits ("33.33333", "50", "100").
std::string progressPercentText(long value, long maximum);

// "Print file compare:Start", an empty line, then every line, CR LF ended.
std::string printListText(const ResultLines& lines);

} // namespace pv
