#include "app/windowcommands.h"

#include <gtest/gtest.h>

TEST(WindowCommands, ParallelLocationAppendsTheLastComponent) {
    struct Row {
        const char* source;
        const char* target;
        const char* expected;
    } rows[] = {
        {"/old/src", "/new", "/new/src"},
        {"/old/src", "/", "//src"}, // texts joined unchanged; the pane refuses it
        {"/", "/new", "/new/"},
        {"/a b/c d", "/x", "/x/c d"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::parallelLocation(r.source, r.target), r.expected) << r.source;
}

TEST(WindowCommands, RefreshOnEveryFifthTickOnly) {
    std::vector<int> refreshed;
    for (int tick = 1; tick <= 12; ++tick)
        if (pv::isRefreshTick(tick))
            refreshed.push_back(tick);
    EXPECT_EQ(refreshed, (std::vector<int>{5, 10}));
}

TEST(WindowCommands, AdditionalCaption) {
    EXPECT_EQ(pv::additionalCompareCaption(1), "Additional Pairview:1");
    EXPECT_EQ(pv::additionalCompareCaption(12), "Additional Pairview:12");
}
