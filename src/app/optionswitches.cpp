#include "app/optionswitches.h"

#include "settings/settings.h"

#include <array>

namespace pv {

namespace {

constexpr const char* kCompare = "COMPARECONTROL";
constexpr const char* kDir = "DIRCONTROL";
constexpr const char* kFind = "FINDCONTROL";

using K = SwitchKind;

// Captions are the menu's own texts, trailing blanks included.
constexpr std::array kItems{
    // clang-format off
    SwitchItem{"mnu_Options_Compare_List_DateTime", "Compare on Data Time in list", kCompare, "LIST_DateTime", K::Toggle, ""},
    SwitchItem{"mnu_Options_Compare_List_Length", "Compare on Length in list", kCompare, "LIST_Length", K::Toggle, ""},
    SwitchItem{"mnu_Options_Compare_List_Contents", "Compare on Contents in list", kCompare, "LIST_Contents", K::Toggle, ""},
    SwitchItem{"mnu_Options_Compare_List_Time2s", "Ignore time differences up to 2 seconds", kCompare, "LIST_Time2s", K::Toggle, ""},
    SwitchItem{"mnu_Options_Compare_List_HourShift", "Ignore exact hour shifts", kCompare, "LIST_HourShift", K::Toggle, ""},
    SwitchItem{"mnu_Options_Compare_Include_Sub_Directories", "Compare_Include_Sub_Directories", kCompare, "CMPR_SUB_DIRECTORIES", K::Toggle, ""},
    SwitchItem{"mnu_Options_Compare_Ascii", "/l  &Ascii Compare", kCompare, "FC_L", K::Mode, ""},
    SwitchItem{"mnu_Options_Compare_Binary", "/b &Binary Compare", kCompare, "FC_B", K::Mode, ""},
    SwitchItem{"mnu_Options_Compare_Unicode", "/u &Unicode Compare", kCompare, "FC_U", K::Mode, ""},
    SwitchItem{"mnu_Options_Compare_Ascii_a", "/a Abbreviates the output of an ASCII comparison", kCompare, "FC_A", K::AsciiOption, ""},
    SwitchItem{"mnu_Options_Compare_c", "/c Ignores the case of letters", kCompare, "FC_C", K::Toggle, ""},
    SwitchItem{"mnu_Options_Compare_Ascii_n", "/n Displays the line numbers during an ASCII comparison", kCompare, "FC_N", K::AsciiOption, ""},
    SwitchItem{"mnu_Options_Compare_t", "/t Prevents fc from converting tabs to spaces", kCompare, "FC_T", K::Toggle, ""},
    SwitchItem{"mnu_Options_Compare_w", "/w Compresses &white space ", kCompare, "FC_W", K::Toggle, ""},

    SwitchItem{"mnu_Dir_a_a", "a Files ready for archiving ", kDir, "DIR_AA", K::Pair, "mnu_Dir_a_a_not"},
    SwitchItem{"mnu_Dir_a_a_not", "-a Files that have not changed since the last backup ", kDir, "DIR_AA_NOT", K::Pair, "mnu_Dir_a_a"},
    SwitchItem{"mnu_Dir_a_d", "d Directories ", kDir, "DIR_AD", K::Pair, "mnu_Dir_a_d_not"},
    SwitchItem{"mnu_Dir_a_d_not", "-d Files only (not directories) ", kDir, "DIR_AD_NOT", K::Pair, "mnu_Dir_a_d"},
    SwitchItem{"mnu_Dir_a_hidden", "h Hidden files ", kDir, "DIR_AH", K::Pair, "mnu_Dir_a_h_not"},
    SwitchItem{"mnu_Dir_a_h_not", "-h Files that are not hidden ", kDir, "DIR_AH_NOT", K::Pair, "mnu_Dir_a_hidden"},
    SwitchItem{"mnu_Dir_a_r", "r Read-only files ", kDir, "DIR_AR", K::Pair, "mnu_Dir_a_r_not"},
    SwitchItem{"mnu_Dir_a_r_not", "-r Files that are not read-only ", kDir, "DIR_AR_NOT", K::Pair, "mnu_Dir_a_r"},
    SwitchItem{"mnu_Dir_a_s", "s System files ", kDir, "DIR_AS", K::Pair, "mnu_Dir_a_s_not"},
    SwitchItem{"mnu_Dir_a_s_not", "-s Files other than system files ", kDir, "DIR_AS_NOT", K::Pair, "mnu_Dir_a_s"},
    SwitchItem{"mnu_Dir_b", "/b heading information or a summary (overrides /w)", kDir, "DIR_B", K::Toggle, ""},
    SwitchItem{"mnu_Dir_c", "/c thousand separator in file sizes", kDir, "DIR_C", K::Toggle, ""},
    SwitchItem{"mnu_Dir_d", "/d wide format (shortened)", kDir, "DIR_D", K::Toggle, ""},
    SwitchItem{"mnu_Dir_l", "/l lower case ", kDir, "DIR_L", K::Toggle, ""},
    SwitchItem{"mnu_Dir_n", "/n long list format with file names on the far right of the screen", kDir, "DIR_N", K::Toggle, ""},
    SwitchItem{"mnu_Dir_o_d", "d By date and time, earliest first ", kDir, "DIR_OD", K::Pair, "mnu_Dir_o_d_not"},
    SwitchItem{"mnu_Dir_o_d_not", "-d By date and time, latest first ", kDir, "DIR_OD_NOT", K::Pair, "mnu_Dir_o_d"},
    SwitchItem{"mnu_Dir_o_e", "e In alphabetic order by extension ", kDir, "DIR_OE", K::Pair, "mnu_Dir_o_e_not"},
    SwitchItem{"mnu_Dir_o_e_not", "-e In reverse alphabetic order by extension (.ZZZ through .AAA) ", kDir, "DIR_OE_NOT", K::Pair, "mnu_Dir_o_e"},
    SwitchItem{"mnu_Dir_o_g", "g With directories grouped before files ", kDir, "DIR_OG", K::Pair, "mnu_Dir_o_g_not"},
    SwitchItem{"mnu_Dir_o_g_not", "-g With directories grouped after files ", kDir, "DIR_OG_NOT", K::Pair, "mnu_Dir_o_g"},
    SwitchItem{"mnu_Dir_o_n", "n In alphabetic order by name ", kDir, "DIR_ON", K::Pair, "mnu_Dir_o_n_not"},
    SwitchItem{"mnu_Dir_o_n_not", "-n In reverse alphabetic order by name (Z through A) ", kDir, "DIR_ON_NOT", K::Pair, "mnu_Dir_o_n"},
    SwitchItem{"mnu_Dir_o_s", "s By size, smallest first ", kDir, "DIR_OS", K::Pair, "mnu_Dir_o_s_not"},
    SwitchItem{"mnu_Dir_o_s_not", "-s By size, largest first ", kDir, "DIR_OS_NOT", K::Pair, "mnu_Dir_o_s"},
    SwitchItem{"mnu_Dir_q", "/q file ownership information", kDir, "DIR_Q", K::Toggle, ""},
    SwitchItem{"mnu_Dir_s", "/s directory and all subdirectories", kDir, "DIR_S", K::Toggle, ""},
    SwitchItem{"mnu_Dir_t_a", "a Last access ", kDir, "DIR_TA", K::Toggle, ""},
    SwitchItem{"mnu_Dir_t_c", "c Creation ", kDir, "DIR_TC", K::Toggle, ""},
    SwitchItem{"mnu_Dir_t_w", "w Last written ", kDir, "DIR_TW", K::Toggle, ""},
    SwitchItem{"mnu_Dir_w", "/w wide format", kDir, "DIR_W", K::Toggle, ""},
    SwitchItem{"mnu_Dir_x", "/x short names generated for files on NTFS and FAT volumes", kDir, "DIR_X", K::Toggle, ""},
    SwitchItem{"mnu_Dir_4", "/4  four-digit year format", kDir, "DIR_4", K::Toggle, ""},
    SwitchItem{"mnu_Dir_help", "/? Dir help", kDir, "DIR_HELP", K::Toggle, ""},

    SwitchItem{"mnu_Options_FindStr_file_type_breakout", "File Type Breakout", kFind, "FILETYPEBREAKOUT", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_B", "/b. Matches the pattern if at the beginning of a line", kFind, "B", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_E", "/e. Matches the pattern if at the end of a line.", kFind, "E", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_L", "/l. Uses search strings literally", kFind, "L", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_r", "/r regular expressions (unless /l)", kFind, "R", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_s", "/s subdirectories", kFind, "S", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_i", "/i  not case-sensitive", kFind, "I", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_x", "/x Prints lines that match exactly", kFind, "X", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_v", "/v Prints only lines that do not contain a match", kFind, "V", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_n", "/n Prints the line number before each line that matches", kFind, "N", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_m", "/m Prints only the file name if a file contains a match", kFind, "M", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_o", "/o Prints seek offset before each matching line", kFind, "O", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_p", "/p Skips files with non-printable characters", kFind, "P", K::Toggle, ""},
    SwitchItem{"mnu_Options_FindStr_offline", "/offline Processes files with offline attribute ", kFind, "OFFLINE", K::Toggle, ""},
    // clang-format on
};

constexpr std::array<const char*, 3> kModes{
    "mnu_Options_Compare_Ascii", "mnu_Options_Compare_Binary", "mnu_Options_Compare_Unicode"};
constexpr const char* kAsciiMode = "mnu_Options_Compare_Ascii";

class Clicker {
  public:
    Clicker(SwitchStates& states, const SettingWriter& write) : m_states(states), m_write(write) {}

    // One handler run. Handlers call one another exactly as the menu's own handlers
    // would; a handler that turns its item off never calls another, so this ends.
    void click(const SwitchItem& item) {
        const std::string_view name = item.menuName;
        if (item.kind == SwitchKind::Toggle || m_states.isChecked(name)) {
            const bool on = !m_states.isChecked(name);
            m_states.setChecked(name, on);
            store(item, on);
            return;
        }
        switch (item.kind) {
        case SwitchKind::Pair: {
            m_states.setChecked(name, true);
            const SwitchItem* opposite = findSwitch(item.opposite);
            if (opposite && m_states.isChecked(opposite->menuName))
                click(*opposite);
            store(item, true);
            break;
        }
        case SwitchKind::Mode:
            m_states.setChecked(name, true);
            store(item, true);
            // Both other modes are set checked first so that their handlers turn
            // them off: their keys are written "False" even when they were off.
            for (const char* other : kModes) {
                if (name == other)
                    continue;
                m_states.setChecked(other, true);
                click(*findSwitch(other));
            }
            break;
        case SwitchKind::AsciiOption:
            m_states.setChecked(name, true);
            store(item, true);
            // Unchecked first, so that the /l handler turns ASCII mode on.
            m_states.setChecked(kAsciiMode, false);
            click(*findSwitch(kAsciiMode));
            break;
        case SwitchKind::Toggle:
            break;
        }
    }

    std::vector<SettingWrite> takeWrites() { return std::move(m_writes); }

  private:
    void store(const SwitchItem& item, bool on) {
        SettingWrite w{item.section, item.key, switchText(on)};
        if (m_write)
            m_write(w);
        m_writes.push_back(std::move(w));
    }

    SwitchStates& m_states;
    const SettingWriter& m_write;
    std::vector<SettingWrite> m_writes;
};

} // namespace

std::span<const SwitchItem> switchItems() {
    return kItems;
}

const SwitchItem* findSwitch(std::string_view menuName) {
    for (const SwitchItem& item : kItems) {
        if (menuName == item.menuName)
            return &item;
    }
    return nullptr;
}

std::vector<SettingWrite> clickSwitch(std::string_view menuName, SwitchStates& states,
                                      const SettingWriter& write) {
    const SwitchItem* item = findSwitch(menuName);
    if (!item)
        return {};
    Clicker clicker(states, write);
    clicker.click(*item);
    return clicker.takeWrites();
}

} // namespace pv
