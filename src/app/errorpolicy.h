#pragma once
// The three ways a command treats a failure:
//  - skip: a failing step is left out and the next one runs;
//  - trap: the command catches the error and shows its own message (the caller's code);
//  - none: the error leaves the command and the dispatcher shows one message box,
//    the command's caption, a line end and the error's description.

#include <exception>
#include <functional>
#include <string>

namespace pv {

// The description of an error as the program shows it.
std::string errorDescription(const std::exception& e);
// The error number (errno for RuntimeError, 0 otherwise).
int errorNumber(const std::exception& e);

// Runs one step and swallows its error; returns false when it failed.
bool skipOnError(const std::function<void()>& step);

// Runs a command for the dispatcher: on error shows caption + CR LF + description.
void dispatchCommand(const std::string& caption, const std::function<void()>& command);

} // namespace pv
