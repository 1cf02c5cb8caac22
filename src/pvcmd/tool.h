#pragma once
// The contract between the script interpreter and its built-in tools
// (fc, findstr, dir, xcopy). A tool reads its arguments as the interpreter split
// them (Windows command-line rules, quotes removed), works relative to the
// process's current directory (the interpreter really changes directory for cd,
// pushd and popd), writes its report to `out` and its complaints to `err`,
// and returns the exit code a script or shell sees.

#include <iosfwd>
#include <string>
#include <vector>

namespace pvcmd {

struct ToolIo {
    std::istream& in;  // answers to prompts (xcopy's overwrite question)
    std::ostream& out; // the report; tools write CR LF line ends themselves
    std::ostream& err; // error messages, also CR LF
};

using ToolArgs = std::vector<std::string>;
using ToolMain = int (*)(const ToolArgs& args, ToolIo& io);

// Looks a built-in tool up by name, ignoring case ("FC", "fc.exe" too);
// nullptr when the name is not a built-in tool.
ToolMain findTool(const std::string& name);

int fcMain(const ToolArgs& args, ToolIo& io);
int findstrMain(const ToolArgs& args, ToolIo& io);
int dirMain(const ToolArgs& args, ToolIo& io);
int xcopyMain(const ToolArgs& args, ToolIo& io);

} // namespace pvcmd
