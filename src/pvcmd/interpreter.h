#pragma once
// Runs command scripts as the system's command interpreter runs the scripts
// Pairview writes: echo, rem, redirection, cd, pushd/popd, drive lines, the
// built-in tools, and any other line as a program that is waited for.
// A failing line prints its message on the error output and the script goes on,
// except a popd that cannot return: the lines after it would run elsewhere.

#include "pvcmd/scriptline.h"
#include "pvcmd/tool.h"

#include <iosfwd>
#include <optional>
#include <streambuf>
#include <string>
#include <vector>

namespace pvcmd {

class Interpreter {
  public:
    // Exit status of a line that names nothing that can be run.
    static constexpr int kNotRecognized = 9009;
    // Longest line the interpreter accepts, as the system's does.
    static constexpr size_t kMaxLine = 8191;
    // Scripts running inside scripts (call, start /wait, a pvcmd started by a
    // script), counted across processes in the environment variable below.
    static constexpr int kMaxNesting = 32;
    static constexpr const char* kNestingVariable = "PVCMD_DEPTH";

    explicit Interpreter(ToolIo& io);
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    // Runs a script file. args[0] is the script as named, args[1..] its
    // arguments; with none, "%" is read only in the forms expandPercents lists.
    // A script named on a line without "call" takes over: the lines after it
    // do not run, and its status is the status returned.
    // Returns the last command's exit status, or 1 when that is 0 but output of
    // some line was lost on its way into a file (a full disk).
    int runScript(const std::string& path, const std::vector<std::string>& args);

    // Runs script text (LF or CR LF line ends) with the same rules; a script it
    // names takes over as in runScript.
    int runText(const std::string& text, const std::vector<std::string>& args);

    // Runs one line; returns its exit status (the previous status for lines that
    // do not set one, such as rem and empty lines).
    int runLine(const std::string& raw);

    bool echoOn() const { return m_echo; }
    bool exitRequested() const { return m_exit; }

  private:
    // A script named on a line, with the arguments it is to see.
    struct ScriptCall {
        std::string path;
        std::vector<std::string> args;
    };

    int runFile(ScriptCall script);
    int runStream(std::streambuf& in);
    int runNested(const ScriptCall& script, ToolIo& io);
    int dispatch(const std::string& full, ToolIo& io, bool redirected, int outFd, int errFd,
                 bool called);
    int execute(const ScriptLine& line);
    int runEcho(const std::string& rest, ToolIo& io);
    int runCd(std::string rest, ToolIo& io);
    int runPushd(std::string rest, ToolIo& io);
    int runPopd();
    int runShift(const std::string& rest, ToolIo& io);
    int runSet(const std::string& rest, ToolIo& io);
    int runExit(const std::string& rest);
    int runStart(const std::string& rest, ToolIo& io);
    int runProgram(const std::string& text, ToolIo& io, int outFd, int errFd);
    int notRecognized(const std::string& name, ToolIo& io);
    std::optional<ScriptCall> scriptNamedBy(const std::string& text) const;
    bool changeDirectory(const std::string& path, ToolIo& io);
    int scriptStatus() const;

    ToolIo& m_io;
    bool m_echo = true;
    bool m_exit = false;
    // Set when scripts nest too deep: every level stops.
    bool m_aborted = false;
    int m_status = 0;
    PercentContext m_percent;
    // The script that takes over when the current one ends its line.
    std::optional<ScriptCall> m_next;
    bool m_outputLost = false;
    // Directories left by pushd, held open (-1 when the current one could not be).
    std::vector<int> m_directoryStack;
};

} // namespace pvcmd
