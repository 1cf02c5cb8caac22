#pragma once
// The find-file script: changes to one pane's directory, appends a header and
// dir's listing of the searched name to the capture file, and ends by opening the
// capture file in the editor.

#include <string>

namespace pv {

struct FindFileScript {
    std::string now;         // the date and time of the run
    std::string directory;   // the searched directory (the pane's file-list path)
    std::string drive;       // the pane's drive text
    std::string searchText;  // the name or pattern, as typed
    std::string switches;    // dir's switch string
    std::string capturePath; // unquoted
    std::string editor;      // as the script names it (see scriptEditor)
};

std::string findFileScriptText(const FindFileScript& s);

// What replace mode writes into the capture file before the script appends.
std::string findFileCaptureStart(const std::string& now);

// "pairviewFINDFile" + tag + ".bat" in the program directory.
std::string findFileScriptPath(const std::string& programDirectory, const std::string& tag);

} // namespace pv
