#include "app/recentfiles.h"

#include "settings/itemlist.h"

#include <algorithm>
#include <cctype>

namespace pv {

namespace {

const char* const kSection = "RECENTFILES";

std::string trimmed(const std::string& text) {
    const auto blank = [](unsigned char c) { return c == ' ' || c == '\t'; };
    auto first = std::find_if_not(text.begin(), text.end(), blank);
    auto last = std::find_if_not(text.rbegin(), text.rend(), blank).base();
    return first < last ? std::string(first, last) : std::string();
}

bool equalNoCase(const std::string& a, const std::string& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::toupper(static_cast<unsigned char>(x)) ==
                      std::toupper(static_cast<unsigned char>(y));
           });
}

std::string readEntry(const Settings& settings, int index) {
    return trimmed(settings.GetIniValueMin2(kSection, itemKey(index), ""));
}

} // namespace

void AddRecent(std::string& path, const Settings& settings) {
    path = trimmed(path);
    if (path.empty())
        return;
    int found = -1;
    for (int i = 0; i <= kRecentLastItem; ++i) {
        if (equalNoCase(readEntry(settings, i), path))
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
