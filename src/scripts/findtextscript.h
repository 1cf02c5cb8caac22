#pragma once
// The find-text script: changes to one pane's directory, appends a header and
// findstr's matching lines to the capture file, and ends by opening the capture
// file in the editor. With the breakout on and several patterns, findstr runs once
// per pattern under a banner.

#include <string>

namespace pv {

struct FindTextScript {
    std::string now;
    std::string directory;   // the searched directory (the pane's file-list path)
    std::string drive;       // the pane's drive text
    std::string searchText;  // as typed; goes between the quotes of /c:
    std::string switches;    // findstr's switch string
    std::string pattern;     // the window's file pattern, patterns separated by ";"
    bool breakout = false;   // one findstr per pattern
    std::string capturePath; // unquoted
    std::string editor;      // as the script names it (see scriptEditor)
};

std::string findTextScriptText(const FindTextScript& s);

// What replace mode writes into the capture file before the script appends.
std::string findTextCaptureStart(const std::string& now);

// "pairviewFINDDyn" + tag + ".bat" in the program directory.
std::string findTextScriptPath(const std::string& programDirectory, const std::string& tag);

} // namespace pv
