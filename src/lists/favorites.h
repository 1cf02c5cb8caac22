#pragma once
// Favorite directories: which directory "AddFavorite" stores, the duplicate rule,
// and where a pane goes when a favorite is chosen.

#include "settings/settings.h"

#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace pv {

extern const char* const kNoFavoriteCandidate; // the "Select an item ..." message
extern const char* const kDuplicateFavorite;   // "duplicate favorite detected and rejected"

// A pane's directory list as AddFavorite reads it.
struct DirectoryListState {
    int listIndex = -1;      // 0 or more: a sub-directory entry is highlighted
    std::string highlighted; // the full path of that entry
    std::string path;        // the open directory
};

// The directory to store: from the pane clicked last (the left one when the left
// directory or file list was, the right one likewise), the highlighted
// sub-directory, else the open directory. "" when no pane was clicked.
std::string favoriteCandidate(const DirectoryListState& left, const DirectoryListState& right,
                              bool leftClicked, bool rightClicked);

// Stores a candidate at the first free index of "FAVORITES" unless an entry
// equals it in any letter case. Returns the number of such entries (each one is
// reported with kDuplicateFavorite); 0 means it was stored.
int addFavorite(const Settings& settings, const std::string& candidate);

// A network favorite begins with two separators ("//server/share").
bool isNetworkFavorite(const std::string& favorite);

// Where a pane goes for a favorite: the drive to choose (the mount point that
// holds it; none for a network favorite) and the directory.
struct FavoriteLocation {
    std::optional<std::string> drive;
    std::string directory;
};
FavoriteLocation favoriteLocation(const std::string& favorite,
                                  const std::vector<std::string>& drives);

// The message of a favorites menu item that could not be opened.
std::string favoriteMenuErrorText(const std::string& drive, const std::string& path,
                                  const std::exception& error);

} // namespace pv
