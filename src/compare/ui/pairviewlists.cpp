// The compare window's list commands: favorites, the editors and favorites forms,
// the network-path boxes, and copying the selected file to the other pane.

#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "compare/filelisting.h"
#include "compare/panecopy.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/filelistbox.h"
#include "compare/ui/pairview.h"
#include "lists/favorites.h"
#include "lists/ui/listcommands.h"
#include "platform/drives.h"
#include "platform/prompter.h"

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>

namespace pv {

namespace {

DirectoryListState directoryState(const DirListBox& list) {
    DirectoryListState s;
    s.listIndex = list.listIndex();
    if (s.listIndex >= 0)
        s.highlighted = list.item(s.listIndex);
    s.path = list.path();
    return s;
}

CopyPane copyPane(const FileListBox& list) {
    CopyPane pane{list.path(), std::nullopt, list.names()};
    if (list.listIndex() >= 0 && list.listIndex() < list.listCount())
        pane.selected = list.item(list.listIndex());
    return pane;
}

} // namespace

void Pairview::connectListControls() {
    auto onClick = [this](const char* name, void (Pairview::*handler)()) {
        if (auto* b = findChild<QPushButton*>(name))
            connect(b, &QPushButton::clicked, this, [this, b, handler] {
                dispatchCommand(b->text().remove('&').toStdString(),
                                [this, handler] { (this->*handler)(); });
            });
    };
    onClick("AddFavorite", &Pairview::AddFavorite_Click);
    onClick("ShowEditors", &Pairview::ShowEditors_Click);
    onClick("ShowFavorites", &Pairview::ShowFavorites_Click);
    if (auto* b = findChild<QPushButton*>("CopySelected"))
        connect(b, &QPushButton::clicked, this, &Pairview::CopySelected_Click);
    if (auto* list = findChild<QListWidget*>("CopyList"))
        connect(list, &QListWidget::itemClicked, this, &Pairview::CopyList_Click);
}

void Pairview::AddFavorite_Click() {
    const ProgramGlobals& g = globals();
    const std::string candidate =
        favoriteCandidate(directoryState(*dir(Side::Left)), directoryState(*dir(Side::Right)),
                          g.clickedDir1 || g.clickedFileOne, g.clickedDir2 || g.clickedFileTwo);
    if (candidate.empty()) {
        prompter().message(kNoFavoriteCandidate);
        return;
    }
    const int duplicates = addFavorite(programSettings(), candidate);
    for (int i = 0; i < duplicates; ++i)
        prompter().message(kDuplicateFavorite);
    if (duplicates == 0)
        ShowFavorites_Click();
}

void Pairview::ShowEditors_Click() {
    openListForm(NamedList::Editors, ListOpener::CompareWindow);
}

void Pairview::ShowFavorites_Click() {
    openListForm(NamedList::Favorites, ListOpener::CompareWindow);
}

void Pairview::goToFavorite(Side side, const std::string& favorite) {
    const FavoriteLocation where = favoriteLocation(favorite, mountedDrives());
    // A directory that cannot be opened is refused before the drive moves, so the
    // pane stays where it was.
    listSubdirectories(normalizeDirectoryPath(where.directory));
    if (where.drive)
        drive(side)->setDrive(*where.drive);
    dir(side)->setPath(where.directory);
}

void Pairview::fillNetworkDrives(const std::vector<std::string>& paths) {
    for (Side side : {Side::Left, Side::Right}) {
        QComboBox* combo = networkDrive(side);
        combo->clear();
        for (const std::string& path : paths)
            combo->addItem(QString::fromStdString(path));
        // Filling the box chooses no path, so leaving it moves no pane.
        combo->setCurrentIndex(-1);
        combo->setEditText("UNC paths from INI");
    }
}

void Pairview::CopyList_Click() {
    auto* list = findChild<QListWidget*>("CopyList");
    list->setCurrentRow(normalizeCopyDirection(list->item(0)->isSelected()));
}

void Pairview::CopySelected_Click() {
    try {
        auto* list = findChild<QListWidget*>("CopyList");
        std::optional<int> direction;
        if (QListWidgetItem* chosen = list->currentItem(); chosen && chosen->isSelected())
            direction = list->row(chosen);
        direction =
            copySelected(copyPane(*files(Side::Left)), copyPane(*files(Side::Right)), direction);
        if (direction) {
            list->setCurrentRow(*direction);
            // The destination list shows what is on disk now, the copy included.
            files(*direction == kLeftToRight ? Side::Right : Side::Left)->refresh();
        }
    } catch (const std::exception& e) {
        prompter().message("Pairview::CopySelected_Click\r\n" + std::to_string(errorNumber(e)) +
                           "\r\n" + errorDescription(e));
    }
}

} // namespace pv
