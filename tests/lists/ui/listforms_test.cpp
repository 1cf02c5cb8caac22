#include "app/programpaths.h"
#include "app/ui/formregistry.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/drivelistbox.h"
#include "lists/ui/cmpreditors.h"
#include "lists/ui/favorites.h"
#include "lists/ui/isqlconnectionparms.h"
#include "lists/ui/listcommands.h"
#include "lists/ui/unc.h"
#include "support/qt/runningprogram.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

using pv::ListOpener;
using pv::NamedList;
using pv::Side;

namespace {

class ListFormsTest : public pvtest::TwoTreesTest {
  protected:
    template <class Form> Form* open(NamedList list, ListOpener opener) {
        auto* form = qobject_cast<Form*>(pv::openListForm(list, opener));
        EXPECT_NE(form, nullptr);
        return form;
    }
    static std::vector<std::string> shown(const pv::ListForm* form) { return form->entries(); }
    // Visible captions of a menu array, "-" for hidden items, up to `last`.
    std::vector<std::string> menuItems(const char* array, int last) const {
        std::vector<std::string> out;
        for (int i = 0; i <= last; ++i) {
            QAction* a = frame->arrayItem(array, i);
            out.push_back(a->isVisible() ? a->text().toStdString() : "-");
        }
        return out;
    }
    void click(pv::ListForm* form, const char* button) {
        form->findChild<QPushButton*>(button)->click();
    }
    static void select(pv::ListForm* form, std::initializer_list<int> rows) {
        form->list()->clearSelection();
        for (int r : rows) {
            form->list()->setCurrentRow(r, QItemSelectionModel::Select);
        }
    }
    int openCount(const char* name) const {
        int n = 0;
        for (QWidget* f : pv::FormRegistry::openForms())
            n += f->objectName() == name;
        return n;
    }
};

} // namespace

TEST_F(ListFormsTest, OpenersDifferInReaderClosingAndSelection) {
    write("EDITORS", "ITEM0", "gedit");
    write("EDITORS", "ITEM1", "x");
    write("EDITORS", "ITEM2", "kate");
    write("APPLICATION", "EDITOR", "kate");
    start();
    auto* form = open<pv::cmprEditors>(NamedList::Editors, ListOpener::MainWindow);
    EXPECT_EQ(form->windowTitle().toStdString(), "Editors");
    EXPECT_EQ(form->pathBox()->text().toStdString(), ini);
    EXPECT_EQ(shown(form), std::vector<std::string>{"gedit"});

    // The compare window's opener reads one-character entries too, selects the
    // current editor and appends to the open form.
    window->findChild<QPushButton*>("ShowEditors")->click();
    EXPECT_EQ(shown(form), (std::vector<std::string>{"gedit", "gedit", "x", "kate"}));
    EXPECT_EQ(form->list()->currentRow(), 2);
    EXPECT_EQ(openCount("cmprEditors"), 1);

    // The main window's opener starts afresh.
    frame->action("menuShowEditors")->trigger();
    QApplication::processEvents();
    EXPECT_EQ(openCount("cmprEditors"), 1);
    auto* again = qobject_cast<pv::ListForm*>(pv::FormRegistry::openForms().back());
    EXPECT_EQ(shown(again), std::vector<std::string>{"gedit"});
}

TEST_F(ListFormsTest, EditorsAddDeleteSelectAndCloseRebuildOpenWith) {
    write("EDITORS", "ITEM0", "gedit");
    write("EDITORS", "ITEM1", "kate");
    start();
    auto* form = open<pv::cmprEditors>(NamedList::Editors, ListOpener::MainWindow);
    prompts.fileAnswers.push_back("/usr/bin/vim");
    click(form, "AddEditor");
    EXPECT_EQ(value("EDITORS", "ITEM2"), "/usr/bin/vim");
    EXPECT_EQ(shown(form), (std::vector<std::string>{"gedit", "kate", "/usr/bin/vim", "INTERNAL"}));
    EXPECT_EQ(value("EDITORS", "ITEM3"), "");

    select(form, {1});
    click(form, "DeleteSelected");
    EXPECT_EQ(shown(form), (std::vector<std::string>{"gedit", "/usr/bin/vim", "INTERNAL"}));
    EXPECT_EQ(value("EDITORS", "ITEM1"), "/usr/bin/vim");

    select(form, {1});
    click(form, "Select");
    EXPECT_EQ(value("APPLICATION", "EDITOR"), "/usr/bin/vim");

    click(form, "Close");
    QApplication::processEvents();
    EXPECT_EQ(openCount("cmprEditors"), 0);
    EXPECT_EQ(pv::readItemList(pv::Settings(ini), "EDITORS"),
              (std::vector<std::string>{"gedit", "/usr/bin/vim", "INTERNAL"}));
    EXPECT_EQ(menuItems("mnuEditor", 5),
              (std::vector<std::string>{"Open by association", "gedit", "/usr/bin/vim", "INTERNAL",
                                        "-", "-"}));

    // Adding again finds "INTERNAL" in the file and does not offer it twice; the
    // close box writes nothing back.
    form = open<pv::cmprEditors>(NamedList::Editors, ListOpener::MainWindow);
    prompts.fileAnswers.push_back("/usr/bin/nano");
    click(form, "AddEditor");
    EXPECT_EQ(shown(form).back(), "/usr/bin/nano");
    select(form, {0});
    click(form, "DeleteSelected");
    pv::FormRegistry::unload(form);
    QApplication::processEvents();
    EXPECT_EQ(menuItems("mnuEditor", 5)[1], "gedit");
}

TEST_F(ListFormsTest, DeletingNeedsOneSelectionAndTheOnlyEntryEmptiesTheList) {
    write("FAVORITES", "ITEM0", left);
    start();
    auto* form = open<pv::Favorites>(NamedList::Favorites, ListOpener::MainWindow);
    select(form, {});
    click(form, "DeleteSelected");
    EXPECT_EQ(prompts.messages, std::vector<std::string>{"Please select an item"});
    select(form, {0});
    click(form, "DeleteSelected");
    EXPECT_EQ(value("FAVORITES", "ITEM0"), "");
    EXPECT_EQ(form->list()->count(), 0);
}

TEST_F(ListFormsTest, FavoritesMovePanesAndCloseRebuildsTheMenu) {
    // Stored in another letter case, so it names no directory that exists.
    const std::string shouted = QString::fromStdString(right).toUpper().toStdString();
    write("FAVORITES", "ITEM0", shouted);
    start();
    window->dir(Side::Right)->setPath(right);
    pv::globals().setClicked(pv::ClickedControl::FileTwo);
    frame->action("AddFavorites")->trigger();
    EXPECT_EQ(prompts.messages,
              std::vector<std::string>{"duplicate favorite detected and rejected"});
    EXPECT_EQ(value("FAVORITES", "ITEM1"), "");
    EXPECT_EQ(openCount("Favorites"), 0);

    // A highlighted sub-directory of the pane clicked last is stored, and the form
    // shows the list.
    window->dir(Side::Left)->setPath(home.str());
    window->dir(Side::Left)->setListIndex(0);
    pv::globals().setClicked(pv::ClickedControl::Dir1);
    window->findChild<QPushButton*>("AddFavorite")->click();
    EXPECT_EQ(value("FAVORITES", "ITEM1"), left);
    auto* form = qobject_cast<pv::Favorites*>(pv::FormRegistry::openForms().back());
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(shown(form), (std::vector<std::string>{shouted, left}));

    select(form, {1});
    click(form, "SetRightSide");
    EXPECT_EQ(window->dir(Side::Right)->path(), left);
    EXPECT_EQ(value("LASTFILE", "DIRTWO"), left);

    click(form, "Close");
    QApplication::processEvents();
    EXPECT_EQ(menuItems("mnuFavorites", 2), (std::vector<std::string>{shouted, left, "-"}));

    // The menu item moves the pane clicked last; a favorite that is gone says so
    // and leaves the pane where it was.
    pv::globals().setClicked(pv::ClickedControl::FileOne);
    frame->arrayItem("mnuFavorites", 1)->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    frame->arrayItem("mnuFavorites", 0)->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.messages[1].rfind("Menu:FavoritesClic::Error: \r\ntheDrive:", 0), 0u);
    EXPECT_NE(prompts.messages[1].find("\r\nthePath:" + shouted + "\r\n"), std::string::npos);
}

TEST_F(ListFormsTest, NetworkPathsFillTheBoxesOfEveryCompareWindow) {
    write("NETWORKDRIVES", "ITEM0", "//srv/a");
    write("NETWORKDRIVES", "TEMPLATE", "//srv/");
    start();
    pv::Pairview* second = frame->CompareForm_Additional_Click();
    auto* form = open<pv::UNC>(NamedList::NetworkPaths, ListOpener::MainWindow);
    EXPECT_EQ(form->windowTitle().toStdString(), "UNC Connections");
    prompts.inputAnswers.push_back("//srv/b");
    click(form, "AddItem");
    EXPECT_EQ(prompts.messages.back(), "Enter your connectionString");
    EXPECT_EQ(prompts.titles.back(), "ISQL");
    EXPECT_EQ(value("NETWORKDRIVES", "ITEM1"), "//srv/b");
    EXPECT_EQ(shown(form), (std::vector<std::string>{"//srv/a", "//srv/b"}));
    for (pv::Pairview* w : {window, second})
        for (Side side : {Side::Left, Side::Right}) {
            QComboBox* box = w->networkDrive(side);
            ASSERT_EQ(box->count(), 2);
            EXPECT_EQ(box->itemText(1).toStdString(), "//srv/b");
            EXPECT_EQ(box->currentText().toStdString(), "UNC paths from INI");
        }

    select(form, {0});
    click(form, "DeleteSelected");
    EXPECT_EQ(value("NETWORKDRIVES", "ITEM0"), "//srv/b");
    EXPECT_EQ(value("NETWORKDRIVES", "ITEM1"), "");
    EXPECT_EQ(second->networkDrive(Side::Right)->count(), 1);
    EXPECT_EQ(second->networkDrive(Side::Right)->itemText(0).toStdString(), "//srv/b");
}

TEST_F(ListFormsTest, ConnectionsAreSavedAndTheSubmenuFollows) {
    write("ISQL", "ITEM0", "-S a");
    write("ISQL", "ITEM1", "-S b");
    write("ISQL", "SelectedItem", "1");
    start();
    auto* form = open<pv::isqlConnectionParms>(NamedList::Connections, ListOpener::MainWindow);
    EXPECT_EQ(form->windowTitle().toStdString(), "isql connection parms");
    EXPECT_EQ(form->list()->currentRow(), 1);
    prompts.inputAnswers.push_back("-S c");
    click(form, "AddItem");
    EXPECT_EQ(value("ISQL", "ITEM2"), "-S c");
    EXPECT_EQ(value("ISQL", "ITEM3"), "");
    EXPECT_EQ(menuItems("mnu_isql", 3), (std::vector<std::string>{"-S a", "-S b", "-S c", "-"}));
    EXPECT_TRUE(frame->arrayItem("mnu_isql", 1)->isChecked());

    frame->arrayItem("mnu_isql", 2)->trigger();
    EXPECT_EQ(value("ISQL", "SelectedItem"), "2");
    EXPECT_TRUE(frame->arrayItem("mnu_isql", 2)->isChecked());
    EXPECT_FALSE(frame->arrayItem("mnu_isql", 1)->isChecked());
    frame->arrayItem("mnu_isql", 0)->trigger();
    EXPECT_FALSE(frame->arrayItem("mnu_isql", 0)->isChecked());

    // Index 0 is stored as 1 when the form closes.
    form->list()->setCurrentRow(0);
    pv::FormRegistry::unload(form);
    QApplication::processEvents();
    EXPECT_EQ(value("ISQL", "SelectedItem"), "1");
    EXPECT_TRUE(frame->arrayItem("mnu_isql", 1)->isChecked());

    write("ISQL", "SelectedItem", "one");
    open<pv::isqlConnectionParms>(NamedList::Connections, ListOpener::MainWindow);
    EXPECT_EQ(prompts.messages.back().rfind("ShowISQLCons:Error:\r\n", 0), 0u);
}
