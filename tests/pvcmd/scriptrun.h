#pragma once
// Runs a command script through the pvcmd executable, as Pairview starts the
// scripts it writes.

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

} // namespace pvtest
