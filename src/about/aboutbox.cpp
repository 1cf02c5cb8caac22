#include "about/aboutbox.h"

#include "platform/process.h"
#include "platform/prompter.h"
#include "platform/pvversion.h"
#include "platform/runtimeerror.h"

#include <cstdlib>

namespace pv {

const char* const kAboutDescription =
    "A graphical tool around the command-line utilities that remembers its settings. It uses "
    "fc, findstr and dir on the directories and files in the current lists, keeps favorite "
    "directories, and opens files with a list of editors or by file-type association.";
const char* const kAboutDisclaimer =
    "Warning: ... The Internal editor is a basic one. I don't guarentee it. Make a backup of "
    "your file when using it. (I will get to that in a subsequent version of this tool)";
const char* const kSysInfoUnavailable = "System Information Is Unavailable At This Time";

std::string aboutVersionText() {
    return std::string("Version ") + PAIRVIEW_VERSION;
}

std::string documentationText(const Settings& settings) {
    static const char* const sections[] = {
        "APPLICATION",     "LASTFILE", "FAVORITES", "NETWORKDRIVES", "SHELLSCRIPTS",
        "FILEPATTERNLIST", "COMMANDS", "EDITORS",   "RECENTFILES",   "ISQL"};
    std::string text = "Documentation:";
    for (const char* section : sections)
        text += "\r\n\r\n" + settings.GetIniValue("DOCUMENTATION", section, "empty");
    return text;
}

std::string sysInfoProgram(const std::function<bool(const std::string&)>& onPath) {
    if (const char* chosen = std::getenv("PAIRVIEW_SYSINFO"); chosen && *chosen)
        return chosen;
    for (const char* program : {"kinfocenter", "hardinfo", "gnome-system-monitor"})
        if (onPath(program))
            return program;
    return {};
}

void StartSysInfo() {
    const std::string program =
        sysInfoProgram([](const std::string& name) { return !resolveProgram(name).empty(); });
    if (program.empty()) {
        prompter().message(kSysInfoUnavailable);
        return;
    }
    try {
        startDetached(quoteArgument(program));
    } catch (const RuntimeError&) {
        // A named program that cannot be started is as good as none.
        prompter().message(kSysInfoUnavailable);
    }
}

} // namespace pv
