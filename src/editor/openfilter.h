#pragma once
// The file-type filter of the editor's Open dialog, built from the pattern list
// of the settings file.

#include <string>
#include <vector>

namespace pv {

// The description of a pattern: "All " for "*.*", else by the first extension
// found in it (".htm" web pages, ".exe", ".bat"/".cmd", SQL and Basic sources),
// else empty.
std::string patternDescription(const std::string& pattern);

struct OpenFilter {
    struct Entry {
        std::string description;
        std::string label;   // description + " (" + pattern + ")"
        std::string pattern; // with a ";" added when it holds several
    };
    std::vector<Entry> entries;
    // The entries as one text: label "|" pattern, entries joined by "|".
    std::string filter;
    // The entry (from 1) whose pattern is the current one; 0 when none is.
    int filterIndex = 0;
};

// `patternList` is the list of patterns separated by ","; `currentPattern` the
// compare window's pattern.
OpenFilter editorOpenFilter(const std::string& patternList, const std::string& currentPattern);

// The same entries as a file dialog filter ("label (*.a *.b);;..."), the entry
// of the current pattern first: the dialog opens on its first entry.
std::string dialogFilter(const OpenFilter& filter);

} // namespace pv
