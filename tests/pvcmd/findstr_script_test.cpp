// A find-text script as Pairview writes it, run by the interpreter, fills its
// capture file with the header lines and findstr's report.

#include "scriptrun.h"

#include <gtest/gtest.h>

using namespace pvtest;

namespace {

std::string findTextScript(const std::string& p, const std::string& q, const std::string& s,
                           const std::string& w, const std::vector<std::string>& pieces) {
    const std::string dt = "2026-01-02 03:04:05";
    const std::string dash = "echo " + dashes() + " >> " + quoted(q);
    const std::string minus = "echo - >> " + quoted(q);
    std::string script = entry(1, "rem ---------- Start " + dt + " -----------", 1);
    script += entry(1, "rem 1-2 " + p.substr(0, 2) + "'", 0);
    script += entry(1, "cd " + quoted(p), 1);
    script += entry(1, "/", 0);
    script += entry(2, "echo starting at : " + p + " >> " + quoted(q), 1);
    script += entry(2, dash, 1);
    script += entry(2, "echo searchText = '" + s + "' >> " + quoted(q), 1);
    script += entry(2, dash, 1);
    script += entry(2, minus, 1) + entry(2, minus, 1);
    if (pieces.size() == 1) {
        script += entry(2, minus, 1);
        script +=
            entry(1, "findstr " + w + " /c:" + quoted(s) + " " + pieces[0] + " >> " + quoted(q), 0);
        script += entry(2, minus, 1);
    } else {
        for (const std::string& piece : pieces) {
            script += entry(2, minus, 1) + entry(2, minus, 1);
            script += entry(2, "echo  " + dashes() + " >> " + quoted(q), 1);
            script += entry(2,
                            "echo  ---------- Multi delimiter seperator Looking for " + piece +
                                " ----------- >> " + quoted(q),
                            1);
            script += entry(2, "echo  " + dashes() + "  >> " + quoted(q), 1);
            script += entry(2, minus, 1) + entry(2, minus, 1);
            script +=
                entry(1, "findstr " + w + " /c:" + quoted(s) + " " + piece + " >> " + quoted(q), 0);
            script += entry(2, minus, 1) + entry(2, minus, 1);
        }
    }
    script += entry(1, "", 0);
    script += entry(2, minus + "\r\n\r\nrem Pause", 1);
    script += entry(2, dash, 1);
    script += entry(2, dash, 1);
    script += entry(1, "true " + quoted(q), 0);
    return script;
}

class FindTextScript : public ::testing::Test {
  protected:
    void SetUp() override {
        m_tree.write("page.aspx", "<p>Hello World</p>\r\nbye\r\n");
        m_tree.write("code.cs", "// hello world\r\nclass C {}\r\n");
        m_tree.write("sub/deep.cs", "var s = \"HELLO WORLD\";\r\n");
        m_tree.write("notes.txt", "hello world\r\n");
    }
    TempDir m_program, m_tree;
};

TEST_F(FindTextScript, SingleSearchWithSubdirectoriesAndIgnoreCase) {
    if (!havePvcmd())
        GTEST_SKIP() << "pvcmd is not built";
    std::string capture = m_program / "PairviewFIND.txt";
    m_program.write("pairviewFINDDyn.bat", findTextScript(m_tree.str(), capture, "hello world",
                                                          "/s /i /n ", {"*.aspx *.cs"}));
    runScript(m_program.str(), "pairviewFINDDyn.bat");
    const std::string dashLine = dashes() + " \r\n";
    std::string expected = "starting at : " + m_tree.str() + " \r\n" + dashLine +
                           "searchText = 'hello world' \r\n" + dashLine + "- \r\n- \r\n- \r\n" +
                           "code.cs:1:// hello world\r\n" + "page.aspx:1:<p>Hello World</p>\r\n" +
                           "sub/deep.cs:1:var s = \"HELLO WORLD\";\r\n" + "- \r\n- \r\n" +
                           dashLine + dashLine;
    EXPECT_EQ(readFile(capture), expected);
}

TEST_F(FindTextScript, BreakoutRunsOneSearchPerPattern) {
    if (!havePvcmd())
        GTEST_SKIP() << "pvcmd is not built";
    std::string capture = m_program / "PairviewFIND1.txt";
    m_program.write("pairviewFINDDyn1.bat",
                    findTextScript(m_tree.str(), capture, "hello", "", {"*.aspx", "*.cs"}));
    runScript(m_program.str(), "pairviewFINDDyn1.bat");
    std::string text = readFile(capture);
    size_t aspx = text.find("Looking for *.aspx ----------- \r\n");
    size_t cs = text.find("Looking for *.cs ----------- \r\n");
    ASSERT_NE(aspx, std::string::npos) << text;
    ASSERT_NE(cs, std::string::npos) << text;
    // Case-sensitive: only the .cs comment matches, and it appears under its own banner.
    size_t hit = text.find("code.cs:// hello world\r\n");
    EXPECT_GT(hit, cs) << text;
    EXPECT_EQ(text.find("Hello"), std::string::npos) << text;
}

} // namespace
