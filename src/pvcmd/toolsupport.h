#pragma once
// Small pieces shared by the findstr, dir and xcopy stand-ins: CR LF output and the
// reading of switch tokens. Case folding is the platform's (platform/textutil.h).

#include "platform/textutil.h"

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace pvcmd {

// Writes text followed by CR LF, as the system's tools end their lines.
void writeLine(std::ostream& out, std::string_view text = {});


// How a command-line word that starts with "/" is to be read. Windows paths never
// start with "/", but absolute POSIX paths do, and the scripts concatenate switches
// ("/a:d-h/b/o:n/s"). A word is switches when every "/"-separated piece is a switch
// the tool knows; otherwise a word that holds a further "/" or names something on
// disk is a path; anything else is a bad switch.
enum class WordKind { Operand, Switches, BadSwitch };

struct ClassifiedWord {
    WordKind kind = WordKind::Operand;
    std::vector<std::string> switches; // pieces without their leading "/"
    std::string badSwitch;             // the first unknown piece, with its "/"
};

using SwitchRecogniser = std::function<bool(std::string_view piece)>;

ClassifiedWord classifyWord(std::string_view word, const SwitchRecogniser& isKnown);

// Splits "/a:d-h/b" into "a:d-h" and "b". A "/" right after ":" belongs to the
// value only when the switch takes a path-like value (not needed by our tools).
std::vector<std::string> splitSwitchPieces(std::string_view word);

// The command interpreter's text for a failure with errno `error`
// ("Access is denied.", "The system cannot find the path specified.", ...).
std::string systemMessage(int error);

// Numbers with a "," every three digits, as the tools print sizes.
std::string withThousands(unsigned long long value);

} // namespace pvcmd
