#include "compare/filelisting.h"

#include "platform/runtimeerror.h"
#include "platform/wildcard.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>

namespace pv {

namespace {

char upperAscii(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

enum class EntryKind { Files, Directories };

std::vector<std::string> listEntries(const std::string& dir, EntryKind kind,
                                     std::string_view patternList) {
    std::unique_ptr<DIR, int (*)(DIR*)> d(::opendir(dir.c_str()), ::closedir);
    if (!d)
        throw RuntimeError::fromErrno(errno, dir);
    std::vector<std::string> names;
    errno = 0;
    while (struct dirent* e = ::readdir(d.get())) {
        if (e->d_name[0] == '.')
            continue; // hidden, and "." / ".."
        bool isDir = false;
        bool isFile = false;
        if (e->d_type == DT_DIR) {
            isDir = true;
        } else if (e->d_type == DT_REG) {
            isFile = true;
        } else if (e->d_type == DT_LNK || e->d_type == DT_UNKNOWN) {
            struct stat st;
            if (::fstatat(::dirfd(d.get()), e->d_name, &st, 0) == 0) {
                isDir = S_ISDIR(st.st_mode);
                isFile = S_ISREG(st.st_mode);
            }
        }
        if (kind == EntryKind::Directories ? isDir
                                           : (isFile && matchesPatternList(e->d_name, patternList)))
            names.emplace_back(e->d_name);
    }
    sortListNames(names);
    return names;
}

} // namespace

std::string normalizeDirectoryPath(const std::string& path) {
    namespace fs = std::filesystem;
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

bool matchesPatternList(std::string_view name, std::string_view patternList) {
    std::size_t start = 0;
    while (start <= patternList.size()) {
        std::size_t end = patternList.find(';', start);
        if (end == std::string_view::npos)
            end = patternList.size();
        std::string_view pattern = patternList.substr(start, end - start);
        while (!pattern.empty() && pattern.front() == ' ')
            pattern.remove_prefix(1);
        while (!pattern.empty() && pattern.back() == ' ')
            pattern.remove_suffix(1);
        if (!pattern.empty() && wildcardMatch(name, pattern))
            return true;
        start = end + 1;
    }
    return false;
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

std::vector<std::string> listFiles(const std::string& dir, std::string_view patternList) {
    return listEntries(dir, EntryKind::Files, patternList);
}

std::vector<std::string> listSubdirectories(const std::string& dir) {
    return listEntries(dir, EntryKind::Directories, {});
}

} // namespace pv
