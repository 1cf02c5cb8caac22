#pragma once
// The network paths ("NETWORKDRIVES") that fill both network-path boxes of every
// compare window. Adding and deleting write the file at once.

#include "lists/ui/listform.h"

namespace pv {

class UNC : public ListForm {
    Q_OBJECT
  public:
    explicit UNC(QWidget* parent = nullptr);

    void AddItem_Click();
    void DeleteSelected_Click();

  private:
    std::string m_section = "NETWORKDRIVES";
};

} // namespace pv
