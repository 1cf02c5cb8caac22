// A find-file script as Pairview writes it, run by the interpreter, fills its
// capture file with the header lines and dir's listing.

#include "scriptrun.h"

#include <gtest/gtest.h>

using namespace pvtest;

namespace {

std::string findFileScript(const std::string& p, const std::string& q, const std::string& s,
                           const std::string& w) {
    const std::string dt = "2026-01-02 03:04:05";
    const std::string line2 = "echo " + dashes() + " >> " + quoted(q);
    std::string script = entry(1, "rem ---------- Start " + dt + " -----------", 1);
    script += entry(2, line2, 1);
    script += entry(1, "rem 1-2 " + p.substr(0, 2) + "'", 0);
    script += entry(1, "cd " + quoted(p), 1);
    script += entry(1, "/", 0); // the drive text: the mount point
    script += entry(2, "echo starting at : " + p + " >> " + quoted(q), 1);
    script += entry(2, line2, 1) + entry(2, line2, 1);
    script += entry(2, "echo searchFile = '" + s + "' >> " + quoted(q), 1);
    script += entry(2, line2, 1);
    for (int i = 0; i < 2; ++i)
        script += entry(2, "echo - >> " + quoted(q), 1);
    script += entry(1, "DIR " + w + " " + s + "  >> " + quoted(q), 0);
    for (int i = 0; i < 4; ++i)
        script += entry(2, "echo - >> " + quoted(q), 1);
    script += entry(2, line2, 1) + entry(2, line2, 1);
    script += entry(1, "", 0);
    script += entry(1, "true " + quoted(q), 0);
    return script;
}

TEST(FindFileScript, CaptureHoldsHeaderAndBareListing) {
    if (!havePvcmd())
        GTEST_SKIP() << "pvcmd is not built";
    TempDir program, tree;
    tree.write("a.txt", "a");
    tree.write("sub/b.TXT", "b");
    tree.write("sub/c.log", "c");
    std::string capture = program / "PairviewFINDFILE.txt";
    program.write("pairviewFINDFile.bat",
                  findFileScript(tree.str(), capture, "*.txt", "/a:-d/b/o:n/s"));
    runScript(program.str(), "pairviewFINDFile.bat");

    const std::string dashLine = dashes() + " \r\n";
    std::string expected = dashLine + "starting at : " + tree.str() + " \r\n" + dashLine +
                           dashLine + "searchFile = '*.txt' \r\n" + dashLine + "- \r\n- \r\n" +
                           tree.str() + "/a.txt\r\n" + tree.str() + "/sub/b.TXT\r\n" +
                           "- \r\n- \r\n- \r\n- \r\n" + dashLine + dashLine;
    EXPECT_EQ(readFile(capture), expected);
}

TEST(FindFileScript, DefaultLayoutAndNothingFound) {
    if (!havePvcmd())
        GTEST_SKIP() << "pvcmd is not built";
    TempDir program, tree;
    tree.write("report.doc", std::string(2048, 'r'));
    std::string capture = program / "PairviewFINDFILE.txt";
    program.write("one.bat", findFileScript(tree.str(), capture, "report.doc", ""));
    runScript(program.str(), "one.bat");
    std::string text = readFile(capture);
    EXPECT_NE(text.find("\r\n Directory of " + tree.str() + "\r\n\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("            2,048 report.doc\r\n"
                        "               1 File(s)          2,048 bytes\r\n"),
              std::string::npos)
        << text;

    // "File Not Found" goes to the error output, so the capture keeps only the header.
    std::string second = program / "second.txt";
    program.write("two.bat", findFileScript(tree.str(), second, "*.none", "/s"));
    runScript(program.str(), "two.bat");
    text = readFile(second);
    EXPECT_EQ(text.find("File(s)"), std::string::npos) << text;
    EXPECT_NE(text.find(" Volume Serial Number is "), std::string::npos) << text;
}

} // namespace
