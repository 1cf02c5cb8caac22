#include "app/recentfiles.h"
#include "platform/textutil.h"

#include "settings/itemlist.h"

#include <algorithm>
#include <cctype>

namespace pv {

namespace {

const char* const kSection = "RECENTFILES";

std::string readEntry(const Settings& settings, int index) {
    return std::string(trimBlanks(settings.GetIniValueMin2(kSection, itemKey(index), ""), " \t"));
}

} // namespace

void AddRecent(std::string& path, const Settings& settings) {
    path = std::string(trimBlanks(path, " \t"));
    if (path.empty())
        return;
    int found = -1;
    for (int i = 0; i <= kRecentLastItem; ++i) {
        if (equalsNoCase(readEntry(settings, i), path))
            found = i;
    }
    // The shift reads each entry again just before it is moved, so the entries
    // move one place down from the bottom up without a copy in memory. An empty
    // entry is not moved: its successor keeps whatever it held.
    const int start = found >= 0 ? found - 1 : kRecentLastItem - 1;
    for (int i = start; i >= 0; --i) {
        std::string entry = readEntry(settings, i);
        if (!entry.empty())
            settings.write(kSection, itemKey(i + 1), entry);
    }
    settings.write(kSection, itemKey(0), path);
}

RecentLocation splitRecentPath(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {"", path};
    return {slash == 0 ? std::string("/") : path.substr(0, slash), path.substr(slash + 1)};
}

} // namespace pv
