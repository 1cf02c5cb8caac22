#include "status/statusline.h"

#include <gtest/gtest.h>

using namespace pv;

TEST(StatusLine, SplitAtTheLengthPart) {
    struct Row {
        const char* text;
        bool hasLength;
        const char* first;
        const char* second;
    } rows[] = {
        {"2026\\05\\07 9:5:7 - 1234", true, "2026\\05\\07 9:5:7 ", " 1234"},
        {" - 1234", true, " ", " 1234"},
        {"Can't open the file", false, "Can't open the file", ""},
        {"2026\\05\\07 9:5:7", false, "2026\\05\\07 9:5:7", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        AttributeSplit s = splitAttributeText(row.text);
        EXPECT_EQ(s.hasLength, row.hasLength);
        EXPECT_EQ(s.first, row.first);
        EXPECT_EQ(s.second, row.second);
    }
}

TEST(StatusLine, EachSideKeepsItsOwnPanels) {
    StatusLine line;
    std::string attrOne, attrTwo;
    line.Set_StatusBar1("", "", "", "", "file two:", "r.txt", attrOne, attrTwo,
                        [] { return std::string("2026\\01\\02 3:4:5 - 99"); });
    line.Set_StatusBar1("", "", "", "", "file one:", "l.txt", attrOne, attrTwo,
                        [] { return std::string("Can't open the file"); });
    StatusLine::Panels expected = {"Can't open the file", "",     "2026\\01\\02 3:4:5 ", " 99",
                                   "file one:",           "l.txt"};
    EXPECT_EQ(line.panels(), expected);
    EXPECT_EQ(attrOne, "Can't open the file");
    EXPECT_EQ(attrTwo, "2026\\01\\02 3:4:5 - 99");
}

TEST(StatusLine, EmptyAttributeTextsLeavePanelsAndExplicitTextsFillThem) {
    StatusLine line;
    std::string attrOne, attrTwo;
    line.Set_StatusBar1("a", "b", "c", "d", "L", "F", attrOne, attrTwo, {});
    line.Set_StatusBar1("", "", "", "", "file one:", "n", attrOne, attrTwo,
                        [] { return std::string(); });
    StatusLine::Panels expected = {"a", "b", "c", "d", "file one:", "n"};
    EXPECT_EQ(line.panels(), expected);
    // text4 given: taken instead of looking at the file.
    bool looked = false;
    line.Set_StatusBar1("", "", "", " - 5", "file two:", "m", attrOne, attrTwo, [&] {
        looked = true;
        return std::string();
    });
    EXPECT_FALSE(looked);
    EXPECT_EQ(line.panels()[2], " ");
    EXPECT_EQ(line.panels()[3], " 5");
}
