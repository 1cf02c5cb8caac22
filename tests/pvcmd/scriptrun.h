#pragma once
// Runs a command script through the pvcmd executable, as Pairview starts the
// scripts it writes, and builds script text entry by entry the way Pairview's
// writers do: each entry carries its own line breaks before and after its text
// and is then ended by CR LF.

#include "support/temptree.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace pvtest {

inline std::string pvcmdExecutable() {
    return std::string(PV_BINARY_DIR) + "/pvcmd";
}

inline bool havePvcmd() {
    return std::filesystem::exists(pvcmdExecutable());
}

// Runs `script` with pvcmd from `dir`, input from /dev/null, the console output
// into `dir`/console.txt. Returns the exit status of the shell.
inline int runScript(const std::string& dir, const std::string& script) {
    std::string command = "cd '" + dir + "' && '" + pvcmdExecutable() + "' '" + script +
                          "' </dev/null >console.txt 2>&1";
    return std::system(command.c_str());
}

inline std::string entry(int before, const std::string& text, int after) {
    std::string out;
    for (int i = 0; i < before; ++i)
        out += "\r\n";
    out += text;
    for (int i = 0; i < after; ++i)
        out += "\r\n";
    return out + "\r\n";
}

inline std::string dashes() {
    return std::string(83, '-');
}

inline std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

} // namespace pvtest
