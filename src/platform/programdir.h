#pragma once
// Where the program lives and keeps its working files.

#include <string>

namespace pv {

// The directory of the running executable, without a trailing separator.
std::string executableDirectory();

// The program directory, always absolute: $PAIRVIEW_HOME when set (relative to the
// current directory); else the executable's directory when it holds the shipped
// files (a build tree, not an installed program) and is writable; else the
// per-user data directory ($XDG_DATA_HOME/pairview,
// or ~/.local/share/pairview), created when missing. Unless it is the executable's
// directory, the shipped files (CompareSelectedFile.cmd) are installed in it.
std::string resolveProgramDirectory();

// Copies every shipped file from `from` into `dir` unless `dir` already holds the
// same bytes: a missing, short or outdated copy is replaced, through a temporary
// file and a rename. A copy that fails leaves what was there.
void installShippedFiles(const std::string& from, const std::string& dir);

// Where the shipped files are found: the executable's directory when it holds
// them (a build tree), else ../share/pairview beside it (an installed program).
std::string sharedFilesDirectory();

} // namespace pv
