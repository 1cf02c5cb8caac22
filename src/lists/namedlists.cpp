#include "lists/namedlists.h"

#include "platform/runtimeerror.h"
#include "platform/textutil.h"

#include <cerrno>
#include <charconv>

namespace pv {

const char* const kSelectAnItem = "Please select an item";
const char* const kSelectOnlyOneItem = "Please select ONLY ONE item";
const char* const kOperationCanceled = "Operation canceled";
const char* const kAddEditorErrorTitle = "Add editor error";
const char* const kAddItemErrorTitle = "Add item error";
const char* const kConnectionPrompt = "Enter your connectionString";
const char* const kConnectionTitle = "ISQL";
const char* const kInternalEditor = "INTERNAL";
const char* const kOpenByAssociation = "Open by association";

const NamedListForm& namedListForm(NamedList list) {
    static const NamedListForm forms[] = {
        {"cmprEditors", "Editors", "EDITORS", "No editors have been created"},
        {"Favorites", "Favorites", "FAVORITES", "No favorites have been created"},
        {"UNC", "UNC Connections", "NETWORKDRIVES", "No UNC connections have been created"},
        {"isqlConnectionParms", "isql connection parms", "ISQL",
         "No ISQL connections have been created"}};
    return forms[static_cast<int>(list)];
}

SelectionState selectionState(int count, int selectedCount) {
    if (count <= 0)
        return SelectionState::EmptyList;
    if (selectedCount <= 0)
        return SelectionState::NoneSelected;
    return selectedCount == 1 ? SelectionState::One : SelectionState::SeveralSelected;
}

std::string selectionMessage(SelectionState state, const NamedListForm& form) {
    switch (state) {
    case SelectionState::EmptyList:
        return form.emptyText;
    case SelectionState::NoneSelected:
        return kSelectAnItem;
    case SelectionState::SeveralSelected:
        return kSelectOnlyOneItem;
    case SelectionState::One:
        break;
    }
    return {};
}

int appendItem(const Settings& settings, std::string_view section, const std::string& value,
               ItemReader reader) {
    const int n = firstFreeItem(settings, section, reader);
    settings.write(section, itemKey(n), value);
    return n;
}

bool listsInternalEditor(const std::vector<std::string>& entries) {
    for (const std::string& e : entries)
        if (toUpper(trimBlanks(e)) == kInternalEditor)
            return true;
    return false;
}

namespace {

// ITEM0.. the entries, then an empty value that ends the list.
void writeEntries(const Settings& settings, std::string_view section,
                  const std::vector<std::string>& entries) {
    const std::size_t n = entries.size();
    for (std::size_t i = 0; i <= n; ++i)
        settings.write(section, itemKey(static_cast<int>(i)), i < n ? entries[i] : "");
}

// Item `k` shows entry `entry` when that exists and is not blank.
MenuItemState entryItem(const std::vector<std::string>& entries, int entry) {
    MenuItemState s;
    if (entry >= 0 && entry < static_cast<int>(entries.size()) &&
        !trimBlanks(entries[static_cast<std::size_t>(entry)]).empty()) {
        s.visible = true;
        s.caption = entries[static_cast<std::size_t>(entry)];
    }
    return s;
}

} // namespace

void writeItemList(const Settings& settings, std::string_view section,
                   const std::vector<std::string>& entries) {
    if (!entries.empty())
        writeEntries(settings, section, entries);
}

std::vector<MenuItemState> editorMenuItems(const std::vector<std::string>& entries, int lastIndex) {
    std::vector<MenuItemState> items;
    items.push_back({true, kOpenByAssociation, false});
    for (int k = 1; k <= lastIndex; ++k)
        items.push_back(entryItem(entries, k - 1));
    return items;
}

std::vector<MenuItemState> favoriteMenuItems(const std::vector<std::string>& entries,
                                             int lastIndex) {
    std::vector<MenuItemState> items;
    for (int k = 0; k <= lastIndex; ++k)
        items.push_back(entryItem(entries, k));
    return items;
}

std::vector<MenuItemState> connectionMenuItems(const Settings& settings, int lastIndex) {
    int selected = -1;
    try {
        selected = storedSelectedItem(settings, "ISQL");
    } catch (const RuntimeError&) {
        // A stored index that is no number checks no item.
    }
    std::vector<MenuItemState> items;
    for (int i = 0; i <= lastIndex; ++i) {
        MenuItemState s;
        s.caption = settings.GetIniValue("ISQL", itemKey(i), "");
        s.visible = !s.caption.empty();
        s.checked = s.visible && i == selected;
        items.push_back(s);
    }
    return items;
}

int storedSelectedItem(const Settings& settings, std::string_view section) {
    const std::string text = settings.GetIniValue(section, "SelectedItem", "1");
    int value = 0;
    const char* end = text.data() + text.size();
    auto [ptr, ec] = std::from_chars(text.data() + (text.starts_with('+') ? 1 : 0), end, value);
    if (ec != std::errc() || ptr != end)
        throw RuntimeError(EINVAL, "\"" + text + "\" is not a number");
    return value;
}

void saveConnections(const Settings& settings, const std::vector<std::string>& entries,
                     int listIndex) {
    settings.write("ISQL", "SelectedItem", std::to_string(listIndex > 0 ? listIndex : 1));
    writeEntries(settings, "ISQL", entries);
}

void chooseConnection(const Settings& settings, int index) {
    settings.write("ISQL", "SelectedItem", std::to_string(index));
}

} // namespace pv
