#include "scripts/findtextscript.h"

#include <gtest/gtest.h>

namespace {

const std::string kDashes(83, '-');
const std::string kQ = "\"/opt/pv/PairviewFIND.txt\"";
const std::string kMinus = "\r\n\r\necho - >> " + kQ + "\r\n\r\n";

pv::FindTextScript local() {
    pv::FindTextScript s;
    s.now = "2026-11-23 08:09:10";
    s.directory = "/home/ann/src";
    s.drive = "/home";
    s.searchText = "to do";
    s.switches = "/s /i ";
    s.pattern = "*.aspx;*.cs";
    s.capturePath = "/opt/pv/PairviewFIND.txt";
    s.editor = "Write.exe";
    return s;
}

std::size_t count(const std::string& text, const std::string& what) {
    std::size_t n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++n;
    return n;
}

TEST(FindTextScript, SingleSearchByteForByte) {
    const std::string dash = "\r\n\r\necho " + kDashes + " >> " + kQ + "\r\n\r\n";
    const std::string expected =
        "\r\nrem ---------- Start 2026-11-23 08:09:10 -----------\r\n\r\n"
        "\r\nrem 1-2 /h'\r\n"
        "\r\ncd \"/home/ann/src\"\r\n\r\n"
        "\r\n/home\r\n"
        "\r\n\r\necho starting at : /home/ann/src >> " +
        kQ + "\r\n\r\n" + dash + "\r\n\r\necho searchText = 'to do' >> " + kQ + "\r\n\r\n" + dash +
        kMinus + kMinus + kMinus + "\r\nfindstr /s /i  /c:\"to do\" *.aspx *.cs >> " + kQ + "\r\n" +
        kMinus + "\r\n\r\n" + "\r\n\r\necho - >> " + kQ + "\r\n\r\nrem Pause\r\n\r\n" + dash +
        dash + "\r\nWrite.exe " + kQ + "\r\n";
    EXPECT_EQ(pv::findTextScriptText(local()), expected);
}

TEST(FindTextScript, BreakoutGivesOneBannerAndFindstrPerPattern) {
    pv::FindTextScript s = local();
    s.breakout = true;
    s.switches = "";
    std::string text = pv::findTextScriptText(s);
    const std::string block =
        kMinus + kMinus + "\r\n\r\necho  " + kDashes + " >> " + kQ + "\r\n\r\n" +
        "\r\n\r\necho  ---------- Multi delimiter seperator Looking for *.aspx ----------- >> " +
        kQ + "\r\n\r\n" + "\r\n\r\necho  " + kDashes + "  >> " + kQ + "\r\n\r\n" + kMinus + kMinus +
        "\r\nfindstr  /c:\"to do\" *.aspx >> " + kQ + "\r\n" + kMinus + kMinus;
    EXPECT_NE(text.find(block), std::string::npos) << text;
    const std::size_t first = text.find("Looking for *.aspx");
    const std::size_t second = text.find("Looking for *.cs");
    ASSERT_NE(second, std::string::npos);
    EXPECT_LT(first, second);
    EXPECT_NE(text.find("\r\nfindstr  /c:\"to do\" *.cs >> "), std::string::npos);
    EXPECT_EQ(count(text, "findstr "), 2u);
}

TEST(FindTextScript, WhenTheSingleBlockIsUsed) {
    struct Row {
        const char* name;
        const char* pattern;
        bool breakout;
        const char* findstrLine;
    } rows[] = {
        {"one pattern with breakout", "*.*", true, "findstr /s /i  /c:\"to do\" *.* >> "},
        {"several without breakout", "*.c;*.h;", false, "findstr /s /i  /c:\"to do\" *.c *.h  >> "},
    };
    for (const Row& r : rows) {
        pv::FindTextScript s = local();
        s.pattern = r.pattern;
        s.breakout = r.breakout;
        std::string text = pv::findTextScriptText(s);
        EXPECT_NE(text.find(std::string("\r\n") + r.findstrLine + kQ), std::string::npos)
            << r.name << "\n"
            << text;
        EXPECT_EQ(count(text, "findstr "), 1u) << r.name;
        EXPECT_EQ(text.find("Looking for"), std::string::npos) << r.name;
    }
}

TEST(FindTextScript, EmptyPatternPiecesGetNoFindstr) {
    pv::FindTextScript s = local();
    s.breakout = true;
    s.pattern = "*.c;;*.h;";
    std::string text = pv::findTextScriptText(s);
    EXPECT_EQ(count(text, "findstr "), 2u) << text;
    EXPECT_EQ(count(text, "Looking for"), 2u);
    EXPECT_EQ(text.find("Looking for  "), std::string::npos);
}

TEST(FindTextScript, NetworkPathIsEnteredWithPushDAndLeftWithPopd) {
    pv::FindTextScript s = local();
    s.directory = "//server/share";
    std::string text = pv::findTextScriptText(s);
    EXPECT_NE(text.find("\r\nrem 1-2 //'\r\n\r\nPushD \"//server/share\"\r\n\r\n\r\n\r\necho "),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find("cd "), std::string::npos);
    EXPECT_NE(text.find("rem Pause\r\n\r\n\r\n\r\necho " + kDashes + " >> " + kQ +
                        "\r\n\r\n\r\nPopd \r\n\r\n\r\necho " + kDashes),
              std::string::npos)
        << text;
}

TEST(FindTextScript, CaptureStartAndScriptName) {
    EXPECT_EQ(pv::findTextCaptureStart("2026-11-23 08:09:10"),
              "\r\n\r\n---------- Start 2026-11-23 08:09:10 -----------\r\n\r\n");
    EXPECT_EQ(pv::findTextScriptPath("/opt/pv", "3"), "/opt/pv/pairviewFINDDyn3.bat");
}

} // namespace
