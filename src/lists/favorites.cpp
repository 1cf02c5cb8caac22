#include "lists/favorites.h"

#include "app/errorpolicy.h"
#include "platform/drives.h"
#include "platform/textutil.h"
#include "settings/itemlist.h"

namespace pv {

const char* const kNoFavoriteCandidate =
    "Select an item from either the left or right directory list that is NOT open. ";
const char* const kDuplicateFavorite = "duplicate favorite detected and rejected";

namespace {

std::string candidateOf(const DirectoryListState& pane) {
    return pane.listIndex >= 0 ? pane.highlighted : pane.path;
}

} // namespace

std::string favoriteCandidate(const DirectoryListState& left, const DirectoryListState& right,
                              bool leftClicked, bool rightClicked) {
    std::string candidate;
    if (leftClicked)
        candidate = candidateOf(left);
    if (rightClicked)
        candidate = candidateOf(right);
    return candidate;
}

int addFavorite(const Settings& settings, const std::string& candidate) {
    const int n = firstFreeItem(settings, "FAVORITES");
    int duplicates = 0;
    const std::string wanted = toUpper(candidate);
    for (const std::string& entry : readItemList(settings, "FAVORITES"))
        if (toUpper(entry) == wanted)
            ++duplicates;
    if (duplicates == 0)
        settings.write("FAVORITES", itemKey(n), candidate);
    return duplicates;
}

bool isNetworkFavorite(const std::string& favorite) {
    return favorite.starts_with("//");
}

FavoriteLocation favoriteLocation(const std::string& favorite,
                                  const std::vector<std::string>& drives) {
    FavoriteLocation where;
    where.directory = favorite;
    if (!isNetworkFavorite(favorite))
        where.drive = driveOfPath(favorite, drives);
    return where;
}

std::string favoriteMenuErrorText(const std::string& drive, const std::string& path,
                                  const std::exception& error) {
    return "Menu:FavoritesClic::Error: \r\ntheDrive:" + drive + "\r\nthePath:" + path + "\r\n" +
           errorDescription(error) + "\r\nErr.LastDllError" + std::to_string(errorNumber(error)) +
           "\r\n Err.source: Pairview";
}

} // namespace pv
