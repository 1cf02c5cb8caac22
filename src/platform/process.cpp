#include "platform/process.h"

#include "platform/runtimeerror.h"
#include "platform/textutil.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace pv {

namespace {

bool endsWithNoCase(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() &&
           toLower(text.substr(text.size() - suffix.size())) == suffix;
}

bool isExecutableFile(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

// The first executable file called `name` in the directories of $PATH; an empty
// entry means the current directory, as the shells treat it.
std::string searchPath(const std::string& name) {
    const char* env = std::getenv("PATH");
    std::string path = env ? env : "/usr/local/bin:/usr/bin:/bin";
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find(':', start);
        if (end == std::string::npos)
            end = path.size();
        std::string dir = path.substr(start, end - start);
        std::string candidate = (dir.empty() ? std::string(".") : dir) + "/" + name;
        if (isExecutableFile(candidate))
            return candidate;
        start = end + 1;
    }
    return {};
}

bool isScriptName(const std::string& name) {
    return endsWithNoCase(name, ".cmd") || endsWithNoCase(name, ".bat");
}

// Owns the actions and attributes of one posix_spawn call.
class SpawnSetup {
  public:
    SpawnSetup() {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawnattr_init(&m_attr);
    }
    ~SpawnSetup() {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attr);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;

    posix_spawn_file_actions_t m_actions;
    posix_spawnattr_t m_attr;
    // "NAME=value" entries that replace or add to this process's environment.
    std::vector<std::string> m_environment;
};

pid_t spawn(const std::vector<std::string>& argv, SpawnSetup& setup) {
    std::vector<char*> args;
    args.reserve(argv.size() + 1);
    for (const std::string& a : argv)
        args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    std::vector<char*> env;
    if (!setup.m_environment.empty()) {
        auto replaced = [&](const char* entry) {
            for (const std::string& e : setup.m_environment) {
                const size_t eq = e.find('=');
                if (std::strncmp(entry, e.c_str(), eq + 1) == 0)
                    return true;
            }
            return false;
        };
        for (char** e = environ; *e; ++e)
            if (!replaced(*e))
                env.push_back(*e);
        for (const std::string& e : setup.m_environment)
            env.push_back(const_cast<char*>(e.c_str()));
        env.push_back(nullptr);
    }
    pid_t pid = 0;
    int rc = ::posix_spawn(&pid, argv[0].c_str(), &setup.m_actions, &setup.m_attr, args.data(),
                           env.empty() ? environ : env.data());
    if (rc != 0)
        throw RuntimeError::fromErrno(rc, argv[0]);
    return pid;
}

} // namespace

std::vector<std::string> splitCommandLine(const std::string& commandLine) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    bool quoted = false;
    size_t i = 0;
    const size_t n = commandLine.size();
    while (i < n) {
        char c = commandLine[i];
        if (!quoted && (c == ' ' || c == '\t')) {
            if (inWord) {
                words.push_back(word);
                word.clear();
                inWord = false;
            }
            ++i;
            continue;
        }
        inWord = true;
        if (c == '\\') {
            size_t count = 0;
            while (i < n && commandLine[i] == '\\') {
                ++count;
                ++i;
            }
            if (i < n && commandLine[i] == '"') {
                word.append(count / 2, '\\');
                if (count % 2 == 1) {
                    word += '"';
                    ++i;
                }
                // An even count leaves the quote to toggle the quoting below.
            } else {
                word.append(count, '\\');
            }
            continue;
        }
        if (c == '"') {
            if (quoted && i + 1 < n && commandLine[i + 1] == '"') {
                word += '"';
                i += 2;
                continue;
            }
            quoted = !quoted;
            ++i;
            continue;
        }
        word += c;
        ++i;
    }
    if (inWord)
        words.push_back(word);
    return words;
}

std::string quoteArgument(const std::string& argument) {
    if (!argument.empty() && argument.find_first_of(" \t\n\v\"") == std::string::npos)
        return argument;
    std::string quoted = "\"";
    size_t backslashes = 0;
    for (char c : argument) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        if (c == '"') {
            quoted.append(backslashes * 2 + 1, '\\');
            quoted += '"';
        } else {
            quoted.append(backslashes, '\\');
            quoted += c;
        }
        backslashes = 0;
    }
    // Backslashes before the closing quote must be doubled or they would escape it.
    quoted.append(backslashes * 2, '\\');
    quoted += '"';
    return quoted;
}

std::vector<std::string> resolveProgram(const std::string& name) {
    if (name.empty())
        return {};
    std::string lowered = toLower(name);
    // Without ".exe" too, as the system finds them; "write" on POSIX is another program.
    if (lowered == "write.exe" || lowered == "notepad.exe" || lowered == "write" ||
        lowered == "notepad") {
        const char* editor = std::getenv("PAIRVIEW_EDITOR");
        if (editor && *editor) {
            std::vector<std::string> words = splitCommandLine(editor);
            if (!words.empty()) {
                // "gedit" names a program on the search path, as a shell would take it.
                if (words[0].find('/') == std::string::npos) {
                    std::string found = searchPath(words[0]);
                    if (!found.empty())
                        words[0] = found;
                }
                return words;
            }
        }
        std::string open = searchPath("xdg-open");
        return {open.empty() ? std::string("xdg-open") : open};
    }
    if (isScriptName(name))
        return {pvcmdPath(), name};
    // Scripts hand reports to Pairview; the one installed or built with this
    // program is meant, whatever the search path holds.
    if (lowered == "pairview") {
        std::string beside = besideRunningProgram("pairview");
        if (!beside.empty())
            return {beside};
    }
    if (name.find('/') != std::string::npos)
        return {name};
    std::string found = searchPath(name);
    if (found.empty() && endsWithNoCase(name, ".exe") && name.size() > 4)
        found = searchPath(name.substr(0, name.size() - 4));
    if (found.empty())
        return {};
    return {found};
}

std::string runningProgramPath() {
    char self[4096];
    ssize_t len = ::readlink("/proc/self/exe", self, sizeof self - 1);
    return len > 0 ? std::string(self, static_cast<size_t>(len)) : std::string();
}

std::string besideRunningProgram(const std::string& name) {
    const std::string exe = runningProgramPath();
    const size_t slash = exe.rfind('/');
    if (slash == std::string::npos)
        return {};
    std::string beside = exe.substr(0, slash + 1) + name;
    return isExecutableFile(beside) ? beside : std::string();
}

std::string pvcmdPath() {
    const char* env = std::getenv("PAIRVIEW_PVCMD");
    if (env && *env)
        return env;
    std::string beside = besideRunningProgram("pvcmd");
    if (!beside.empty())
        return beside;
    std::string onPath = searchPath("pvcmd");
    return onPath.empty() ? std::string("pvcmd") : onPath;
}

long startDetached(const std::string& commandLine, const std::string& workingDirectory,
                   const std::vector<std::string>& environment) {
    std::vector<std::string> words = splitCommandLine(commandLine);
    if (words.empty())
        throw RuntimeError(ENOENT, "No program to start: " + std::string(std::strerror(ENOENT)));
    std::vector<std::string> argv = resolveProgram(words[0]);
    if (argv.empty())
        throw RuntimeError::fromErrno(ENOENT, words[0]);
    argv.insert(argv.end(), words.begin() + 1, words.end());

    // Checked here so that the error names the directory, not the program.
    struct stat dirInfo {};
    if (!workingDirectory.empty() && ::stat(workingDirectory.c_str(), &dirInfo) != 0)
        throw RuntimeError::fromErrno(errno, workingDirectory);
    if (!workingDirectory.empty() && !S_ISDIR(dirInfo.st_mode))
        throw RuntimeError::fromErrno(ENOTDIR, workingDirectory);

    SpawnSetup setup;
    setup.m_environment = environment;
    short flags = POSIX_SPAWN_SETSID;
    posix_spawnattr_setflags(&setup.m_attr, flags);
    if (!workingDirectory.empty())
        posix_spawn_file_actions_addchdir_np(&setup.m_actions, workingDirectory.c_str());
    posix_spawn_file_actions_addopen(&setup.m_actions, 0, "/dev/null", O_RDONLY, 0);

    int logFd = -1;
    if (isScriptName(words[0])) {
        // A script's own output (outside its redirections) would otherwise be lost
        // with no console to show it; it goes to a log beside the script.
        std::string script = words[0];
        if (script[0] != '/' && !workingDirectory.empty())
            script = workingDirectory + "/" + script;
        std::string log = script + ".log";
        logFd = ::open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (logFd < 0)
            logFd = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (logFd >= 0) {
            posix_spawn_file_actions_adddup2(&setup.m_actions, logFd, 1);
            posix_spawn_file_actions_adddup2(&setup.m_actions, logFd, 2);
        }
    }
    pid_t pid = 0;
    int spawnError = 0;
    std::string spawnText;
    try {
        pid = spawn(argv, setup);
    } catch (const RuntimeError& e) {
        spawnError = e.number();
        spawnText = e.description();
    }
    if (logFd >= 0)
        ::close(logFd);
    if (spawnError != 0)
        throw RuntimeError(spawnError, spawnText);
    // Nobody waits for a detached program; a reaper keeps it from lingering as a
    // zombie once it ends.
    std::thread([pid] { ::waitpid(pid, nullptr, 0); }).detach();
    return static_cast<long>(pid);
}

int runAndWait(const std::vector<std::string>& argv, int stdoutFd, int stderrFd) {
    if (argv.empty() || argv[0].empty())
        throw RuntimeError::fromErrno(ENOENT, "");
    SpawnSetup setup;
    if (stdoutFd >= 0)
        posix_spawn_file_actions_adddup2(&setup.m_actions, stdoutFd, 1);
    if (stderrFd >= 0)
        posix_spawn_file_actions_adddup2(&setup.m_actions, stderrFd, 2);
    pid_t pid = spawn(argv, setup);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR)
            throw RuntimeError::fromErrno(errno, argv[0]);
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        return 128 + WTERMSIG(status);
    return 1;
}

} // namespace pv
