#include "lists/ui/isqlconnectionparms.h"

#include "lists/ui/listcommands.h"
#include "platform/prompter.h"

#include <QCloseEvent>
#include <QListWidget>

namespace pv {

isqlConnectionParms::isqlConnectionParms(QWidget* parent)
    : ListForm(NamedList::Connections, parent) {
    addButton("AddItem", "Add a connection", [this] { AddItem_Click(); });
    addButton("DeleteSelected", "Delete Selected", [this] { DeleteSelected_Click(); });
    connect(list(), &QListWidget::itemClicked, this, [this] { List1_Click(); });
}

void isqlConnectionParms::saveConnections() {
    pv::saveConnections(listSettings(), entries(), list()->currentRow());
}

void isqlConnectionParms::AddItem_Click() {
    try {
        const std::string proposal = listSettings().GetIniValue(m_section, "TEMPLATE", "");
        const auto answer = prompter().input(kConnectionPrompt, kConnectionTitle, proposal);
        if (!answer || answer->empty())
            return;
        list()->addItem(QString::fromStdString(*answer));
        saveConnections();
        refreshConnectionMenu();
    } catch (const std::exception&) {
        prompter().message(kOperationCanceled, kAddItemErrorTitle, MessageIcon::Critical);
    }
}

void isqlConnectionParms::DeleteSelected_Click() {
    const int row = oneSelectedEntry();
    if (row < 0)
        return;
    deleteEntry(row);
    saveConnections();
    if (list()->count() < storedSelectedItem(listSettings(), m_section) && list()->count() > 1) {
        list()->setCurrentRow(1);
        List1_Click();
    }
    refreshConnectionMenu();
}

void isqlConnectionParms::List1_Click() {
    QListWidgetItem* clicked = list()->currentItem();
    if (clicked && !clicked->text().isEmpty())
        refreshConnectionMenu();
}

void isqlConnectionParms::closeEvent(QCloseEvent* event) {
    if (list()->count() > 0) {
        saveConnections();
        refreshConnectionMenu();
    }
    ListForm::closeEvent(event);
}

} // namespace pv
