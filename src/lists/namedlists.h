#pragma once
// The named lists of the settings file as the list forms keep them: the editors,
// the favorite directories, the network paths and the query connections. Each form
// shows one section's ITEM list; these are the rules for adding, deleting, writing
// the list back and rebuilding the menus that mirror it.

#include "settings/itemlist.h"
#include "settings/settings.h"

#include <string>
#include <vector>

namespace pv {

enum class NamedList { Editors, Favorites, NetworkPaths, Connections };

struct NamedListForm {
    const char* formName;  // the form's name ("cmprEditors", ...)
    const char* caption;   // its window caption
    const char* section;   // the settings section of its list
    const char* emptyText; // the message when its list is empty
};

const NamedListForm& namedListForm(NamedList list);

// The texts the list commands show.
extern const char* const kSelectAnItem;        // "Please select an item"
extern const char* const kSelectOnlyOneItem;   // "Please select ONLY ONE item"
extern const char* const kOperationCanceled;   // "Operation canceled"
extern const char* const kAddEditorErrorTitle; // "Add editor error"
extern const char* const kAddItemErrorTitle;   // "Add item error"
extern const char* const kConnectionPrompt;    // "Enter your connectionString"
extern const char* const kConnectionTitle;     // "ISQL"
extern const char* const kInternalEditor;      // "INTERNAL"
extern const char* const kOpenByAssociation;   // "Open by association"

// What a delete or a "set side" command may go on with, given the list's entry
// count and how many entries are selected.
enum class SelectionState { One, EmptyList, NoneSelected, SeveralSelected };
SelectionState selectionState(int count, int selectedCount);
// The message for a state that stops the command ("" for One); the empty-list
// text is the form's own.
std::string selectionMessage(SelectionState state, const NamedListForm& form);

// Appends a value at the first index that reads as missing; returns that index.
int appendItem(const Settings& settings, std::string_view section, const std::string& value,
               ItemReader reader);

// True when an entry, trimmed and upper-cased, is "INTERNAL".
bool listsInternalEditor(const std::vector<std::string>& entries);

// Writes a list back from ITEM0 on, with an empty value after the last entry so
// the list ends there. An empty list writes nothing.
void writeItemList(const Settings& settings, std::string_view section,
                   const std::vector<std::string>& entries);

// The state of one item of a menu control array.
struct MenuItemState {
    bool visible = false;
    std::string caption;
    bool checked = false;
};

// The OpenWith items 0..lastIndex after the editors form closes with `entries`:
// item 0 "Open by association", item k entry k-1 when it is not blank.
std::vector<MenuItemState> editorMenuItems(const std::vector<std::string>& entries, int lastIndex);
// The favorites items 0..lastIndex after the favorites form closes: item k entry k
// when it is not blank.
std::vector<MenuItemState> favoriteMenuItems(const std::vector<std::string>& entries,
                                             int lastIndex);
// The query-connection items 0..lastIndex from the settings file: item i shows
// "ISQL"/"ITEM"+i when present and is checked when i is the stored "SelectedItem".
std::vector<MenuItemState> connectionMenuItems(const Settings& settings, int lastIndex);

// A stored "SelectedItem" ("ISQL" or "NETWORKDRIVES", default "1") as a number.
// Throws RuntimeError when it is not a number.
int storedSelectedItem(const Settings& settings, std::string_view section);

// Saves the query connections: "SelectedItem" = the list index, stored as 1 when
// it is 0 or none; then the list itself, ending with an empty value.
void saveConnections(const Settings& settings, const std::vector<std::string>& entries,
                     int listIndex);

// Choosing connection `index` from the submenu: stores it as "SelectedItem".
void chooseConnection(const Settings& settings, int index);

} // namespace pv
