#include "pvcmd/fileinfo.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <sys/stat.h>

namespace pvcmd {

bool FileInfo::isHidden() const {
    return !name.empty() && name[0] == '.' && name != "." && name != "..";
}

bool FileInfo::isReadOnly() const {
    return (mode & S_IWUSR) == 0;
}

bool FileInfo::read(const std::string& path, FileInfo& info) {
    struct stat st;
    if (::lstat(path.c_str(), &st) != 0)
        return false;
    info.isLink = S_ISLNK(st.st_mode);
    if (info.isLink) {
        struct stat target;
        // A dangling link is listed as what it is, a link.
        if (::stat(path.c_str(), &target) == 0)
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

bool listDirectory(const std::string& path, std::vector<FileInfo>& entries) {
    entries.clear();
    DIR* dir = ::opendir(path.empty() ? "." : path.c_str());
    if (!dir)
        return false;
    errno = 0;
    while (dirent* entry = ::readdir(dir)) {
        std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        FileInfo info;
        if (!FileInfo::read(joinPath(path, name), info))
            continue; // vanished between readdir and stat
        info.name = std::move(name);
        entries.push_back(std::move(info));
    }
    ::closedir(dir);
    std::sort(entries.begin(), entries.end(),
              [](const FileInfo& a, const FileInfo& b) { return nameLess(a.name, b.name); });
    return true;
}

} // namespace pvcmd
