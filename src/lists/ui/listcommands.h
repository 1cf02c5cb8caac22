#pragma once
// The commands around the list forms: the six openers, the favorites and
// query-connection submenus of the main window, and the refresh of everything that
// mirrors a list (menus and the compare windows' network-path boxes).

#include "lists/namedlists.h"

#include <vector>

namespace pv {

class ListForm;
class MDIForm1;

// How a list form is opened. The main window's openers close an open instance
// first and read with GetIniValueMin2; the compare window's show the open
// instance, append the section again and read with GetIniValue.
enum class ListOpener { MainWindow, CompareWindow };

ListForm* openListForm(NamedList list, ListOpener opener);

// Sets the items of a menu control array of the main window, from index 0 on.
void applyMenuItems(const char* arrayName, const std::vector<MenuItemState>& items,
                    bool withCheckMarks);

// The query-connection submenu from the settings file.
void refreshConnectionMenu();
// Both network-path boxes of every open compare window, from "NETWORKDRIVES".
void refreshNetworkPathBoxes();

// A favorites item (menu or the directory lists' pop-up) moves the pane clicked
// last there.
void mnuFavorites_Click(int index);
// A query-connection item becomes the chosen connection.
void mnu_isql_Click(int index);

// Binds the main window's list commands.
void connectListCommands(MDIForm1& frame);

} // namespace pv
