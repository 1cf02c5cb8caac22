#include "scripts/scripttext.h"

#include "platform/runtimeerror.h"
#include "platform/textfile.h"

#include <exception>

namespace pv {

void ScriptText::entry(int before, std::string_view text, int after) {
    for (int i = 0; i < before; ++i)
        m_text += kLineEnd;
    m_text += text;
    for (int i = 0; i < after; ++i)
        m_text += kLineEnd;
    m_text += kLineEnd;
}

std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

bool isNetworkPath(std::string_view path) {
    return path.rfind("//", 0) == 0;
}

void writeScriptFile(const std::string& path, std::string_view bytes) {
    try {
        writeFileAtomic(path, bytes);
    } catch (const RuntimeError& e) {
        // The platform's text already names the file.
        throw RuntimeError(e.number(), std::string("Cannot write ") + e.what());
    }
}

long writeAndStart(const ScriptRun& run, const ScriptStarter& start) {
    if (run.captureStart)
        writeScriptFile(run.capturePath, *run.captureStart);
    writeScriptFile(run.scriptPath, run.scriptText);
    // The command line is split by the Windows rules: a path with a blank is quoted.
    const std::string command =
        run.scriptPath.find(' ') == std::string::npos ? run.scriptPath : inQuotes(run.scriptPath);
    try {
        return start(command);
    } catch (const RuntimeError& e) {
        throw RuntimeError(e.number(), "Cannot start " + run.scriptPath + ": " + e.what());
    }
}

} // namespace pv
