#include "scripts/findtextscript.h"

#include "compare/filelisting.h"
#include "compare/scripttext.h"
#include "scripts/scripttext.h"

#include <algorithm>
#include <vector>

namespace pv {

namespace {

// The pattern's pieces at each ";", empty pieces included ("a;;b;" gives four).
std::vector<std::string> patternPieces(const std::string& pattern) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (;;) {
        std::size_t semi = pattern.find(';', start);
        pieces.push_back(pattern.substr(start, semi - start));
        if (semi == std::string::npos)
            return pieces;
        start = semi + 1;
    }
}

} // namespace

std::string findTextScriptText(const FindTextScript& s) {
    const std::string q = inQuotes(s.capturePath);
    const std::string dashes = "echo " + std::string(83, '-') + " >> " + q;
    const std::string minus = "echo - >> " + q;
    const std::string findstr = "findstr " + s.switches + " /c:" + inQuotes(s.searchText) + " ";
    const bool network = isNetworkPath(s.directory);

    ScriptText t;
    t.entry(1, "rem ---------- Start " + s.now + " -----------", 1);
    t.entry(1, "rem 1-2 " + s.directory.substr(0, 2) + "'", 0);
    if (network) {
        t.entry(1, "PushD " + inQuotes(s.directory), 1);
    } else {
        t.entry(1, "cd " + inQuotes(s.directory), 1);
        t.entry(1, s.drive, 0);
    }
    t.entry(2, "echo starting at : " + scriptEscaped(s.directory) + " >> " + q, 1);
    t.entry(2, dashes, 1);
    t.entry(2, "echo searchText = '" + scriptEscaped(s.searchText) + "' >> " + q, 1);
    t.entry(2, dashes, 1);
    t.entry(2, minus, 1);
    t.entry(2, minus, 1);

    if (!s.breakout || s.pattern.find(';') == std::string::npos) {
        std::string masks = s.pattern;
        std::replace(masks.begin(), masks.end(), ';', ' ');
        t.entry(2, minus, 1);
        t.entry(1, findstr + scriptEscaped(masks) + " >> " + q, 0);
        t.entry(2, minus, 1);
    } else {
        const std::string banner = std::string(83, '-');
        for (const std::string& piece : patternPieces(s.pattern)) {
            // findstr without a file mask would read its standard input.
            if (piece.empty())
                continue;
            t.entry(2, minus, 1);
            t.entry(2, minus, 1);
            t.entry(2, "echo  " + banner + " >> " + q, 1);
            t.entry(2,
                    "echo  ---------- Multi delimiter seperator Looking for " +
                        scriptEscaped(piece) + " ----------- >> " + q,
                    1);
            t.entry(2, "echo  " + banner + "  >> " + q, 1);
            t.entry(2, minus, 1);
            t.entry(2, minus, 1);
            t.entry(1, findstr + scriptEscaped(piece) + " >> " + q, 0);
            t.entry(2, minus, 1);
            t.entry(2, minus, 1);
        }
    }

    t.entry(1, "", 0);
    t.entry(2, "echo - >> " + q + "\r\n\r\nrem Pause", 1);
    t.entry(2, dashes, 1);
    if (network)
        t.entry(1, "Popd ", 0);
    t.entry(2, dashes, 1);
    t.entry(1, s.editor + " " + q, 0);
    return t.str();
}

std::string findTextCaptureStart(const std::string& now) {
    return "\r\n\r\n---------- Start " + now + " -----------\r\n\r\n";
}

std::string findTextScriptPath(const std::string& programDirectory, const std::string& tag) {
    return joinPath(programDirectory, "pairviewFINDDyn" + tag + ".bat");
}

} // namespace pv
