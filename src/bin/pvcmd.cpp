// pvcmd: runs command scripts written for the Windows command interpreter, and
// its built-in tools (fc, ...) directly from a shell.

#include "platform/process.h"
#include "platform/pvversion.h"
#include "pvcmd/interpreter.h"
#include "pvcmd/tool.h"

#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr const char* kUsage =
    "Usage: pvcmd SCRIPT.cmd [ARGUMENTS]   run a command script\n"
    "       pvcmd TOOL [ARGUMENTS]         run a built-in tool\n"
    "       pvcmd TOOL /?                  show a tool's switches\n"
    "       pvcmd --help                   show this text\n"
    "       pvcmd --version                show the version\n"
    "\n"
    "Built-in tools (any letter case, with or without .exe):\n"
    "  fc        compare two files or sets of files\n"
    "  findstr   search for strings in files\n"
    "  dir       list files and directories\n"
    "  xcopy     copy files and directory trees\n"
    "\n"
    "Script commands:\n"
    "  rem             a remark; the line does nothing\n"
    "  @               as the first character: the line is not echoed\n"
    "  echo            print text; echo. an empty line; echo on/off\n"
    "  > and >>        send a command's output to a file (2> the error output)\n"
    "  cd              change directory (chdir and cd /d too)\n"
    "  pushd           remember the current directory and change to another\n"
    "  popd            go back to the directory pushd remembered\n"
    "  D:              a drive line, or the path of a directory: nothing to do\n"
    "  set             set NAME=VALUE, used as %NAME% in later lines\n"
    "  shift           move the arguments %1..%9 down by one\n"
    "  start           start a program without waiting (start /wait waits)\n"
    "  exit            end the script (exit /b N: with status N)\n"
    "  call            run another script and come back (named without\n"
    "                  call, a script takes over and the caller ends)\n"
    "  cls             does nothing\n"
    "  pause           waits for a key\n"
    "  anything else   a program, looked up in the current directory and on\n"
    "                  the search path, and waited for\n"
    "\n"
    "%0..%9, %~1..%~9, %* and %NAME% are replaced in scripts started with\n"
    "arguments; without, only %% and %NAME% of a set variable, outside quotes.\n"
    "%ERRORLEVEL% is the last command's status. A ^ at the end of a line\n"
    "continues it on the next.\n"
    "\n"
    "Exit status: the script's last command's, or the tool's (fc: 0 same,\n"
    "1 different, 2 error). A command that cannot be found gives 127; other\n"
    "statuses above 255 give 255. pvcmd's own usage errors give 2.\n";

// A process exit status that a shell can read back unchanged.
int shellStatus(int status) {
    if (status == pvcmd::Interpreter::kNotRecognized)
        return 127;
    if (status < 0 || status > 255)
        return 255;
    return status;
}

bool isScriptName(const std::string& name) {
    if (name.size() < 4)
        return false;
    std::string ext = name.substr(name.size() - 4);
    for (char& c : ext)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return ext == ".cmd" || ext == ".bat";
}

} // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) {
        std::cerr << kUsage;
        return 2;
    }
    const std::string& first = args[0];
    if (first == "--help" || first == "-h" || first == "/?") {
        std::cout << kUsage;
        return 0;
    }
    if (first == "--version") {
        std::cout << "pvcmd " << PAIRVIEW_VERSION << "\n";
        return 0;
    }
    pvcmd::ToolIo io{std::cin, std::cout, std::cerr};
    pvcmd::ToolMain tool = isScriptName(first) || first.find('/') != std::string::npos
                               ? nullptr
                               : pvcmd::findTool(first);
    if (tool) {
        int status = tool(pvcmd::ToolArgs(args.begin() + 1, args.end()), io);
        std::cout.flush();
        std::cerr.flush();
        return shellStatus(status);
    }
    if (first.size() > 1 && first[0] == '-') {
        std::cerr << "pvcmd: unknown option " << first << "\n" << kUsage;
        return 2;
    }
    // The arguments a script sees keep their quotes, as the interpreter passes
    // them on: an argument with blanks arrives as "a b".
    std::vector<std::string> scriptArgs;
    scriptArgs.push_back(first);
    for (size_t i = 1; i < args.size(); ++i)
        scriptArgs.push_back(pv::quoteArgument(args[i]));
    pvcmd::Interpreter interpreter(io);
    int status = interpreter.runScript(first, scriptArgs);
    std::cout.flush();
    std::cerr.flush();
    return shellStatus(status);
}
