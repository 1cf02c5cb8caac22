#pragma once
// What the panes' directory and file lists show, as plain data: the compare engine,
// the sub-directory walk and pvcompare read directories exactly as the lists do.

#include "platform/textutil.h"

#include <string>
#include <string_view>
#include <vector>

namespace pv {

// A directory path as the lists hold it: absolute (relative to the current
// directory), normalised, no trailing separator except at the root.
std::string normalizeDirectoryPath(const std::string& path);

// The directory that holds `path` ("/" for a top-level entry).
std::string parentPath(std::string_view path);

// True when the file name `name` passes the ";"-separated wildcard patterns ("*"
// and "?", letter case ignored; "*.*" matches every name, with or without a dot):
// it matches one of them and none of those that begin with "!" ("*.*;!*.o").
// A list of exclusions alone lets every other name through. Patterns ending in
// "/" are for directories and are passed over here.
bool matchesPatternList(std::string_view name, std::string_view patternList);

// The same for a sub-directory name, by the patterns that end in "/" only:
// "!node_modules/" keeps that directory out of a walk; without such patterns
// every directory passes.
bool directoryPassesPatternList(std::string_view name, std::string_view patternList);

// Sorts names as the lists show them: by upper-cased name (ordinal), then by name.
void sortListNames(std::vector<std::string>& names);

// What one read of a directory finds: its ordinary files and its sub-directories,
// hidden (dot) entries left out, each in list order.
struct DirectoryListing {
    std::vector<std::string> files;
    std::vector<std::string> subdirectories;
};

// Reads `dir` once: names and types come from the directory itself; only entries
// whose type it does not record (and symbolic links) are looked at with a stat.
// `trustEntryTypes` false treats every entry so, as some file systems require.
// Throws RuntimeError when the directory cannot be read.
DirectoryListing readDirectory(const std::string& dir, bool trustEntryTypes = true);

// The names that match the pattern list, in their order.
std::vector<std::string> matchingNames(const std::vector<std::string>& names,
                                       std::string_view patternList);

// The files of `dir` that match the pattern list, hidden (dot) files left out,
// in list order. Throws RuntimeError when the directory cannot be read.
std::vector<std::string> listFiles(const std::string& dir, std::string_view patternList);

// The sub-directory names of `dir`, hidden (dot) directories left out, in list
// order. Throws RuntimeError when the directory cannot be read.
std::vector<std::string> listSubdirectories(const std::string& dir);

} // namespace pv
