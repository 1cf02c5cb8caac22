#pragma once
// The query-tool connections ("ISQL"): add one with an input box, delete one,
// choose one by clicking it. The list and the chosen index are saved on every
// change and when the form closes, and the ISQL submenu follows.

#include "lists/ui/listform.h"

namespace pv {

class isqlConnectionParms : public ListForm {
    Q_OBJECT
  public:
    explicit isqlConnectionParms(QWidget* parent = nullptr);

    void AddItem_Click();
    void DeleteSelected_Click();
    void List1_Click();
    // Saves the connections: "SelectedItem" and the list.
    void saveConnections();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    std::string m_section = "ISQL";
};

} // namespace pv
