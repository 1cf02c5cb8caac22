#pragma once
// The "volume" a directory lies on, as dir's header shows it. POSIX has no
// drive letters: the drive is the mount point, the label the file system's label
// when udev publishes one, the serial number derived from the file-system id.

#include <string>

namespace pvcmd {

struct VolumeInfo {
    std::string mountPoint = "/";
    std::string label;        // empty: "has no label."
    unsigned long serial = 0; // shown as %04X-%04X
    unsigned long long freeBytes = 0;

    static VolumeInfo of(const std::string& directory);
};

} // namespace pvcmd
