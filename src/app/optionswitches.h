#pragma once
// The tool switches of the "&Options" menu: one checkable menu item per switch,
// each stored under its own key the moment it changes. Turning some switches on
// turns others off; those rules live here so that every key is written by the
// handler of its own item, in the order the handlers run.

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pv {

enum class SwitchKind {
    Toggle,      // a click flips the item, nothing else changes
    Pair,        // the item and its opposite exclude each other
    Mode,        // the fc modes /l, /b and /u exclude each other
    AsciiOption, // /a and /n: turning one on also turns the ASCII mode /l on
};

struct SwitchItem {
    const char* menuName; // the QAction's objectName
    const char* caption;
    const char* section;
    const char* key;
    SwitchKind kind;
    const char* opposite; // pairs only: the other half; empty otherwise
};

// Every switch, in menu order: "COMPARECONTROL", then "DIRCONTROL", then "FINDCONTROL".
std::span<const SwitchItem> switchItems();

// The item of a menu name, or nullptr when the name is not a switch.
const SwitchItem* findSwitch(std::string_view menuName);

// The checked state of the menu items, as the menu holds it.
class SwitchStates {
  public:
    virtual ~SwitchStates() = default;
    virtual bool isChecked(std::string_view menuName) const = 0;
    virtual void setChecked(std::string_view menuName, bool checked) = 0;
};

struct SettingWrite {
    std::string section;
    std::string key;
    std::string value;
    friend bool operator==(const SettingWrite&, const SettingWrite&) = default;
};

using SettingWriter = std::function<void(const SettingWrite&)>;

// The click handler of a switch item: changes the checked states and writes the
// keys whose items changed (and, for a mode turned on, both other mode keys) in the
// order of the handlers. Returns the writes made; empty when the name is no switch.
std::vector<SettingWrite> clickSwitch(std::string_view menuName, SwitchStates& states,
                                      const SettingWriter& write);

} // namespace pv
