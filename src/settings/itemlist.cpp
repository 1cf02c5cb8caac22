#include "settings/itemlist.h"

namespace pv {

namespace {

std::string readItem(const Settings& settings, std::string_view section, int index,
                     ItemReader reader) {
    return reader == ItemReader::Plain ? settings.GetIniValue(section, itemKey(index), "")
                                       : settings.GetIniValueMin2(section, itemKey(index), "");
}

} // namespace

std::string itemKey(int index) { return "ITEM" + std::to_string(index); }

std::vector<std::string> readItemList(const Settings& settings, std::string_view section,
                                      ItemReader reader) {
    std::vector<std::string> entries;
    for (int i = 0;; ++i) {
        std::string value = readItem(settings, section, i, reader);
        if (value.empty())
            return entries;
        entries.push_back(std::move(value));
    }
}

std::vector<std::optional<std::string>> scanItems(const Settings& settings,
                                                  std::string_view section, int first,
                                                  int last, ItemReader reader) {
    std::vector<std::optional<std::string>> items;
    for (int i = first; i <= last; ++i) {
        std::string value = readItem(settings, section, i, reader);
        items.push_back(value.empty() ? std::nullopt : std::optional<std::string>(value));
    }
    return items;
}

int firstFreeItem(const Settings& settings, std::string_view section, ItemReader reader) {
    int i = 0;
    while (!readItem(settings, section, i, reader).empty())
        ++i;
    return i;
}

void deleteItem(const Settings& settings, std::string_view section,
                const std::vector<std::string>& entries, int index) {
    int j = 0;
    const int n = static_cast<int>(entries.size());
    for (int i = 0; i <= n; ++i) {
        if (i == index)
            continue;
        settings.write(section, itemKey(j), i < n ? entries[static_cast<size_t>(i)] : "");
        ++j;
    }
}

} // namespace pv
