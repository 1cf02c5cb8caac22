#pragma once
// The switch texts of the dir and findstr commands the search scripts run, built
// from the option switches ("DIRCONTROL", "FINDCONTROL") the Options menu toggles.

#include <functional>
#include <string>
#include <string_view>

namespace pv {

class Settings;

// Whether the switch stored under a key is set.
using SwitchLookup = std::function<bool(std::string_view key)>;

// The switches of one settings section: a key is set when its value is "True" in
// any letter case.
SwitchLookup switchesIn(const Settings& settings, std::string section);

// dir's switches, nothing between them: "/a:d-h/b/o:n/s/t:w". The attribute, order
// and time keys share one "/a:", "/o:" or "/t:" prefix per group, written before
// the group's first set key.
std::string dirSwitchString(const SwitchLookup& isSet);

// findstr's switches, each text ending in a blank: "/s /i ".
std::string findstrSwitchString(const SwitchLookup& isSet);

} // namespace pv
