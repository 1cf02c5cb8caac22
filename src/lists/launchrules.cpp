#include "lists/launchrules.h"
#include "compare/filelisting.h"
#include "platform/textutil.h"

#include <algorithm>
#include <cctype>

namespace pv {

const char* const kExecutableWarning =
    "File extension is not in my list as valid associations\r\n"
    "(e.g Bat, cmd, exe) will execute. I will use Notepad for these file types.";
const char* const kNoAssociationText = "Could not find associated Executable";
const char* const kNoAssociationTitle = "Executable Not Found";
const char* const kOpenFailedTitle = "URL Failed";
const char* const kSelectFileFirst = "Please select a file to open. Will test left side first";
const char* const kSelectFileLastClicked =
    "Please select a file to open. I will use the last file you clicked on.";
const char* const kNoIsqlEditor = "ISQL editor was not found in the editor list. So I won't guess";

bool isExecutableType(const std::string& path) {
    const std::string u = toUpper(path);
    for (const char* ext : {".EXE", ".CMD", ".BAT", ".REG"}) {
        if (u.find(ext) != std::string::npos)
            return true;
    }
    return false;
}

bool isQueryTool(const std::string& program) {
    return toLower(program).find("isqlw.exe") != std::string::npos;
}

std::string collapseDoubledQuotes(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        out += text[i];
        if (text[i] == '"' && i + 1 < text.size() && text[i + 1] == '"')
            ++i;
    }
    return out;
}

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string queryToolCommand(const std::string& program, const std::string& connection,
                             const std::string& file) {
    return program + " " + " " + connection + " -f " + file;
}

int chosenConnectionIndex(const std::vector<bool>& checked) {
    int chosen = 1;
    for (std::size_t i = 1; i < checked.size(); ++i) {
        if (checked[i])
            chosen = static_cast<int>(i);
    }
    return chosen;
}

std::optional<std::string> fileToOpen(const PaneSelection& left, const PaneSelection& right,
                                      bool rightClickedLast) {
    const PaneSelection* pane = nullptr;
    if (left.selectedFile && right.selectedFile)
        pane = rightClickedLast ? &right : &left;
    else if (left.selectedFile)
        pane = &left;
    else if (right.selectedFile)
        pane = &right;
    if (!pane)
        return std::nullopt;
    return quoted(joinPath(pane->directory, *pane->selectedFile));
}

std::string associationExecutableWarning(const std::string& path) {
    return std::string(kExecutableWarning) +
           "\r\n\r\nUse Run Shell if you wish to execute this code.\r\nFile : " + path;
}

std::string openFailedText(int number, const std::string& description) {
    return "Open failed:" + std::to_string(number) + "\r\nDesc: " + description;
}

} // namespace pv
