// xcopy: copies files and directory trees.

#include "platform/filecopy.h"
#include "platform/textutil.h"
#include "pvcmd/fileinfo.h"
#include "pvcmd/tool.h"
#include "pvcmd/toolhelp.h"
#include "pvcmd/toolsupport.h"
#include "pvcmd/wildcard.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <istream>
#include <optional>
#include <sys/stat.h>

namespace pvcmd {

namespace {

// Exit codes of the system tool.
enum XcopyExit { Copied = 0, NothingFound = 1, Interrupted = 2, InitError = 4, WriteError = 5 };

struct XcopyOptions {
    bool wait = false, promptEach = false, continueOnError = false, verify = false;
    bool quiet = false, fullNames = false, listOnly = false, newerOnly = false;
    std::optional<time_t> changedSince; // /d:MM-DD-YYYY
    bool onlyExisting = false, assumeDirectory = false, subdirs = false, emptyDirs = false;
    bool treeOnly = false, keepAttributes = false, overwriteReadOnly = false;
    bool hidden = false;
    std::optional<bool> prompt; // /y false, /-y true; unset: prompt unless COPYCMD says /y
    std::vector<std::string> excludeFiles;
    std::vector<std::string> operands;
};

std::optional<time_t> parseDate(std::string_view text) {
    int month = 0, day = 0, year = 0;
    char tail = 0;
    std::string copy(text);
    if (std::sscanf(copy.c_str(), "%d-%d-%d%c", &month, &day, &year, &tail) != 3)
        return std::nullopt;
    if (month < 1 || month > 12 || day < 1 || day > 31 || year < 1970)
        return std::nullopt;
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_isdst = -1;
    return std::mktime(&local);
}

bool applySwitch(std::string_view raw, XcopyOptions& o) {
    std::string piece = pv::toLower(raw);
    if (pv::startsWithNoCase(piece, "exclude:")) {
        std::string list(raw.substr(8));
        size_t pos = 0;
        while (pos <= list.size()) {
            size_t end = list.find('+', pos);
            if (end == std::string::npos)
                end = list.size();
            if (end > pos)
                o.excludeFiles.push_back(list.substr(pos, end - pos));
            pos = end + 1;
        }
        return true;
    }
    if (piece == "-y") {
        o.prompt = true;
        return true;
    }
    if (piece.size() > 2 && piece[0] == 'd' && piece[1] == ':') {
        o.changedSince = parseDate(piece.substr(2));
        return o.changedSince.has_value();
    }
    if (piece.size() != 1)
        return false;
    switch (piece[0]) {
    case 'w':
        o.wait = true;
        return true;
    case 'p':
        o.promptEach = true;
        return true;
    case 'c':
        o.continueOnError = true;
        return true;
    case 'v':
        o.verify = true;
        return true;
    case 'q':
        o.quiet = true;
        return true;
    case 'f':
        o.fullNames = true;
        return true;
    case 'l':
        o.listOnly = true;
        return true;
    case 'd':
        o.newerOnly = true;
        return true;
    case 'u':
        o.onlyExisting = true;
        return true;
    case 'i':
        o.assumeDirectory = true;
        return true;
    case 's':
        o.subdirs = true;
        return true;
    case 'e':
        o.subdirs = o.emptyDirs = true;
        return true;
    case 't':
        o.treeOnly = true;
        return true;
    case 'k':
        o.keepAttributes = true;
        return true;
    case 'r':
        o.overwriteReadOnly = true;
        return true;
    case 'h':
        o.hidden = true;
        return true;
    case 'y':
        o.prompt = false;
        return true;
    // Every file counts as having the archive attribute and nothing clears it, so /a
    // and /m select everything; the rest change nothing on POSIX.
    case 'a':
    case 'm':
    case 'z':
    case 'b':
    case 'j':
    case 'g':
    case 'n':
    case 'o':
    case 'x':
        return true;
    default:
        return false;
    }
}

bool isSwitchPiece(std::string_view piece) {
    XcopyOptions scratch;
    return applySwitch(piece, scratch);
}

std::string absolutePath(const std::string& path) {
    std::error_code ec;
    return std::filesystem::absolute(path, ec).lexically_normal().string();
}

// One file to copy: where it is, how it is shown, where it goes.
struct CopyItem {
    std::string source;   // path to open
    std::string relative; // below the source base ("sub/a.txt"), for the destination
    FileInfo info;
    int unreadable = 0; // errno of a directory or entry that could not be read
};

// How xcopy reports a file or directory it could not read or write, and the
// exit code that goes with it. Too long a path is the tool's "Insufficient
// memory", an initialisation error.
struct Failure {
    std::string message;
    int code;
};

Failure failureFor(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return {"Insufficient disk space", WriteError};
    case EACCES:
    case EPERM:
        return {"Access denied", WriteError};
    case ENAMETOOLONG:
        return {"Insufficient memory", InitError};
    default:
        return {"File creation error - " + std::string(std::strerror(error)), WriteError};
    }
}

class XcopyRun {
  public:
    XcopyRun(const XcopyOptions& options, ToolIo& io) : m_o(options), m_io(io) {}

    int run() {
        if (m_o.operands.empty()) {
            writeLine(m_io.err, "Invalid number of parameters");
            return InitError;
        }
        if (m_o.operands.size() > 2) {
            writeLine(m_io.err, "Invalid number of parameters");
            return InitError;
        }
        if (!loadExcludes())
            return InitError;
        const std::string& sourceArg = m_o.operands[0];
        std::string mask;
        bool sourceIsDirectory = pv::isDirectory(sourceArg) && !Wildcard::hasWildcard(sourceArg);
        if (sourceIsDirectory) {
            m_sourceBase = sourceArg;
            mask = "*";
        } else {
            size_t slash = sourceArg.rfind('/');
            m_sourceBase = slash == std::string::npos ? "" : sourceArg.substr(0, slash + 1);
            mask = sourceArg.substr(slash == std::string::npos ? 0 : slash + 1);
            if (!m_sourceBase.empty() && !pv::isDirectory(m_sourceBase)) {
                writeLine(m_io.err, "File not found - " + mask);
                writeLine(m_io.out, "0 File(s) copied");
                return NothingFound;
            }
        }

        std::vector<CopyItem> items;
        std::vector<std::string> dirs;
        collect(m_sourceBase, "", Wildcard(mask), items, dirs);
        bool manyFiles = sourceIsDirectory || Wildcard::hasWildcard(mask) || items.size() > 1;
        if (items.empty() && sourceIsDirectory && m_o.subdirs && !m_o.treeOnly && !m_o.emptyDirs) {
            // A tree without files: nothing to copy, and no empty directory is made.
            writeLine(m_io.out, "0 File(s) copied");
            return Copied;
        }
        if (items.empty() && !(m_o.treeOnly || m_o.emptyDirs)) {
            writeLine(m_io.err, "File not found - " + mask);
            writeLine(m_io.out, "0 File(s) copied");
            return NothingFound;
        }

        std::string destArg = m_o.operands.size() > 1 ? m_o.operands[1] : ".";
        if (!resolveDestination(destArg, manyFiles))
            return Interrupted;
        if (cyclic()) {
            writeLine(m_io.err, "Cannot perform a cyclic copy");
            writeLine(m_io.out, "0 File(s) copied");
            return InitError;
        }
        if (m_o.wait) {
            m_io.out << "Press any key when ready to begin copying file(s)";
            m_io.out.flush();
            std::string ignored;
            std::getline(m_io.in, ignored);
            writeLine(m_io.out);
        }

        int code = Copied;
        if (!m_o.listOnly && (m_o.treeOnly || m_o.emptyDirs)) {
            // /e makes every directory; /t alone only those that hold files to copy.
            // With /e the destination itself is made too, even for an empty source.
            std::vector<std::string> made;
            if (m_o.emptyDirs) {
                if (m_destIsDirectory)
                    made.push_back(".");
                made.insert(made.end(), dirs.begin(), dirs.end());
            }
            if (!m_o.emptyDirs)
                for (const CopyItem& item : items)
                    if (item.unreadable == 0 && item.relative.find('/') != std::string::npos)
                        made.push_back(item.relative.substr(0, item.relative.rfind('/')));
            for (const std::string& dir : made)
                if (!makeDirectory(destinationFor(dir + "/x")))
                    code = WriteError;
        }
        int copied = 0;
        for (const CopyItem& item : items) {
            Outcome outcome = Outcome::Skipped;
            if (item.unreadable != 0) {
                report(failureFor(item.unreadable), item.source);
                outcome = Outcome::Failed;
            } else if (!m_o.treeOnly) {
                outcome = copyOne(item);
            }
            if (outcome == Outcome::Copied)
                ++copied;
            if (outcome == Outcome::Failed) {
                code = std::max(code, m_failureCode);
                if (!m_o.continueOnError)
                    break;
            }
            if (outcome == Outcome::Stop)
                break;
        }
        writeLine(m_io.out,
                  std::to_string(copied) + (m_o.listOnly ? " File(s)" : " File(s) copied"));
        m_io.out.flush();
        return code;
    }

  private:
    enum class Outcome { Copied, Skipped, Failed, Stop };

    // Writes a failure on the error output, with the name it concerns when no
    // copy line named it before; remembers its exit code.
    void report(const Failure& failure, const std::string& name = {}) {
        m_io.out.flush();
        writeLine(m_io.err, name.empty() ? failure.message : failure.message + " - " + name);
        m_io.err.flush();
        m_failureCode = std::max(m_failureCode, failure.code);
    }

    bool loadExcludes() {
        for (const std::string& file : m_o.excludeFiles) {
            std::ifstream in(file, std::ios::binary);
            if (!in) {
                writeLine(m_io.err, "Can't read file: " + file);
                return false;
            }
            std::string line;
            while (std::getline(in, line)) {
                if (!line.empty() && line.back() == '\r')
                    line.pop_back();
                if (!line.empty())
                    m_excludes.push_back(pv::toLower(line));
            }
        }
        return true;
    }

    bool excluded(const std::string& shown) const {
        if (m_excludes.empty())
            return false;
        std::string a = pv::toLower(shown), b = pv::toLower(absolutePath(shown));
        for (const std::string& part : m_excludes)
            if (a.find(part) != std::string::npos || b.find(part) != std::string::npos)
                return true;
        return false;
    }

    void collect(const std::string& base, const std::string& relative, const Wildcard& mask,
                 std::vector<CopyItem>& items, std::vector<std::string>& dirs) {
        std::string dir = withSlash(base) + relative;
        std::vector<FileInfo> entries;
        std::vector<UnreadableEntry> unreadable;
        // What cannot be read is reported in its place among the copies, not left out.
        if (!listDirectory(dir.empty() ? "." : dir, entries, &unreadable)) {
            std::string shown = dir.empty() ? "." : dir;
            if (shown.size() > 1 && shown.back() == '/')
                shown.pop_back();
            items.push_back({shown, relative, {}, errno});
            return;
        }
        for (const UnreadableEntry& u : unreadable) {
            std::string name = u.path.substr(u.path.rfind('/') + 1);
            // It may be a directory: with /s every name counts, else the mask decides.
            if ((m_o.hidden || name[0] != '.') && (m_o.subdirs || mask.matches(name)))
                items.push_back({u.path, relative + name, {}, u.error});
        }
        for (const FileInfo& e : entries) {
            // Only files are copied: opening a pipe would wait for a writer.
            if (e.isDirectory || !S_ISREG(e.mode) || (e.isHidden() && !m_o.hidden) ||
                !mask.matches(e.name))
                continue;
            std::string rel = relative + e.name;
            CopyItem item{withSlash(base) + rel, rel, e};
            if (!excluded(item.source))
                items.push_back(item);
        }
        if (!m_o.subdirs)
            return;
        for (const FileInfo& e : entries) {
            if (!e.isDirectory || e.isLink || (e.isHidden() && !m_o.hidden))
                continue;
            std::string rel = relative + e.name;
            dirs.push_back(rel);
            collect(base, rel + "/", mask, items, dirs);
        }
    }

    static std::string withSlash(const std::string& path) {
        return path.empty() || path.back() == '/' ? path : path + "/";
    }

    // Decides whether the destination names a directory or a file.
    bool resolveDestination(std::string destArg, bool manyFiles) {
        size_t slash = destArg.rfind('/');
        std::string last = destArg.substr(slash == std::string::npos ? 0 : slash + 1);
        if (last == "*.*" || last == "*") {
            // "dir/*.*" names the directory itself.
            m_destIsDirectory = true;
            m_dest =
                slash == std::string::npos ? "." : destArg.substr(0, std::max<size_t>(slash, 1));
            return true;
        }
        m_dest = destArg;
        if (destArg.back() == '/' || pv::isDirectory(destArg) ||
            (m_o.assumeDirectory && manyFiles)) {
            m_destIsDirectory = true;
            return true;
        }
        struct stat st;
        if (::stat(destArg.c_str(), &st) == 0) {
            m_destIsDirectory = false;
            return true;
        }
        for (;;) {
            m_io.out << "Does " << destArg << " specify a file name\r\n"
                     << "or directory name on the target\r\n"
                     << "(F = file, D = directory)? ";
            m_io.out.flush();
            std::string answer;
            if (!std::getline(m_io.in, answer)) {
                writeLine(m_io.out);
                return false;
            }
            if (!answer.empty() && answer.back() == '\r')
                answer.pop_back();
            writeLine(m_io.out, answer);
            if (pv::equalsNoCase(answer, "f") || pv::equalsNoCase(answer, "d")) {
                m_destIsDirectory = pv::equalsNoCase(answer, "d");
                return true;
            }
        }
    }

    bool cyclic() const {
        if (!m_o.subdirs || !m_destIsDirectory)
            return false;
        std::string source = withSlash(absolutePath(m_sourceBase.empty() ? "." : m_sourceBase));
        std::string dest = withSlash(absolutePath(m_dest));
        return dest.size() > source.size() && dest.compare(0, source.size(), source) == 0;
    }

    std::string destinationFor(const std::string& relative) const {
        if (!m_destIsDirectory)
            return m_dest;
        return withSlash(m_dest) + relative;
    }

    bool makeDirectory(const std::string& fileInside) {
        size_t slash = fileInside.rfind('/');
        if (slash == std::string::npos || slash == 0)
            return true;
        std::string dir = fileInside.substr(0, slash);
        // The files of one directory come one after another: made once is enough.
        if (dir == m_lastMadeDirectory)
            return true;
        std::error_code ec;
        std::filesystem::create_directories(dir, ec);
        if (ec || !pv::isDirectory(dir)) {
            report({"Unable to create directory - " + dir, WriteError});
            return false;
        }
        m_lastMadeDirectory = dir;
        return true;
    }

    // Reads an answer line; end of input is a No.
    std::string answer() {
        std::string text;
        if (!std::getline(m_io.in, text)) {
            writeLine(m_io.out);
            return "n";
        }
        if (!text.empty() && text.back() == '\r')
            text.pop_back();
        writeLine(m_io.out, text);
        return pv::toLower(text);
    }

    Outcome copyOne(const CopyItem& item) {
        std::string dest = destinationFor(item.relative);
        struct stat destStat;
        bool destExists = ::stat(dest.c_str(), &destStat) == 0;
        if (m_o.onlyExisting && !destExists)
            return Outcome::Skipped;
        if (m_o.changedSince && item.info.modified.tv_sec < *m_o.changedSince)
            return Outcome::Skipped;
        if (m_o.newerOnly && destExists &&
            (destStat.st_mtim.tv_sec > item.info.modified.tv_sec ||
             (destStat.st_mtim.tv_sec == item.info.modified.tv_sec &&
              destStat.st_mtim.tv_nsec >= item.info.modified.tv_nsec)))
            return Outcome::Skipped;
        if (m_o.promptEach) {
            m_io.out << item.source << " (Y/N)? ";
            m_io.out.flush();
            if (answer().rfind('y', 0) != 0)
                return Outcome::Skipped;
        }
        if (destExists && S_ISDIR(destStat.st_mode)) {
            report({"Cannot create a file when that file already exists - " + dest, WriteError});
            return Outcome::Failed;
        }
        struct stat srcStat;
        if (destExists && ::stat(item.source.c_str(), &srcStat) == 0 &&
            srcStat.st_dev == destStat.st_dev && srcStat.st_ino == destStat.st_ino) {
            report({"File cannot be copied onto itself", WriteError});
            return Outcome::Failed;
        }
        if (destExists && promptForOverwrite() && !m_overwriteAll && !m_o.listOnly) {
            m_io.out << "Overwrite " << dest << " (Yes/No/All)? ";
            m_io.out.flush();
            std::string reply = answer();
            if (reply == "a" || reply == "all") {
                m_overwriteAll = true;
            } else if (reply != "y" && reply != "yes") {
                return Outcome::Skipped;
            }
        }
        if (destExists && !m_o.overwriteReadOnly && !m_o.listOnly &&
            (destStat.st_mode & S_IWUSR) == 0) {
            report({"Access denied", WriteError});
            return Outcome::Failed;
        }
        if (!m_o.quiet) {
            if (m_o.fullNames)
                writeLine(m_io.out, absolutePath(item.source) + " -> " + absolutePath(dest));
            else
                writeLine(m_io.out, item.source);
        }
        if (m_o.listOnly)
            return Outcome::Copied;
        if (m_destIsDirectory && !makeDirectory(dest))
            return Outcome::Failed;
        pv::FileCopyResult result =
            m_copier.copy(item.source, dest, m_o.keepAttributes, m_o.verify);
        if (!result.ok) {
            report(failureFor(result.error));
            return Outcome::Failed;
        }
        return Outcome::Copied;
    }

    bool promptForOverwrite() const {
        if (m_o.prompt)
            return *m_o.prompt;
        // As with the system tool, COPYCMD may carry a default /Y.
        const char* copycmd = std::getenv("COPYCMD");
        if (copycmd) {
            std::string text = pv::toLower(copycmd);
            if (text.find("/-y") != std::string::npos)
                return true;
            if (text.find("/y") != std::string::npos)
                return false;
        }
        return true;
    }

    const XcopyOptions& m_o;
    ToolIo& m_io;
    std::string m_sourceBase; // as typed, "" for the current directory
    std::string m_dest;
    bool m_destIsDirectory = true;
    bool m_overwriteAll = false;
    std::vector<std::string> m_excludes;
    pv::FileCopier m_copier;
    std::string m_lastMadeDirectory;
    int m_failureCode = Copied; // the worst failure so far
};

} // namespace

int xcopyMain(const ToolArgs& args, ToolIo& io) {
    if (asksForHelp(args)) {
        io.out << kXcopyHelp;
        return 0;
    }
    XcopyOptions o;
    for (const std::string& arg : args) {
        if (pv::startsWithNoCase(arg, "/exclude:")) {
            applySwitch(std::string_view(arg).substr(1), o);
            continue;
        }
        ClassifiedWord word = classifyWord(arg, isSwitchPiece);
        if (word.kind == WordKind::BadSwitch) {
            writeLine(io.err, "Invalid switch - " + word.badSwitch);
            return InitError;
        }
        if (word.kind == WordKind::Switches) {
            for (const std::string& piece : word.switches)
                applySwitch(piece, o);
        } else {
            o.operands.push_back(arg);
        }
    }
    XcopyRun run(o, io);
    return run.run();
}

} // namespace pvcmd
