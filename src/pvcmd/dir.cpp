// dir: lists the entries of directories in the system tool's layout.

#include "pvcmd/dirformat.h"
#include "pvcmd/fileinfo.h"
#include "pvcmd/tool.h"
#include "pvcmd/toolsupport.h"
#include "pvcmd/volumeinfo.h"
#include "pvcmd/wildcard.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <ostream>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pvcmd {

namespace {

const char* const kHelp[] = {
    "Displays a list of files and subdirectories in a directory.",
    "",
    "DIR [path][filename] [/A[[:]attributes]] [/B] [/C] [/D] [/L] [/N]",
    "  [/O[[:]sortorder]] [/P] [/Q] [/S] [/T[[:]timefield]] [/W] [/X] [/4]",
    "",
    "  [path][filename]",
    "              Directory and/or files to list; wildcards * and ? allowed.",
    "  /A          Displays files with specified attributes.",
    "  attributes   D  Directories                R  Read-only files",
    "               H  Hidden files (name starts with a dot)",
    "               S  System files (never set)   A  Files ready for archiving (never set)",
    "               L  Symbolic links             I  Not content indexed (never set)",
    "               O  Offline files (never set)  -  Prefix meaning not",
    "  /B          Uses bare format (no heading information or summary).",
    "  /C          Display the thousand separator in file sizes.  This is the",
    "              default.  Use /-C to disable display of separator.",
    "  /D          Same as wide but files are list sorted by column.",
    "  /L          Uses lowercase.",
    "  /N          New long list format where filenames are on the far right.",
    "  /O          List by files in sorted order.",
    "  sortorder    N  By name (alphabetic)       S  By size (smallest first)",
    "               E  By extension (alphabetic)  D  By date/time (oldest first)",
    "               G  Group directories first    -  Prefix to reverse order",
    "  /P          Pauses after each screenful of information (only on a terminal).",
    "  /Q          Display the owner of the file.",
    "  /S          Displays files in specified directory and all subdirectories.",
    "  /T          Controls which time field displayed or used for sorting",
    "  timefield   C  Status change               A  Last Access",
    "              W  Last Written",
    "  /W          Uses wide list format.",
    "  /X          Shows the short name column (always blank on this system).",
    "  /4          Displays four-digit years.",
};

struct AttributeTest {
    char letter;
    bool wanted;
};

struct SortKey {
    char criterion;
    bool reversed;
};

struct DirOptions {
    bool showAll = false;                  // /a alone
    std::vector<AttributeTest> attributes; // /a:...
    bool bare = false;
    DirLineStyle style;
    bool wide = false;
    bool wideByColumn = false;
    bool lower = false;
    bool sorted = false;
    std::vector<SortKey> sortKeys;
    char timeField = 'w';
    bool subdirectories = false;
    bool help = false;
    std::vector<std::string> targets;
};

bool isAttributeLetter(char c) {
    return std::string_view("dhslraio").find(c) != std::string_view::npos;
}
bool isSortLetter(char c) {
    return std::string_view("negsd").find(c) != std::string_view::npos;
}

// Applies one switch piece ("a:d-h", "-c", "o-d", "t:w", ...); false when unknown.
bool applySwitch(std::string_view raw, DirOptions& o) {
    std::string piece = pv::toLower(raw);
    bool off = !piece.empty() && piece[0] == '-';
    if (off)
        piece.erase(0, 1);
    if (piece.empty())
        return false;
    char letter = piece[0];
    std::string rest = piece.substr(1);
    if (!rest.empty() && rest[0] == ':' && (letter == 'a' || letter == 'o' || letter == 't'))
        rest.erase(0, 1);
    if (letter == 'a') {
        std::vector<AttributeTest> tests;
        for (size_t i = 0; i < rest.size(); ++i) {
            bool wanted = true;
            if (rest[i] == '-') {
                wanted = false;
                ++i;
            }
            if (i >= rest.size() || !isAttributeLetter(rest[i]))
                return false;
            tests.push_back({rest[i], wanted});
        }
        o.attributes = tests;
        o.showAll = !off && tests.empty();
        if (off)
            o.attributes.clear();
        return true;
    }
    if (letter == 'o') {
        std::vector<SortKey> keys;
        for (size_t i = 0; i < rest.size(); ++i) {
            bool reversed = false;
            if (rest[i] == '-') {
                reversed = true;
                ++i;
            }
            if (i >= rest.size() || !isSortLetter(rest[i]))
                return false;
            keys.push_back({rest[i], reversed});
        }
        if (keys.empty())
            keys = {{'g', false}, {'n', false}};
        o.sorted = !off;
        o.sortKeys = keys;
        return true;
    }
    if (letter == 't') {
        // Pairview's time options are independent toggles, so "/t:aw" can come from
        // a script: every letter must be a time field, and the last one decides.
        if (rest.empty())
            rest = "w";
        for (char field : rest)
            if (std::string_view("caw").find(field) == std::string_view::npos)
                return false;
        o.timeField = rest.back();
        return true;
    }
    if (!rest.empty())
        return false;
    switch (letter) {
    case 'b':
        o.bare = !off;
        return true;
    case 'c':
        o.style.thousands = !off;
        return true;
    case 'd':
        o.wide = o.wideByColumn = !off;
        return true;
    case 'w':
        o.wide = !off;
        o.wideByColumn = false;
        return true;
    case 'l':
        o.lower = !off;
        return true;
    case 'n':
        return true; // the long format is already the default
    case 'p':
        return true; // output is never a screen to pause
    case 'q':
        o.style.owner = !off;
        return true;
    case 's':
        o.subdirectories = !off;
        return true;
    case 'x':
        o.style.shortNames = !off;
        return true;
    case '4':
        return true; // years always have four digits
    case '?':
        o.help = true;
        return true;
    default:
        return false;
    }
}

bool isSwitchPiece(std::string_view piece) {
    DirOptions scratch;
    return applySwitch(piece, scratch);
}

bool hasAttribute(const FileInfo& e, char letter) {
    switch (letter) {
    case 'd':
        return e.isDirectory;
    case 'h':
        return e.isHidden();
    case 'l':
        return e.isLink;
    case 'r':
        return e.isReadOnly();
    default:
        return false; // system, archive, not-indexed and offline do not exist here
    }
}

const timespec& timeOf(const FileInfo& e, char field) {
    return field == 'c' ? e.changed : field == 'a' ? e.accessed : e.modified;
}

std::string extensionOf(const std::string& name) {
    size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : pv::toLower(name.substr(dot + 1));
}

std::string ownerName(uid_t uid) {
    passwd pw{};
    passwd* found = nullptr;
    char buffer[4096];
    if (::getpwuid_r(uid, &pw, buffer, sizeof buffer, &found) == 0 && found)
        return found->pw_name;
    return std::to_string(uid);
}

std::string linkTarget(const std::string& path) {
    char buffer[PATH_MAX];
    ssize_t n = ::readlink(path.c_str(), buffer, sizeof buffer);
    return n > 0 ? std::string(buffer, static_cast<size_t>(n)) : std::string();
}

std::string displayPath(const std::string& dir) {
    std::error_code ec;
    std::string path =
        std::filesystem::absolute(dir.empty() ? "." : dir, ec).lexically_normal().string();
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

struct Totals {
    unsigned long long files = 0, bytes = 0, dirs = 0;
};

class DirRun {
  public:
    DirRun(const DirOptions& options, ToolIo& io) : m_o(options), m_io(io) {}

    int run() {
        std::vector<std::string> targets = m_o.targets;
        if (targets.empty())
            targets.push_back(".");
        bool headerShown = false;
        bool severalBlocks = m_o.subdirectories || targets.size() > 1;
        int code = 0;
        for (const std::string& target : targets) {
            std::string dir, mask;
            split(target, dir, mask);
            struct stat st;
            if (::stat(dir.empty() ? "." : dir.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
                if (!m_o.bare && !headerShown) {
                    header(".");
                    headerShown = true;
                }
                writeLine(m_io.err, "The system cannot find the path specified.");
                code = 1;
                continue;
            }
            if (!m_o.bare && !headerShown) {
                header(dir);
                headerShown = true;
            }
            m_freeDir = dir;
            Wildcard wildcard(mask);
            m_unreadable = false;
            bool found = listTree(dir, wildcard, severalBlocks);
            if (!found) {
                if (!m_o.bare && !m_o.subdirectories)
                    directoryLine(dir);
                if (!m_unreadable)
                    writeLine(m_io.err, "File Not Found");
                code = 1;
            }
        }
        if (!m_o.bare && m_listedBlocks > 0) {
            unsigned long long freeBytes = VolumeInfo::of(m_freeDir).freeBytes;
            if (severalBlocks) {
                writeLine(m_io.out);
                writeLine(m_io.out, "     Total Files Listed:");
            }
            writeLine(m_io.out,
                      DirFormat::filesLine(m_total.files, m_total.bytes, m_o.style.thousands));
            writeLine(m_io.out, DirFormat::dirsLine(m_total.dirs, freeBytes, m_o.style.thousands));
        }
        return m_anyUnreadable ? 1 : code;
    }

  private:
    static void split(const std::string& target, std::string& dir, std::string& mask) {
        struct stat st;
        if (!Wildcard::hasWildcard(target) && ::stat(target.c_str(), &st) == 0 &&
            S_ISDIR(st.st_mode)) {
            dir = target;
            mask = "*";
            return;
        }
        size_t slash = target.rfind('/');
        if (slash == std::string::npos) {
            dir = ".";
            mask = target;
        } else {
            dir = slash == 0 ? "/" : target.substr(0, slash);
            mask = target.substr(slash + 1);
        }
        if (mask.empty())
            mask = "*";
    }

    void header(const std::string& dir) {
        VolumeInfo volume = VolumeInfo::of(dir);
        if (volume.label.empty())
            writeLine(m_io.out, " Volume in drive " + volume.mountPoint + " has no label.");
        else
            writeLine(m_io.out, " Volume in drive " + volume.mountPoint + " is " + volume.label);
        char serial[16];
        std::snprintf(serial, sizeof serial, "%04lX-%04lX", (volume.serial >> 16) & 0xffff,
                      volume.serial & 0xffff);
        writeLine(m_io.out, std::string(" Volume Serial Number is ") + serial);
    }

    void directoryLine(const std::string& dir) {
        writeLine(m_io.out);
        writeLine(m_io.out, " Directory of " + displayPath(dir));
        writeLine(m_io.out);
    }

    // The entries of one directory that pass the mask and the attribute filter,
    // "." and ".." first, in the requested order.
    std::vector<FileInfo> selectEntries(const std::string& dir, const Wildcard& mask,
                                        std::vector<FileInfo>& all) {
        std::vector<FileInfo> selected;
        std::vector<UnreadableEntry> unreadable;
        if (!listDirectory(dir, all, &unreadable)) {
            m_unreadable = m_anyUnreadable = true;
            writeLine(m_io.err, "Access is denied.");
            return selected;
        }
        // Entries found but not readable are named rather than left out.
        for (const UnreadableEntry& u : unreadable) {
            m_anyUnreadable = true;
            writeLine(m_io.err, "Cannot list " + u.path + ": " + systemMessage(u.error));
        }
        std::vector<FileInfo> candidates;
        if (!m_o.bare && displayPath(dir) != "/") {
            for (const char* special : {".", ".."}) {
                FileInfo info;
                if (FileInfo::read(joinPath(dir, special), info)) {
                    info.name = special;
                    candidates.push_back(info);
                }
            }
        }
        candidates.insert(candidates.end(), all.begin(), all.end());
        for (FileInfo& e : candidates) {
            if (!mask.matches(e.name) || !passesAttributes(e))
                continue;
            selected.push_back(std::move(e));
        }
        // "." and ".." stay on top whatever the order asked for.
        auto pinned = static_cast<size_t>(
            std::count_if(selected.begin(), selected.end(),
                          [](const FileInfo& e) { return e.name == "." || e.name == ".."; }));
        if (m_o.sorted)
            std::stable_sort(
                selected.begin() + static_cast<std::ptrdiff_t>(pinned), selected.end(),
                [this](const FileInfo& a, const FileInfo& b) { return sortLess(a, b); });
        return selected;
    }

    bool passesAttributes(const FileInfo& e) const {
        if (m_o.showAll)
            return true;
        if (m_o.attributes.empty())
            return !e.isHidden(); // no system files here
        for (const AttributeTest& test : m_o.attributes)
            if (hasAttribute(e, test.letter) != test.wanted)
                return false;
        return true;
    }

    bool sortLess(const FileInfo& a, const FileInfo& b) const {
        for (const SortKey& key : m_o.sortKeys) {
            int order = 0;
            switch (key.criterion) {
            case 'n':
                order = nameLess(a.name, b.name) ? -1 : nameLess(b.name, a.name) ? 1 : 0;
                break;
            case 'e': {
                std::string ea = extensionOf(a.name), eb = extensionOf(b.name);
                order = ea < eb ? -1 : eb < ea ? 1 : 0;
                break;
            }
            case 'g':
                order = a.isDirectory == b.isDirectory ? 0 : a.isDirectory ? -1 : 1;
                break;
            case 's':
                order = a.size < b.size ? -1 : b.size < a.size ? 1 : 0;
                break;
            case 'd': {
                const timespec& ta = timeOf(a, m_o.timeField);
                const timespec& tb = timeOf(b, m_o.timeField);
                order = ta.tv_sec != tb.tv_sec     ? (ta.tv_sec < tb.tv_sec ? -1 : 1)
                        : ta.tv_nsec != tb.tv_nsec ? (ta.tv_nsec < tb.tv_nsec ? -1 : 1)
                                                   : 0;
                break;
            }
            }
            if (order != 0)
                return key.reversed ? order > 0 : order < 0;
        }
        return false;
    }

    // Lists `dir` (and with /s its subdirectories); true when anything was listed.
    bool listTree(const std::string& dir, const Wildcard& mask, bool severalBlocks) {
        std::vector<FileInfo> all;
        std::vector<FileInfo> entries = selectEntries(dir, mask, all);
        bool found = !entries.empty();
        if (found)
            block(dir, entries, severalBlocks);
        if (m_o.subdirectories) {
            for (const FileInfo& sub : all) {
                // Hidden directories are walked only when hidden entries are shown.
                if (!sub.isDirectory || sub.isLink ||
                    (sub.isHidden() && !m_o.showAll && !wantsHidden()))
                    continue;
                if (listTree(joinPath(dir, sub.name), mask, severalBlocks))
                    found = true;
            }
        }
        return found;
    }

    bool wantsHidden() const {
        for (const AttributeTest& test : m_o.attributes)
            if (test.letter == 'h' && test.wanted)
                return true;
        return !m_o.attributes.empty() &&
               std::none_of(m_o.attributes.begin(), m_o.attributes.end(),
                            [](const AttributeTest& t) { return t.letter == 'h'; });
    }

    std::string shownName(const FileInfo& e) const {
        return m_o.lower ? pv::toLower(e.name) : e.name;
    }

    void block(const std::string& dir, const std::vector<FileInfo>& entries, bool severalBlocks) {
        ++m_listedBlocks;
        if (m_o.bare) {
            for (const FileInfo& e : entries) {
                std::string name = shownName(e);
                if (m_o.subdirectories) {
                    std::string base = displayPath(dir);
                    name = (base == "/" ? base : base + "/") + name;
                }
                writeLine(m_io.out, name);
            }
            return;
        }
        directoryLine(dir);
        Totals totals;
        std::vector<std::string> wideNames;
        for (const FileInfo& e : entries) {
            if (e.isDirectory) {
                ++totals.dirs;
            } else {
                ++totals.files;
                totals.bytes += e.isLink ? 0 : e.size; // a link has no size of its own
            }
            if (m_o.wide) {
                wideNames.push_back(e.isDirectory ? "[" + shownName(e) + "]" : shownName(e));
                continue;
            }
            std::string tag;
            if (e.isLink)
                tag = e.isDirectory ? "<SYMLINKD>" : "<SYMLINK>";
            else if (e.isDirectory)
                tag = "<DIR>";
            std::string line = DirFormat::dateTime(timeOf(e, m_o.timeField)) + "    " +
                               DirFormat::sizeField(tag, e.size, m_o.style.thousands) + " ";
            if (m_o.style.shortNames)
                line += std::string(12, ' ') + " ";
            if (m_o.style.owner)
                line += DirFormat::ownerColumn(ownerName(e.owner));
            line += shownName(e);
            if (e.isLink)
                line += " [" + linkTarget(joinPath(dir, e.name)) + "]";
            writeLine(m_io.out, line);
        }
        for (const std::string& line : DirFormat::wide(wideNames, m_o.wideByColumn))
            writeLine(m_io.out, line);
        m_total.files += totals.files;
        m_total.bytes += totals.bytes;
        m_total.dirs += totals.dirs;
        if (severalBlocks)
            writeLine(m_io.out,
                      DirFormat::filesLine(totals.files, totals.bytes, m_o.style.thousands));
    }

    const DirOptions& m_o;
    ToolIo& m_io;
    Totals m_total;
    int m_listedBlocks = 0;
    bool m_unreadable = false;    // a directory could not be read: no "File Not Found" on top
    bool m_anyUnreadable = false; // something could not be listed: the exit code says so
    std::string m_freeDir = ".";
};

} // namespace

int dirMain(const ToolArgs& args, ToolIo& io) {
    DirOptions o;
    for (const std::string& arg : args) {
        ClassifiedWord word = classifyWord(arg, isSwitchPiece);
        if (word.kind == WordKind::BadSwitch) {
            writeLine(io.err, "Invalid switch - \"" + word.badSwitch.substr(1) + "\".");
            return 1;
        }
        if (word.kind == WordKind::Switches) {
            for (const std::string& piece : word.switches)
                applySwitch(piece, o);
        } else {
            o.targets.push_back(arg);
        }
    }
    if (o.help) {
        for (const char* line : kHelp)
            writeLine(io.out, line);
        return 0;
    }
    DirRun run(o, io);
    int code = run.run();
    io.out.flush();
    return code;
}

} // namespace pvcmd
