#pragma once
// ITEM lists: a section's entries under "ITEM0", "ITEM1", ...; a list ends at the
// first value that reads as missing and is shortened by writing an empty value,
// never by deleting keys.

#include "settings/settings.h"

#include <optional>
#include <string>
#include <vector>

namespace pv {

// Which reader decides that a value is missing.
enum class ItemReader {
    Plain, // GetIniValue: an empty trimmed value is missing
    Min2   // GetIniValueMin2: a value shorter than two characters is missing
};

std::string itemKey(int index);

// The entries from ITEM0 up to the first missing one.
std::vector<std::string> readItemList(const Settings& settings, std::string_view section,
                                      ItemReader reader = ItemReader::Plain);

// Every index of first..last, present or not; a gap does not end the scan.
std::vector<std::optional<std::string>> scanItems(const Settings& settings,
                                                  std::string_view section, int first,
                                                  int last,
                                                  ItemReader reader = ItemReader::Plain);

// The first index whose value reads as missing.
int firstFreeItem(const Settings& settings, std::string_view section,
                  ItemReader reader = ItemReader::Plain);

// Removes entry `index` of `entries` (the list as read) by renumbering the entries
// behind it down and writing an empty value at the old last index.
void deleteItem(const Settings& settings, std::string_view section,
                const std::vector<std::string>& entries, int index);

} // namespace pv
