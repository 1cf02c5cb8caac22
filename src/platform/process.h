#pragma once
// Starting programs. Command lines are written as the Windows command interpreter
// would see them and split by its quoting rules; a few program names are mapped
// to what the desktop offers.

#include <string>
#include <vector>

namespace pv {

// Splits a command line by the Windows rules (CommandLineToArgvW): blanks and tabs
// separate words, double quotes group, backslashes are literal unless they precede
// a double quote (2n backslashes + quote -> n backslashes and a quote toggle,
// 2n+1 -> n backslashes and a literal quote), "" inside quotes is a literal quote.
std::vector<std::string> splitCommandLine(const std::string& commandLine);

// Quotes one argument so that splitCommandLine gives it back unchanged.
std::string quoteArgument(const std::string& argument);

// Resolves a program name the way the program starts it on POSIX:
//  - "Write.exe" and "Notepad.exe" (any case, also without ".exe") are the
//    desktop's text editor: $PAIRVIEW_EDITOR split by splitCommandLine when set
//    (a first word without "/" looked up on $PATH), else "xdg-open";
//  - a name ending in ".cmd" or ".bat" (any case) runs under the script
//    interpreter: {pvcmdPath(), script};
//  - "pairview" (any case) is the one beside the running executable, when there
//    is one there;
//  - a name with a "/" is used as it stands;
//  - otherwise the name on $PATH, and "x" for "x.exe" when only that exists.
// Returns the argv prefix to run (program first), or empty when nothing is found.
std::vector<std::string> resolveProgram(const std::string& name);

// The path of the pvcmd interpreter: $PAIRVIEW_PVCMD when set, else "pvcmd"
// beside the running executable, else "pvcmd" on $PATH.
std::string pvcmdPath();

// The running executable's path (empty when the system does not say).
std::string runningProgramPath();
// An executable file `name` in the running executable's directory; empty when
// there is none.
std::string besideRunningProgram(const std::string& name);

// Starts a command line detached (not waited on, no handle kept) after resolving
// its first word with resolveProgram. For a script, what it prints outside its own
// redirections goes to a log beside it: the script's name plus ".log"
// ("Pairview.cmd" -> "Pairview.cmd.log"). Returns the process id.
// The program runs in a new session with standard input from /dev/null; a
// missing working directory throws with the directory's name.
// `environment` holds "NAME=value" entries that replace or add to this process's
// environment for the started program.
// Throws RuntimeError (errno number and text) when the program cannot be started;
// a program that cannot be found gives ENOENT with the program name in the text.
long startDetached(const std::string& commandLine, const std::string& workingDirectory = {},
                   const std::vector<std::string>& environment = {});

// Starts argv (already split and resolved) and waits for it; returns its exit code
// (128 + signal number when killed). Used by the script interpreter. The child's
// standard output and error go to stdoutFd and stderrFd when those are not -1
// (a redirection of the script line), else to this process's own.
// Throws RuntimeError when it cannot be started.
int runAndWait(const std::vector<std::string>& argv, int stdoutFd = -1, int stderrFd = -1);

} // namespace pv
