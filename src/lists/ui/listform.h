#pragma once
// What the four list forms share: the list box List1 (several entries may be
// selected), the text box Text1 that names the settings file the list is written
// to, and a row of command buttons.

#include "lists/namedlists.h"
#include "settings/itemlist.h"
#include "settings/settings.h"

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QHBoxLayout;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace pv {

class ListForm : public QWidget {
    Q_OBJECT
  public:
    NamedList kind() const { return m_kind; }
    const NamedListForm& form() const { return namedListForm(m_kind); }

    QListWidget* list() const { return m_list; }
    QLineEdit* pathBox() const { return m_text; }
    // The settings file named by Text1, where the list is written.
    Settings listSettings() const;

    // Appends the section's entries, read up to the first missing one.
    std::vector<std::string> appendFromSettings(ItemReader reader);
    std::vector<std::string> entries() const;
    int selectedCount() const;
    // Checks that exactly one entry is selected; otherwise says why not. Returns
    // its index, or -1.
    int oneSelectedEntry() const;
    // Removes entry `row` from the list box.
    void deleteEntry(int row);
    // The delete of the editors, favorites and network-path forms: with exactly one
    // entry selected, renumbers the file's list without it and removes it from the
    // list box. Returns false when the selection stopped it.
    bool deleteSelectedEntry();

  protected:
    ListForm(NamedList kind, QWidget* parent);
    // A command button; its click runs `command` under the dispatcher, which
    // reports a failure with the button's caption.
    QPushButton* addButton(const char* name, const char* caption,
                           const std::function<void()>& command);

  private:
    NamedList m_kind;
    QListWidget* m_list = nullptr;
    QLineEdit* m_text = nullptr;
    QHBoxLayout* m_buttons = nullptr;
};

} // namespace pv
