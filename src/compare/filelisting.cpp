#include "compare/filelisting.h"

#include "platform/runtimeerror.h"
#include "platform/wildcard.h"
#include "remote/remotefiles.h"
#include "remote/remoteurl.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>

namespace pv {

namespace {

char upperAscii(char c) {
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

// The file type of an entry, from the directory when it records one.
enum class EntryType { File, Directory, Other };

EntryType entryType(int dirFd, const struct dirent& e, bool trustTypes) {
    switch (trustTypes ? e.d_type : static_cast<unsigned char>(DT_UNKNOWN)) {
    case DT_REG:
        return EntryType::File;
    case DT_DIR:
        return EntryType::Directory;
    case DT_LNK:
    case DT_UNKNOWN: {
        struct stat st;
        if (::fstatat(dirFd, e.d_name, &st, 0) != 0)
            return EntryType::Other;
        return S_ISDIR(st.st_mode)   ? EntryType::Directory
               : S_ISREG(st.st_mode) ? EntryType::File
                                     : EntryType::Other;
    }
    default:
        return EntryType::Other;
    }
}

// The entries of `dir` with their types; `wantFiles` / `wantDirectories` say
// which to keep (the other kind is passed over without a stat of its own).
DirectoryListing readEntries(const std::string& dir, bool wantFiles, bool wantDirectories,
                             bool trustTypes = true) {
    if (isRemotePath(dir)) {
        RemoteDirectory remote = readRemoteDirectory(dir);
        DirectoryListing listing{wantFiles ? std::move(remote.files) : std::vector<std::string>{},
                                 wantDirectories ? std::move(remote.subdirectories)
                                                 : std::vector<std::string>{}};
        sortListNames(listing.files);
        sortListNames(listing.subdirectories);
        return listing;
    }
    std::unique_ptr<DIR, int (*)(DIR*)> d(::opendir(dir.c_str()), ::closedir);
    if (!d)
        throw RuntimeError::fromErrno(errno, dir);
    DirectoryListing listing;
    const int fd = ::dirfd(d.get());
    while (struct dirent* e = ::readdir(d.get())) {
        if (e->d_name[0] == '.')
            continue; // hidden, and "." / ".."
        switch (entryType(fd, *e, trustTypes)) {
        case EntryType::File:
            if (wantFiles)
                listing.files.emplace_back(e->d_name);
            break;
        case EntryType::Directory:
            if (wantDirectories)
                listing.subdirectories.emplace_back(e->d_name);
            break;
        case EntryType::Other:
            break;
        }
    }
    sortListNames(listing.files);
    sortListNames(listing.subdirectories);
    return listing;
}

} // namespace

std::string normalizeDirectoryPath(const std::string& path) {
    namespace fs = std::filesystem;
    if (isRemotePath(path))
        return normalizeRemotePath(path);
    std::string p = path.empty() ? "/" : path;
    if (p.front() != '/') {
        std::error_code ec;
        p = (fs::current_path(ec) / p).string();
    }
    p = fs::path(p).lexically_normal().string();
    while (p.size() > 1 && p.back() == '/')
        p.pop_back();
    return p;
}

std::string parentPath(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return ".";
    if (slash == 0)
        return "/";
    return std::string(path.substr(0, slash));
}

namespace {

// Runs `each(pattern, excluded, directory)` for every pattern of a ";"-separated
// list, blanks around it removed, "!" and a trailing "/" taken off.
template <typename F> void forEachPattern(std::string_view patternList, F&& each) {
    std::size_t start = 0;
    while (start <= patternList.size()) {
        std::size_t end = patternList.find(';', start);
        if (end == std::string_view::npos)
            end = patternList.size();
        std::string_view pattern = patternList.substr(start, end - start);
        start = end + 1;
        while (!pattern.empty() && pattern.front() == ' ')
            pattern.remove_prefix(1);
        while (!pattern.empty() && pattern.back() == ' ')
            pattern.remove_suffix(1);
        const bool excluded = !pattern.empty() && pattern.front() == '!';
        if (excluded)
            pattern.remove_prefix(1);
        const bool directory = !pattern.empty() && pattern.back() == '/';
        if (directory)
            pattern.remove_suffix(1);
        if (!pattern.empty())
            each(pattern, excluded, directory);
    }
}

// Whether a name of the kind asked for passes the list: it matches no exclusion
// of that kind, and matches an inclusion of that kind unless the list has none
// (then, if the list holds anything at all, every name passes).
bool passes(std::string_view name, std::string_view patternList, bool directories) {
    bool anyPattern = false, anyInclusion = false, included = false, excluded = false;
    forEachPattern(patternList, [&](std::string_view pattern, bool exclusion, bool directory) {
        anyPattern = true;
        if (directory != directories || excluded)
            return;
        if (exclusion) {
            excluded = wildcardMatch(name, pattern);
        } else {
            anyInclusion = true;
            included = included || wildcardMatch(name, pattern);
        }
    });
    if (excluded)
        return false;
    return anyInclusion ? included : (directories || anyPattern);
}

} // namespace

bool matchesPatternList(std::string_view name, std::string_view patternList) {
    return passes(name, patternList, false);
}

bool directoryPassesPatternList(std::string_view name, std::string_view patternList) {
    return passes(name, patternList, true);
}

void sortListNames(std::vector<std::string>& names) {
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& n : names) {
        std::string key = n;
        for (char& c : key)
            c = upperAscii(c);
        keyed.emplace_back(std::move(key), std::move(n));
    }
    std::sort(keyed.begin(), keyed.end());
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = std::move(keyed[i].second);
}

DirectoryListing readDirectory(const std::string& dir, bool trustEntryTypes) {
    return readEntries(dir, true, true, trustEntryTypes);
}

std::vector<std::string> matchingNames(const std::vector<std::string>& names,
                                       std::string_view patternList) {
    std::vector<std::string> out;
    for (const std::string& name : names)
        if (matchesPatternList(name, patternList))
            out.push_back(name);
    return out;
}

std::vector<std::string> listFiles(const std::string& dir, std::string_view patternList) {
    std::vector<std::string> files = readEntries(dir, true, false).files;
    std::erase_if(files, [&](const std::string& n) { return !matchesPatternList(n, patternList); });
    return files;
}

std::vector<std::string> listSubdirectories(const std::string& dir) {
    return readEntries(dir, false, true).subdirectories;
}

} // namespace pv
