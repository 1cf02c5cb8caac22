#pragma once
// The desktop's file associations on POSIX: the program for a file's type comes
// from `xdg-mime query filetype FILE`, `xdg-mime query default TYPE` and the Exec
// line of the desktop file named there; files open through `xdg-open`.

#include <string>

namespace pv {

// The program associated with the file's type: the first word of the desktop
// file's Exec line, as a full path when it is found on $PATH. Surrounding double
// quotes of `path` are removed first. Empty when the file is missing or any step
// finds nothing.
std::string findAssociatedProgram(const std::string& path);

// The program named by a desktop file's text: the first word of the Exec key of
// its "[Desktop Entry]" group; empty when there is none.
std::string desktopExecProgram(const std::string& desktopFileText);

// Opens the file (surrounding quotes removed) with the desktop's association,
// detached, through xdg-open. Returns the process id; throws RuntimeError.
long openWithDesktop(const std::string& path);

} // namespace pv
