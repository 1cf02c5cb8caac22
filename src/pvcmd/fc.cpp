// fc: compares two files, or two sets of files pair by pair, as text (line by
// line with resynchronisation) or as bytes.

#include "pvcmd/binarycompare.h"
#include "pvcmd/fcoptions.h"
#include "pvcmd/filemask.h"
#include "pvcmd/linereader.h"
#include "pvcmd/textcompare.h"
#include "pvcmd/tool.h"
#include "platform/textutil.h"
#include "remote/remotefiles.h"
#include "remote/remoteurl.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <istream>
#include <ostream>
#include <sys/stat.h>
#include <utility>

namespace pvcmd {

namespace {

constexpr const char* kHelp =
    "Compares two files or sets of files and shows the differences between them.\r\n"
    "\r\n"
    "FC [/A] [/C] [/L] [/LBn] [/N] [/OFF[LINE]] [/T] [/U] [/W] [/nnnn] file1 file2\r\n"
    "FC /B file1 file2\r\n"
    "\r\n"
    "  /A         Shows only the first and last line of each set of differences.\r\n"
    "  /B         Compares byte by byte.\r\n"
    "  /C         Ignores the case of letters.\r\n"
    "  /L         Compares as text.\r\n"
    "  /LBn       Holds at most n lines of each file while looking for a match\r\n"
    "             (default 100); more differing lines in a row end the compare.\r\n"
    "  /N         Shows line numbers in a text compare.\r\n"
    "  /OFF[LINE] Accepted for compatibility; has no effect here.\r\n"
    "  /T         Does not expand tabs to spaces (by default a tab stops at every\r\n"
    "             eighth column).\r\n"
    "  /U         Compares the files as UTF-16 text.\r\n"
    "  /W         Treats runs of blanks and tabs as one blank and ignores them at\r\n"
    "             the start and end of a line.\r\n"
    "  /nnnn      Lines that must match again after a difference (default 2).\r\n"
    "\r\n"
    "  file1, file2  Files to compare; \"*\" and \"?\" compare every matching pair.\r\n"
    "                Files ending in .exe .com .sys .obj .lib .bin are compared\r\n"
    "                byte by byte unless /L is given.\r\n"
    "\r\n"
    "Exit code: 0 no differences, 1 differences, 2 error.\r\n";

bool hasBinaryExtension(const std::string& name) {
    size_t slash = name.rfind('/');
    size_t dot = name.rfind('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
        return false;
    std::string ext;
    for (size_t i = dot; i < name.size(); ++i)
        ext +=
            static_cast<char>((name[i] >= 'A' && name[i] <= 'Z') ? name[i] - 'A' + 'a' : name[i]);
    for (const char* binary : {".exe", ".com", ".sys", ".obj", ".lib", ".bin"})
        if (ext == binary)
            return true;
    return false;
}

bool exists(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0;
}

std::string baseName(const std::string& path) {
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The reason fc gives for a file it cannot open.
std::string openFailureText(int err) {
    switch (err) {
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
        return "No such file or folder";
    case EACCES:
    case EPERM:
        return "Access denied";
    default:
        return std::strerror(err);
    }
}

class FilePtr {
  public:
    explicit FilePtr(std::FILE* file) : m_file(file) {}
    ~FilePtr() {
        if (m_file)
            std::fclose(m_file);
    }
    FilePtr(const FilePtr&) = delete;
    FilePtr& operator=(const FilePtr&) = delete;
    std::FILE* get() const { return m_file; }

  private:
    std::FILE* m_file;
};

// Opens a file for reading; a directory counts as a file that is not there.
// `why` tells what went wrong when a remote host failed.
std::FILE* openForCompare(const std::string& path, int& err, std::string& why) {
    if (pv::isRemotePath(path))
        return pv::openRemoteCopy(path, err, why);
    if (pv::isDirectory(path)) {
        err = EISDIR;
        return nullptr;
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        err = errno;
    return file;
}

int comparePair(const FcOptions& options, const std::string& name1, const std::string& name2,
                ToolIo& io) {
    int err = 0;
    std::string why;
    FilePtr file1(openForCompare(name1, err, why));
    if (!file1.get()) {
        io.out << "FC: cannot open " << name1 << " - " << (why.empty() ? openFailureText(err) : why)
               << "\r\n";
        return 2;
    }
    FilePtr file2(openForCompare(name2, err, why));
    if (!file2.get()) {
        io.out << "FC: cannot open " << name2 << " - " << (why.empty() ? openFailureText(err) : why)
               << "\r\n";
        return 2;
    }
    io.out << "Comparing files " << name1 << " and " << name2 << "\r\n";

    bool binary = options.binary ||
                  (!options.forceText && (hasBinaryExtension(name1) || hasBinaryExtension(name2)));
    if (binary) {
        BinaryCompare compare(io.out);
        int rc = compare.run(file1.get(), name1, file2.get(), name2);
        if (rc == 2)
            io.err << "FC: cannot read " << compare.errorFile() << " - "
                   << std::strerror(compare.error()) << "\r\n";
        return rc;
    }
    LineReader reader1(file1.get(), options.unicode);
    LineReader reader2(file2.get(), options.unicode);
    TextCompare compare(options, io.out);
    int rc = compare.run(reader1, name1, reader2, name2);
    for (auto* failed : {&reader1, &reader2}) {
        if (failed->failed()) {
            io.err << "FC: cannot read " << (failed == &reader1 ? name1 : name2) << " - "
                   << std::strerror(failed->error()) << "\r\n";
            return 2;
        }
    }
    return rc;
}

// The pairs a command line names: one pair, or with masks every file of the
// first mask with the name the second mask (or the second name) gives it.
std::vector<std::pair<std::string, std::string>> filePairs(const std::string& first,
                                                           std::string second) {
    // On POSIX "*" and "?" may be part of a real file name: a name that exists
    // as it stands is that file, not a mask.
    auto isFile = [](const std::string& name) { return exists(name) && !pv::isDirectory(name); };
    if (isFile(first) && isFile(second))
        return {{first, second}};
    std::vector<std::string> lefts;
    if (FileMask::hasWildcard(baseName(first)) && !isFile(first)) {
        lefts = FileMask(first).expand();
        if (lefts.empty())
            return {{first, second}}; // reported as a file that cannot be opened
    } else {
        lefts.push_back(first);
    }
    // A directory as the second name means the same file name in it.
    if (!second.empty() && (second.back() == '/' || pv::isDirectory(second))) {
        if (second.back() != '/')
            second += '/';
        second += "*";
    }
    std::vector<std::pair<std::string, std::string>> pairs;
    FileMask target(second);
    for (const std::string& left : lefts) {
        if (FileMask::hasWildcard(target.pattern()))
            pairs.emplace_back(left, target.directory() +
                                         FileMask::mapName(target.pattern(), baseName(left)));
        else
            pairs.emplace_back(left, second);
    }
    return pairs;
}

} // namespace

int fcMain(const ToolArgs& args, ToolIo& io) {
    FcOptions options;
    std::vector<std::string> names;
    for (const std::string& word : args) {
        switch (options.apply(word, exists(word))) {
        case FcOptions::Switch::Applied:
            break;
        case FcOptions::Switch::Help:
            io.out << kHelp;
            return 0;
        case FcOptions::Switch::Invalid:
            io.err << "FC: Invalid Switch\r\n";
            return 2;
        case FcOptions::Switch::NotASwitch:
            names.push_back(word);
            break;
        }
    }
    if (names.size() < 2) {
        io.err << "FC: Insufficient number of file specifications\r\n";
        return 2;
    }
    if (names.size() > 2) {
        io.err << "FC: Too many file specifications\r\n";
        return 2;
    }
    int worst = 0;
    for (const auto& [name1, name2] : filePairs(names[0], names[1])) {
        int rc = comparePair(options, name1, name2, io);
        worst = std::max(worst, rc);
    }
    io.out.flush();
    return worst;
}

} // namespace pvcmd
