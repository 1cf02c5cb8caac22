#include "lists/namedlists.h"

#include "settings/itemlist.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

using pv::MenuItemState;
using pv::NamedList;
using pv::SelectionState;
using pv::Settings;

namespace {

std::vector<std::string> visibleCaptions(const std::vector<MenuItemState>& items) {
    std::vector<std::string> out;
    for (const MenuItemState& s : items)
        out.push_back(s.visible ? s.caption : "-");
    return out;
}

} // namespace

TEST(NamedLists, SelectionDecidesWhetherACommandGoesOn) {
    struct Row {
        const char* name;
        int count, selected;
        SelectionState state;
        std::string message;
    } rows[] = {
        {"empty list", 0, 0, SelectionState::EmptyList, "No favorites have been created"},
        {"nothing selected", 3, 0, SelectionState::NoneSelected, "Please select an item"},
        {"one selected", 3, 1, SelectionState::One, ""},
        {"two selected", 3, 2, SelectionState::SeveralSelected, "Please select ONLY ONE item"},
    };
    for (const Row& r : rows) {
        const SelectionState state = pv::selectionState(r.count, r.selected);
        EXPECT_EQ(state, r.state) << r.name;
        EXPECT_EQ(pv::selectionMessage(state, pv::namedListForm(NamedList::Favorites)), r.message)
            << r.name;
    }
}

TEST(NamedLists, AppendGoesToTheFirstIndexTheReaderCallsMissing) {
    struct Row {
        const char* name;
        const char* file;
        pv::ItemReader reader;
        int index;
    } rows[] = {
        {"after the last entry", "[L]\nITEM0=ab\nITEM1=cd\n", pv::ItemReader::Plain, 2},
        {"into a gap", "[L]\nITEM0=ab\nITEM1=\nITEM2=ef\n", pv::ItemReader::Plain, 1},
        {"one character is an entry", "[L]\nITEM0=x\n", pv::ItemReader::Plain, 1},
        {"one character is missing for Min2", "[L]\nITEM0=x\n", pv::ItemReader::Min2, 0},
    };
    for (const Row& r : rows) {
        pvtest::TempDir dir;
        Settings s(dir.write("p.ini", r.file));
        EXPECT_EQ(pv::appendItem(s, "L", "new", r.reader), r.index) << r.name;
        EXPECT_EQ(s.read("L", pv::itemKey(r.index)), "new") << r.name;
    }
}

TEST(NamedLists, InternalEditorIsFoundTrimmedInAnyCase) {
    EXPECT_TRUE(pv::listsInternalEditor({"gedit", " internal "}));
    EXPECT_FALSE(pv::listsInternalEditor({"gedit", "INTERNAL.exe"}));
    EXPECT_FALSE(pv::listsInternalEditor({}));
}

TEST(NamedLists, WritingBackEndsTheListAndAnEmptyListWritesNothing) {
    pvtest::TempDir dir;
    Settings s(dir.write("p.ini", "[L]\nITEM0=A\nITEM1=B\nITEM2=C\n"));
    pv::writeItemList(s, "L", {});
    EXPECT_EQ(pv::readItemList(s, "L"), (std::vector<std::string>{"A", "B", "C"}));
    pv::writeItemList(s, "L", {"X", "Y"});
    EXPECT_EQ(pvtest::readFile(s.path()), "[L]\r\nITEM0=X\r\nITEM1=Y\r\nITEM2=\r\n");
}

TEST(NamedLists, MenusMirrorTheListAfterClose) {
    const std::vector<std::string> entries{"A", "  ", "C"};
    std::vector<std::string> editors = visibleCaptions(pv::editorMenuItems(entries, 20));
    ASSERT_EQ(editors.size(), 21u);
    EXPECT_EQ(std::vector<std::string>(editors.begin(), editors.begin() + 5),
              (std::vector<std::string>{"Open by association", "A", "-", "C", "-"}));
    EXPECT_EQ(editors.back(), "-");

    std::vector<std::string> favorites = visibleCaptions(pv::favoriteMenuItems(entries, 50));
    ASSERT_EQ(favorites.size(), 51u);
    EXPECT_EQ(std::vector<std::string>(favorites.begin(), favorites.begin() + 4),
              (std::vector<std::string>{"A", "-", "C", "-"}));
}

TEST(NamedLists, ConnectionMenuChecksTheStoredIndex) {
    struct Row {
        const char* name;
        const char* selected; // nullptr: no key
        int checked;          // -1: none
    } rows[] = {
        {"stored index", "2", 2},
        {"no index stored means 1", nullptr, 1},
        {"an index that is no number checks none", "two", -1},
    };
    for (const Row& r : rows) {
        pvtest::TempDir dir;
        std::string text = "[ISQL]\nITEM0=-S a\nITEM1=-S b\nITEM2=-S c\n";
        if (r.selected)
            text += std::string("SelectedItem=") + r.selected + "\n";
        Settings s(dir.write("p.ini", text));
        const std::vector<MenuItemState> items = pv::connectionMenuItems(s, 20);
        ASSERT_EQ(items.size(), 21u);
        for (int i = 0; i <= 20; ++i) {
            EXPECT_EQ(items[static_cast<size_t>(i)].visible, i <= 2) << r.name << " item " << i;
            EXPECT_EQ(items[static_cast<size_t>(i)].checked, i == r.checked)
                << r.name << " item " << i;
        }
        EXPECT_EQ(items[1].caption, "-S b");
    }
}

TEST(NamedLists, SavedConnectionsStoreIndexZeroAsOne) {
    struct Row {
        const char* name;
        int listIndex;
        const char* stored;
    } rows[] = {{"index 0", 0, "1"}, {"none", -1, "1"}, {"index 2", 2, "2"}};
    for (const Row& r : rows) {
        pvtest::TempDir dir;
        Settings s(dir / "p.ini");
        pv::saveConnections(s, {"a", "b", "c"}, r.listIndex);
        EXPECT_EQ(s.read("ISQL", "SelectedItem"), r.stored) << r.name;
        EXPECT_EQ(pv::readItemList(s, "ISQL"), (std::vector<std::string>{"a", "b", "c"}));
    }
    pvtest::TempDir dir;
    Settings s(dir.write("p.ini", "[ISQL]\nITEM0=a\nSelectedItem=x\n"));
    pv::saveConnections(s, {}, 0);
    EXPECT_EQ(s.read("ISQL", "ITEM0"), "");
    EXPECT_EQ(pv::storedSelectedItem(s, "ISQL"), 1);
    s.write("NETWORKDRIVES", "SelectedItem", "1x");
    EXPECT_THROW(pv::storedSelectedItem(s, "NETWORKDRIVES"), std::exception);
}
