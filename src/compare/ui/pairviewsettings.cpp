// Loading the settings file into a compare window and into the main window's menus.

#include "app/errorpolicy.h"
#include "app/optionswitches.h"
#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/pairview.h"
#include "platform/prompter.h"
#include "platform/textutil.h"
#include "settings/itemlist.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <stdexcept>

namespace pv {

namespace {

// The order in which the switch keys are loaded; the fc boxes follow "FC_W".
const char* const kCompareKeys[] = {"LIST_DateTime", "LIST_Length", "LIST_Contents",
                                    "LIST_Time2s",   "LIST_HourShift", "CMPR_SUB_DIRECTORIES",
                                    "FC_A",          "FC_B",        "FC_C",
                                    "FC_L",          "FC_N",        "FC_T",
                                    "FC_U",          "FC_W"};
const char* const kFindKeys[] = {"B", "E", "L", "R", "S", "I",       "X",
                                 "V", "N", "M", "O", "P", "OFFLINE", "FILETYPEBREAKOUT"};

const SwitchItem* switchOf(std::string_view section, std::string_view key) {
    for (const SwitchItem& item : switchItems())
        if (section == item.section && key == item.key)
            return &item;
    return nullptr;
}

} // namespace

// What every load step needs: the settings file, the window's section, the frame's
// menus. Every statement runs under skip-on-error: one bad setting never stops the load.
struct SettingsLoad {
    Settings settings;
    std::string section;
    MDIForm1* frame;

    static void step(const std::function<void()>& f) { skipOnError(f); }
    QAction* menuItem(const char* name) const {
        QAction* a = frame ? frame->action(name) : nullptr;
        if (!a)
            throw std::runtime_error("no menu item");
        return a;
    }
    QAction* arrayItem(const char* name, int i) const {
        QAction* a = frame ? frame->arrayItem(name, i) : nullptr;
        if (!a)
            throw std::runtime_error("no menu item");
        return a;
    }
};

// The load runs its steps in a fixed order: panes, pattern, association, editors,
// capture file, recent files, favorites, network paths, switches, query connections.
void Pairview::LoadINISettings() {
    const SettingsLoad load{programSettings(), section(), m_frame};
    StoredLocations stored = readStoredLocations(load);
    restoreDrives(load, stored);
    restoreDirectories(stored);
    loadPatterns(stored);
    loadAssociation(load);
    const EditorChoice editors = loadEditors(load);
    loadCaptureSelection();
    offerInternalEditor(editors);
    loadRecentFiles(load);
    loadFavorites(load);
    loadNetworkPaths(load);
    loadSwitches(load);
    loadQueryConnections(load);
}

// The stored locations and patterns.
Pairview::StoredLocations Pairview::readStoredLocations(const SettingsLoad& load) {
    const Settings& settings = load.settings;
    const std::string& s = load.section;
    StoredLocations stored;
    auto step = SettingsLoad::step;
    step([&] { stored.drives[0] = settings.GetIniValue(s, "DRIVE1", ""); });
    step([&] { stored.drives[1] = settings.GetIniValue(s, "DRIVE2", ""); });
    step([&] { stored.dirs[0] = settings.GetIniValue(s, "DIRONE", ""); });
    step([&] { stored.dirs[1] = settings.GetIniValue(s, "DIRTWO", ""); });
    step([&] { stored.pattern = settings.GetIniValue(s, "FILEPATTERN", "*.*"); });
    step([&] {
        stored.patternList = settings.GetIniValue("APPLICATION", "FILEPATTERNLIST", "*.*");
    });
    return stored;
}

// Drives, falling back to the root when one is no longer there.
void Pairview::restoreDrives(const SettingsLoad&, StoredLocations& stored) {
    auto step = SettingsLoad::step;
    for (int i = 0; i < 2; ++i) {
        Side side = i == 0 ? Side::Left : Side::Right;
        if (stored.drives[i].empty())
            continue;
        try {
            drive(side)->setDrive(stored.drives[i]);
        } catch (const std::exception& e) {
            prompter().message(std::string("SetDrive:Error The Drive ") + (i == 0 ? "1" : "2") +
                                   " set was invalid. Setting to /\r\n" +
                                   "This is sometimes due to changing network configurations. " +
                                   errorDescription(e),
                               kProgramTitle);
            step([&] { drive(side)->setDrive("/"); });
            step([&] { Drive_Change(side); });
            stored.dirs[i] = "/";
        }
    }
}

// Directories, likewise.
void Pairview::restoreDirectories(const StoredLocations& stored) {
    auto step = SettingsLoad::step;
    for (int i = 0; i < 2; ++i) {
        Side side = i == 0 ? Side::Left : Side::Right;
        if (stored.dirs[i].empty())
            continue;
        try {
            dir(side)->setPath(stored.dirs[i]);
        } catch (const std::exception& e) {
            prompter().message(std::string("Directory:Error The Directory ") +
                                   (i == 0 ? "1" : "2") + " set was invalid. Setting to /\r\n" +
                                   "This is sometimes due to changing network configurations or "
                                   "moving a folder. " +
                                   errorDescription(e),
                               kProgramTitle);
            step([&] { dir(side)->setPath("/"); });
            step([&] { Dir_Change(side); });
        }
    }
}

// The pattern list and the stored pattern.
void Pairview::loadPatterns(const StoredLocations& stored) {
    auto step = SettingsLoad::step;
    step([&] {
        m_filePatternCombo->clear();
        std::size_t start = 0;
        while (start <= stored.patternList.size()) {
            std::size_t comma = stored.patternList.find(',', start);
            if (comma == std::string::npos)
                comma = stored.patternList.size();
            m_filePatternCombo->addItem(
                QString::fromStdString(stored.patternList.substr(start, comma - start)));
            start = comma + 1;
        }
        m_filePatternCombo->setCurrentIndex(-1);
        if (!stored.pattern.empty()) {
            QString wanted = QString::fromStdString(std::string(trimBlanks(stored.pattern)));
            bool listed = false;
            for (int i = 0; i < m_filePatternCombo->count(); ++i)
                if (m_filePatternCombo->itemText(i) == wanted) {
                    m_filePatternCombo->setCurrentIndex(i);
                    FilePatternCombo_Change();
                    listed = true;
                }
            // A pattern the user typed is stored but is no item of the list: the
            // box shows it and the lists are filtered by it, as before the restart.
            if (!listed) {
                m_filePatternCombo->setEditText(wanted);
                FilePatternCombo_Change();
            }
        }
    });
}

// The association switch.
void Pairview::loadAssociation(const SettingsLoad& load) {
    auto step = SettingsLoad::step;
    step([&] {
        std::string associated = load.settings.GetIniValue("APPLICATION", "ASSOCIATED", "NO");
        load.menuItem("UseAssociated")->setChecked(toUpper(associated) != "NO");
    });
}

// The editor (written back so that the key always exists after a start), the editor
// list and the OpenWith submenu.
Pairview::EditorChoice Pairview::loadEditors(const SettingsLoad& load) {
    auto step = SettingsLoad::step;
    // 8. The editor, written back so that the key always exists after a start.
    EditorChoice choice;
    step([&] {
        choice.editor = load.settings.GetIniValue("APPLICATION", "EDITOR", "Write.exe");
        load.settings.write("APPLICATION", "EDITOR", choice.editor);
    });

    // 9, 10. The editor list and the OpenWith submenu.
    step([&] { m_editorList->clear(); });
    step([&] { load.menuItem("mnuOptionsToolbar")->setVisible(false); });
    step([&] {
        for (int i = 0; i <= 20; ++i)
            load.arrayItem("mnuEditor", i)->setVisible(false);
        QAction* first = load.arrayItem("mnuEditor", 0);
        first->setText("Open by association");
        first->setVisible(true);
    });
    step([&] {
        std::vector<std::string> editors = readItemList(load.settings, "EDITORS");
        for (std::size_t n = 0; n < editors.size(); ++n) {
            m_editorList->addItem(QString::fromStdString(editors[n]));
            if (toUpper(trimBlanks(editors[n])) == "INTERNAL")
                choice.internalListed = true;
            skipOnError([&] {
                if (n + 1 <= 20) {
                    QAction* a = load.arrayItem("mnuEditor", static_cast<int>(n + 1));
                    a->setText(QString::fromStdString(std::string(trimBlanks(editors[n]))));
                    a->setVisible(true);
                }
            });
        }
    });

    return choice;
}

// The capture file and the capture selection.
void Pairview::loadCaptureSelection() {
    auto step = SettingsLoad::step;
    // 11. The capture file.
    step([&] {
        ProgramPaths& paths = globals().paths;
        paths.capturePath = ProgramPaths::inDirectory(paths.programDirectory).capturePath;
    });

    // 12. The capture selection.
    step([&] {
        auto* capture = findChild<QComboBox*>("CompareUtilityCommands");
        capture->clear();
        capture->addItems({" --- Please select ---", "1OnlyCapture", "1Procs different"});
        capture->setCurrentIndex(0);
    });
}

// The internal editor is always offered.
void Pairview::offerInternalEditor(const EditorChoice& choice) {
    auto step = SettingsLoad::step;
    step([&] {
        if (!choice.internalListed)
            m_editorList->addItem("INTERNAL");
        // Show the chosen editor without treating it as a new choice.
        int at = m_editorList->findText(QString::fromStdString(choice.editor));
        if (at >= 0)
            m_editorList->setCurrentIndex(at);
        else
            m_editorList->setEditText(QString::fromStdString(choice.editor));
    });
}

// Recent files, the newest last.
void Pairview::loadRecentFiles(const SettingsLoad& load) {
    auto step = SettingsLoad::step;
    step([&] {
        int j = 1;
        for (int n = 20; n >= 0; --n) {
            std::string value = load.settings.GetIniValue("RECENTFILES", itemKey(n), "");
            skipOnError([&] {
                if (!value.empty()) {
                    QAction* a = load.arrayItem("Recent", j);
                    j = j + 1;
                    a->setText(QString::fromStdString(value));
                    a->setVisible(true);
                } else {
                    load.arrayItem("Recent", j)->setVisible(false);
                }
            });
        }
    });
}

void Pairview::loadFavorites(const SettingsLoad& load) {
    auto step = SettingsLoad::step;
    step([&] {
        auto items = scanItems(load.settings, "FAVORITES", 0, 50);
        for (int n = 0; n <= 50; ++n)
            skipOnError([&] {
                QAction* a = load.arrayItem("mnuFavorites", n);
                const auto& v = items[static_cast<size_t>(n)];
                if (v)
                    a->setText(QString::fromStdString(*v));
                a->setVisible(v.has_value());
            });
    });
}

// Network paths, added to both panes without clearing them first.
void Pairview::loadNetworkPaths(const SettingsLoad& load) {
    auto step = SettingsLoad::step;
    step([&] {
        const std::vector<std::string> paths = readItemList(load.settings, "NETWORKDRIVES");
        for (Side side : {Side::Left, Side::Right}) {
            QComboBox* combo = networkDrive(side);
            // Adding items selects none of them: the box keeps its text ("UNC paths
            // from INI") until the user picks a path, so leaving it moves no pane.
            const int chosen = combo->currentIndex();
            const QString text = combo->currentText();
            for (const std::string& path : paths)
                combo->addItem(QString::fromStdString(path));
            if (chosen < 0) {
                combo->setCurrentIndex(-1);
                combo->setEditText(text);
            }
        }
    });
}

// Switches, with the fc boxes after "FC_W".
void Pairview::loadSwitches(const SettingsLoad& load) {
    auto step = SettingsLoad::step;
    auto loadSwitch = [&](const char* sectionName, const char* key) {
        step([&] {
            const SwitchItem* item = switchOf(sectionName, key);
            if (!item)
                throw std::runtime_error("unknown switch");
            load.menuItem(item->menuName)
                ->setChecked(IniBool(load.settings.GetIniValue(sectionName, key, "False")));
        });
    };
    for (const char* key : kCompareKeys)
        loadSwitch("COMPARECONTROL", key);
    step([&] {
        findChild<QLineEdit*>("fc_lb")->setText(
            QString::fromStdString(load.settings.GetIniValue("COMPARECONTROL", "FC_LB", "/lb100")));
    });
    step([&] {
        findChild<QLineEdit*>("fc_nnnn")->setText(
            QString::fromStdString(load.settings.GetIniValue("COMPARECONTROL", "FC_NNNN", "/2")));
    });
    for (const char* key : kFindKeys)
        loadSwitch("FINDCONTROL", key);
    for (const SwitchItem& item : switchItems())
        if (std::string_view(item.section) == "DIRCONTROL")
            loadSwitch("DIRCONTROL", item.key);
}

// Query connections.
void Pairview::loadQueryConnections(const SettingsLoad& load) {
    auto step = SettingsLoad::step;
    step([&] {
        int selected = 1;
        skipOnError(
            [&] { selected = std::stoi(load.settings.GetIniValue("ISQL", "SelectedItem", "1")); });
        auto items = scanItems(load.settings, "ISQL", 0, 20);
        for (int i = 0; i <= 20; ++i)
            skipOnError([&] {
                QAction* a = load.arrayItem("mnu_isql", i);
                const auto& v = items[static_cast<size_t>(i)];
                if (v) {
                    a->setText(QString::fromStdString(*v));
                    a->setVisible(true);
                    if (i == selected)
                        a->setChecked(true);
                } else {
                    a->setVisible(false);
                }
            });
    });
}

} // namespace pv
