#pragma once
// The program's command line: "-ini PATH" or "/ini PATH" (any letter case) names the
// settings file; every other word is ignored; at most eleven words are examined.

#include <optional>
#include <string>
#include <vector>

namespace pv {

// The arguments (without the program's name) joined by blanks, as one text.
std::string joinArguments(const std::vector<std::string>& args);

// The settings-file path the command line names, if any. A path with blanks
// cannot be given and quotes are kept. The option as the last word (no path)
// names nothing: the default settings file is kept.
std::optional<std::string> settingsPathFromCommandLine(const std::string& commandLine);

// What the program does before any window opens: "--help" and "--version" print
// and end; any other word that begins with "--" is an error; everything else
// (among it "-ini PATH" and words the settings rules ignore) starts the program.
// "--open FILE" starts the program too, and hands FILE to an instance that is
// already running when there is one.
struct StartRequest {
    enum class Kind { Run, Help, Version, Error };
    Kind kind = Kind::Run;
    std::string text; // what to print: the help, the version line or the error line
    std::string openFile; // the file of "--open FILE"; empty when not asked
};
StartRequest startRequest(const std::vector<std::string>& args);

} // namespace pv
