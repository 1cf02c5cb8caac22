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

} // namespace pv
