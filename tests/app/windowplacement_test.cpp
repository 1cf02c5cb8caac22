#include "app/windowplacement.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

// What a stored placement reads back as; anything damaged is ignored, never half-used.
TEST(WindowPlacement, ReadsWhatWasWrittenAndIgnoresDamage) {
    pvtest::TempDir dir;
    pv::Settings settings(dir / "p.ini");
    EXPECT_EQ(pv::readWindowPlacement(settings), std::nullopt);

    const pv::WindowPlacement stored{-20, 35, 900, 600, true};
    pv::writeWindowPlacement(settings, stored);
    EXPECT_EQ(settings.read("MAINWINDOW", "PLACEMENT"), "-20,35,900,600,1");
    EXPECT_EQ(pv::readWindowPlacement(settings), stored);

    struct Row {
        const char* text;
        bool valid;
    };
    const Row rows[] = {
        {"0,0,200,150,0", true},
        {"0,0,199,150,0", false},
        {"0,0,200,149,0", false},
        {"0,0,800,600", false},
        {"0,0,800,600,0,1", false},
        {"0,0,800,600,2", false},
        {"0,0,800,x600,0", false},
        {"0,0,800,600,0 ", true}, // values are read trimmed
        {"", false},
    };
    for (const Row& row : rows) {
        settings.write("MAINWINDOW", "PLACEMENT", row.text);
        EXPECT_EQ(pv::readWindowPlacement(settings).has_value(), row.valid) << row.text;
    }
}
