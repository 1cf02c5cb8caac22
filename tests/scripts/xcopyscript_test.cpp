#include "scripts/xcopyscript.h"

#include "platform/process.h"

#include <gtest/gtest.h>

namespace {

pv::XcopyScript twoFiles() {
    pv::XcopyScript s;
    s.now = "2026-11-23 08:09:10";
    s.leftDir = "/src/l";
    s.rightDir = "/dst/r";
    s.items = {"a.txt", "b c.h"};
    s.parameters = "/y /d";
    s.resultsPath = "/opt/pv/XCOPY_FILE.TXT";
    s.editor = "Write.exe";
    return s;
}

const std::string kR = "\"/opt/pv/XCOPY_FILE.TXT\"";

std::string frame(const std::string& copyLines) {
    return "\r\n\r\nREM ---------- Start 2026-11-23 08:09:10 -----------\r\n\r\n\r\n\r\n"
           "\r\n\r\nREM ---------------------\r\n\r\n\r\n\r\n"
           "\r\nDIR \"/src/l/*.*\"\r\n\r\nDIR \"/src/l/*.*\"\r\n\r\nDIR \"/src/l/*.*\"\r\n"
           "\r\nDIR \"/dst/r/*.*\"\r\n\r\nDIR \"/dst/r/*.*\"\r\n\r\nDIR \"/dst/r/*.*\"\r\n"
           "\r\nECHO \"---\" > " +
           kR + "\r\n" + copyLines +
           "\r\n\r\nREM ---------------------\r\n\r\n\r\n\r\n"
           "\r\nWrite.exe " +
           kR +
           "\r\n"
           "\r\n\r\nREM ---------- END 2026-11-23 08:09:10 -----------\r\n\r\n\r\n\r\n";
}

TEST(XcopyScript, OneCopyLinePerLeftItemByteForByte) {
    pv::XcopyScriptText out = pv::xcopyScriptText(twoFiles());
    EXPECT_EQ(out.text, frame("\r\nXCOPY \"/src/l/a.txt\" \"/dst/r/*.*\" /y /d >> " + kR + "\r\n" +
                              "\r\nXCOPY \"/src/l/b c.h\" \"/dst/r/*.*\" /y /d >> " + kR + "\r\n"));
    EXPECT_TRUE(out.leftOut.empty());
}

TEST(XcopyScript, NoItemsAndNoParameters) {
    pv::XcopyScript s = twoFiles();
    s.items.clear();
    EXPECT_EQ(pv::xcopyScriptText(s).text, frame(""));
    s.items = {"a.txt"};
    s.parameters = "";
    EXPECT_EQ(pv::xcopyScriptText(s).text,
              frame("\r\nXCOPY \"/src/l/a.txt\" \"/dst/r/*.*\"  >> " + kR + "\r\n"));
}

TEST(XcopyScript, NamesThatCannotStandInALineAreLeftOut) {
    pv::XcopyScript s = twoFiles();
    s.items = {"say \"hi\".txt", "a.txt", "two\nlines"};
    pv::XcopyScriptText out = pv::xcopyScriptText(s);
    EXPECT_EQ(out.text, frame("\r\nXCOPY \"/src/l/a.txt\" \"/dst/r/*.*\" /y /d >> " + kR + "\r\n"));
    EXPECT_EQ(out.leftOut,
              (std::vector<std::string>{"say \"hi\".txt (the name holds a double quote)",
                                        "two\nlines (the name holds a line break)"}));
}

// Inside the quotes the interpreter takes these as they are; a trailing
// backslash is doubled so that the splitter does not read an escaped quote.
TEST(XcopyScript, HostileNamesSplitBackToThemselves) {
    const char* names[] = {"a>b", "a<b", "a|b", "q&calc", "x^y", "100%PATH%", "-rf", "trail\\"};
    pv::XcopyScript s = twoFiles();
    s.parameters = "";
    for (const char* name : names) {
        s.items = {name};
        pv::XcopyScriptText out = pv::xcopyScriptText(s);
        EXPECT_TRUE(out.leftOut.empty()) << name;
        const std::size_t at = out.text.find("\r\nXCOPY ");
        ASSERT_NE(at, std::string::npos) << name;
        std::string line = out.text.substr(at + 2, out.text.find("\r\n", at + 2) - at - 2);
        EXPECT_EQ(pv::splitCommandLine(line),
                  (std::vector<std::string>{"XCOPY", "/src/l/" + std::string(name), "/dst/r/*.*",
                                            ">>", "/opt/pv/XCOPY_FILE.TXT"}))
            << line;
    }
}

TEST(XcopyResultsPath, SettingElseTheScriptNameUpperCased) {
    struct Row {
        const char* name;
        const char* setting;
        const char* script;
        const char* expected;
    } rows[] = {
        {"default", "", "/opt/Pv/Xcopy_FILE.CMD", "/opt/Pv/XCOPY_FILE.TXT"},
        {"every .CMD of the name", "", "/p/a.cmd.cmd", "/p/A.TXT.TXT"},
        {"directory keeps its case", "", "/Tools.cmd/x.Cmd", "/Tools.cmd/X.TXT"},
        {"setting wins", "/tmp/copy report.txt", "/p/Xcopy_FILE.CMD", "/tmp/copy report.txt"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::xcopyResultsPath(r.setting, r.script), r.expected) << r.name;
}

} // namespace
