#include "scripts/toolswitches.h"

#include <gtest/gtest.h>

#include <set>

using pv::SwitchLookup;

namespace {

SwitchLookup keys(std::set<std::string> on) {
    return [on = std::move(on)](std::string_view key) { return on.count(std::string(key)) > 0; };
}

struct Row {
    const char* name;
    std::set<std::string> set;
    const char* expected;
};

TEST(DirSwitchString, GroupsShareOnePrefixInTableOrder) {
    const Row rows[] = {
        {"none", {}, ""},
        {"every group once",
         {"DIR_AD", "DIR_AH_NOT", "DIR_B", "DIR_ON", "DIR_S", "DIR_TW"},
         "/a:d-h/b/o:n/s/t:w"},
        {"files only by name below", {"DIR_AD_NOT", "DIR_ON", "DIR_S"}, "/a:-d/o:n/s"},
        // The keys are read in table order, not in the order they were ticked.
        {"order group split by a plain switch", {"DIR_OS_NOT", "DIR_Q", "DIR_OD"}, "/o:d-s/q"},
        {"time keys after the order ones", {"DIR_TA", "DIR_TC", "DIR_OE_NOT"}, "/o:-e/t:ac"},
        {"last keys", {"DIR_W", "DIR_X", "DIR_4", "DIR_HELP", "DIR_AS"}, "/a:s/w/x/4/?"},
        {"plain switches", {"DIR_C", "DIR_D", "DIR_L", "DIR_N"}, "/c/d/l/n"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::dirSwitchString(keys(r.set)), r.expected) << r.name;
}

TEST(FindstrSwitchString, EveryTextEndsInABlank) {
    const Row rows[] = {
        {"none", {}, ""},
        {"table order, not tick order", {"I", "S"}, "/s /i "},
        {"ends of the table", {"OFFLINE", "B", "P"}, "/b /p /offline "},
        {"middle", {"E", "L", "R", "X", "V", "N", "O"}, "/e /l /r /x /v /n /o "},
        {"M has no switch here", {"M"}, ""},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::findstrSwitchString(keys(r.set)), r.expected) << r.name;
}

} // namespace
