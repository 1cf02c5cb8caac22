#include "app/settingsseed.h"
#include "compare/compareoptions.h"
#include "settings/settings.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

// Only a settings file that does not exist is seeded: a user's own file, even an
// empty one, keeps what it holds.
TEST(SettingsSeed, OnlyANewFileIsSeeded) {
    pvtest::TempDir dir;
    pv::Settings fresh(dir / "new.ini");
    EXPECT_TRUE(pv::seedNewSettingsFile(fresh));
    EXPECT_EQ(fresh.read("APPLICATION", "FILEPATTERNLIST"), pv::kSeedPatternList);
    EXPECT_EQ(fresh.read("EDITORS", "ITEM0"), "Write.exe");
    // A first compare goes by time and length.
    EXPECT_TRUE(pv::readCompareOptions(fresh).listDateTime);
    EXPECT_TRUE(pv::readCompareOptions(fresh).listLength);
    EXPECT_FALSE(pv::seedNewSettingsFile(fresh));

    dir.write("empty.ini", "");
    pv::Settings empty(dir / "empty.ini");
    EXPECT_FALSE(pv::seedNewSettingsFile(empty));
    EXPECT_EQ(empty.read("APPLICATION", "FILEPATTERNLIST"), "");
    EXPECT_FALSE(pv::readCompareOptions(empty).listDateTime);
    EXPECT_FALSE(pv::readCompareOptions(empty).listLength);
}
