#pragma once
// Putting file names into command-script lines safely. Inside a double-quoted
// argument & | < > ^ are taken literally, and the interpreter takes the generated
// scripts (started without arguments) literally, % included. A double quote or a
// line break would end the argument or the line, so a path holding one is never
// written into a script.

#include <string>
#include <string_view>

namespace pv {

// Why a path cannot go into a script line, or empty when it can.
std::string scriptRefusal(std::string_view path);

// The path in double quotes, written so that the command-line splitter gives it
// back unchanged.
std::string scriptArgument(std::string_view path);

} // namespace pv
