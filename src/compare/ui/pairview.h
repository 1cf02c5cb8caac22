#pragma once
// The compare window: two panes side by side, each a drive list, a directory list
// and a file list, with one shared file pattern and editor choice. Every change of
// a pane is written to the window's own settings section ("LASTFILE" + tag) at once.

#include "app/ui/comparewindowcommands.h"

#include <QWidget>
#include <array>
#include <memory>
#include <string>
#include <vector>

class QComboBox;
class QLineEdit;
class QCheckBox;
class QRadioButton;
class QPushButton;
class QListWidget;
class QStatusBar;
class QLabel;

namespace pv {

struct SettingsLoad;

class MDIForm1;
class PairviewCompare;
class DriveListBox;
class DirListBox;
class FileListBox;

enum class Side { Left = 0, Right = 1 };

class Pairview : public QWidget, public CompareWindowCommands {
    Q_OBJECT
public:
    explicit Pairview(MDIForm1* frame, QWidget* parent = nullptr);
    ~Pairview() override;

    // The window tag ("" for the first compare window) and its settings section.
    QString tag() const;
    std::string section() const;

    void Form_Load();
    void Form_Activate();
    void LoadINISettings();

    // The panes, indexed by side.
    DriveListBox* drive(Side side) const { return m_panes[index(side)].drive; }
    DirListBox* dir(Side side) const { return m_panes[index(side)].dir; }
    FileListBox* files(Side side) const { return m_panes[index(side)].files; }
    QComboBox* networkDrive(Side side) const { return m_panes[index(side)].network; }
    QComboBox* filePatternCombo() const { return m_filePatternCombo; }
    QComboBox* editorList() const { return m_editorList; }

    // Pane events (the right pane's are the same with side Right).
    void Drive_Change(Side side);
    void Dir_Change(Side side);
    void Dir_Click(Side side);
    void Dir_KeyPress(Side side);
    void FileList_Click(Side side);
    void FileList_DblClick(Side side);
    void NetworkDrive_Change(Side side);
    void NetworkDrive_LostFocus(Side side);
    void FilePatternCombo_Change();
    void EditorList_Change();

    // The handlers by their control names.
    void Drive1_Change() { Drive_Change(Side::Left); }
    void Drive2_Change() { Drive_Change(Side::Right); }
    void Dir1_Change() { Dir_Change(Side::Left); }
    void Dir2_Change() { Dir_Change(Side::Right); }
    void FileOneList_DblClick() { FileList_DblClick(Side::Left); }
    void FileTwoList_DblClick() { FileList_DblClick(Side::Right); }

    // The status line: panels 1-4 the two files' attribute texts, 5 the side's
    // label, 6 the file name.
    void Set_StatusBar1(const std::string& text1, const std::string& text2,
                        const std::string& text3, const std::string& text4,
                        const std::string& label, const std::string& fileName);
    QString statusPanel(int panel) const;

    // The compare (pairviewcompare.cpp): the Compare button in both modes, the
    // single-file compare, the fc switch boxes, file attributes, the status panels'
    // click.
    void Compare_Button_Click();
    void CompareDirectories();
    std::string GetFileAttributes(const std::string& path) const;
    void compare_singles(const std::string& fileName1, const std::string& dirPath1,
                         const std::string& fileName2, const std::string& dirPath2);
    void CompareSingle_Click();
    void fc_lb_Change();
    void fc_nnnn_Change();
    void StatusBar1_PanelClick(int panel);
    // True while a compare of this window runs (a second Compare is then ignored).
    bool compareRunning() const;

    // The attribute texts of the files last shown, shared with the compare.
    std::string attrOne;
    std::string attrTwo;
    // The task number of the last program this window started.
    long lastTask = 0;

    // The list commands (pairviewlists.cpp): favorites, the list forms, copying a
    // file between the panes.
    void AddFavorite_Click() override;
    void ShowEditors_Click();
    void ShowFavorites_Click();
    void CopyList_Click();
    void CopySelected_Click();
    // Moves a pane to a favorite directory (its drive first, unless it is a network
    // path). Throws RuntimeError, leaving the pane as it was, when the directory
    // cannot be opened.
    void goToFavorite(Side side, const std::string& favorite);
    // Both network-path boxes hold exactly `paths`.
    void fillNetworkDrives(const std::vector<std::string>& paths);
    // The search and script commands (pairviewscripts.cpp); the main window's menu
    // items reach them through CompareWindowCommands.
    void FindFile_Click() override;
    void FindTheText() override;
    void FindText_Click();
    void CreateXcopy_Click() override;
    void RunShell_Click() override;

    // Ticks StopProcessing, so a running walk stops at its next level.
    void requestStop();
    // While a compare runs, the windows it writes to refuse to close: this asks
    // every compare window to stop and returns true; false when none runs.
    static bool stopInsteadOfClosing();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // The settings load, step by step (pairviewsettings.cpp).
    struct StoredLocations {
        std::string drives[2], dirs[2], pattern, patternList;
    };
    struct EditorChoice {
        std::string editor;
        bool internalListed = false;
    };
    StoredLocations readStoredLocations(const SettingsLoad& load);
    void restoreDrives(const SettingsLoad& load, StoredLocations& stored);
    void restoreDirectories(const StoredLocations& stored);
    void loadPatterns(const StoredLocations& stored);
    void loadAssociation(const SettingsLoad& load);
    EditorChoice loadEditors(const SettingsLoad& load);
    void loadCaptureSelection();
    void offerInternalEditor(const EditorChoice& choice);
    void loadRecentFiles(const SettingsLoad& load);
    void loadFavorites(const SettingsLoad& load);
    void loadNetworkPaths(const SettingsLoad& load);
    void loadSwitches(const SettingsLoad& load);
    void loadQueryConnections(const SettingsLoad& load);

    struct Pane {
        DriveListBox* drive = nullptr;
        DirListBox* dir = nullptr;
        FileListBox* files = nullptr;
        QComboBox* network = nullptr;
    };
    static int index(Side side) { return side == Side::Left ? 0 : 1; }

    void connectCompareControls();
    void connectListControls();
    void connectScriptControls();
    void createControls();
    void createPane(Side side);
    QWidget* createCommandArea();
    void connectPane(Side side);
    void writeSetting(const char* key, const std::string& value) const;
    void fillMenusFromSettings();

    MDIForm1* m_frame;
    std::array<Pane, 2> m_panes;
    QComboBox* m_filePatternCombo = nullptr;
    QComboBox* m_editorList = nullptr;
    QStatusBar* m_statusBar = nullptr;
    std::array<QLabel*, 6> m_statusPanels{};
    std::unique_ptr<PairviewCompare> m_compare;
    // Per side, the network path that last failed to open ("" after a success).
    std::array<std::string, 2> m_networkFailed;
};

} // namespace pv
