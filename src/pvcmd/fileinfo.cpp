#include "pvcmd/fileinfo.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace pvcmd {

bool FileInfo::isHidden() const {
    return !name.empty() && name[0] == '.' && name != "." && name != "..";
}

bool FileInfo::isReadOnly() const {
    return (mode & S_IWUSR) == 0;
}

bool FileInfo::read(const std::string& path, FileInfo& info) {
    return readAt(AT_FDCWD, path, info);
}

bool FileInfo::readAt(int dirFd, const std::string& name, FileInfo& info) {
    struct stat st;
    if (::fstatat(dirFd, name.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0)
        return false;
    info.isLink = S_ISLNK(st.st_mode);
    if (info.isLink) {
        struct stat target;
        // A dangling link is listed as what it is, a link.
        if (::fstatat(dirFd, name.c_str(), &target, 0) == 0)
            st = target;
    }
    info.isDirectory = S_ISDIR(st.st_mode);
    info.size = info.isDirectory ? 0 : static_cast<unsigned long long>(st.st_size);
    info.modified = st.st_mtim;
    info.accessed = st.st_atim;
    info.changed = st.st_ctim;
    info.mode = st.st_mode;
    info.owner = st.st_uid;
    return true;
}

bool nameLess(const std::string& a, const std::string& b) {
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        unsigned char ca = static_cast<unsigned char>(a[i]);
        unsigned char cb = static_cast<unsigned char>(b[i]);
        if (ca >= 'A' && ca <= 'Z')
            ca = static_cast<unsigned char>(ca - 'A' + 'a');
        if (cb >= 'A' && cb <= 'Z')
            cb = static_cast<unsigned char>(cb - 'A' + 'a');
        if (ca != cb)
            return ca < cb;
    }
    if (a.size() != b.size())
        return a.size() < b.size();
    return a < b;
}

bool listDirectory(const std::string& path, std::vector<FileInfo>& entries,
                   std::vector<UnreadableEntry>* unreadable) {
    entries.clear();
    DIR* dir = ::opendir(path.empty() ? "." : path.c_str());
    if (!dir)
        return false;
    std::vector<std::pair<std::string, int>> failed;
    for (;;) {
        errno = 0;
        dirent* entry = ::readdir(dir);
        if (!entry)
            break;
        std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        FileInfo info;
        if (!FileInfo::readAt(::dirfd(dir), name, info)) {
            if (errno != ENOENT) // else it vanished between readdir and stat
                failed.emplace_back(std::move(name), errno);
            continue;
        }
        info.name = std::move(name);
        entries.push_back(std::move(info));
    }
    int readError = errno;
    ::closedir(dir);
    if (readError != 0) {
        errno = readError;
        return false;
    }
    std::sort(entries.begin(), entries.end(),
              [](const FileInfo& a, const FileInfo& b) { return nameLess(a.name, b.name); });
    if (unreadable) {
        std::sort(failed.begin(), failed.end(),
                  [](const auto& a, const auto& b) { return nameLess(a.first, b.first); });
        for (auto& [name, error] : failed)
            unreadable->push_back({joinPath(path, name), error});
    }
    return true;
}

} // namespace pvcmd
