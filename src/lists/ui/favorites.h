#pragma once
// The favorite directories ("FAVORITES"): delete one, move the left or right pane
// of the active compare window to one; Close writes the list back and rebuilds
// the Favorites submenu.

#include "lists/ui/listform.h"

namespace pv {

class Favorites : public ListForm {
    Q_OBJECT
  public:
    explicit Favorites(QWidget* parent = nullptr);

    void DeleteSelected_Click();
    void SetLeftSide_Click();
    void SetRightSide_Click();
    void Close_Click();

  private:
    void setSide(bool right);
};

} // namespace pv
