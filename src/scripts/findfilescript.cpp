#include "scripts/findfilescript.h"

#include "compare/filelisting.h"
#include "compare/scripttext.h"
#include "scripts/scripttext.h"

namespace pv {

std::string findFileScriptText(const FindFileScript& s) {
    const std::string q = inQuotes(s.capturePath);
    const std::string dashes = "echo " + std::string(83, '-') + " >> " + q;
    const std::string minus = "echo - >> " + q;
    const bool network = isNetworkPath(s.directory);
    const std::string searched = scriptEscaped(s.searchText);

    ScriptText t;
    t.entry(1, "rem ---------- Start " + s.now + " -----------", 1);
    t.entry(2, dashes, 1);
    t.entry(1, "rem 1-2 " + s.directory.substr(0, 2) + "'", 0);
    if (network) {
        t.entry(1, "Pushd " + inQuotes(s.directory), 1);
    } else {
        t.entry(1, "cd " + inQuotes(s.directory), 1);
        t.entry(1, s.drive, 0);
    }
    t.entry(2, "echo starting at : " + scriptEscaped(s.directory) + " >> " + q, 1);
    t.entry(2, dashes, 1);
    t.entry(2, dashes, 1);
    t.entry(2, "echo searchFile = '" + searched + "' >> " + q, 1);
    t.entry(2, dashes, 1);
    t.entry(2, minus, 1);
    t.entry(2, minus, 1);
    t.entry(1, "DIR " + s.switches + " " + searched + "  >> " + q, 0);
    for (int i = 0; i < 4; ++i)
        t.entry(2, minus, 1);
    t.entry(2, dashes, 1);
    if (network)
        t.entry(1, "Popd ", 0);
    t.entry(2, dashes, 1);
    t.entry(1, "", 0);
    t.entry(1, s.editor + " " + q, 0);
    return t.str();
}

std::string findFileCaptureStart(const std::string& now) {
    return "\r\n\r\n ---------- Start " + now + " -----------\r\n\r\n";
}

std::string findFileScriptPath(const std::string& programDirectory, const std::string& tag) {
    return joinPath(programDirectory, "pairviewFINDFile" + tag + ".bat");
}

} // namespace pv
