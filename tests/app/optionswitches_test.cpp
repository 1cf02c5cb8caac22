#include "app/optionswitches.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

using pv::SettingWrite;

class MenuStates : public pv::SwitchStates {
  public:
    bool isChecked(std::string_view name) const override {
        auto it = m_checked.find(std::string(name));
        return it != m_checked.end() && it->second;
    }
    void setChecked(std::string_view name, bool checked) override {
        m_checked[std::string(name)] = checked;
    }

  private:
    std::map<std::string, bool> m_checked;
};

struct ClickCase {
    const char* name;
    std::vector<const char*> checkedBefore;
    const char* clicked;
    std::vector<SettingWrite> writes;
    std::vector<const char*> checkedAfter; // every item checked after the click
};

const char* const CC = "COMPARECONTROL";
const char* const DC = "DIRCONTROL";
const char* const FC = "FINDCONTROL";

void PrintTo(const ClickCase& c, std::ostream* os) {
    *os << c.name;
}

class SwitchClick : public testing::TestWithParam<ClickCase> {};

TEST_P(SwitchClick, WritesKeysInHandlerOrderAndLeavesStates) {
    const ClickCase& c = GetParam();
    MenuStates states;
    for (const char* n : c.checkedBefore)
        states.setChecked(n, true);
    std::vector<SettingWrite> seen;
    auto writes =
        pv::clickSwitch(c.clicked, states, [&](const SettingWrite& w) { seen.push_back(w); });
    EXPECT_EQ(writes, c.writes);
    EXPECT_EQ(seen, c.writes);

    std::set<std::string> expected(c.checkedAfter.begin(), c.checkedAfter.end());
    for (const pv::SwitchItem& item : pv::switchItems())
        EXPECT_EQ(states.isChecked(item.menuName), expected.count(item.menuName) == 1)
            << item.menuName;
}

INSTANTIATE_TEST_SUITE_P(
    Rules, SwitchClick,
    testing::Values(ClickCase{"ToggleOn", {}, "mnu_Dir_q", {{DC, "DIR_Q", "True"}}, {"mnu_Dir_q"}},
                    ClickCase{"ToggleOff",
                              {"mnu_Dir_q", "mnu_Dir_s"},
                              "mnu_Dir_q",
                              {{DC, "DIR_Q", "False"}},
                              {"mnu_Dir_s"}},
                    ClickCase{"FindStrKeysAreSingleLetters",
                              {},
                              "mnu_Options_FindStr_i",
                              {{FC, "I", "True"}},
                              {"mnu_Options_FindStr_i"}},
                    ClickCase{"DirBareAndWideAreIndependent",
                              {"mnu_Dir_w"},
                              "mnu_Dir_b",
                              {{DC, "DIR_B", "True"}},
                              {"mnu_Dir_w", "mnu_Dir_b"}},
                    // The opposite's own handler writes first, then the clicked item.
                    ClickCase{"PairOnTurnsOppositeOff",
                              {"mnu_Dir_a_a"},
                              "mnu_Dir_a_a_not",
                              {{DC, "DIR_AA", "False"}, {DC, "DIR_AA_NOT", "True"}},
                              {"mnu_Dir_a_a_not"}},
                    ClickCase{"PairOnWithOppositeOffWritesOnlyItself",
                              {},
                              "mnu_Dir_a_hidden",
                              {{DC, "DIR_AH", "True"}},
                              {"mnu_Dir_a_hidden"}},
                    ClickCase{"PairOffLeavesOppositeAlone",
                              {"mnu_Dir_o_s", "mnu_Dir_o_s_not"},
                              "mnu_Dir_o_s",
                              {{DC, "DIR_OS", "False"}},
                              {"mnu_Dir_o_s_not"}},
                    // Both other mode keys are written "False" even when they were already off.
                    ClickCase{"AsciiModeOn",
                              {},
                              "mnu_Options_Compare_Ascii",
                              {{CC, "FC_L", "True"}, {CC, "FC_B", "False"}, {CC, "FC_U", "False"}},
                              {"mnu_Options_Compare_Ascii"}},
                    ClickCase{"BinaryModeOnTurnsAsciiOffKeepsOptions",
                              {"mnu_Options_Compare_Ascii", "mnu_Options_Compare_Ascii_a",
                               "mnu_Options_Compare_Ascii_n"},
                              "mnu_Options_Compare_Binary",
                              {{CC, "FC_B", "True"}, {CC, "FC_L", "False"}, {CC, "FC_U", "False"}},
                              {"mnu_Options_Compare_Binary", "mnu_Options_Compare_Ascii_a",
                               "mnu_Options_Compare_Ascii_n"}},
                    ClickCase{"UnicodeModeOn",
                              {"mnu_Options_Compare_Binary"},
                              "mnu_Options_Compare_Unicode",
                              {{CC, "FC_U", "True"}, {CC, "FC_L", "False"}, {CC, "FC_B", "False"}},
                              {"mnu_Options_Compare_Unicode"}},
                    ClickCase{"ModeOffLeavesNoMode",
                              {"mnu_Options_Compare_Ascii"},
                              "mnu_Options_Compare_Ascii",
                              {{CC, "FC_L", "False"}},
                              {}},
                    ClickCase{"AsciiOptionWithBinaryOn",
                              {"mnu_Options_Compare_Binary"},
                              "mnu_Options_Compare_Ascii_a",
                              {{CC, "FC_A", "True"},
                               {CC, "FC_L", "True"},
                               {CC, "FC_B", "False"},
                               {CC, "FC_U", "False"}},
                              {"mnu_Options_Compare_Ascii_a", "mnu_Options_Compare_Ascii"}},
                    // /l already on: it is unchecked first, so its handler turns it on again.
                    ClickCase{"AsciiOptionWithAsciiOn",
                              {"mnu_Options_Compare_Ascii"},
                              "mnu_Options_Compare_Ascii_n",
                              {{CC, "FC_N", "True"},
                               {CC, "FC_L", "True"},
                               {CC, "FC_B", "False"},
                               {CC, "FC_U", "False"}},
                              {"mnu_Options_Compare_Ascii_n", "mnu_Options_Compare_Ascii"}},
                    ClickCase{"AsciiOptionOffLeavesAscii",
                              {"mnu_Options_Compare_Ascii", "mnu_Options_Compare_Ascii_a"},
                              "mnu_Options_Compare_Ascii_a",
                              {{CC, "FC_A", "False"}},
                              {"mnu_Options_Compare_Ascii"}},
                    ClickCase{"CompareListOptionsAreToggles",
                              {},
                              "mnu_Options_Compare_List_DateTime",
                              {{CC, "LIST_DateTime", "True"}},
                              {"mnu_Options_Compare_List_DateTime"}}),
    [](const testing::TestParamInfo<ClickCase>& info) { return std::string(info.param.name); });

TEST(SwitchClick, UnknownNameChangesNothing) {
    MenuStates states;
    bool called = false;
    EXPECT_TRUE(
        pv::clickSwitch("mnu_Dir", states, [&](const SettingWrite&) { called = true; }).empty());
    EXPECT_FALSE(called);
}

// Every pair names an opposite that names it back, in the same section.
TEST(SwitchTable, PairsAreSymmetric) {
    for (const pv::SwitchItem& item : pv::switchItems()) {
        if (item.kind != pv::SwitchKind::Pair)
            continue;
        const pv::SwitchItem* opposite = pv::findSwitch(item.opposite);
        ASSERT_NE(opposite, nullptr) << item.menuName;
        EXPECT_STREQ(opposite->opposite, item.menuName);
        EXPECT_STREQ(opposite->section, item.section);
    }
}

TEST(SwitchTable, NamesAndKeysAreUnique) {
    std::set<std::string> names, keys;
    for (const pv::SwitchItem& item : pv::switchItems()) {
        EXPECT_TRUE(names.insert(item.menuName).second) << item.menuName;
        EXPECT_TRUE(keys.insert(std::string(item.section) + "/" + item.key).second) << item.key;
    }
    EXPECT_EQ(names.size(), 11u + 34u + 14u);
}

} // namespace
