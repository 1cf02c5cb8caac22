#pragma once
// Helpers for the interpreter and tool tests: a temporary directory that is the
// current directory for the test's duration, and tool runs captured as text.

#include "pvcmd/tool.h"
#include "support/temptree.h"

#include <filesystem>
#include <sstream>
#include <string>

namespace pvcmdtest {

class InTempDir : public pvtest::TempDir {
  public:
    InTempDir() : m_old(std::filesystem::current_path()) { std::filesystem::current_path(path()); }
    ~InTempDir() {
        std::error_code ignored;
        std::filesystem::current_path(m_old, ignored);
    }

  private:
    std::filesystem::path m_old;
};

struct ToolResult {
    int code = -1;
    std::string out;
    std::string err;
};

// Runs one built-in tool from inside `dir` (the tools work relative to the
// current directory); `input` answers its prompts.
inline ToolResult runTool(pvcmd::ToolMain tool, const std::string& dir, const pvcmd::ToolArgs& args,
                          const std::string& input = {}) {
    std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(dir);
    std::istringstream in(input);
    std::ostringstream out, err;
    pvcmd::ToolIo io{in, out, err};
    ToolResult result{tool(args, io), out.str(), err.str()};
    std::filesystem::current_path(previous);
    return result;
}

// Turns "\n" into "\r\n" so that expected reports read naturally.
inline std::string crlf(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '\n')
            out += '\r';
        out += c;
    }
    return out;
}

} // namespace pvcmdtest
