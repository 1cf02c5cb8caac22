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

// Each text between `from` and the next `to`, in script order.
std::vector<std::string> lines(const std::string& text, const std::string& from,
                               const std::string& to) {
    std::vector<std::string> out;
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + 1))
        out.push_back(text.substr(at + from.size(), text.find(to, at) - at - from.size()));
    return out;
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
    const std::string block =
        kMinus + kMinus + "\r\n\r\necho  " + kDashes + " >> " + kQ + "\r\n\r\n" +
        "\r\n\r\necho  ---------- Multi delimiter seperator Looking for *.aspx ----------- >> " +
        kQ + "\r\n\r\n" + "\r\n\r\necho  " + kDashes + "  >> " + kQ + "\r\n\r\n" + kMinus + kMinus +
        "\r\nfindstr /s /i  /c:\"to do\" *.aspx >> " + kQ + "\r\n" + kMinus + kMinus;
    EXPECT_NE(pv::findTextScriptText(s).find(block), std::string::npos);

    using Texts = std::vector<std::string>;
    struct Row {
        const char* name;
        const char* pattern;
        bool breakout;
        Texts masks;   // after each findstr's search text
        Texts banners; // the masks the banners name
    } rows[] = {
        {"breakout", "*.aspx;*.cs", true, {"*.aspx", "*.cs"}, {"*.aspx", "*.cs"}},
        {"empty pieces get nothing", "*.c;;*.h;", true, {"*.c", "*.h"}, {"*.c", "*.h"}},
        {"one pattern with breakout", "*.*", true, {"*.*"}, {}},
        {"several without breakout", "*.c;*.h;", false, {"*.c *.h "}, {}},
    };
    for (const Row& r : rows) {
        s.pattern = r.pattern;
        s.breakout = r.breakout;
        const std::string text = pv::findTextScriptText(s);
        EXPECT_EQ(lines(text, "findstr /s /i  /c:\"to do\" ", " >> "), r.masks) << r.name;
        EXPECT_EQ(lines(text, "Looking for ", " ---"), r.banners) << r.name;
    }
}

// Typed text outside the quotes goes in with the interpreter's escapes: an echo
// of "a > b" must not empty the file b. Inside /c:"..." the text stays as typed.
TEST(FindTextScript, TypedTextIsEscapedWhereItStandsUnquoted) {
    pv::FindTextScript s = local();
    s.searchText = "a > b | c & d ^ %PATH%";
    s.directory = "/home/ann/a&b";
    s.pattern = "x>y;100%";
    s.breakout = true;
    const std::string text = pv::findTextScriptText(s);
    EXPECT_NE(text.find("\r\necho searchText = 'a ^> b ^| c ^& d ^^ %%PATH%%' >> " + kQ + "\r\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\r\necho starting at : /home/ann/a^&b >> "), std::string::npos) << text;
    EXPECT_NE(text.find("Looking for x^>y -----------"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\nfindstr /s /i  /c:\"a > b | c & d ^ %PATH%\" 100%% >> " + kQ),
              std::string::npos)
        << text;
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
