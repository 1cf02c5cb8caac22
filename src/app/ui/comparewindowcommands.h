#pragma once
// The commands the main window's menus pass on to a compare window. The frame
// calls them through this interface, so a renamed or missing command is a compile
// error rather than a menu item that silently does nothing.

namespace pv {

class CompareWindowCommands {
  public:
    virtual void FindFile_Click() = 0;
    virtual void FindTheText() = 0;
    virtual void CreateXcopy_Click() = 0;
    virtual void RunShell_Click() = 0;
    virtual void AddFavorite_Click() = 0;

  protected:
    ~CompareWindowCommands() = default;
};

} // namespace pv
