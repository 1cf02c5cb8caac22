#include "scripts/scriptcommands.h"

#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "compare/compareoptions.h"
#include "compare/scripttext.h"
#include "lists/launchrules.h"
#include "platform/clock.h"
#include "platform/prompter.h"
#include "platform/runtimeerror.h"
#include "scripts/findfilescript.h"
#include "scripts/findtextscript.h"
#include "scripts/toolswitches.h"
#include "scripts/xcopyscript.h"
#include "settings/inifile.h"
#include "settings/settings.h"

namespace pv {

const char* const kCancelledByOperator = "action cancelled by operator";
const char* const kEmptyNotSearched = "empty string not searched for";
const char* const kSelectFileToRun = "Please select a file to run with a click on the file";

namespace {

constexpr const char* kApplication = "APPLICATION";
constexpr const char* kParmsTitle = "Command line parms";

} // namespace

std::string runShellPrompt(const std::string& commandText) {
    return "Enter text to be used as command line parms for : \r\n" + commandText;
}

std::string shellRunFailedText(int number, const std::string& description) {
    return "Shell run failed: " + std::to_string(number) + " " + description;
}

std::optional<ScriptCommands::Search>
ScriptCommands::beginSearch(const ScriptWindow& w, const char* prompt, const char* inputTitle,
                            const char* title, const char* key, bool quotedInScript) {
    std::optional<std::string> answer =
        prompter().input(prompt, inputTitle, m_settings.GetIniValue(kApplication, key, ""));
    if (!answer) {
        prompter().message(kCancelledByOperator, title);
        return std::nullopt;
    }
    if (answer->empty()) {
        prompter().message(kEmptyNotSearched, title);
        return std::nullopt;
    }
    // A line break would end the script line, an unmatched double quote swallow
    // its redirection; inside the quotes of findstr's /c: any double quote would
    // end the search string. Such a text is not searched for, and the stored one
    // stays.
    std::string why = scriptTextRefusal(*answer);
    if (why.empty() && quotedInScript && answer->find('"') != std::string::npos)
        why = "the text holds a double quote";
    if (!why.empty()) {
        prompter().message("Not searched for: " + why, title, MessageIcon::Exclamation);
        return std::nullopt;
    }
    m_settings.write(kApplication, key, *answer);
    const ScriptPane& pane = w.rightClickedLast ? w.right : w.left;
    if (std::string why = scriptRefusal(pane.fileListPath); !why.empty()) {
        prompter().message("Cannot search " + pane.fileListPath + ": " + why, title,
                           MessageIcon::Exclamation);
        return std::nullopt;
    }
    return Search{*answer, &pane};
}

std::string ScriptCommands::editor() const {
    // The editor's name stands unquoted at the start of a script line.
    return scriptEscaped(scriptEditor(m_settings.GetIniValue(kApplication, "EDITOR", "Write.exe")));
}

long ScriptCommands::run(const ScriptRun& run, const char* title) {
    try {
        return writeAndStart(run, m_start);
    } catch (const std::exception& e) {
        prompter().message(e.what(), title, MessageIcon::Critical);
        return 0;
    }
}

long ScriptCommands::FindFile(const ScriptWindow& w) {
    const char* title = "Find File";
    auto search = beginSearch(w, "Enter File name / pattern to be scanned for", "File Search",
                              title, "SEARCHFILE", false);
    if (!search)
        return 0;
    const ScriptPane& pane = *search->pane;
    const std::string now = nowText();
    FindFileScript s{now,
                     pane.fileListPath,
                     pane.drive,
                     search->text,
                     dirSwitchString(switchesIn(m_settings, "DIRCONTROL")),
                     perWindowFileName(w.findFileCapture, w.tag),
                     editor()};
    ScriptRun r{findFileScriptPath(w.programDirectory, w.tag), findFileScriptText(s), s.capturePath,
                std::nullopt};
    if (w.replaceOutput)
        r.captureStart = findFileCaptureStart(now);
    return run(r, title);
}

long ScriptCommands::FindTheText(const ScriptWindow& w) {
    const char* title = "Find Text";
    auto search =
        beginSearch(w, "Enter text to be scanned for", "Text Search", title, "SEARCHTEXT", true);
    if (!search)
        return 0;
    const ScriptPane& pane = *search->pane;
    const std::string now = nowText();
    FindTextScript s;
    s.now = now;
    s.directory = pane.fileListPath;
    s.drive = pane.drive;
    s.searchText = search->text;
    s.switches = findstrSwitchString(switchesIn(m_settings, "FINDCONTROL"));
    s.pattern = m_settings.GetIniValue("LASTFILE" + w.tag, "FILEPATTERN", "*.*");
    if (std::string why = scriptTextRefusal(s.pattern); !why.empty()) {
        prompter().message("Not searched with the file pattern " + s.pattern + ": " + why, title,
                           MessageIcon::Exclamation);
        return 0;
    }
    s.breakout = w.breakout;
    s.capturePath = perWindowFileName(w.findTextCapture, w.tag);
    s.editor = editor();
    ScriptRun r{findTextScriptPath(w.programDirectory, w.tag), findTextScriptText(s), s.capturePath,
                std::nullopt};
    if (w.replaceOutput)
        r.captureStart = findTextCaptureStart(now);
    return run(r, title);
}

void ScriptCommands::CreateXcopy(const ScriptWindow& w) {
    const char* title = "Create Xcopy";
    for (const std::string* dir : {&w.left.directory, &w.right.directory})
        if (std::string why = scriptRefusal(*dir); !why.empty()) {
            prompter().message("Cannot copy with " + *dir + ": " + why, title,
                               MessageIcon::Exclamation);
            return;
        }
    XcopyScript s;
    s.now = nowText();
    s.leftDir = w.left.directory;
    s.rightDir = w.right.directory;
    s.items = w.left.items;
    s.parameters = m_settings.GetIniValue(kApplication, "XCOPYPARMS", "");
    s.resultsPath =
        xcopyResultsPath(m_settings.GetIniValue(kApplication, "XCOPYRESULTS", ""), w.xcopyScript);
    s.editor = editor();
    XcopyScriptText script = xcopyScriptText(s);
    try {
        writeScriptFile(w.xcopyScript, script.text);
    } catch (const std::exception& e) {
        prompter().message(e.what(), title, MessageIcon::Critical);
        return;
    }
    if (!script.leftOut.empty()) {
        std::string text = w.xcopyScript + " copies every file but these, whose names cannot "
                                           "stand in a script line:";
        for (const std::string& item : script.leftOut)
            text += "\r\n" + item;
        prompter().message(text, title, MessageIcon::Exclamation);
    }
}

long ScriptCommands::RunShell(const ScriptWindow& w) {
    try {
        auto selection = [](const ScriptPane& p) {
            return PaneSelection{p.fileListPath, p.selectedFile};
        };
        std::optional<std::string> command =
            fileToOpen(selection(w.left), selection(w.right), w.rightClickedLast);
        if (!command) {
            prompter().message(kSelectFileToRun);
            return 0;
        }
        // The parameters are kept under the file's path: a path that would add
        // lines or sections to the settings file is not run.
        if (std::string why = ini::nameRefusal(*command, true); !why.empty()) {
            prompter().message("Cannot run " + *command +
                                   ": its path cannot be kept in the settings file, " + why,
                               kProgramTitle, MessageIcon::Exclamation);
            return 0;
        }
        std::string parameters = m_settings.read("SHELLSCRIPTS", *command);
        std::optional<std::string> answer =
            prompter().input(runShellPrompt(*command), kParmsTitle, parameters);
        if (!answer) {
            prompter().message(kCancelledByOperator, kParmsTitle);
            return 0;
        }
        m_settings.write("SHELLSCRIPTS", *command, *answer);
        return m_start(*command + " " + *answer);
    } catch (const std::exception& e) {
        prompter().message(shellRunFailedText(errorNumber(e), errorDescription(e)), kProgramTitle,
                           MessageIcon::Critical);
        return 0;
    }
}

} // namespace pv
