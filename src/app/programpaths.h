#pragma once
// The program-wide paths fixed at start, the per-window file names derived from
// them, and the few globals every window shares. This is the one place that holds
// program-wide mutable state.

#include "settings/settings.h"

#include <string>

namespace pv {

struct ProgramPaths {
    std::string programDirectory; // no trailing separator
    std::string settingsPath;     // "Pairview.ini", or the command line's -ini path
    std::string resultsPath;      // "Pairview.txt"
    std::string findTextPath;     // "PairviewFIND.txt"
    std::string findFilePath;     // "PairviewFINDFILE.txt"
    std::string xcopyPath;        // "Xcopy_FILE.CMD"
    std::string capturePath;      // "CaptureFile.txt"

    // All paths in `directory`, the settings file "Pairview.ini".
    static ProgramPaths inDirectory(const std::string& directory);
};

// Which pane control the user touched last; at most one at a time.
enum class ClickedControl { None, Dir1, FileOne, Dir2, FileTwo };

struct ProgramGlobals {
    ProgramPaths paths;
    std::string activeCompareTag;
    bool clickedDir1 = false;
    bool clickedFileOne = false;
    bool clickedDir2 = false;
    bool clickedFileTwo = false;
    // Compares running in any window. Windows that a compare writes to refuse to
    // close until it ends: closing one asks the compare to stop instead.
    int runningCompares = 0;

    void setClicked(ClickedControl control);
    // The right pane is meant when Dir2 or FileTwo was clicked last; else the left.
    bool rightSideClicked() const { return clickedDir2 || clickedFileTwo; }
};

ProgramGlobals& globals();

// The settings file as it is named at this moment.
Settings programSettings();

// `path` with `tag` inserted before the "." that begins the file name's extension
// ("/p/Pairview.txt", "3" -> "/p/Pairview3.txt"); a dot in a directory name is left
// alone; a name without extension gets the tag at its end.
std::string perWindowFileName(const std::string& path, const std::string& tag);

} // namespace pv
