#pragma once
// The directory list of a pane: the open directory's ancestors from the root down,
// the open directory itself, then its sub-directories. List indexes follow the
// classic list-box rule: 0..listCount()-1 are the sub-directories, -1 is the open
// directory, -2 its parent, and so on up to the root.

#include "compare/ui/panelistbox.h"

#include <QIcon>

#include <string>
#include <vector>

namespace pv {

class DirListBox : public PaneListBox {
    Q_OBJECT
  public:
    explicit DirListBox(QWidget* parent = nullptr);

    const std::string& path() const { return m_path; }
    // Opens a directory; emits changed() only when the path really changes.
    // Throws RuntimeError when it is not a directory that can be listed.
    void setPath(const std::string& path);
    // The ordinary files (hidden ones left out, in list order) that the read which
    // listed the sub-directories found: a file list can show them without reading
    // the directory again.
    const std::vector<std::string>& files() const { return m_files; }
    // Re-reads the sub-directories of the open directory.
    void refresh();

    int listIndex() const;
    void setListIndex(int index);
    int listCount() const { return static_cast<int>(m_subdirs.size()); }
    // The full path of the entry at a list index (negative for ancestors).
    std::string item(int index) const;

  signals:
    void changed();
    // A double-clicked directory could not be opened (removed, not readable).
    void openFailed(const QString& description);

  private:
    void fill();
    std::string m_path;
    std::vector<std::string> m_ancestors; // root first, the open directory last
    std::vector<std::string> m_subdirs;
    std::vector<std::string> m_files;
    QIcon m_openIcon, m_closedIcon; // loaded at the first fill
};

} // namespace pv
