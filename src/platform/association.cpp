#include "platform/association.h"

#include "platform/process.h"
#include "platform/runtimeerror.h"
#include "platform/textfile.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace pv {

namespace {

std::string unquoted(const std::string& path) {
    if (path.size() >= 2 && path.front() == '"' && path.back() == '"')
        return path.substr(1, path.size() - 2);
    return path;
}

std::string trimmedLine(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' '))
        text.pop_back();
    return text;
}

// Runs a program found on $PATH and returns the first line of what it prints;
// empty when it cannot run or exits with an error.
std::string firstOutputLine(const std::vector<std::string>& args) {
    std::vector<std::string> argv = resolveProgram(args.front());
    if (argv.empty())
        return {};
    argv.insert(argv.end(), args.begin() + 1, args.end());
    std::FILE* out = std::tmpfile();
    if (!out)
        return {};
    const int devnull = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    int code = -1;
    try {
        code = runAndWait(argv, ::fileno(out), devnull);
    } catch (const RuntimeError&) {
        code = -1;
    }
    if (devnull >= 0)
        ::close(devnull);
    std::string text;
    if (code == 0) {
        std::rewind(out);
        char buffer[4096];
        std::size_t n;
        while ((n = std::fread(buffer, 1, sizeof buffer, out)) > 0)
            text.append(buffer, n);
    }
    std::fclose(out);
    const std::size_t eol = text.find('\n');
    return trimmedLine(eol == std::string::npos ? text : text.substr(0, eol));
}

std::vector<std::string> applicationDirectories() {
    std::vector<std::string> dirs;
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    if (dataHome && *dataHome)
        dirs.push_back(std::string(dataHome) + "/applications");
    else if (home && *home)
        dirs.push_back(std::string(home) + "/.local/share/applications");
    const char* dataDirs = std::getenv("XDG_DATA_DIRS");
    std::string list = dataDirs && *dataDirs ? dataDirs : "/usr/local/share:/usr/share";
    std::stringstream split(list);
    std::string dir;
    while (std::getline(split, dir, ':')) {
        if (!dir.empty())
            dirs.push_back(dir + "/applications");
    }
    return dirs;
}

// A desktop id "vendor-app.desktop" may also live as "vendor/app.desktop".
std::string readDesktopFile(const std::string& id) {
    std::vector<std::string> names{id};
    for (std::size_t dash = id.find('-'); dash != std::string::npos; dash = id.find('-', dash + 1))
        names.push_back(id.substr(0, dash) + "/" + id.substr(dash + 1));
    for (const std::string& dir : applicationDirectories()) {
        for (const std::string& name : names) {
            std::string text;
            if (tryReadFileBytes(dir + "/" + name, text))
                return text;
        }
    }
    return {};
}

} // namespace

std::string desktopExecProgram(const std::string& desktopFileText) {
    std::stringstream lines(desktopFileText);
    std::string line;
    bool inEntry = false;
    while (std::getline(lines, line)) {
        line = trimmedLine(line);
        if (!line.empty() && line.front() == '[') {
            inEntry = line == "[Desktop Entry]";
            continue;
        }
        if (!inEntry || line.rfind("Exec", 0) != 0)
            continue;
        std::size_t eq = line.find('=');
        if (eq == std::string::npos || line.find_first_not_of(' ', 4) != eq)
            continue;
        std::vector<std::string> words = splitCommandLine(line.substr(eq + 1));
        return words.empty() ? std::string() : words.front();
    }
    return {};
}

std::string findAssociatedProgram(const std::string& path) {
    const std::string file = unquoted(path);
    struct stat st {};
    if (file.empty() || ::stat(file.c_str(), &st) != 0)
        return {};
    const std::string type = firstOutputLine({"xdg-mime", "query", "filetype", file});
    if (type.empty())
        return {};
    const std::string desktopId = firstOutputLine({"xdg-mime", "query", "default", type});
    if (desktopId.empty())
        return {};
    const std::string program = desktopExecProgram(readDesktopFile(desktopId));
    if (program.empty() || program.find('/') != std::string::npos)
        return program;
    std::vector<std::string> resolved = resolveProgram(program);
    return resolved.size() == 1 ? resolved.front() : program;
}

long openWithDesktop(const std::string& path) {
    return startDetached("xdg-open " + quoteArgument(unquoted(path)));
}

} // namespace pv
