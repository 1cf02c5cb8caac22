#include "scripts/toolswitches.h"

#include "settings/settings.h"

namespace pv {

namespace {

struct DirSwitch {
    const char* key;
    const char* text;
    const char* groupPrefix; // nullptr for a switch of its own
};

constexpr const char* kAttribute = "/a:";
constexpr const char* kOrder = "/o:";
constexpr const char* kTime = "/t:";

// In the order the keys are read and their texts appended.
constexpr DirSwitch kDirSwitches[] = {
    {"DIR_AA", "a", kAttribute},  {"DIR_AA_NOT", "-a", kAttribute},
    {"DIR_AD", "d", kAttribute},  {"DIR_AD_NOT", "-d", kAttribute},
    {"DIR_AH", "h", kAttribute},  {"DIR_AH_NOT", "-h", kAttribute},
    {"DIR_AR", "r", kAttribute},  {"DIR_AR_NOT", "-r", kAttribute},
    {"DIR_AS", "s", kAttribute},  {"DIR_AS_NOT", "-s", kAttribute},
    {"DIR_B", "/b", nullptr},     {"DIR_C", "/c", nullptr},
    {"DIR_D", "/d", nullptr},     {"DIR_L", "/l", nullptr},
    {"DIR_N", "/n", nullptr},     {"DIR_OD", "d", kOrder},
    {"DIR_OD_NOT", "-d", kOrder}, {"DIR_OE", "e", kOrder},
    {"DIR_OE_NOT", "-e", kOrder}, {"DIR_OG", "g", kOrder},
    {"DIR_OG_NOT", "-g", kOrder}, {"DIR_ON", "n", kOrder},
    {"DIR_ON_NOT", "-n", kOrder}, {"DIR_OS", "s", kOrder},
    {"DIR_OS_NOT", "-s", kOrder}, {"DIR_Q", "/q", nullptr},
    {"DIR_S", "/s", nullptr},     {"DIR_TA", "a", kTime},
    {"DIR_TC", "c", kTime},       {"DIR_TW", "w", kTime},
    {"DIR_W", "/w", nullptr},     {"DIR_X", "/x", nullptr},
    {"DIR_4", "/4", nullptr},     {"DIR_HELP", "/?", nullptr},
};

constexpr const char* kFindstrSwitches[][2] = {
    {"B", "/b "}, {"E", "/e "}, {"L", "/l "}, {"R", "/r "}, {"S", "/s "}, {"I", "/i "},
    {"X", "/x "}, {"V", "/v "}, {"N", "/n "}, {"O", "/o "}, {"P", "/p "}, {"OFFLINE", "/offline "},
};

} // namespace

SwitchLookup switchesIn(const Settings& settings, std::string section) {
    return [&settings, section = std::move(section)](std::string_view key) {
        return IniBool(settings.read(section, key));
    };
}

std::string dirSwitchString(const SwitchLookup& isSet) {
    std::string out;
    std::string started; // the prefixes already written
    for (const DirSwitch& s : kDirSwitches) {
        if (!isSet(s.key))
            continue;
        if (s.groupPrefix && started.find(s.groupPrefix) == std::string::npos) {
            out += s.groupPrefix;
            started += s.groupPrefix;
        }
        out += s.text;
    }
    return out;
}

std::string findstrSwitchString(const SwitchLookup& isSet) {
    std::string out;
    for (const auto& s : kFindstrSwitches)
        if (isSet(s[0]))
            out += s[1];
    return out;
}

} // namespace pv
