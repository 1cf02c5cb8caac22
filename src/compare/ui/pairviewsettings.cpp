// Loading the settings file into a compare window and into the main window's menus.

#include "app/errorpolicy.h"
#include "platform/textutil.h"
#include "app/optionswitches.h"
#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "compare/ui/pairview.h"
#include "platform/prompter.h"
#include "settings/itemlist.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <stdexcept>

namespace pv {

namespace {

// The order in which the switch keys are loaded; the fc boxes follow "FC_W".
const char* const kCompareKeys[] = {"LIST_DateTime", "LIST_Length", "CMPR_SUB_DIRECTORIES",
                                    "FC_A", "FC_B", "FC_C", "FC_L", "FC_N", "FC_T", "FC_U", "FC_W"};
const char* const kFindKeys[] = {"B", "E", "L", "R", "S", "I", "X",
                                 "V", "N", "M", "O", "P", "OFFLINE", "FILETYPEBREAKOUT"};

const SwitchItem* switchOf(std::string_view section, std::string_view key) {
    for (const SwitchItem& item : switchItems())
        if (section == item.section && key == item.key)
            return &item;
    return nullptr;
}

} // namespace

void Pairview::LoadINISettings() {
    const Settings settings = programSettings();
    const std::string s = section();
    MDIForm1* frame = m_frame;
    // Every statement runs under skip-on-error: one bad setting never stops the load.
    auto step = [](const std::function<void()>& f) { skipOnError(f); };
    auto menuItem = [frame](const char* name) {
        QAction* a = frame ? frame->action(name) : nullptr;
        if (!a)
            throw std::runtime_error("no menu item");
        return a;
    };
    auto arrayItem = [frame](const char* name, int i) {
        QAction* a = frame ? frame->arrayItem(name, i) : nullptr;
        if (!a)
            throw std::runtime_error("no menu item");
        return a;
    };

    // 1. The stored locations and patterns.
    std::string drives[2], dirs[2], pattern, patternList;
    step([&] { drives[0] = settings.GetIniValue(s, "DRIVE1", ""); });
    step([&] { drives[1] = settings.GetIniValue(s, "DRIVE2", ""); });
    step([&] { dirs[0] = settings.GetIniValue(s, "DIRONE", ""); });
    step([&] { dirs[1] = settings.GetIniValue(s, "DIRTWO", ""); });
    step([&] { pattern = settings.GetIniValue(s, "FILEPATTERN", "*.*"); });
    step([&] { patternList = settings.GetIniValue("APPLICATION", "FILEPATTERNLIST", "*.*"); });

    // 2, 3. Drives, falling back to the root when one is no longer there.
    for (int i = 0; i < 2; ++i) {
        Side side = i == 0 ? Side::Left : Side::Right;
        if (drives[i].empty())
            continue;
        try {
            drive(side)->setDrive(drives[i]);
        } catch (const std::exception& e) {
            prompter().message(std::string("SetDrive:Error The Drive ") + (i == 0 ? "1" : "2") +
                                   " set was invalid. Setting to /\r\n" +
                                   "This is sometimes due to changing network configurations. " +
                                   errorDescription(e),
                               kProgramTitle);
            step([&] { drive(side)->setDrive("/"); });
            step([&] { Drive_Change(side); });
            dirs[i] = "/";
        }
    }

    // 4, 5. Directories, likewise.
    for (int i = 0; i < 2; ++i) {
        Side side = i == 0 ? Side::Left : Side::Right;
        if (dirs[i].empty())
            continue;
        try {
            dir(side)->setPath(dirs[i]);
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

    // 6. The pattern list and the stored pattern.
    step([&] {
        m_filePatternCombo->clear();
        std::size_t start = 0;
        while (start <= patternList.size()) {
            std::size_t comma = patternList.find(',', start);
            if (comma == std::string::npos)
                comma = patternList.size();
            m_filePatternCombo->addItem(
                QString::fromStdString(patternList.substr(start, comma - start)));
            start = comma + 1;
        }
        m_filePatternCombo->setCurrentIndex(-1);
        if (!pattern.empty()) {
            QString wanted = QString::fromStdString(std::string(trimBlanks(pattern)));
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

    // 7. The association switch.
    step([&] {
        std::string associated = settings.GetIniValue("APPLICATION", "ASSOCIATED", "NO");
        menuItem("UseAssociated")->setChecked(toUpper(associated) != "NO");
    });

    // 8. The editor, written back so that the key always exists after a start.
    std::string editor;
    step([&] {
        editor = settings.GetIniValue("APPLICATION", "EDITOR", "Write.exe");
        settings.write("APPLICATION", "EDITOR", editor);
    });

    // 9, 10. The editor list and the OpenWith submenu.
    bool internalListed = false;
    step([&] { m_editorList->clear(); });
    step([&] { menuItem("mnuOptionsToolbar")->setVisible(false); });
    step([&] {
        for (int i = 0; i <= 20; ++i)
            arrayItem("mnuEditor", i)->setVisible(false);
        QAction* first = arrayItem("mnuEditor", 0);
        first->setText("Open by association");
        first->setVisible(true);
    });
    step([&] {
        std::vector<std::string> editors = readItemList(settings, "EDITORS");
        for (std::size_t n = 0; n < editors.size(); ++n) {
            m_editorList->addItem(QString::fromStdString(editors[n]));
            if (toUpper(trimBlanks(editors[n])) == "INTERNAL")
                internalListed = true;
            skipOnError([&] {
                if (n + 1 <= 20) {
                    QAction* a = arrayItem("mnuEditor", static_cast<int>(n + 1));
                    a->setText(QString::fromStdString(std::string(trimBlanks(editors[n]))));
                    a->setVisible(true);
                }
            });
        }
    });

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

    // 13. The internal editor is always offered.
    step([&] {
        if (!internalListed)
            m_editorList->addItem("INTERNAL");
        // Show the chosen editor without treating it as a new choice.
        int at = m_editorList->findText(QString::fromStdString(editor));
        if (at >= 0)
            m_editorList->setCurrentIndex(at);
        else
            m_editorList->setEditText(QString::fromStdString(editor));
    });

    // 14. Recent files, the newest last.
    step([&] {
        int j = 1;
        for (int n = 20; n >= 0; --n) {
            std::string value = settings.GetIniValue("RECENTFILES", itemKey(n), "");
            skipOnError([&] {
                if (!value.empty()) {
                    QAction* a = arrayItem("Recent", j);
                    j = j + 1;
                    a->setText(QString::fromStdString(value));
                    a->setVisible(true);
                } else {
                    arrayItem("Recent", j)->setVisible(false);
                }
            });
        }
    });

    // 15. Favorites.
    step([&] {
        auto items = scanItems(settings, "FAVORITES", 0, 50);
        for (int n = 0; n <= 50; ++n)
            skipOnError([&] {
                QAction* a = arrayItem("mnuFavorites", n);
                const auto& v = items[static_cast<size_t>(n)];
                if (v)
                    a->setText(QString::fromStdString(*v));
                a->setVisible(v.has_value());
            });
    });

    // 16. Network paths, added to both panes without clearing them first.
    step([&] {
        const std::vector<std::string> paths = readItemList(settings, "NETWORKDRIVES");
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

    // 17, 18. Switches, with the fc boxes after "FC_W".
    auto loadSwitch = [&](const char* sectionName, const char* key) {
        step([&] {
            const SwitchItem* item = switchOf(sectionName, key);
            if (!item)
                throw std::runtime_error("unknown switch");
            menuItem(item->menuName)->setChecked(IniBool(settings.GetIniValue(sectionName, key, "False")));
        });
    };
    for (const char* key : kCompareKeys)
        loadSwitch("COMPARECONTROL", key);
    step([&] {
        findChild<QLineEdit*>("fc_lb")->setText(
            QString::fromStdString(settings.GetIniValue("COMPARECONTROL", "FC_LB", "/lb100")));
    });
    step([&] {
        findChild<QLineEdit*>("fc_nnnn")->setText(
            QString::fromStdString(settings.GetIniValue("COMPARECONTROL", "FC_NNNN", "/2")));
    });
    for (const char* key : kFindKeys)
        loadSwitch("FINDCONTROL", key);
    for (const SwitchItem& item : switchItems())
        if (std::string_view(item.section) == "DIRCONTROL")
            loadSwitch("DIRCONTROL", item.key);

    // 19. Query connections.
    step([&] {
        int selected = 1;
        skipOnError([&] {
            selected = std::stoi(settings.GetIniValue("ISQL", "SelectedItem", "1"));
        });
        auto items = scanItems(settings, "ISQL", 0, 20);
        for (int i = 0; i <= 20; ++i)
            skipOnError([&] {
                QAction* a = arrayItem("mnu_isql", i);
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
