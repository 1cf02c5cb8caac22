#pragma once
// What a results line reports, read from its text: the views colour lines by it,
// the "differences only" view keeps the lines that report a difference, and the
// directory tree counts them.

#include <string_view>

namespace pv {

enum class LineKind {
    Plain,               // headers, statistics, start and end lines
    Matched,             // "-matched-"
    Different,           // "-different-"
    OneOnly,             // "-one only-" and "-two maxed-": the file is only on the left
    TwoOnly,             // "-two only-" and "-one maxed-": the file is only on the right
    UnmatchedDirectory,  // a directory without its partner on the other side
    UnreadableDirectory, // a directory that could not be read (also a loop or one too deep)
};

LineKind lineKind(std::string_view line);

// The name of a kind in reports ("different", "one only", ...); empty for plain lines.
std::string_view kindName(LineKind kind);

// The directory a walk's directory line names (unmatched, unreadable, a loop);
// empty for other lines and for "too deep", which names none.
std::string_view directoryOfWalkLine(std::string_view line);

// Whether a line of this kind reports something that differs.
inline bool isDifference(LineKind kind) {
    return kind != LineKind::Plain && kind != LineKind::Matched;
}

// The parts of an entry line (one file of a compared pair of directories).
struct EntryFields {
    LineKind kind = LineKind::Plain; // Plain: the line is no entry line
    std::string_view attributes1;    // the left side's attribute text (empty for two-only)
    std::string_view attributes2;    // the right side's (empty for one-only)
    std::string_view name;
};
EntryFields entryFields(std::string_view line);

} // namespace pv
