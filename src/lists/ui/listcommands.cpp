#include "lists/ui/listcommands.h"

#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "app/ui/formregistry.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/pairview.h"
#include "lists/favorites.h"
#include "lists/ui/cmpreditors.h"
#include "lists/ui/favorites.h"
#include "lists/ui/isqlconnectionparms.h"
#include "lists/ui/unc.h"
#include "platform/drives.h"
#include "platform/prompter.h"

#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace pv {

namespace {

ListForm* createForm(NamedList list) {
    switch (list) {
    case NamedList::Editors:
        return new cmprEditors;
    case NamedList::Favorites:
        return new Favorites;
    case NamedList::NetworkPaths:
        return new UNC;
    case NamedList::Connections:
        return new isqlConnectionParms;
    }
    return nullptr;
}

ListForm* openInstance(NamedList list) {
    const QString name = namedListForm(list).formName;
    for (QWidget* f : FormRegistry::openForms())
        if (f->objectName().compare(name, Qt::CaseInsensitive) == 0)
            if (auto* form = qobject_cast<ListForm*>(f))
                return form;
    return nullptr;
}

void selectStoredConnection(ListForm& form) {
    try {
        const int stored = storedSelectedItem(programSettings(), "ISQL");
        if (stored >= 0 && stored < form.list()->count())
            form.list()->setCurrentRow(stored);
    } catch (const std::exception& e) {
        prompter().message("ShowISQLCons:Error:\r\n" + errorDescription(e));
    }
}

void selectCurrentEditor(ListForm& form, const std::vector<std::string>& read) {
    const std::string editor = programSettings().GetIniValue("APPLICATION", "EDITOR", "");
    for (std::size_t i = 0; i < read.size(); ++i)
        if (read[i] == editor)
            form.list()->setCurrentRow(static_cast<int>(i));
}

} // namespace

ListForm* openListForm(NamedList list, ListOpener opener) {
    MDIForm1* frame = mainWindow();
    if (!frame)
        return nullptr;
    if (opener == ListOpener::MainWindow)
        frame->closeThisForm(namedListForm(list).formName);
    ListForm* form = openInstance(list);
    if (!form) {
        form = createForm(list);
        // A small form stays small beside a maximized compare window.
        frame->showChildInside(form, form->size());
    }
    form->show();
    if (auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget()))
        frame->mdiArea()->setActiveSubWindow(sub);
    form->pathBox()->setText(QString::fromStdString(globals().paths.settingsPath));
    const std::vector<std::string> read = form->appendFromSettings(
        opener == ListOpener::MainWindow ? ItemReader::Min2 : ItemReader::Plain);
    if (opener == ListOpener::CompareWindow && list == NamedList::Editors)
        selectCurrentEditor(*form, read);
    if (opener == ListOpener::MainWindow && list == NamedList::Connections)
        selectStoredConnection(*form);
    return form;
}

void applyMenuItems(const char* arrayName, const std::vector<MenuItemState>& items,
                    bool withCheckMarks) {
    MDIForm1* frame = mainWindow();
    if (!frame)
        return;
    for (std::size_t i = 0; i < items.size(); ++i) {
        QAction* a = frame->arrayItem(arrayName, static_cast<int>(i));
        if (!a)
            continue;
        if (items[i].visible)
            a->setText(QString::fromStdString(items[i].caption));
        a->setVisible(items[i].visible);
        if (withCheckMarks && items[i].visible)
            a->setChecked(items[i].checked);
    }
}

void refreshConnectionMenu() {
    applyMenuItems("mnu_isql", connectionMenuItems(programSettings(), 20), true);
}

void refreshNetworkPathBoxes() {
    const std::vector<std::string> paths = readItemList(programSettings(), "NETWORKDRIVES");
    for (Pairview* window : compareWindows())
        window->fillNetworkDrives(paths);
}

void mnuFavorites_Click(int index) {
    MDIForm1* frame = mainWindow();
    QAction* item = frame ? frame->arrayItem("mnuFavorites", index) : nullptr;
    if (!item)
        return;
    const std::string favorite = item->text().toStdString();
    std::string drive = favorite.substr(0, 2);
    try {
        Pairview* window = frame->activeCompareWindow();
        if (!window)
            return;
        FavoriteLocation where = favoriteLocation(favorite, mountedDrives());
        drive = where.drive.value_or(drive);
        window->goToFavorite(globals().rightSideClicked() ? Side::Right : Side::Left, favorite);
    } catch (const std::exception& e) {
        prompter().message(favoriteMenuErrorText(drive, favorite, e));
    }
}

void mnu_isql_Click(int index) {
    MDIForm1* frame = mainWindow();
    if (!frame)
        return;
    chooseConnection(programSettings(), index);
    for (int i = 1; QAction* a = frame->arrayItem("mnu_isql", i); ++i)
        a->setChecked(i == index);
}

void connectListCommands(MDIForm1& frame) {
    auto bind = [&frame](const char* name, NamedList list) {
        if (QAction* a = frame.action(name))
            QObject::connect(a, &QAction::triggered, &frame, [a, list] {
                dispatchCommand(a->text().remove('&').toStdString(),
                                [list] { openListForm(list, ListOpener::MainWindow); });
            });
    };
    bind("menuShowEditors", NamedList::Editors);
    bind("FavoritesPage", NamedList::Favorites);
    bind("menuShowUNCPaths", NamedList::NetworkPaths);
    bind("menuShowISQLCons", NamedList::Connections);
    for (int i = 0; QAction* a = frame.arrayItem("mnuFavorites", i); ++i)
        QObject::connect(a, &QAction::triggered, &frame, [i] { mnuFavorites_Click(i); });
    for (int i = 0; QAction* a = frame.arrayItem("mnu_isql", i); ++i)
        QObject::connect(a, &QAction::triggered, &frame, [a, i](bool checkedNow) {
            // The menu has flipped the check mark already; the command sets every
            // mark itself and leaves item 0's as it was.
            if (i == 0)
                a->setChecked(!checkedNow);
            mnu_isql_Click(i);
        });
}

} // namespace pv
