#pragma once
// The drive list of a pane: the mounted file systems, the drive text being the
// mount point. Setting a drive that is not (or no longer) mounted fails.

#include <QComboBox>
#include <functional>
#include <string>
#include <vector>

namespace pv {

class DriveListBox : public QComboBox {
    Q_OBJECT
public:
    explicit DriveListBox(QWidget* parent = nullptr);

    std::string drive() const;
    // Selects a drive by its text; emits changed() when it differs from the current
    // one. Throws RuntimeError when the drive is not mounted or not reachable.
    void setDrive(const std::string& drive);
    // Re-reads the mounted file systems, keeping the current drive (listed even
    // when it is no longer mounted). Done each time the list drops down, so a
    // drive mounted while the program runs can be chosen.
    void refreshDrives();
    void showPopup() override;

    // Where every drive list reads its drives (the mounted file systems unless
    // replaced); returns the previous source.
    using DriveSource = std::function<std::vector<std::string>()>;
    static DriveSource setDriveSource(DriveSource source);

signals:
    void changed();

private:
    void onActivated(int index);
    std::string m_drive{"/"};
};

} // namespace pv
