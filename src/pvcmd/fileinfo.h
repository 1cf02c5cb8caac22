#pragma once
// What the tools need to know about a directory entry, read with lstat/stat,
// and the listing of a directory in the order the tools show it.

#include "platform/textutil.h"

#include <ctime>
#include <string>
#include <sys/types.h>
#include <vector>

namespace pvcmd {

struct FileInfo {
    std::string name;         // the entry's name, no directory part
    bool isDirectory = false; // follows a symbolic link to a directory
    bool isLink = false;
    unsigned long long size = 0;
    timespec modified{};
    timespec accessed{};
    timespec changed{};
    mode_t mode = 0;
    uid_t owner = 0;

    // Hidden is a name starting with "." ("." and ".." themselves are not hidden).
    bool isHidden() const;
    // Read-only is the owner lacking write permission.
    bool isReadOnly() const;

    // Fills the entry from `path`; false (errno set) when it cannot be read.
    static bool read(const std::string& path, FileInfo& info);
};

// The entries of a directory without "." and "..", sorted by name ignoring case
// (then by the exact bytes). False (errno set) when the directory cannot be read.
bool listDirectory(const std::string& path, std::vector<FileInfo>& entries);

using pv::joinPath;

// Case-insensitive name order used by every listing.
bool nameLess(const std::string& a, const std::string& b);

} // namespace pvcmd
