#pragma once
// The copy script: one xcopy line per file of the left list, copying it into the
// right directory and appending xcopy's report to the results file, which the
// script empties first and opens in the editor at its end.

#include <string>
#include <vector>

namespace pv {

struct XcopyScript {
    std::string now;
    std::string leftDir;            // the left directory list's path
    std::string rightDir;           // the right directory list's path
    std::vector<std::string> items; // the left file list, in list order
    std::string parameters;         // "XCOPYPARMS", put into every copy line
    std::string resultsPath;        // unquoted
    std::string editor;             // as the script names it (see scriptEditor)
};

struct XcopyScriptText {
    std::string text;
    // Items that cannot stand inside a script line, each with the reason; they
    // get no copy line.
    std::vector<std::string> leftOut;
};

XcopyScriptText xcopyScriptText(const XcopyScript& s);

// The results file: the "XCOPYRESULTS" setting, else the script's own directory
// and its file name upper-cased with ".CMD" replaced by ".TXT"
// ("/p/Xcopy_FILE.CMD" gives "/p/XCOPY_FILE.TXT"). Only the name is upper-cased:
// on a case-sensitive file system the directory keeps its own spelling.
std::string xcopyResultsPath(const std::string& setting, const std::string& scriptPath);

} // namespace pv
