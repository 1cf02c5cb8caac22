#pragma once
// Putting file names into command-script lines safely. Inside a double-quoted
// argument the command interpreter takes & | < > ^ literally, but it still
// expands %...% in a script, and a double quote or a line break would end the
// argument or the line. So a path with a double quote or a line break is never
// written into a script, and every % is doubled, which the interpreter turns
// back into one.

#include <string>
#include <string_view>

namespace pv {

// Why a path cannot go into a script line, or empty when it can.
std::string scriptRefusal(std::string_view path);

// The path as it is written between double quotes in a script line.
std::string scriptQuoted(std::string_view path);

// dir + "/" + name, without doubling the separator when dir already ends with it
// (the root "/").
std::string joinDirName(std::string_view dir, std::string_view name);

} // namespace pv
