#include "compare/singlecompare.h"
#include "platform/runtimeerror.h"

#include <gtest/gtest.h>

using namespace pv;

TEST(SingleCompare, CommandWithDefaultSwitches) {
    CompareOptions o;
    EXPECT_EQ(compareSinglesCommand("/prog", "x.txt", "/a", "x.txt", "/b",
                                    singleResultFile("/prog", "1"), o),
              "/prog/CompareSelectedFile.cmd \"/a/x.txt\" \"/b/x.txt\" "
              "\"/prog/PairviewSingle1.txt\" /lb100 /2 ");
}

// A program directory with a blank is quoted.
TEST(SingleCompare, ProgramDirectoryWithABlank) {
    EXPECT_EQ(compareSinglesCommand("/p q", "a b.txt", "/x y", "", "/", "/r.txt", CompareOptions{}),
              "\"/p q/CompareSelectedFile.cmd\" \"/x y/a b.txt\" \"/\" \"/r.txt\" /lb100 /2 ");
}

TEST(SingleCompare, HostileNames) {
    CompareOptions o;
    // The command file puts each name back between quotes, where a trailing
    // backslash would escape the closing one.
    EXPECT_THROW(compareSinglesCommand("/p", "odd\\", "/a", "x", "/b", "/r", o), RuntimeError);
    EXPECT_THROW(compareSinglesCommand("/p", "a\"b", "/a", "x", "/b", "/r", o), RuntimeError);
    EXPECT_THROW(compareSinglesCommand("/p", "x", "/a", "l\nf", "/b", "/r", o), RuntimeError);
}
