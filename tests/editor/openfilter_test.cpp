#include "editor/openfilter.h"

#include <gtest/gtest.h>

using namespace pv;

TEST(OpenFilter, DescriptionByFirstMatchingRule) {
    struct Row {
        const char* pattern;
        const char* description;
    } rows[] = {
        {" *.* ", "All "},
        {"*.HTML", "Web like"},
        {"*.exe", "Exe"},
        {"*.cmd", "DOS"},
        {"*.bat", "DOS"},
        {"*.prc", "SQL like"},
        {"*.frm", "Basic"},
        {"*.txt", ""},
        {"*.htm;*.exe", "Web like"},
        {"*.cls;*.sql", "SQL like"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.pattern);
        EXPECT_EQ(patternDescription(r.pattern), r.description);
    }
}

TEST(OpenFilter, FilterTextAndIndexFromThePatternList) {
    OpenFilter f = editorOpenFilter("*.*,*.htm;*.html,*.txt", " *.txt ");
    EXPECT_EQ(f.filter, "All  (*.*)|*.*|Web like (*.htm;*.html;)|*.htm;*.html;| (*.txt)|*.txt");
    EXPECT_EQ(f.filterIndex, 3);
    EXPECT_EQ(editorOpenFilter("*.*,*.txt", "*.cpp").filterIndex, 0);
    EXPECT_EQ(editorOpenFilter("*.*", "*.*").filter, "All  (*.*)|*.*");
    // The dialog lists the current pattern's entry first, each pattern on its own.
    EXPECT_EQ(dialogFilter(f), " (*.txt);;All  (*.*);;Web like (*.htm *.html)");
}
