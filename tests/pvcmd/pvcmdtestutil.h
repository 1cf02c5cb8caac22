#pragma once
// Helpers for the interpreter and tool tests: a temporary directory that is the
// current directory for the test's duration, and tool runs captured as text.

#include "pvcmd/tool.h"
#include "support/temptree.h"

#include <sstream>
#include <string>
#include <unistd.h>

namespace pvcmdtest {

class InTempDir {
  public:
    InTempDir() {
        char buf[4096];
        m_old = ::getcwd(buf, sizeof buf) ? buf : "/";
        if (::chdir(m_dir.str().c_str()) != 0)
            m_old.clear();
    }
    ~InTempDir() {
        if (!m_old.empty() && ::chdir(m_old.c_str()) != 0)
            m_old.clear();
    }
    InTempDir(const InTempDir&) = delete;
    InTempDir& operator=(const InTempDir&) = delete;
    const pvtest::TempDir& dir() const { return m_dir; }

  private:
    pvtest::TempDir m_dir;
    std::string m_old;
};

struct ToolRun {
    int rc = 0;
    std::string out;
    std::string err;
};

inline ToolRun runTool(pvcmd::ToolMain tool, const pvcmd::ToolArgs& args) {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    pvcmd::ToolIo io{in, out, err};
    ToolRun run;
    run.rc = tool(args, io);
    run.out = out.str();
    run.err = err.str();
    return run;
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
