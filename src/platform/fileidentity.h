#pragma once
// Which file or directory a path leads to, so that two paths to one directory
// (through a symbolic link) can be told apart from two directories.

#include <compare>
#include <optional>
#include <string>

namespace pv {

struct FileIdentity {
    unsigned long long device = 0;
    unsigned long long inode = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

// The identity of what the path leads to, links followed; nullopt when it
// cannot be reached.
std::optional<FileIdentity> fileIdentity(const std::string& path);

// True when the path itself is a symbolic link.
bool isSymbolicLink(const std::string& path);

} // namespace pv
