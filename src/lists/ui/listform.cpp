#include "lists/ui/listform.h"

#include "app/errorpolicy.h"
#include "platform/prompter.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace pv {

ListForm::ListForm(NamedList kind, QWidget* parent) : QWidget(parent), m_kind(kind) {
    setObjectName(form().formName);
    setProperty("tag", QString());
    setWindowTitle(QString::fromUtf8(form().caption));
    auto* layout = new QVBoxLayout(this);
    m_list = new QListWidget(this);
    m_list->setObjectName("List1");
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    layout->addWidget(m_list, 1);
    m_buttons = new QHBoxLayout;
    layout->addLayout(m_buttons);
    m_text = new QLineEdit(this);
    m_text->setObjectName("Text1");
    m_text->setReadOnly(true);
    m_text->setToolTip("The settings file this list is kept in");
    layout->addWidget(m_text);
    resize(460, 320);
}

Settings ListForm::listSettings() const {
    return Settings(m_text->text().toStdString());
}

std::vector<std::string> ListForm::appendFromSettings(ItemReader reader) {
    std::vector<std::string> read = readItemList(listSettings(), form().section, reader);
    for (const std::string& entry : read)
        m_list->addItem(QString::fromStdString(entry));
    return read;
}

std::vector<std::string> ListForm::entries() const {
    std::vector<std::string> out;
    for (int i = 0; i < m_list->count(); ++i)
        out.push_back(m_list->item(i)->text().toStdString());
    return out;
}

int ListForm::selectedCount() const {
    return static_cast<int>(m_list->selectedItems().size());
}

int ListForm::oneSelectedEntry() const {
    const SelectionState state = selectionState(m_list->count(), selectedCount());
    if (state != SelectionState::One) {
        prompter().message(selectionMessage(state, form()));
        return -1;
    }
    return m_list->row(m_list->selectedItems().front());
}

void ListForm::deleteEntry(int row) {
    delete m_list->takeItem(row);
    m_list->update();
}

bool ListForm::deleteSelectedEntry() {
    const int row = oneSelectedEntry();
    if (row < 0)
        return false;
    deleteItem(listSettings(), form().section, entries(), row);
    deleteEntry(row);
    return true;
}

QPushButton* ListForm::addButton(const char* name, const char* caption,
                                 const std::function<void()>& command) {
    auto* b = new QPushButton(QString::fromUtf8(caption), this);
    b->setObjectName(name);
    m_buttons->addWidget(b);
    const std::string title = QString::fromUtf8(caption).remove('&').toStdString();
    connect(b, &QPushButton::clicked, this, [title, command] { dispatchCommand(title, command); });
    return b;
}

} // namespace pv
