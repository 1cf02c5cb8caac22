// findstr: searches files for lines holding one of several strings.

#include "pvcmd/fileinfo.h"
#include "pvcmd/findstrmatcher.h"
#include "pvcmd/findstrsearch.h"
#include "pvcmd/tool.h"
#include "pvcmd/toolhelp.h"
#include "pvcmd/toolsupport.h"
#include "pvcmd/wildcard.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <istream>
#include <iterator>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace pvcmd {

namespace {

struct FindstrOptions {
    FindstrMatchOptions match;
    FindstrReportOptions report;
    bool forceLiteral = false;   // /l
    bool forceRegex = false;     // /r
    bool subdirectories = false; // /s
    bool skipNonPrintable = false;
    std::vector<std::string> literalStrings; // /c:
    std::string stringsFile;                 // /g:
    std::string fileListFile;                // /f:
    std::string directories;                 // /d:
    std::vector<std::string> operands;
};

// Reads one switch (without its "/"); false when findstr does not know it.
bool applySwitch(std::string_view piece, FindstrOptions& o) {
    auto value = [&](std::string_view prefix, std::string& target) {
        if (!pv::startsWithNoCase(piece, prefix))
            return false;
        target = std::string(piece.substr(prefix.size()));
        return true;
    };
    std::string text;
    if (value("c:", text)) {
        o.literalStrings.push_back(text);
        return true;
    }
    if (value("g:", o.stringsFile) || value("f:", o.fileListFile) || value("d:", o.directories))
        return true;
    if (value("a:", text))
        return true; // colours only matter on a console
    if (pv::equalsNoCase(piece, "offline") || pv::equalsNoCase(piece, "off"))
        return true; // no offline files on POSIX
    if (piece.size() != 1)
        return false;
    switch (piece[0] | 0x20) {
    case 'b':
        o.match.atLineStart = true;
        return true;
    case 'e':
        o.match.atLineEnd = true;
        return true;
    case 'l':
        o.forceLiteral = true;
        return true;
    case 'r':
        o.forceRegex = true;
        return true;
    case 's':
        o.subdirectories = true;
        return true;
    case 'i':
        o.match.ignoreCase = true;
        return true;
    case 'x':
        o.match.atLineStart = o.match.atLineEnd = true;
        return true;
    case 'v':
        o.report.invert = true;
        return true;
    case 'n':
        o.report.lineNumbers = true;
        return true;
    case 'm':
        o.report.namesOnly = true;
        return true;
    case 'o':
        o.report.offsets = true;
        return true;
    case 'p':
        o.skipNonPrintable = true;
        return true;
    default:
        return false;
    }
}

bool isSwitchPiece(std::string_view piece) {
    FindstrOptions scratch;
    return applySwitch(piece, scratch);
}

// "/c", "/g", "/f", "/d" or "/a" without its colon and value: the system tool
// names it as ignored. Never a path, even where one of that name exists.
bool isValueSwitchWithoutValue(std::string_view arg) {
    return arg.size() == 2 && arg[0] == '/' && std::strchr("cgfdaCGFDA", arg[1]) != nullptr;
}

bool parseArguments(const ToolArgs& args, FindstrOptions& o, std::ostream& err) {
    bool switchesDone = false;
    for (const std::string& arg : args) {
        if (isValueSwitchWithoutValue(arg)) {
            writeLine(err,
                      std::string("FINDSTR: /") + static_cast<char>(arg[1] & ~0x20) + " ignored");
            continue;
        }
        if (arg.size() > 1 && arg[0] == '/') {
            // Values may hold "/" themselves, so these take the rest of the word.
            std::string_view body = std::string_view(arg).substr(1);
            if (!switchesDone &&
                (pv::startsWithNoCase(body, "c:") || pv::startsWithNoCase(body, "g:") ||
                 pv::startsWithNoCase(body, "f:") || pv::startsWithNoCase(body, "d:"))) {
                applySwitch(body, o);
                continue;
            }
            ClassifiedWord word = classifyWord(arg, isSwitchPiece);
            // After the search text a switch is out of place; it is no file name
            // either (with /s, "/s" as a name would search the whole system).
            if (word.kind == WordKind::BadSwitch ||
                (switchesDone && word.kind == WordKind::Switches))
                return false;
            if (word.kind == WordKind::Switches) {
                for (const std::string& piece : word.switches)
                    applySwitch(piece, o);
                continue;
            }
        }
        switchesDone = true;
        o.operands.push_back(arg);
    }
    return true;
}

std::vector<std::string> splitWords(std::string_view text) {
    std::vector<std::string> words;
    size_t pos = 0;
    while (pos < text.size()) {
        size_t start = text.find_first_not_of(" \t", pos);
        if (start == std::string_view::npos)
            break;
        size_t end = text.find_first_of(" \t", start);
        if (end == std::string_view::npos)
            end = text.size();
        words.emplace_back(text.substr(start, end - start));
        pos = end;
    }
    return words;
}

std::vector<std::string> readLines(std::istream& in) {
    std::vector<std::string> lines;
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty())
            lines.push_back(line);
    }
    return lines;
}

bool readLinesFrom(const std::string& path, std::istream& stdinStream,
                   std::vector<std::string>& lines) {
    if (path == "/") {
        lines = readLines(stdinStream);
        return true;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    lines = readLines(file);
    return true;
}

// Reads a file in chunks that end at a line end (the last one excepted), handing
// each to `consume(chunk, last)`; stops early when `consume` returns false.
// `buffer` is reused between files. False when the file cannot be read.
// A regular file is read only up to the size it had when opened: the report may be
// appended to a file in the searched tree (a capture file below a /s search), and
// reading on would find its own matches again and grow that file without end.
template <typename Consume>
bool readInLines(const std::string& path, std::string& buffer, Consume consume) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat st;
    if (::fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
        ::close(fd);
        return false;
    }
    constexpr size_t kChunk = size_t(4) << 20;
    if (buffer.size() < kChunk)
        buffer.resize(kChunk);
    const bool bounded = S_ISREG(st.st_mode);
    auto left = static_cast<unsigned long long>(st.st_size);
    size_t used = 0;
    bool ok = true;
    for (;;) {
        if (used == buffer.size())
            buffer.resize(buffer.size() * 2); // a line longer than the buffer
        size_t want = buffer.size() - used;
        if (bounded && want > left)
            want = static_cast<size_t>(left);
        ssize_t n = want == 0 ? 0 : ::read(fd, buffer.data() + used, want);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            ok = false;
            break;
        }
        if (n == 0) {
            consume(std::string_view(buffer.data(), used), true);
            break;
        }
        used += static_cast<size_t>(n);
        left -= bounded ? static_cast<unsigned long long>(n) : 0;
        const void* nl = ::memrchr(buffer.data(), '\n', used);
        if (!nl)
            continue;
        size_t chunk = static_cast<size_t>(static_cast<const char*>(nl) - buffer.data()) + 1;
        if (!consume(std::string_view(buffer.data(), chunk), false))
            break;
        std::memmove(buffer.data(), buffer.data() + chunk, used - chunk);
        used -= chunk;
    }
    ::close(fd);
    return ok;
}

class FindstrRun {
  public:
    FindstrRun(const FindstrOptions& options, const FindstrMatcher& matcher, ToolIo& io)
        : m_options(options), m_search(matcher, options.report), m_io(io) {}

    ~FindstrRun() { flush(); }

    void searchStdin() {
        std::string bytes((std::istreambuf_iterator<char>(m_io.in)),
                          std::istreambuf_iterator<char>());
        // Piped input gets a line end on its last line, as the system tool gives it.
        if (!bytes.empty() && bytes.back() != '\n')
            bytes += "\r\n";
        searchBytes("", bytes);
    }

    // A file named without a wildcard and without /s.
    void searchNamedFile(const std::string& path) {
        if (!searchFile(path, path))
            cannotOpen(path);
    }

    // Masks that share a directory part, searched there (and below with /s).
    void searchMasks(const std::string& dir, const std::vector<std::string>& masks) {
        std::vector<Wildcard> wildcards;
        for (const std::string& mask : masks)
            wildcards.emplace_back(mask.substr(mask.rfind('/') + 1));
        std::vector<bool> found(masks.size(), false);
        walk(dir, wildcards, found);
        for (size_t i = 0; i < masks.size(); ++i)
            if (!found[i])
                cannotOpen(masks[i]);
    }

    bool anyMatch() const { return m_anyMatch; }
    bool anyError() const { return m_anyError; }

  private:
    void walk(const std::string& dir, const std::vector<Wildcard>& wildcards,
              std::vector<bool>& found) {
        std::vector<FileInfo> entries;
        if (!listDirectory(dir.empty() ? "." : dir, entries))
            return;
        for (const FileInfo& entry : entries) {
            // Masks select files: a pipe or device would block the search or never end.
            if (entry.isDirectory || entry.isHidden() || !S_ISREG(entry.mode))
                continue;
            bool matched = false;
            for (size_t i = 0; i < wildcards.size(); ++i) {
                if (wildcards[i].matches(entry.name)) {
                    found[i] = true;
                    matched = true;
                }
            }
            if (matched) {
                std::string path = joinPath(dir, entry.name);
                if (!searchFile(path, path))
                    cannotOpen(path);
            }
        }
        if (!m_options.subdirectories)
            return;
        for (const FileInfo& entry : entries) {
            // Links to directories are not followed: they could loop.
            if (entry.isDirectory && !entry.isLink && !entry.isHidden())
                walk(joinPath(dir, entry.name), wildcards, found);
        }
    }

    bool searchFile(const std::string& path, const std::string& shownName) {
        if (m_options.skipNonPrintable) {
            // Decided before anything of the file is reported.
            bool printable = true;
            if (!readInLines(path, m_buffer, [&](std::string_view chunk, bool) {
                    printable = !hasNonPrintable(chunk);
                    return printable;
                }))
                return false;
            if (!printable)
                return true;
        }
        FindstrScanState state;
        bool ok = readInLines(path, m_buffer, [&](std::string_view chunk, bool last) {
            m_search.scanChunk(shownName, chunk, last, state, m_out);
            reportTooComplex(shownName, state);
            if (m_out.size() > (1u << 16))
                flush();
            return !state.done;
        });
        if (!ok)
            return false;
        if (m_search.finish(shownName, state, m_out))
            m_anyMatch = true;
        return true;
    }

    void searchBytes(const std::string& name, std::string_view bytes) {
        if (m_options.skipNonPrintable && hasNonPrintable(bytes))
            return;
        FindstrScanState state;
        m_search.scanChunk(name, bytes, true, state, m_out);
        reportTooComplex(name, state);
        if (m_search.finish(name, state, m_out))
            m_anyMatch = true;
        flush();
    }

    // Lines the regular-expression engine gave up on: named on the error output,
    // after what was found before them, and the search goes on.
    void reportTooComplex(const std::string& name, FindstrScanState& state) {
        if (state.tooComplexLines.empty())
            return;
        flush();
        m_anyError = true;
        for (size_t line : state.tooComplexLines)
            writeLine(m_io.err, "FINDSTR: Line " + std::to_string(line) +
                                    (name.empty() ? std::string() : " of " + name) +
                                    " is too complex to search; it was skipped.");
        state.tooComplexLines.clear();
    }

    void cannotOpen(const std::string& name) {
        flush();
        m_anyError = true;
        writeLine(m_io.err, "FINDSTR: Cannot open " + name);
    }

    void flush() {
        if (!m_out.empty()) {
            m_io.out.write(m_out.data(), static_cast<std::streamsize>(m_out.size()));
            m_out.clear();
        }
        m_io.out.flush();
    }

    const FindstrOptions& m_options;
    FindstrSearch m_search;
    ToolIo& m_io;
    std::string m_buffer;
    std::string m_out;
    bool m_anyMatch = false;
    bool m_anyError = false;
};

int badCommandLine(ToolIo& io) {
    writeLine(io.err, "FINDSTR: Bad command line");
    return 2;
}

} // namespace

int findstrMain(const ToolArgs& args, ToolIo& io) {
    if (asksForHelp(args)) {
        io.out << kFindstrHelp;
        return 0;
    }
    FindstrOptions o;
    if (!parseArguments(args, o, io.err))
        return badCommandLine(io);

    // The search strings: /c: strings, a /g: file, else the first operand's words.
    std::vector<SearchString> strings;
    for (const std::string& text : o.literalStrings)
        if (!text.empty())
            strings.push_back({text, o.forceRegex});
    std::vector<std::string> words;
    if (!o.stringsFile.empty()) {
        if (!readLinesFrom(o.stringsFile, io.in, words)) {
            writeLine(io.err, "FINDSTR: Cannot open " + o.stringsFile);
            return 2;
        }
    }
    std::vector<std::string> fileArgs = o.operands;
    if (o.literalStrings.empty() && o.stringsFile.empty()) {
        if (fileArgs.empty())
            return badCommandLine(io);
        words = splitWords(fileArgs.front());
        fileArgs.erase(fileArgs.begin());
    }
    if (!words.empty()) {
        bool regex = o.forceRegex || (!o.forceLiteral && FindstrMatcher::looksLikeRegex(words[0]));
        for (const std::string& word : words)
            strings.push_back({word, regex});
    }
    if (o.forceLiteral)
        for (SearchString& s : strings)
            s.regex = false;
    if (strings.empty())
        return badCommandLine(io);

    if (!o.fileListFile.empty()) {
        std::vector<std::string> listed;
        if (!readLinesFrom(o.fileListFile, io.in, listed)) {
            writeLine(io.err, "FINDSTR: Cannot open " + o.fileListFile);
            return 2;
        }
        fileArgs.insert(fileArgs.end(), listed.begin(), listed.end());
    }
    if (!o.directories.empty()) {
        std::vector<std::string> inDirs;
        size_t pos = 0;
        while (pos <= o.directories.size()) {
            size_t end = o.directories.find(';', pos);
            if (end == std::string::npos)
                end = o.directories.size();
            std::string dir = o.directories.substr(pos, end - pos);
            if (!dir.empty())
                for (const std::string& name : fileArgs)
                    inDirs.push_back(joinPath(dir, name));
            pos = end + 1;
        }
        fileArgs = inDirs;
    }

    bool anyWildcard = false;
    for (const std::string& name : fileArgs)
        anyWildcard = anyWildcard || Wildcard::hasWildcard(name);
    o.report.showNames = fileArgs.size() > 1 || anyWildcard || o.subdirectories;

    std::unique_ptr<FindstrMatcher> matcher;
    try {
        matcher = std::make_unique<FindstrMatcher>(strings, o.match);
    } catch (const std::exception&) {
        return badCommandLine(io);
    }

    FindstrRun run(o, *matcher, io);
    if (fileArgs.empty()) {
        run.searchStdin();
    } else {
        // Masks that share a directory part are searched together, so that each
        // tree is walked once; otherwise the names are taken in the order given.
        auto dirPart = [](const std::string& name) {
            size_t slash = name.rfind('/');
            return slash == std::string::npos ? std::string() : name.substr(0, slash + 1);
        };
        auto isMask = [&](const std::string& name) {
            return o.subdirectories || Wildcard::hasWildcard(name);
        };
        std::vector<bool> done(fileArgs.size(), false);
        for (size_t i = 0; i < fileArgs.size(); ++i) {
            if (done[i])
                continue;
            if (!isMask(fileArgs[i])) {
                run.searchNamedFile(fileArgs[i]);
                continue;
            }
            std::string dir = dirPart(fileArgs[i]);
            std::vector<std::string> masks;
            for (size_t j = i; j < fileArgs.size(); ++j) {
                if (!done[j] && isMask(fileArgs[j]) && dirPart(fileArgs[j]) == dir) {
                    masks.push_back(fileArgs[j]);
                    done[j] = true;
                }
            }
            run.searchMasks(dir, masks);
        }
    }
    if (run.anyMatch())
        return 0;
    return run.anyError() ? 2 : 1;
}

} // namespace pvcmd
