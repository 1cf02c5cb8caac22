#include "app/optionswitches.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <sstream>

namespace {

using pv::SettingWrite;

// The menu's check marks: the names of the items checked.
struct MenuStates : pv::SwitchStates {
    std::set<std::string, std::less<>> checked;
    bool isChecked(std::string_view name) const override { return checked.contains(name); }
    void setChecked(std::string_view name, bool on) override {
        if (on)
            checked.emplace(name);
        else
            checked.erase(std::string(name));
    }
};

// Writes as "SECTION/KEY=value ..." in the order they were made.
std::string render(const std::vector<SettingWrite>& writes) {
    std::string out;
    for (const SettingWrite& w : writes)
        out += (out.empty() ? "" : " ") + w.section + "/" + w.key + "=" + w.value;
    return out;
}

std::vector<std::string> words(const char* text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

struct ClickCase {
    const char* name;
    const char* checkedBefore;
    const char* clicked;
    const char* writes;
    const char* checkedAfter; // every item checked after the click
};

void PrintTo(const ClickCase& c, std::ostream* os) {
    *os << c.name;
}

class SwitchClick : public testing::TestWithParam<ClickCase> {};

TEST_P(SwitchClick, WritesKeysInHandlerOrderAndLeavesStates) {
    const ClickCase& c = GetParam();
    MenuStates states;
    for (const std::string& n : words(c.checkedBefore))
        states.checked.insert(n);
    std::vector<SettingWrite> seen;
    auto writes =
        pv::clickSwitch(c.clicked, states, [&](const SettingWrite& w) { seen.push_back(w); });
    EXPECT_EQ(render(writes), c.writes);
    EXPECT_EQ(seen, writes);

    const std::vector<std::string> after = words(c.checkedAfter);
    EXPECT_EQ(states.checked, (std::set<std::string, std::less<>>(after.begin(), after.end())));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rules, SwitchClick, testing::Values(
    ClickCase{"ToggleOn", "", "mnu_Dir_q", "DIRCONTROL/DIR_Q=True", "mnu_Dir_q"},
    ClickCase{"ToggleOff", "mnu_Dir_q mnu_Dir_s", "mnu_Dir_q", "DIRCONTROL/DIR_Q=False", "mnu_Dir_s"},
    // The opposite's own handler writes first, then the clicked item.
    ClickCase{"PairOnTurnsOppositeOff", "mnu_Dir_a_a", "mnu_Dir_a_a_not",
              "DIRCONTROL/DIR_AA=False DIRCONTROL/DIR_AA_NOT=True", "mnu_Dir_a_a_not"},
    ClickCase{"PairOnWithOppositeOffWritesOnlyItself", "", "mnu_Dir_a_hidden",
              "DIRCONTROL/DIR_AH=True", "mnu_Dir_a_hidden"},
    ClickCase{"PairOffLeavesOppositeAlone", "mnu_Dir_o_s mnu_Dir_o_s_not", "mnu_Dir_o_s",
              "DIRCONTROL/DIR_OS=False", "mnu_Dir_o_s_not"},
    // Both other mode keys are written "False" even when they were already off.
    ClickCase{"AsciiModeOn", "", "mnu_Options_Compare_Ascii",
              "COMPARECONTROL/FC_L=True COMPARECONTROL/FC_B=False COMPARECONTROL/FC_U=False",
              "mnu_Options_Compare_Ascii"},
    ClickCase{"BinaryModeOnTurnsAsciiOffKeepsOptions",
              "mnu_Options_Compare_Ascii mnu_Options_Compare_Ascii_a mnu_Options_Compare_Ascii_n",
              "mnu_Options_Compare_Binary",
              "COMPARECONTROL/FC_B=True COMPARECONTROL/FC_L=False COMPARECONTROL/FC_U=False",
              "mnu_Options_Compare_Binary mnu_Options_Compare_Ascii_a mnu_Options_Compare_Ascii_n"},
    ClickCase{"ModeOffLeavesNoMode", "mnu_Options_Compare_Ascii", "mnu_Options_Compare_Ascii",
              "COMPARECONTROL/FC_L=False", ""},
    ClickCase{"AsciiOptionWithBinaryOn", "mnu_Options_Compare_Binary", "mnu_Options_Compare_Ascii_a",
              "COMPARECONTROL/FC_A=True COMPARECONTROL/FC_L=True COMPARECONTROL/FC_B=False "
              "COMPARECONTROL/FC_U=False",
              "mnu_Options_Compare_Ascii_a mnu_Options_Compare_Ascii"},
    // /l already on: it is unchecked first, so its handler turns it on again.
    ClickCase{"AsciiOptionWithAsciiOn", "mnu_Options_Compare_Ascii", "mnu_Options_Compare_Ascii_n",
              "COMPARECONTROL/FC_N=True COMPARECONTROL/FC_L=True COMPARECONTROL/FC_B=False "
              "COMPARECONTROL/FC_U=False",
              "mnu_Options_Compare_Ascii_n mnu_Options_Compare_Ascii"},
    ClickCase{"AsciiOptionOffLeavesAscii", "mnu_Options_Compare_Ascii mnu_Options_Compare_Ascii_a",
              "mnu_Options_Compare_Ascii_a", "COMPARECONTROL/FC_A=False", "mnu_Options_Compare_Ascii"},
    ClickCase{"UnknownNameChangesNothing", "", "mnu_Dir", "", ""}),
    [](const testing::TestParamInfo<ClickCase>& info) { return std::string(info.param.name); });
// clang-format on

// Every pair names an opposite that names it back, in the same section; no name or
// key is used twice.
TEST(SwitchTable, PairsAreSymmetricAndNamesAndKeysUnique) {
    std::set<std::string> names, keys;
    for (const pv::SwitchItem& item : pv::switchItems()) {
        EXPECT_TRUE(names.insert(item.menuName).second) << item.menuName;
        EXPECT_TRUE(keys.insert(std::string(item.section) + "/" + item.key).second) << item.key;
        if (item.kind != pv::SwitchKind::Pair)
            continue;
        const pv::SwitchItem* opposite = pv::findSwitch(item.opposite);
        ASSERT_NE(opposite, nullptr) << item.menuName;
        EXPECT_STREQ(opposite->opposite, item.menuName);
        EXPECT_STREQ(opposite->section, item.section);
    }
    EXPECT_EQ(names.size(), 14u + 34u + 14u);
}

} // namespace
