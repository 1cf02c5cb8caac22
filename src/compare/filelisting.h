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

// True when `name` matches one of the ";"-separated wildcard patterns ("*" and "?",
// letter case ignored; "*.*" matches every name, with or without a dot).
bool matchesPatternList(std::string_view name, std::string_view patternList);

// Sorts names as the lists show them: by upper-cased name (ordinal), then by name.
void sortListNames(std::vector<std::string>& names);

// The files of `dir` that match the pattern list, hidden (dot) files left out,
// in list order. Throws RuntimeError when the directory cannot be read.
std::vector<std::string> listFiles(const std::string& dir, std::string_view patternList);

// The sub-directory names of `dir`, hidden (dot) directories left out, in list
// order. Throws RuntimeError when the directory cannot be read.
std::vector<std::string> listSubdirectories(const std::string& dir);

} // namespace pv
