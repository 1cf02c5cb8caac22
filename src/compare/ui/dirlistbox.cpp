#include "compare/ui/dirlistbox.h"

#include "compare/filelisting.h"
#include "platform/runtimeerror.h"

#include <QStyle>
#include <cerrno>
#include <sys/stat.h>

namespace pv {

DirListBox::DirListBox(QWidget* parent) : PaneListBox(parent) {
    connect(this, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* it) {
        try {
            setPath(item(row(it) - static_cast<int>(m_ancestors.size())));
        } catch (const RuntimeError& e) {
            // The list keeps its directory; the pane says why the other one did not open.
            emit openFailed(QString::fromStdString(e.what()));
        }
    });
}

void DirListBox::setPath(const std::string& requested) {
    std::string path = normalizeDirectoryPath(requested);
    struct stat st;
    if (::stat(path.c_str(), &st) != 0)
        throw RuntimeError::fromErrno(errno, "Path not found: " + requested);
    if (!S_ISDIR(st.st_mode))
        throw RuntimeError(ENOTDIR, "Path not found: " + requested);
    DirectoryListing listing = readDirectory(path); // throws when unreadable
    bool changedPath = path != m_path;
    m_path = path;
    m_subdirs = std::move(listing.subdirectories);
    m_files = std::move(listing.files);
    m_ancestors.clear();
    for (std::string p = m_path;; p = parentPath(p)) {
        m_ancestors.insert(m_ancestors.begin(), p);
        if (p == "/")
            break;
    }
    fill();
    if (changedPath)
        emit changed();
}

void DirListBox::refresh() {
    if (m_path.empty())
        return;
    try {
        DirectoryListing listing = readDirectory(m_path);
        m_subdirs = std::move(listing.subdirectories);
        m_files = std::move(listing.files);
    } catch (const RuntimeError&) {
        m_subdirs.clear();
        m_files.clear();
    }
    int keep = listIndex();
    fill();
    setListIndex(keep);
}

void DirListBox::fill() {
    clear();
    if (m_openIcon.isNull()) {
        m_openIcon = style()->standardIcon(QStyle::SP_DirOpenIcon);
        m_closedIcon = style()->standardIcon(QStyle::SP_DirClosedIcon);
    }
    const QIcon& openIcon = m_openIcon;
    const QIcon& closedIcon = m_closedIcon;
    int depth = 0;
    for (const std::string& a : m_ancestors) {
        std::string name = a == "/" ? "/" : a.substr(a.rfind('/') + 1);
        auto* it =
            new QListWidgetItem(openIcon, QString(depth * 2, ' ') + QString::fromStdString(name));
        it->setToolTip(QString::fromStdString(a));
        addItem(it);
        ++depth;
    }
    for (const std::string& s : m_subdirs)
        addItem(
            new QListWidgetItem(closedIcon, QString(depth * 2, ' ') + QString::fromStdString(s)));
    setCurrentRow(static_cast<int>(m_ancestors.size()) - 1);
}

int DirListBox::listIndex() const {
    int r = currentRow();
    if (r < 0)
        return -1;
    return r - static_cast<int>(m_ancestors.size());
}

void DirListBox::setListIndex(int index) {
    int r = index + static_cast<int>(m_ancestors.size());
    if (r >= 0 && r < count())
        setCurrentRow(r);
}

std::string DirListBox::item(int index) const {
    if (index >= 0) {
        if (index >= listCount())
            return {};
        return joinPath(m_path, m_subdirs[static_cast<size_t>(index)]);
    }
    int a = static_cast<int>(m_ancestors.size()) + index;
    return a >= 0 ? m_ancestors[static_cast<size_t>(a)] : std::string();
}

} // namespace pv
