#include "lists/ui/unc.h"

#include "lists/ui/listcommands.h"
#include "platform/prompter.h"

#include <QListWidget>

namespace pv {

UNC::UNC(QWidget* parent) : ListForm(NamedList::NetworkPaths, parent) {
    addButton("AddItem", "Add Item", [this] { AddItem_Click(); });
    addButton("DeleteSelected", "Delete Selected", [this] { DeleteSelected_Click(); });
}

void UNC::AddItem_Click() {
    try {
        const Settings settings = listSettings();
        const std::string proposal = settings.GetIniValue(m_section, "TEMPLATE", "");
        const auto answer = prompter().input(kConnectionPrompt, kConnectionTitle, proposal);
        if (!answer || answer->empty())
            return;
        appendItem(settings, m_section, *answer, ItemReader::Plain);
        refreshNetworkPathBoxes();
        // The list shows the new path at once: a delete writes the list back as it
        // is shown, and would otherwise drop the path just added.
        list()->addItem(QString::fromStdString(*answer));
    } catch (const std::exception&) {
        prompter().message(kOperationCanceled, kAddEditorErrorTitle, MessageIcon::Critical);
    }
}

void UNC::DeleteSelected_Click() {
    if (!deleteSelectedEntry())
        return;
    if (list()->count() < storedSelectedItem(listSettings(), m_section) && list()->count() > 1)
        list()->setCurrentRow(1);
    refreshNetworkPathBoxes();
}

} // namespace pv
