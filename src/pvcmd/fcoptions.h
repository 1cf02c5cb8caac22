#pragma once
// The switches of fc, as parsed from its command line.

#include <string>

namespace pvcmd {

struct FcOptions {
    bool abbreviate = false;     // /a
    bool binary = false;         // /b
    bool ignoreCase = false;     // /c
    bool forceText = false;      // /l
    bool lineNumbers = false;    // /n
    bool keepTabs = false;       // /t
    bool unicode = false;        // /u
    bool compressBlanks = false; // /w
    int lineBuffer = 100;        // /lbN
    int resyncLines = 2;         // /N

    // Largest /lbN and /N accepted: the resync search is quadratic in the buffer.
    static constexpr int kMaxLines = 32767;

    enum class Switch { Applied, Help, NotASwitch, Invalid };

    // Applies one command-line word. A word that does not start with "/" is not a
    // switch; one that does is a switch only when it spells one exactly (any case),
    // so that POSIX paths like "/home/x.txt" reach the file list. A word like "/x"
    // that is neither a switch nor names a path with a second "/" is Invalid;
    // `looksLikePath` lets the caller treat an existing "/name" as a file.
    Switch apply(const std::string& word, bool looksLikePath);
};

} // namespace pvcmd
