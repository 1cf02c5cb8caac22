#pragma once
// Putting file names and typed texts into command-script lines safely. Inside a
// double-quoted argument & | < > ^ are taken literally. A double quote or a line
// break would end the argument or the line, so a path holding one is never
// written into a script. Text outside double quotes (an echoed search text, a
// name pattern) gets the interpreter's escapes instead, so that it is echoed or
// passed on as typed and never read as a redirection, a pipe or a variable.

#include <string>
#include <string_view>

namespace pv {

// Why a path cannot go into a script line, or empty when it can.
std::string scriptRefusal(std::string_view path);

// The path in double quotes, written so that the command-line splitter gives it
// back unchanged.
std::string scriptArgument(std::string_view path);

// Why a typed text cannot stand outside double quotes in a script line (a line
// break, or a double quote without its partner, which would swallow the rest of
// the line), or empty when it can.
std::string scriptTextRefusal(std::string_view text);

// The text with the interpreter's escapes where it stands outside double quotes:
// ^ before > < | & ^, and %% for %. Parts the text itself puts in double quotes
// are left as they are. Expects a text scriptTextRefusal accepts.
std::string scriptEscaped(std::string_view text);

// An fc switch taken from a settings key ("FC_LB": "/lbN", "FC_NNNN": "/N") goes
// into the fc lines only when it is one: the text itself when well formed (or
// empty), else "" and the text is reported once per run ("Ignored fc switch from
// the settings file: KEY=TEXT").
std::string wellFormedFcSwitch(std::string_view key, std::string_view text);

} // namespace pv
