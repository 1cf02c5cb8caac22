#pragma once
// The file list of a pane: the files of one directory that match the pattern list,
// hidden files left out, in list order. Setting the path always re-reads it.

#include "compare/ui/panelistbox.h"

#include <string>
#include <vector>

namespace pv {

class FileListBox : public PaneListBox {
    Q_OBJECT
  public:
    explicit FileListBox(QWidget* parent = nullptr);

    const std::string& path() const { return m_path; }
    // Lists a directory. Throws RuntimeError when it cannot be read; the list then
    // keeps its previous path and entries.
    void setPath(const std::string& path);
    // Shows the matching ones of a directory's files already read (all of its
    // visible files, in list order), as setPath would after reading them.
    void setListing(const std::string& path, const std::vector<std::string>& files);
    const std::string& pattern() const { return m_pattern; }
    void setPattern(const std::string& pattern) { m_pattern = pattern; }
    void refresh();

    int listCount() const { return static_cast<int>(m_names.size()); }
    const std::vector<std::string>& names() const { return m_names; }
    std::string item(int index) const;
    int listIndex() const { return currentRow(); }
    void setListIndex(int index);
    // The selected name, or "" when nothing is selected.
    std::string selectedName() const { return item(listIndex()); }
    bool hasSelection() const { return listIndex() >= 0 && listIndex() < listCount(); }

  signals:
    void doubleClicked();

  private:
    void showNames(std::string dir, std::vector<std::string> names);

    std::string m_path;
    std::string m_pattern = "*.*";
    std::vector<std::string> m_names;
};

} // namespace pv
