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

TEST(SingleCompare, SwitchesAreTrimmedAndInFixedOrder) {
    CompareOptions o;
    o.fcLb = "  /lb9 ";
    o.fcNnnn = "";
    o.fcW = o.fcA = o.fcU = o.fcB = o.fcT = o.fcC = o.fcN = o.fcL = true;
    std::string cmd = compareSinglesCommand("/p", "a b.txt", "/x y", "", "/", "/p/r.txt", o);
    EXPECT_EQ(cmd, "/p/CompareSelectedFile.cmd \"/x y/a b.txt\" \"/\" \"/p/r.txt\" "
                   "/lb9 /a /b /c /l /n /t /u /w ");
}

TEST(SingleCompare, HostileNames) {
    CompareOptions o;
    // The command file puts each name back between quotes, where a trailing
    // backslash would escape the closing one.
    EXPECT_THROW(compareSinglesCommand("/p", "odd\\", "/a", "x", "/b", "/r", o), RuntimeError);
    EXPECT_THROW(compareSinglesCommand("/p", "a\"b", "/a", "x", "/b", "/r", o), RuntimeError);
    EXPECT_THROW(compareSinglesCommand("/p", "x", "/a", "l\nf", "/b", "/r", o), RuntimeError);
}
