#include "platform/drives.h"

#include <algorithm>
#include <cstdio>
#include <mntent.h>
#include <set>
#include <string_view>

namespace pv {

namespace {

// Kernel and virtual file systems that hold no user files.
bool isPseudoFileSystem(std::string_view type) {
    static const std::set<std::string_view> pseudo = {
        "proc",    "sysfs",     "devtmpfs", "devpts",   "cgroup",     "cgroup2",
        "securityfs", "pstore", "debugfs",  "tracefs",  "mqueue",     "hugetlbfs",
        "configfs", "fusectl",  "binfmt_misc", "autofs", "bpf",       "nsfs",
        "rpc_pipefs", "efivarfs", "ramfs",  "selinuxfs", "fuse.gvfsd-fuse", "fuse.portal"};
    return pseudo.count(type) != 0;
}

bool isSystemMountPoint(std::string_view dir) {
    for (std::string_view prefix : {"/proc", "/sys", "/dev", "/run"})
        if (dir == prefix || (dir.size() > prefix.size() && dir.substr(0, prefix.size()) == prefix &&
                              dir[prefix.size()] == '/'))
            return true;
    return false;
}

} // namespace

std::vector<std::string> mountedDrives() {
    std::vector<std::string> drives{"/"};
    if (std::FILE* f = ::setmntent("/proc/self/mounts", "r")) {
        while (struct mntent* m = ::getmntent(f)) {
            std::string dir = m->mnt_dir;
            if (isPseudoFileSystem(m->mnt_type) || isSystemMountPoint(dir))
                continue;
            if (std::find(drives.begin(), drives.end(), dir) == drives.end())
                drives.push_back(dir);
        }
        ::endmntent(f);
    }
    std::sort(drives.begin() + 1, drives.end());
    return drives;
}

std::string driveOfPath(const std::string& path, const std::vector<std::string>& drives) {
    std::string best = "/";
    for (const std::string& d : drives) {
        if (d.size() <= best.size())
            continue;
        if (path == d || (path.size() > d.size() && path.compare(0, d.size(), d) == 0 &&
                          path[d.size()] == '/'))
            best = d;
    }
    return best;
}

} // namespace pv
