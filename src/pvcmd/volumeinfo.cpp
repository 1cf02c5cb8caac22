#include "pvcmd/volumeinfo.h"

#include <dirent.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace pvcmd {

namespace {

// udev escapes blanks and other bytes in link names as \xHH.
std::string unescapeUdev(const std::string& name) {
    std::string out;
    for (size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '\\' && i + 3 < name.size() && name[i + 1] == 'x') {
            out += static_cast<char>(std::stoi(name.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else {
            out += name[i];
        }
    }
    return out;
}

std::string labelOfDevice(dev_t device) {
    const char* byLabel = "/dev/disk/by-label";
    DIR* dir = ::opendir(byLabel);
    if (!dir)
        return {};
    std::string label;
    while (dirent* entry = ::readdir(dir)) {
        if (entry->d_name[0] == '.')
            continue;
        struct stat st;
        std::string path = std::string(byLabel) + "/" + entry->d_name;
        if (::stat(path.c_str(), &st) == 0 && S_ISBLK(st.st_mode) && st.st_rdev == device) {
            label = unescapeUdev(entry->d_name);
            break;
        }
    }
    ::closedir(dir);
    return label;
}

} // namespace

VolumeInfo VolumeInfo::of(const std::string& directory) {
    VolumeInfo info;
    std::error_code ec;
    std::filesystem::path path = std::filesystem::absolute(directory, ec).lexically_normal();
    struct stat st;
    if (ec || ::stat(path.c_str(), &st) != 0)
        return info;
    // The mount point is the highest ancestor still on the same device.
    std::filesystem::path mount = path;
    while (mount.has_relative_path()) {
        std::filesystem::path parent = mount.parent_path();
        if (!mount.filename().empty()) {
            struct stat up;
            if (::stat(parent.c_str(), &up) != 0 || up.st_dev != st.st_dev)
                break;
        }
        mount = parent;
    }
    info.mountPoint = mount.string();
    if (info.mountPoint.size() > 1 && info.mountPoint.back() == '/')
        info.mountPoint.pop_back();
    info.label = labelOfDevice(st.st_dev);
    struct statvfs vfs;
    if (::statvfs(path.c_str(), &vfs) == 0) {
        info.freeBytes = static_cast<unsigned long long>(vfs.f_bavail) * vfs.f_frsize;
        unsigned long long id = vfs.f_fsid;
        info.serial = static_cast<unsigned long>((id ^ (id >> 32)) & 0xffffffffu);
    }
    return info;
}

} // namespace pvcmd
