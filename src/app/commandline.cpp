#include "app/commandline.h"
#include "platform/pvversion.h"
#include "platform/textutil.h"

namespace pv {

std::string joinArguments(const std::vector<std::string>& args) {
    std::string text;
    for (const std::string& a : args) {
        if (!text.empty())
            text += ' ';
        text += a;
    }
    return text;
}

std::optional<std::string> settingsPathFromCommandLine(const std::string& commandLine) {
    std::optional<std::string> path;
    std::string rest(trimBlanks(commandLine));
    int count = 0;
    while (!rest.empty()) {
        ++count;
        std::string token;
        std::size_t blank = rest.find(' ');
        if (blank != std::string::npos) {
            token = rest.substr(0, blank);
            rest = std::string(trimBlanks(std::string_view(rest).substr(blank)));
        } else {
            token = rest;
            rest.clear();
        }
        token = toUpper(trimBlanks(token));
        if (token == "-INI" || token == "/INI") {
            // The path word stays in the rest and is examined as the next token.
            std::size_t next = rest.find(' ');
            std::string word = next == std::string::npos ? rest : rest.substr(0, next);
            if (!word.empty())
                path = word;
        }
        if (count > 10)
            break;
    }
    return path;
}

namespace {

constexpr const char* kUsage = "Usage: pairview [-ini FILE]\n";
// The help text after the usage line.
constexpr const char* kHelpBody = R"(
Compares two directories side by side and writes the command scripts (fc,
findstr, dir, xcopy) that pvcmd runs.

  -ini FILE    settings file to use instead of Pairview.ini in the program
               directory ("/ini" and any letter case too; a path with blanks
               cannot be given)
  --help       show this text
  --version    show the version

Environment:
  PAIRVIEW_HOME     program directory: settings, results and scripts
                    (default: the program's own directory when writable, else
                    $XDG_DATA_HOME/pairview)
  PAIRVIEW_EDITOR   text editor for "Write.exe" and "Notepad.exe"
                    (default: xdg-open)
  PAIRVIEW_PVCMD    the script interpreter (default: pvcmd beside the program)
  PAIRVIEW_SYSINFO  the program the about box's "System Info" starts
)";

} // namespace

StartRequest startRequest(const std::vector<std::string>& args) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const std::string upper = toUpper(a);
        if (upper == "-INI" || upper == "/INI") {
            // The settings path, whatever it looks like, but one word: the path
            // is read from the words of the command line, so a blank would cut it.
            if (++i < args.size() && args[i].find_first_of(" \t") != std::string::npos)
                return {StartRequest::Kind::Error,
                        "pairview: the settings path cannot contain blanks: " + args[i] + "\n" +
                            kUsage};
            continue;
        }
        if (a == "--help")
            return {StartRequest::Kind::Help, std::string(kUsage) + kHelpBody};
        if (a == "--version")
            return {StartRequest::Kind::Version,
                    std::string("pairview ") + PAIRVIEW_VERSION + "\n"};
        if (a.rfind("--", 0) == 0)
            return {StartRequest::Kind::Error,
                    "pairview: unknown option " + a + " (see pairview --help)\n"};
    }
    return {};
}

} // namespace pv
