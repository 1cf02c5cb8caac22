#include "lists/ui/favorites.h"

#include "app/ui/formregistry.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/pairview.h"
#include "lists/ui/listcommands.h"

#include <QListWidget>

namespace pv {

Favorites::Favorites(QWidget* parent) : ListForm(NamedList::Favorites, parent) {
    addButton("DeleteSelected", "DeleteSelected", [this] { DeleteSelected_Click(); });
    addButton("SetLeftSide", "SetLeftSide", [this] { SetLeftSide_Click(); });
    addButton("SetRightSide", "SetRightSide", [this] { SetRightSide_Click(); });
    addButton("Close", "Close", [this] { Close_Click(); });
}

void Favorites::DeleteSelected_Click() {
    deleteSelectedEntry();
}

void Favorites::SetLeftSide_Click() {
    setSide(false);
}

void Favorites::SetRightSide_Click() {
    setSide(true);
}

void Favorites::setSide(bool right) {
    const int row = oneSelectedEntry();
    if (row < 0)
        return;
    const std::string favorite = list()->item(row)->text().toStdString();
    if (favorite.size() < 2)
        return;
    if (MDIForm1* frame = mainWindow())
        if (Pairview* window = frame->activeCompareWindow())
            window->goToFavorite(right ? Side::Right : Side::Left, favorite);
}

void Favorites::Close_Click() {
    const std::vector<std::string> listed = entries();
    if (!listed.empty()) {
        writeItemList(listSettings(), form().section, listed);
        applyMenuItems("mnuFavorites", favoriteMenuItems(listed, 50), false);
    }
    FormRegistry::unload(this);
}

} // namespace pv
