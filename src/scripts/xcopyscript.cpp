#include "scripts/xcopyscript.h"

#include "compare/scripttext.h"
#include "scripts/scripttext.h"

#include <cctype>

namespace pv {

XcopyScriptText xcopyScriptText(const XcopyScript& s) {
    const std::string r = inQuotes(s.resultsPath);
    const std::string destination = inQuotes(s.rightDir + "/*.*");
    XcopyScriptText out;
    ScriptText t;
    t.entry(2, "REM ---------- Start " + s.now + " -----------", 3);
    t.entry(2, "REM ---------------------", 3);
    for (int i = 0; i < 3; ++i)
        t.entry(1, "DIR " + inQuotes(s.leftDir + "/*.*"), 0);
    for (int i = 0; i < 3; ++i)
        t.entry(1, "DIR " + destination, 0);
    t.entry(1, "ECHO " + inQuotes("---") + " > " + r, 0);
    for (const std::string& item : s.items) {
        if (std::string why = scriptRefusal(item); !why.empty()) {
            out.leftOut.push_back(item + " (" + why + ")");
            continue;
        }
        t.entry(1,
                "XCOPY " + scriptArgument(s.leftDir + "/" + item) + " " + destination + " " +
                    s.parameters + " >> " + r,
                0);
    }
    t.entry(2, "REM ---------------------", 3);
    t.entry(1, s.editor + " " + r, 0);
    t.entry(2, "REM ---------- END " + s.now + " -----------", 3);
    out.text = t.str();
    return out;
}

std::string xcopyResultsPath(const std::string& setting, const std::string& scriptPath) {
    if (!setting.empty())
        return setting;
    std::size_t nameStart = scriptPath.rfind('/');
    nameStart = nameStart == std::string::npos ? 0 : nameStart + 1;
    std::string name = scriptPath.substr(nameStart);
    for (char& c : name)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    for (std::size_t at = name.find(".CMD"); at != std::string::npos; at = name.find(".CMD", at))
        name.replace(at, 4, ".TXT");
    return scriptPath.substr(0, nameStart) + name;
}

} // namespace pv
