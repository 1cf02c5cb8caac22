#include "settings/settings.h"
#include "platform/textutil.h"

#include "platform/textfile.h"
#include "settings/inifile.h"

#include "platform/prompter.h"
#include "platform/runtimeerror.h"

#include <cctype>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pv {

namespace {

// The settings files found unreadable in this run, each shown once and never
// written: writing one would replace every setting in it with the defaults.
std::set<std::string>& unreadableFiles() {
    static std::set<std::string> files;
    return files;
}

// The file's text, empty for a missing file; false (after the one message of the
// run for that file) when the file exists but cannot be read or understood.
bool loadText(const std::string& path, ini::FileText& file) {
    if (unreadableFiles().count(path))
        return false;
    std::string bytes;
    errno = 0;
    std::string reason;
    if (!tryReadFileBytes(path, bytes)) {
        if (errno == ENOENT || errno == ENOTDIR) {
            file = {};
            return true;
        }
        reason = std::strerror(errno ? errno : EIO);
    } else {
        file = ini::decodeFile(bytes);
        reason = file.foreign;
    }
    if (reason.empty())
        return true;
    unreadableFiles().insert(path);
    prompter().message("Cannot read the settings file " + path + ": " + reason +
                           ". Settings will not be saved in this run.",
                       kProgramTitle, MessageIcon::Exclamation);
    return false;
}

} // namespace

std::string Settings::read(std::string_view section, std::string_view key) const {
    ini::FileText file;
    if (m_path.empty() || !loadText(m_path, file))
        return {};
    return ini::readValue(file.text, section, key);
}

std::string Settings::GetIniValue(std::string_view section, std::string_view key,
                                  std::string_view def) const {
    std::string value = read(section, key);
    return value.empty() ? std::string(def) : value;
}

std::string Settings::GetIniValueMin2(std::string_view section, std::string_view key,
                                      std::string_view def) const {
    std::string value = read(section, key);
    return ini::characterCount(value) < 2 ? std::string(def) : value;
}

namespace {

bool g_failureShown = false;

// The first failed write of a run is shown; the later ones, likely the same
// cause, go to the error output instead of a box at every click.
void reportWriteFailure(const std::string& path, const std::string& reason) {
    if (!g_failureShown) {
        g_failureShown = true;
        prompter().message("The settings file " + path +
                               " could not be written; the change is not saved.\r\n" + reason,
                           kProgramTitle, MessageIcon::Exclamation);
        return;
    }
    std::cerr << "pairview: the settings file " << path << " could not be written: " << reason
              << std::endl;
}

// Replaces the file through a temporary file beside it and a rename, so that a
// reader never sees half a file. Returns why it failed, or "".
std::string replaceFile(const std::string& path, const std::string& bytes) {
    try {
        writeFileAtomic(path, bytes);
        return {};
    } catch (const RuntimeError& e) {
        return std::strerror(e.number());
    }
}

// Removes what writes killed half-way left behind: NAME.new-XXXXXX beside the file.
// Called with the lock held, when no other writer can be in the middle of one.
void removeStaleTemporaries(const std::string& path) {
    namespace fs = std::filesystem;
    const fs::path file(path);
    const std::string prefix = file.filename().string() + std::string(kTemporaryInfix);
    std::error_code ec;
    fs::path dir = file.has_parent_path() ? file.parent_path() : fs::path(".");
    for (const fs::directory_entry& entry : fs::directory_iterator(dir, ec)) {
        std::string name = entry.path().filename().string();
        if (name.size() == prefix.size() + 6 && name.compare(0, prefix.size(), prefix) == 0)
            fs::remove(entry.path(), ec);
    }
}

// An exclusive advisory lock on NAME.lock for one read-change-rename, so that two
// programs writing one settings file do not lose each other's changes.
class WriteLock {
  public:
    explicit WriteLock(const std::string& path)
        : m_fd(::open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
        while (m_fd >= 0 && ::flock(m_fd, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    ~WriteLock() {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

  private:
    int m_fd;
};

} // namespace

void Settings::startRun() {
    g_failureShown = false;
    unreadableFiles().clear();
}

bool Settings::write(std::string_view section, std::string_view key, std::string_view value) const {
    if (m_path.empty())
        return false;
    for (auto [name, isKey] : {std::pair{section, false}, std::pair{key, true}})
        if (std::string why = ini::nameRefusal(name, isKey); !why.empty()) {
            reportWriteFailure(m_path,
                               "[" + std::string(section) + "] " + std::string(key) + ": " + why);
            return false;
        }
    // The file is replaced by renaming a new one over it; a settings file that is a
    // symbolic link must stay one, so the link's target is what gets replaced.
    std::string target = m_path;
    std::error_code ec;
    if (std::filesystem::is_symlink(target, ec)) {
        std::filesystem::path resolved = std::filesystem::weakly_canonical(target, ec);
        if (!ec)
            target = resolved.string();
    }
    WriteLock lock(target);
    static std::set<std::string> cleaned;
    if (cleaned.insert(target).second)
        removeStaleTemporaries(target);
    ini::FileText file; // a missing file is created by the first write
    if (!loadText(m_path, file))
        return false;
    std::string failure = replaceFile(
        target, ini::encodeFile(ini::writeValue(file.text, section, key, value), file.encoding));
    if (failure.empty())
        return true;
    reportWriteFailure(m_path, failure);
    return false;
}

bool IniBool(std::string_view text) {
    return toUpper(text) == "TRUE";
}

bool IniYes(std::string_view text) {
    return toUpper(text) != "NO";
}

} // namespace pv
