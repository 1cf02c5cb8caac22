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

using pv::ListOpener;
using pv::NamedList;
using pv::Side;
using Texts = std::vector<std::string>;

namespace {

class ListFormsTest : public pvtest::TwoTreesTest {
  protected:
    template <class Form> Form* open(NamedList list) {
        auto* form = qobject_cast<Form*>(pv::openListForm(list, ListOpener::MainWindow));
        EXPECT_NE(form, nullptr);
        return form;
    }
    // Visible captions of a menu array, "-" for hidden items, up to `last`.
    Texts menuItems(const char* array, int last) const {
        Texts out;
        for (int i = 0; i <= last; ++i) {
            QAction* a = frame->arrayItem(array, i);
            out.push_back(a->isVisible() ? a->text().toStdString() : "-");
        }
        return out;
    }
    // Selects `row` (-1: nothing) and clicks `button`.
    static void click(pv::ListForm* form, const char* button, int row = -2) {
        if (row > -2) {
            form->list()->clearSelection();
            if (row >= 0)
                form->list()->setCurrentRow(row, QItemSelectionModel::Select);
        }
        form->findChild<QPushButton*>(button)->click();
        QApplication::processEvents();
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
    auto* form = open<pv::cmprEditors>(NamedList::Editors);
    EXPECT_EQ(form->pathBox()->text().toStdString(), ini);
    EXPECT_EQ(form->entries(), Texts{"gedit"});

    // The compare window's opener reads one-character entries too, selects the
    // current editor and appends to the open form.
    window->findChild<QPushButton*>("ShowEditors")->click();
    EXPECT_EQ(form->entries(), (Texts{"gedit", "gedit", "x", "kate"}));
    EXPECT_EQ(form->list()->currentRow(), 2);
    EXPECT_EQ(openCount("cmprEditors"), 1);

    // The main window's opener starts afresh.
    frame->action("menuShowEditors")->trigger();
    QApplication::processEvents();
    EXPECT_EQ(openCount("cmprEditors"), 1);
    auto* again = qobject_cast<pv::ListForm*>(pv::FormRegistry::openForms().back());
    EXPECT_EQ(again->entries(), Texts{"gedit"});
}

TEST_F(ListFormsTest, EditorsAddDeleteSelectAndCloseRebuildOpenWith) {
    write("EDITORS", "ITEM0", "gedit");
    write("EDITORS", "ITEM1", "kate");
    start();
    auto* form = open<pv::cmprEditors>(NamedList::Editors);
    prompts.fileAnswers.push_back("/usr/bin/vim");
    click(form, "AddEditor");
    EXPECT_EQ(value("EDITORS", "ITEM2"), "/usr/bin/vim");
    EXPECT_EQ(form->entries(), (Texts{"gedit", "kate", "/usr/bin/vim", "INTERNAL"}));
    click(form, "DeleteSelected", -1);
    EXPECT_EQ(prompts.messages.back(), "Please select an item");
    click(form, "DeleteSelected", 1);
    EXPECT_EQ(form->entries(), (Texts{"gedit", "/usr/bin/vim", "INTERNAL"}));
    click(form, "Select", 1);
    EXPECT_EQ(value("APPLICATION", "EDITOR"), "/usr/bin/vim");

    click(form, "Close");
    EXPECT_EQ(openCount("cmprEditors"), 0);
    EXPECT_EQ(value("EDITORS", "ITEM2"), "INTERNAL");
    EXPECT_EQ(menuItems("mnuEditor", 4),
              (Texts{"Open by association", "gedit", "/usr/bin/vim", "INTERNAL", "-"}));

    // The close box writes nothing back.
    form = open<pv::cmprEditors>(NamedList::Editors);
    click(form, "DeleteSelected", 0);
    pv::FormRegistry::unload(form);
    QApplication::processEvents();
    EXPECT_EQ(menuItems("mnuEditor", 1)[1], "gedit");
}

TEST_F(ListFormsTest, FavoritesMovePanesAndCloseRebuildsTheMenu) {
    // Stored in another letter case, so it names no directory that exists.
    const std::string shouted = QString::fromStdString(right).toUpper().toStdString();
    write("FAVORITES", "ITEM0", shouted);
    start();
    window->dir(Side::Right)->setPath(right);
    pv::globals().setClicked(pv::ClickedControl::FileTwo);
    frame->action("AddFavorites")->trigger();
    EXPECT_EQ(prompts.messages, Texts{"duplicate favorite detected and rejected"});
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
    EXPECT_EQ(form->entries(), (Texts{shouted, left}));

    click(form, "SetRightSide", 1);
    EXPECT_EQ(window->dir(Side::Right)->path(), left);
    click(form, "Close");
    EXPECT_EQ(menuItems("mnuFavorites", 2), (Texts{shouted, left, "-"}));

    // The menu item moves the pane clicked last; a favorite that is gone says so
    // and leaves the pane where it was.
    pv::globals().setClicked(pv::ClickedControl::FileOne);
    frame->arrayItem("mnuFavorites", 1)->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    frame->arrayItem("mnuFavorites", 0)->trigger();
    EXPECT_EQ(window->dir(Side::Left)->path(), left);
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.messages[1].rfind("Menu:FavoritesClic::Error: \r\ntheDrive:", 0), 0u);
}

TEST_F(ListFormsTest, NetworkPathsFillTheBoxesOfEveryCompareWindow) {
    write("NETWORKDRIVES", "ITEM0", "//srv/a");
    start();
    pv::Pairview* second = frame->CompareForm_Additional_Click();
    auto* form = open<pv::UNC>(NamedList::NetworkPaths);
    prompts.inputAnswers.push_back("//srv/b");
    click(form, "AddItem");
    EXPECT_EQ(prompts.messages.back(), "Enter your connectionString");
    EXPECT_EQ(value("NETWORKDRIVES", "ITEM1"), "//srv/b");
    for (pv::Pairview* w : {window, second})
        for (Side side : {Side::Left, Side::Right}) {
            QComboBox* box = w->networkDrive(side);
            ASSERT_EQ(box->count(), 2);
            EXPECT_EQ(box->itemText(1).toStdString(), "//srv/b");
        }

    click(form, "DeleteSelected", 0);
    EXPECT_EQ(value("NETWORKDRIVES", "ITEM0"), "//srv/b");
    EXPECT_EQ(form->list()->count(), 1);
    ASSERT_EQ(second->networkDrive(Side::Right)->count(), 1);
    EXPECT_EQ(second->networkDrive(Side::Right)->itemText(0).toStdString(), "//srv/b");
    click(form, "DeleteSelected", 0); // the only entry
    EXPECT_EQ(value("NETWORKDRIVES", "ITEM0"), "");
    EXPECT_EQ(form->list()->count(), 0);
}

TEST_F(ListFormsTest, ConnectionsAreSavedAndTheSubmenuFollows) {
    write("ISQL", "ITEM0", "-S a");
    write("ISQL", "ITEM1", "-S b");
    write("ISQL", "SelectedItem", "1");
    start();
    auto* form = open<pv::isqlConnectionParms>(NamedList::Connections);
    EXPECT_EQ(form->list()->currentRow(), 1);
    prompts.inputAnswers.push_back("-S c");
    click(form, "AddItem");
    EXPECT_EQ(value("ISQL", "ITEM2"), "-S c");
    EXPECT_EQ(menuItems("mnu_isql", 3), (Texts{"-S a", "-S b", "-S c", "-"}));
    EXPECT_TRUE(frame->arrayItem("mnu_isql", 1)->isChecked());

    frame->arrayItem("mnu_isql", 2)->trigger();
    EXPECT_EQ(value("ISQL", "SelectedItem"), "2");
    EXPECT_FALSE(frame->arrayItem("mnu_isql", 1)->isChecked());
    frame->arrayItem("mnu_isql", 0)->trigger();
    EXPECT_FALSE(frame->arrayItem("mnu_isql", 0)->isChecked());

    // Closing the form stores its selection.
    form->list()->setCurrentRow(0);
    pv::FormRegistry::unload(form);
    QApplication::processEvents();
    EXPECT_EQ(value("ISQL", "SelectedItem"), "1");
    EXPECT_TRUE(frame->arrayItem("mnu_isql", 1)->isChecked());

    write("ISQL", "SelectedItem", "one");
    open<pv::isqlConnectionParms>(NamedList::Connections);
    EXPECT_EQ(prompts.messages.back().rfind("ShowISQLCons:Error:\r\n", 0), 0u);
}
