#pragma once
// The recent-files list: "RECENTFILES"/"ITEM0" (newest) to "ITEM20" in the
// settings file. The menu is not rebuilt when the list changes; it shows the list
// the next time a compare window loads its settings.

#include "settings/settings.h"

#include <string>

namespace pv {

inline constexpr int kRecentLastItem = 20;

// Puts a file path at the head of the list. `path` is trimmed in place; a blank
// path changes nothing. A path already in the list (letter case ignored, the last
// match wins) moves to the head in its new spelling; the entries above it shift
// down by one. A new path shifts "ITEM0".."ITEM19" down, so the old "ITEM20" is lost.
void AddRecent(std::string& path, const Settings& settings);

// A recent item's caption taken apart as the panes need it.
struct RecentLocation {
    std::string directory; // up to the last separator; the separator kept only at the root
    std::string fileName;  // after the last separator
};
RecentLocation splitRecentPath(const std::string& path);

} // namespace pv
