#pragma once
// The drive list on POSIX: the mounted file systems a user would browse, the
// root "/" first. A drive's text is its mount point.

#include <string>
#include <vector>

namespace pv {

std::vector<std::string> mountedDrives();

// The mount point that holds `path` (the longest mounted prefix), "/" at least.
std::string driveOfPath(const std::string& path, const std::vector<std::string>& drives);

} // namespace pv
