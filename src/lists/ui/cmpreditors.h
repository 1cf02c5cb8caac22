#pragma once
// The editors list ("EDITORS"): add a program with a file dialog, delete one,
// select the editor that opens files; Close writes the list back and rebuilds the
// OpenWith submenu.

#include "lists/ui/listform.h"

namespace pv {

class cmprEditors : public ListForm {
    Q_OBJECT
  public:
    explicit cmprEditors(QWidget* parent = nullptr);

    void AddEditor_Click();
    void DeleteSelected_Click();
    void Select_Click();
    void Close_Click();
};

} // namespace pv
