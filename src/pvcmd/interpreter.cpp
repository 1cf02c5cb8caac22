#include "pvcmd/interpreter.h"
#include "pvcmd/toolsupport.h"

#include "platform/process.h"
#include "platform/runtimeerror.h"
#include "platform/textutil.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace pvcmd {

namespace {

constexpr const char* kPathNotFound = "The system cannot find the path specified.";
constexpr const char* kFileNotFound = "The system cannot find the file specified.";

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string trim(const std::string& text) {
    return std::string(pv::trimBlanks(text, " \t"));
}

std::string withoutQuotes(const std::string& text) {
    std::string out;
    for (char c : text)
        if (c != '"')
            out += c;
    return out;
}

// "C:" or "C:\": a drive switch, which means nothing on POSIX.
bool isDriveText(const std::string& text) {
    return (text.size() == 2 || (text.size() == 3 && (text[2] == '\\' || text[2] == '/'))) &&
           ((text[0] >= 'a' && text[0] <= 'z') || (text[0] >= 'A' && text[0] <= 'Z')) &&
           text[1] == ':';
}

// The current directory however long its path is ("" when it cannot be told,
// for instance after it was removed).
std::string currentDirectory() {
    std::string buf(4096, '\0');
    while (::getcwd(buf.data(), buf.size()) == nullptr) {
        if (errno != ERANGE || buf.size() > (1u << 20))
            return {};
        buf.resize(buf.size() * 2);
    }
    return buf.c_str();
}

// An output stream buffer over a file descriptor that remembers the first
// write error instead of throwing, so a full disk is reported once and the
// script goes on.
class FdOutBuf : public std::streambuf {
  public:
    explicit FdOutBuf(int fd) : m_fd(fd) { setp(m_buffer, m_buffer + sizeof m_buffer); }
    ~FdOutBuf() override { flushBuffer(); }
    int error() const { return m_error; }

  protected:
    int_type overflow(int_type ch) override {
        if (!flushBuffer())
            return traits_type::eof();
        if (!traits_type::eq_int_type(ch, traits_type::eof())) {
            *pptr() = traits_type::to_char_type(ch);
            pbump(1);
        }
        return traits_type::not_eof(ch);
    }
    int sync() override { return flushBuffer() ? 0 : -1; }

  private:
    bool flushBuffer() {
        const char* p = pbase();
        size_t left = static_cast<size_t>(pptr() - pbase());
        while (left > 0 && m_error == 0) {
            ssize_t w = ::write(m_fd, p, left);
            if (w < 0) {
                if (errno == EINTR)
                    continue;
                m_error = errno;
                break;
            }
            p += w;
            left -= static_cast<size_t>(w);
        }
        setp(m_buffer, m_buffer + sizeof m_buffer);
        return m_error == 0;
    }

    int m_fd;
    int m_error = 0;
    char m_buffer[16384];
};

// The files one line's redirections opened, for its duration.
class RedirectedFiles {
  public:
    ~RedirectedFiles() {
        for (int fd : m_opened)
            ::close(fd);
    }

    // Opens the targets; returns false (with errno in error) when one fails.
    bool open(const std::vector<Redirection>& redirections, int& error, std::string& failed) {
        for (const Redirection& r : redirections) {
            int fd = -1;
            const int slot = r.handle == 2 ? 1 : 0;
            if (r.target == "&1" || r.target == "&2") {
                int from = r.target[1] - '0';
                fd = from == 1 ? m_fds[0] : m_fds[1];
                m_targets[slot] = m_targets[from - 1];
                if (fd < 0)
                    fd = from; // the interpreter's own handle
            } else {
                m_targets[slot] = r.target;
                int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (r.append ? O_APPEND : O_TRUNC);
                // "nul" is the system's null device in any directory and any case.
                std::string target = pv::toLower(r.target) == "nul" ? "/dev/null" : r.target;
                fd = ::open(target.c_str(), flags, 0666);
                if (fd < 0) {
                    error = errno;
                    failed = r.target;
                    return false;
                }
                m_opened.push_back(fd);
            }
            m_fds[slot] = fd;
        }
        return true;
    }

    // -1 when the handle is not redirected.
    int outFd() const { return m_fds[0]; }
    int errFd() const { return m_fds[1]; }
    // The file a handle was redirected to, as the line names it.
    const std::string& outTarget() const { return m_targets[0]; }
    const std::string& errTarget() const { return m_targets[1]; }

  private:
    int m_fds[2] = {-1, -1};
    std::string m_targets[2];
    std::vector<int> m_opened;
};

// One more level of scripts within scripts for as long as it lives, counted in
// the environment so that a pvcmd started by a script counts too.
class NestingLevel {
  public:
    NestingLevel() {
        const char* value = std::getenv(Interpreter::kNestingVariable);
        if (value)
            m_saved = value;
        int depth = value ? std::atoi(value) : 0;
        if (depth >= Interpreter::kMaxNesting)
            return;
        m_entered = true;
        ::setenv(Interpreter::kNestingVariable, std::to_string(depth + 1).c_str(), 1);
    }
    ~NestingLevel() {
        if (!m_entered)
            return;
        if (m_saved)
            ::setenv(Interpreter::kNestingVariable, m_saved->c_str(), 1);
        else
            ::unsetenv(Interpreter::kNestingVariable);
    }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;

    bool entered() const { return m_entered; }

  private:
    bool m_entered = false;
    std::optional<std::string> m_saved;
};

// A regular file (not a directory) that a script name may stand for.
bool isScriptFile(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool hasScriptExtension(const std::string& name) {
    std::string lower = pv::toLower(name);
    return lower.size() > 4 && (lower.compare(lower.size() - 4, 4, ".cmd") == 0 ||
                                lower.compare(lower.size() - 4, 4, ".bat") == 0);
}

} // namespace

Interpreter::Interpreter(ToolIo& io) : m_io(io) {}

int Interpreter::runScript(const std::string& path, const std::vector<std::string>& args) {
    ScriptCall script{path, args};
    if (script.args.empty())
        script.args.push_back(path);
    return runFile(std::move(script));
}

int Interpreter::runText(const std::string& text, const std::vector<std::string>& args) {
    NestingLevel level;
    m_percent.args = args;
    m_percent.withArguments = args.size() > 1;
    std::istringstream in(text);
    int status = runStream(*in.rdbuf());
    if (m_next) {
        ScriptCall next = std::move(*m_next);
        m_next.reset();
        m_exit = false;
        return runFile(std::move(next));
    }
    return status;
}

int Interpreter::runFile(ScriptCall script) {
    NestingLevel level;
    if (!level.entered()) {
        m_io.err << "Scripts are nested more than " << kMaxNesting
                 << " deep (call, start /wait or pvcmd within a script); the script stops.\r\n";
        m_io.err.flush();
        m_aborted = m_exit = true;
        m_status = 1;
        return 1;
    }
    // Without "if" or "goto" a script that comes back to itself through
    // takeovers can never end; it is stopped after a while.
    std::set<std::pair<dev_t, ino_t>> seen;
    int comebacks = 0;
    for (;;) {
        std::ifstream file(script.path, std::ios::binary);
        if (!file || pv::isDirectory(script.path)) {
            m_io.err << kFileNotFound << "\r\n";
            m_io.err.flush();
            return 1;
        }
        struct stat st {};
        if (::stat(script.path.c_str(), &st) == 0 && !seen.insert({st.st_dev, st.st_ino}).second &&
            ++comebacks > kMaxNesting) {
            m_io.err << "A script took over from itself more than " << kMaxNesting
                     << " times; the script stops.\r\n";
            m_io.err.flush();
            m_exit = true;
            m_status = 1;
            return 1;
        }
        m_percent.args = script.args;
        m_percent.withArguments = script.args.size() > 1;
        runStream(*file.rdbuf());
        if (!m_next)
            break;
        // Control passed to another script: this one does not go on.
        script = std::move(*m_next);
        m_next.reset();
        m_exit = false;
    }
    return scriptStatus();
}

int Interpreter::runStream(std::streambuf& in) {
    constexpr int kEnd = std::char_traits<char>::eof();
    // One physical line, without its LF (and CR); false at the end of the input.
    std::string raw;
    bool tooLong = false;
    auto readLine = [&](std::string& line) {
        line.clear();
        int c = in.sbumpc();
        if (c == kEnd)
            return false;
        for (; c != kEnd && c != '\n'; c = in.sbumpc()) {
            if (line.size() <= kMaxLine + 1)
                line += static_cast<char>(c);
            else
                tooLong = true;
        }
        if (line.size() > kMaxLine + 1) // one more for a CR before the LF
            tooLong = true;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        return true;
    };
    std::string next;
    while (!m_exit && readLine(raw)) {
        // A "^" at the end escapes the line end: the next line continues the
        // command with its first character escaped. An empty next line gives an
        // escaped line feed, and the line after it continues as well.
        while (endsInContinuation(raw)) {
            raw.pop_back();
            if (!readLine(next))
                break;
            raw += '^';
            if (next.empty() && readLine(next))
                raw += '\n';
            raw += next;
            if (raw.size() > kMaxLine + 1)
                tooLong = true;
        }
        if (tooLong) {
            m_io.err << "The input line is too long.\r\n";
            m_status = 1;
            tooLong = false;
        } else {
            runLine(raw);
        }
    }
    m_io.out.flush();
    m_io.err.flush();
    return scriptStatus();
}

int Interpreter::scriptStatus() const {
    return m_outputLost && m_status == 0 ? 1 : m_status;
}

int Interpreter::runLine(const std::string& rawLine) {
    std::string raw = rawLine;
    if (!raw.empty() && raw.back() == '\r')
        raw.pop_back();
    // The system's interpreter reads a line only up to a NUL byte.
    size_t nul = raw.find('\0');
    if (nul != std::string::npos)
        raw.resize(nul);
    m_percent.errorLevel = m_status;
    raw = expandPercents(raw, m_percent);

    // rem takes the rest of the line as it is: no redirection, no escapes.
    size_t i = 0;
    bool hidden = false;
    while (i < raw.size() && (isBlank(raw[i]) || raw[i] == '@')) {
        hidden = hidden || raw[i] == '@';
        ++i;
    }
    std::string head = pv::toLower(raw.substr(i, 4));
    if ((head.size() == 3 && head == "rem") ||
        (head.size() == 4 && head.compare(0, 3, "rem") == 0 &&
         (isBlank(head[3]) || head[3] == '.' || head[3] == ':' || head[3] == '/')) ||
        raw.compare(i, 2, "::") == 0) {
        if (m_echo && !hidden) {
            m_io.out << "\r\n" << currentDirectory() << ">" << raw.substr(i) << " \r\n";
        }
        return m_status;
    }

    ScriptLine line = ScriptLine::parse(raw);
    if (trim(line.text()).empty() && line.redirections().empty())
        return m_status;
    if (m_echo && !line.hidden())
        m_io.out << "\r\n" << currentDirectory() << ">" << line.display() << "\r\n";
    m_status = execute(line);
    return m_status;
}

int Interpreter::execute(const ScriptLine& line) {
    if (line.malformed()) {
        m_io.err << "The syntax of the command is incorrect.\r\n";
        return 1;
    }
    RedirectedFiles files;
    int error = 0;
    std::string failed;
    if (!files.open(line.redirections(), error, failed)) {
        m_outputLost = true;
        m_io.err << systemMessage(error) << "\r\n";
        m_io.err.flush();
        return 1;
    }
    FdOutBuf outBuf(files.outFd() >= 0 ? files.outFd() : 1);
    FdOutBuf errBuf(files.errFd() >= 0 ? files.errFd() : 2);
    std::ostream outFile(&outBuf);
    std::ostream errFile(&errBuf);
    // Where no redirection applies, the interpreter's own streams stay in use.
    std::ostream& out = files.outFd() >= 0 ? outFile : m_io.out;
    std::ostream& err = files.errFd() >= 0 ? errFile : m_io.err;
    ToolIo io{m_io.in, out, err};

    int status = dispatch(line.text(), io, !line.redirections().empty(), files.outFd(),
                          files.errFd(), false);
    out.flush();
    err.flush();
    // Output lost on its way into a file fails the line and, in the end, the
    // script: a report cut short must not look complete.
    int writeError = outBuf.error() ? outBuf.error() : errBuf.error();
    if (writeError != 0) {
        const std::string& target = outBuf.error() ? files.outTarget() : files.errTarget();
        m_io.err << "Cannot write to " << target << ": " << systemMessage(writeError) << "\r\n";
        m_io.err.flush();
        m_outputLost = true;
        if (status == 0)
            status = 1;
    }
    return status;
}

int Interpreter::dispatch(const std::string& full, ToolIo& io, bool redirected, int outFd,
                          int errFd, bool called) {
    const std::string text = trim(full);
    size_t letters = 0;
    while (letters < text.size() && ((text[letters] >= 'a' && text[letters] <= 'z') ||
                                     (text[letters] >= 'A' && text[letters] <= 'Z')))
        ++letters;
    const std::string word = pv::toLower(text.substr(0, letters));
    const char next = letters < text.size() ? text[letters] : '\0';
    auto followedBy = [&](const char* allowed) {
        return next == '\0' || std::strchr(allowed, next) != nullptr;
    };

    int status = 0;
    if (word == "echo" && followedBy(" \t.:/(+,;=[]\\")) {
        // The echoed text keeps its trailing blanks: take it from the untrimmed line.
        size_t at = full.find_first_not_of(" \t");
        status = runEcho(full.substr(at + 4), io);
    } else if ((word == "cd" || word == "chdir") && followedBy(" \t./\\\"")) {
        status = runCd(text.substr(letters), io);
    } else if (word == "pushd" && followedBy(" \t./\\\"")) {
        status = runPushd(text.substr(letters), io);
    } else if (word == "popd" && followedBy(" \t")) {
        status = runPopd();
    } else if (word == "exit" && followedBy(" \t/")) {
        status = runExit(text.substr(letters));
    } else if (word == "start" && followedBy(" \t")) {
        status = runStart(text.substr(letters), io);
    } else if (word == "shift" && followedBy(" \t/")) {
        status = runShift(text.substr(letters), io);
    } else if (word == "set" && followedBy(" \t")) {
        // As with echo, a trailing blank belongs to the value.
        status = runSet(full.substr(full.find_first_not_of(" \t") + 3), io);
    } else if (word == "call" && followedBy(" \t")) {
        status = dispatch(full.substr(full.find_first_not_of(" \t") + 4), io, redirected, outFd,
                          errFd, true);
    } else if (word == "cls" && followedBy(" \t")) {
        status = 0;
    } else if (word == "pause" && followedBy(" \t")) {
        io.out << "Press any key to continue . . . \r\n";
        io.out.flush();
        m_io.in.get();
        status = m_status;
    } else if (isDriveText(text) ||
               (text.find('/') != std::string::npos && pv::isDirectory(withoutQuotes(text)))) {
        // A drive line, or the mount point Pairview writes as the drive: the
        // directory is already current after the cd before it. Only a path
        // counts, so a command such as "fc" still runs where a folder "fc" exists.
        status = 0;
    } else if (std::vector<std::string> words = pv::splitCommandLine(text);
               ToolMain tool = findTool(words.empty() ? std::string() : words[0])) {
        // The built-in tools come first: a script "fc.cmd" in the directory
        // does not replace fc.
        words.erase(words.begin());
        status = tool(words, io);
    } else if (std::optional<ScriptCall> script = scriptNamedBy(text)) {
        if (called) {
            status = runNested(*script, io);
        } else if (redirected) {
            // Its output goes where the line sends it; it still does not return.
            status = runNested(*script, io);
            m_exit = true;
        } else {
            m_next = std::move(*script);
            m_exit = true;
            status = m_status;
        }
    } else if (!words.empty() && hasScriptExtension(words[0])) {
        // Named as a script but found nowhere: not a program to start either.
        status = notRecognized(words[0], io);
    } else {
        status = runProgram(text, io, outFd, errFd);
    }
    return status;
}

int Interpreter::runNested(const ScriptCall& script, ToolIo& io) {
    Interpreter nested(io);
    nested.m_echo = m_echo;
    int status = nested.runFile(script);
    m_echo = nested.m_echo;
    m_outputLost = m_outputLost || nested.m_outputLost;
    if (nested.m_aborted)
        m_aborted = m_exit = true;
    return status;
}

// The script a line names: "x.cmd" or "x.bat", or "x" standing for one of them,
// looked up in the current directory and then on the search path, as the
// interpreter finds scripts. A program "x" found first is not a script.
std::optional<Interpreter::ScriptCall> Interpreter::scriptNamedBy(const std::string& text) const {
    std::vector<std::string> words = pv::splitCommandLine(text);
    if (words.empty() || words[0].empty())
        return std::nullopt;
    const std::string& name = words[0];
    std::vector<std::string> dirs = {""};
    if (name.find('/') == std::string::npos) {
        const char* path = std::getenv("PATH");
        std::string list = path ? path : "";
        for (size_t start = 0; !list.empty() && start <= list.size();) {
            size_t end = std::min(list.find(':', start), list.size());
            dirs.push_back(end == start ? "./" : list.substr(start, end - start) + "/");
            start = end + 1;
        }
    }
    const bool named = hasScriptExtension(name);
    std::optional<ScriptCall> found;
    for (const std::string& dir : dirs) {
        std::string candidate = dir + name;
        if (named && isScriptFile(candidate)) {
            found = ScriptCall{candidate, {}};
        } else if (!named) {
            if (::access(candidate.c_str(), X_OK) == 0 && !pv::isDirectory(candidate))
                return std::nullopt; // a program of that name comes first
            for (const char* extension : {".bat", ".cmd"})
                if (!found && isScriptFile(candidate + extension))
                    found = ScriptCall{candidate + extension, {}};
        }
        if (found)
            break;
    }
    if (!found)
        return std::nullopt;
    // %0 is the script as named; the arguments keep their quotes.
    found->args.push_back(name);
    for (size_t k = 1; k < words.size(); ++k)
        found->args.push_back(pv::quoteArgument(words[k]));
    return found;
}

int Interpreter::runEcho(const std::string& rest, ToolIo& io) {
    // rest begins right after "echo": the first character separates.
    std::string said = rest.empty() ? std::string() : rest.substr(1);
    if (rest.empty() || ((rest[0] == ' ' || rest[0] == '\t') && trim(said).empty())) {
        io.out << (m_echo ? "ECHO is on." : "ECHO is off.") << "\r\n";
        return 0;
    }
    if (rest[0] == ' ' || rest[0] == '\t') {
        std::string word = pv::toLower(trim(said));
        if (word == "on" || word == "off") {
            m_echo = word == "on";
            return 0;
        }
    }
    io.out << said << "\r\n";
    return 0;
}

bool Interpreter::changeDirectory(const std::string& path, ToolIo& io) {
    if (::chdir(path.c_str()) != 0) {
        io.err << kPathNotFound << "\r\n";
        return false;
    }
    return true;
}

int Interpreter::runCd(std::string rest, ToolIo& io) {
    rest = trim(rest);
    if (rest.size() >= 2 && rest[0] == '/' && (rest[1] == 'd' || rest[1] == 'D') &&
        (rest.size() == 2 || isBlank(rest[2])))
        rest = trim(rest.substr(2));
    std::string path = trim(withoutQuotes(rest));
    if (path.empty()) {
        io.out << currentDirectory() << "\r\n";
        return 0;
    }
    if (isDriveText(path))
        return 0;
    return changeDirectory(path, io) ? 0 : 1;
}

Interpreter::~Interpreter() {
    for (int fd : m_directoryStack)
        ::close(fd);
}

int Interpreter::runPushd(std::string rest, ToolIo& io) {
    std::string path = trim(withoutQuotes(trim(rest)));
    if (path.empty())
        return 0;
    // The directory is kept open rather than by name: its path may be longer than
    // the system takes, or be renamed meanwhile.
    int here = ::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (!changeDirectory(path, io)) {
        if (here >= 0)
            ::close(here);
        return 1;
    }
    m_directoryStack.push_back(here);
    return 0;
}

int Interpreter::runPopd() {
    if (m_directoryStack.empty())
        return 0;
    int back = m_directoryStack.back();
    m_directoryStack.pop_back();
    struct stat st {};
    bool ok = back >= 0 && ::fchdir(back) == 0 && ::fstat(back, &st) == 0 && st.st_nlink > 0;
    if (back >= 0)
        ::close(back);
    if (!ok) {
        // The lines after a popd expect its directory: rather than let them write
        // somewhere else, the script stops here.
        m_io.err << kPathNotFound << "\r\n"
                 << "popd cannot return to the directory of its pushd; the script stops.\r\n";
        m_io.err.flush();
        m_exit = true;
        return 1;
    }
    return 0;
}

int Interpreter::runShift(const std::string& rest, ToolIo& io) {
    // "shift" moves %1 to %0, %2 to %1, ...; "shift /N" leaves %0..%(N-1) alone.
    std::string option = trim(rest);
    size_t from = 0;
    if (!option.empty()) {
        if (option.size() != 2 || option[0] != '/' || option[1] < '0' || option[1] > '8') {
            io.err << "The syntax of the command is incorrect.\r\n";
            return 1;
        }
        from = static_cast<size_t>(option[1] - '0');
    }
    std::vector<std::string>& args = m_percent.args;
    if (from < args.size())
        args.erase(args.begin() + static_cast<long>(from));
    return m_status;
}

int Interpreter::runSet(const std::string& rest, ToolIo& io) {
    // set NAME=value, or set "NAME=value" (the quotes keep trailing blanks and
    // special characters out of the value). The variable reaches the programs the
    // script starts, and %NAME% in the script's later lines.
    std::string assignment = rest;
    size_t start = assignment.find_first_not_of(" \t");
    assignment = start == std::string::npos ? std::string() : assignment.substr(start);
    if (assignment.size() >= 2 && assignment.front() == '"') {
        size_t close = assignment.rfind('"');
        assignment = assignment.substr(1, close == 0 ? std::string::npos : close - 1);
    }
    size_t eq = assignment.find('=');
    if (eq == std::string::npos || eq == 0) {
        io.err << "The syntax of the command is incorrect.\r\n";
        return 1;
    }
    std::string name = assignment.substr(0, eq);
    std::string value = assignment.substr(eq + 1);
    if (value.empty())
        ::unsetenv(name.c_str());
    else
        ::setenv(name.c_str(), value.c_str(), 1);
    return 0;
}

int Interpreter::runExit(const std::string& rest) {
    std::vector<std::string> words = pv::splitCommandLine(rest);
    int status = 0;
    size_t at = 0;
    if (at < words.size() && pv::toLower(words[at]) == "/b") {
        status = m_status;
        ++at;
    }
    if (at < words.size()) {
        char* end = nullptr;
        long value = std::strtol(words[at].c_str(), &end, 10);
        if (end && *end == '\0')
            status = static_cast<int>(value);
    }
    m_exit = true;
    return status;
}

int Interpreter::runStart(const std::string& rest, ToolIo& io) {
    std::string text = trim(rest);
    std::vector<std::string> words = pv::splitCommandLine(text);
    size_t at = 0;
    if (!text.empty() && text[0] == '"' && !words.empty())
        ++at; // the first quoted word is the window title
    bool wait = false;
    std::string directory;
    while (at < words.size() && words[at].size() > 1 && words[at][0] == '/') {
        std::string option = pv::toLower(words[at]);
        if (option == "/wait")
            wait = true;
        else if (option == "/d" && at + 1 < words.size())
            directory = words[++at];
        else if (option.compare(0, 2, "/d") == 0)
            directory = words[at].substr(2);
        else if (option != "/min" && option != "/max" && option != "/b" && option != "/i" &&
                 option != "/low" && option != "/normal" && option != "/high" &&
                 option != "/realtime" && option != "/abovenormal" && option != "/belownormal" &&
                 option != "/separate" && option != "/shared")
            break;
        ++at;
    }
    if (at >= words.size())
        return 0;
    std::string commandLine;
    for (size_t k = at; k < words.size(); ++k)
        commandLine += (k > at ? " " : "") + pv::quoteArgument(words[k]);
    if (wait) {
        // A waited start is a program line run in its own directory.
        std::string here = currentDirectory();
        if (!directory.empty() && ::chdir(directory.c_str()) != 0) {
            io.err << kPathNotFound << "\r\n";
            return 1;
        }
        int status = runProgram(commandLine, io, -1, -1);
        if (!directory.empty() && ::chdir(here.c_str()) != 0)
            io.err << kPathNotFound << "\r\n";
        return status;
    }
    try {
        pv::startDetached(commandLine, directory);
        return 0;
    } catch (const pv::RuntimeError& e) {
        io.err << kFileNotFound << "\r\n";
        return e.number() == ENOENT ? kNotRecognized : 1;
    }
}

int Interpreter::notRecognized(const std::string& name, ToolIo& io) {
    io.err << "'" << name << "' is not recognized as an internal or external command,\r\n"
           << "operable program or batch file.\r\n";
    return kNotRecognized;
}

int Interpreter::runProgram(const std::string& text, ToolIo& io, int outFd, int errFd) {
    std::vector<std::string> words = pv::splitCommandLine(text);
    if (words.empty())
        return m_status;
    const std::string& name = words[0];
    std::vector<std::string> argv;
    // The current directory is searched before the search path.
    if (name.find('/') == std::string::npos && ::access(name.c_str(), X_OK) == 0 &&
        !pv::isDirectory(name) && pv::toLower(name).find(".cmd") == std::string::npos &&
        pv::toLower(name).find(".bat") == std::string::npos)
        argv.push_back("./" + name);
    else
        argv = pv::resolveProgram(name);
    if (argv.empty())
        return notRecognized(name, io);
    argv.insert(argv.end(), words.begin() + 1, words.end());
    // What the interpreter wrote so far must come before the program's output.
    io.out.flush();
    io.err.flush();
    m_io.out.flush();
    m_io.err.flush();
    std::cout.flush();
    std::cerr.flush();
    try {
        return pv::runAndWait(argv, outFd, errFd);
    } catch (const pv::RuntimeError& e) {
        if (e.number() == ENOENT || e.number() == ENOTDIR)
            return notRecognized(name, io);
        if (e.number() == EACCES) {
            io.err << "Access is denied.\r\n";
            return 1;
        }
        io.err << e.description() << "\r\n";
        return 1;
    }
}

} // namespace pvcmd
