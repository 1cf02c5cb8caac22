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
    // The same for `name` in the open directory `dirFd`, so that an entry is read
    // even when its full path is longer than the system takes.
    static bool readAt(int dirFd, const std::string& name, FileInfo& info);
};

// An entry a listing found but could not read.
struct UnreadableEntry {
    std::string path; // the directory's path joined with the name
    int error = 0;    // errno
};

// The entries of a directory without "." and "..", sorted by name ignoring case
// (then by the exact bytes). False (errno set) when the directory cannot be read.
// Entries that cannot be read go to `unreadable` (when given), in name order;
// entries that vanished meanwhile are left out.
bool listDirectory(const std::string& path, std::vector<FileInfo>& entries,
                   std::vector<UnreadableEntry>* unreadable = nullptr);

using pv::joinPath;

// Case-insensitive name order used by every listing.
bool nameLess(const std::string& a, const std::string& b);

} // namespace pvcmd
