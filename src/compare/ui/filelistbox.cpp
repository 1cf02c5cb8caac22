#include "compare/ui/filelistbox.h"

#include "compare/filelisting.h"
#include "compare/ui/dirlistbox.h"

#include <QStringList>

#include <algorithm>

namespace pv {

FileListBox::FileListBox(QWidget* parent) : PaneListBox(parent) {
    setUniformItemSizes(true); // keeps very long lists fast
    connect(this, &QListWidget::itemDoubleClicked, this, [this] { emit doubleClicked(); });
}

void FileListBox::setPath(const std::string& path) {
    std::string dir = normalizeDirectoryPath(path);
    std::vector<std::string> names = listFiles(dir, m_pattern); // throws when unreadable
    showNames(std::move(dir), std::move(names));
}

void FileListBox::setListing(const std::string& path, const std::vector<std::string>& files) {
    showNames(normalizeDirectoryPath(path), matchingNames(files, m_pattern));
}

void FileListBox::showNames(std::string dir, std::vector<std::string> names) {
    m_path = std::move(dir);
    m_names = std::move(names);
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(m_names.size()));
    for (const std::string& n : m_names)
        texts << QString::fromStdString(n);
    clear();
    addItems(texts);
}

void FileListBox::refresh() {
    if (m_path.empty())
        return;
    const std::string keep = selectedName();
    try {
        setPath(m_path);
    } catch (const std::exception&) {
        m_names.clear();
        clear();
    }
    // The selection follows its name: a file added before it moves it down.
    auto kept = std::find(m_names.begin(), m_names.end(), keep);
    setListIndex(keep.empty() || kept == m_names.end() ? -1
                                                       : static_cast<int>(kept - m_names.begin()));
}

std::string FileListBox::item(int index) const {
    if (index < 0 || index >= listCount())
        return {};
    return m_names[static_cast<size_t>(index)];
}

void FileListBox::setListIndex(int index) {
    if (index >= 0 && index < count())
        setCurrentRow(index);
    else
        setCurrentRow(-1);
}

} // namespace pv
