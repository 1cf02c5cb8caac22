#include "lists/ui/cmpreditors.h"

#include "app/programpaths.h"
#include "app/ui/formregistry.h"
#include "lists/ui/listcommands.h"
#include "platform/prompter.h"

#include <QListWidget>

namespace pv {

cmprEditors::cmprEditors(QWidget* parent) : ListForm(NamedList::Editors, parent) {
    addButton("AddEditor", "Add an editor", [this] { AddEditor_Click(); });
    addButton("DeleteSelected", "Delete Selected", [this] { DeleteSelected_Click(); });
    addButton("Select", "Select", [this] { Select_Click(); });
    addButton("Close", "Close", [this] { Close_Click(); });
    connect(list(), &QListWidget::itemDoubleClicked, this, [this] {
        Select_Click();
        Close_Click();
    });
}

void cmprEditors::AddEditor_Click() {
    try {
        // Programs on this system have no ".exe": every file may be chosen.
        const auto path = prompter().openFileName("Add an editor", "", "Programs (*)");
        if (!path || path->empty())
            return;
        const Settings settings = listSettings();
        appendItem(settings, form().section, *path, ItemReader::Min2);
        list()->clear();
        const std::vector<std::string> read = appendFromSettings(ItemReader::Min2);
        // The internal editor is always offered; it reaches the file on Close.
        if (!listsInternalEditor(read))
            list()->addItem(kInternalEditor);
    } catch (const std::exception&) {
        prompter().message(kOperationCanceled, kAddEditorErrorTitle, MessageIcon::Critical);
    }
}

void cmprEditors::DeleteSelected_Click() {
    deleteSelectedEntry();
}

void cmprEditors::Select_Click() {
    QListWidgetItem* chosen = list()->currentItem();
    if (chosen && !chosen->text().isEmpty())
        listSettings().write("APPLICATION", "EDITOR", chosen->text().toStdString());
}

void cmprEditors::Close_Click() {
    const std::vector<std::string> listed = entries();
    writeItemList(listSettings(), form().section, listed);
    if (listed.empty()) {
        // Only item 0 is touched: an empty list leaves the editors as they were.
        applyMenuItems("mnuEditor", editorMenuItems({}, 0), false);
    } else {
        applyMenuItems("mnuEditor", editorMenuItems(listed, 20), false);
    }
    FormRegistry::unload(this);
}

} // namespace pv
