#include "compare/ui/drivelistbox.h"

#include "platform/drives.h"
#include "platform/runtimeerror.h"

#include <QSignalBlocker>
#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace pv {

namespace {
DriveListBox::DriveSource& driveSource() {
    static DriveListBox::DriveSource source = mountedDrives;
    return source;
}
} // namespace

DriveListBox::DriveSource DriveListBox::setDriveSource(DriveSource source) {
    DriveSource previous = driveSource();
    driveSource() = source ? std::move(source) : DriveSource(mountedDrives);
    return previous;
}

DriveListBox::DriveListBox(QWidget* parent) : QComboBox(parent) {
    refreshDrives();
    connect(this, &QComboBox::activated, this, &DriveListBox::onActivated);
}

std::string DriveListBox::drive() const { return m_drive; }

void DriveListBox::refreshDrives() {
    QSignalBlocker block(this);
    clear();
    for (const std::string& d : driveSource()())
        addItem(QString::fromStdString(d));
    int at = findText(QString::fromStdString(m_drive));
    if (at < 0 && !m_drive.empty()) {
        addItem(QString::fromStdString(m_drive));
        at = count() - 1;
    }
    setCurrentIndex(at >= 0 ? at : 0);
}

void DriveListBox::showPopup() {
    refreshDrives();
    QComboBox::showPopup();
}

void DriveListBox::setDrive(const std::string& text) {
    std::size_t last = text.find_last_not_of('/');
    std::string drive = last == std::string::npos ? std::string("/") : text.substr(0, last + 1);
    // The list may be older than the mounts (and keeps the current drive listed),
    // so the mounts are asked afresh.
    const std::vector<std::string> mounted = driveSource()();
    const bool isMounted = std::find(mounted.begin(), mounted.end(), drive) != mounted.end();
    struct stat st;
    if (!isMounted || ::stat(drive.c_str(), &st) != 0 || !S_ISDIR(st.st_mode))
        throw RuntimeError(ENODEV, std::string("Device unavailable: ").append(text));
    int at = findText(QString::fromStdString(drive));
    if (at < 0) {
        refreshDrives();
        at = findText(QString::fromStdString(drive));
    }
    {
        QSignalBlocker block(this);
        setCurrentIndex(at);
    }
    if (drive != m_drive) {
        m_drive = drive;
        emit changed();
    }
}

void DriveListBox::onActivated(int index) {
    std::string chosen = itemText(index).toStdString();
    if (chosen == m_drive)
        return;
    m_drive = chosen;
    emit changed();
}

} // namespace pv
