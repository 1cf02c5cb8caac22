#pragma once
// Runs one built-in tool inside a directory and captures what it reports.

#include "pvcmd/tool.h"

#include <filesystem>
#include <sstream>
#include <string>
#include <unistd.h>

namespace pvtest {

struct ToolResult {
    int code = -1;
    std::string out;
    std::string err;
};

// Changes into `dir` for the run (the tools work relative to the current
// directory) and back afterwards; `input` answers prompts.
inline ToolResult runTool(pvcmd::ToolMain tool, const std::string& dir, const pvcmd::ToolArgs& args,
                          const std::string& input = {}) {
    std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(dir);
    std::istringstream in(input);
    std::ostringstream out, err;
    pvcmd::ToolIo io{in, out, err};
    ToolResult result;
    result.code = tool(args, io);
    std::filesystem::current_path(previous);
    result.out = out.str();
    result.err = err.str();
    return result;
}

} // namespace pvtest
