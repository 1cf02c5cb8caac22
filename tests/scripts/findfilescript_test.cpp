#include "scripts/findfilescript.h"

#include <gtest/gtest.h>

namespace {

const std::string kDashes(83, '-');

pv::FindFileScript local() {
    return {"2026-11-23 08:09:10",          "/home/ann/src", "/home", "*.h", "/a:-d/o:n/s",
            "/opt/pv/PairviewFINDFILE.txt", "Write.exe"};
}

TEST(FindFileScript, LocalDirectoryByteForByte) {
    const std::string q = "\"/opt/pv/PairviewFINDFILE.txt\"";
    const std::string dash = "\r\n\r\necho " + kDashes + " >> " + q + "\r\n\r\n";
    const std::string minus = "\r\n\r\necho - >> " + q + "\r\n\r\n";
    const std::string expected =
        "\r\nrem ---------- Start 2026-11-23 08:09:10 -----------\r\n\r\n" + dash +
        "\r\nrem 1-2 /h'\r\n"
        "\r\ncd \"/home/ann/src\"\r\n\r\n"
        "\r\n/home\r\n"
        "\r\n\r\necho starting at : /home/ann/src >> " +
        q + "\r\n\r\n" + dash + dash + "\r\n\r\necho searchFile = '*.h' >> " + q + "\r\n\r\n" +
        dash + minus + minus + "\r\nDIR /a:-d/o:n/s *.h  >> " + q + "\r\n" + minus + minus + minus +
        minus + dash + dash + "\r\n\r\n" + "\r\nWrite.exe " + q + "\r\n";
    EXPECT_EQ(pv::findFileScriptText(local()), expected);
}

TEST(FindFileScript, TypedNameIsEscapedInTheEchoAndTheDirLine) {
    pv::FindFileScript s = local();
    s.searchText = "a>b|%x%";
    const std::string q = "\"/opt/pv/PairviewFINDFILE.txt\"";
    const std::string text = pv::findFileScriptText(s);
    EXPECT_NE(text.find("\r\necho searchFile = 'a^>b^|%%x%%' >> " + q + "\r\n"), std::string::npos)
        << text;
    EXPECT_NE(text.find("\r\nDIR /a:-d/o:n/s a^>b^|%%x%%  >> " + q + "\r\n"), std::string::npos)
        << text;
}

TEST(FindFileScript, NetworkPathIsEnteredWithPushdAndLeftWithPopd) {
    pv::FindFileScript s = local();
    s.directory = "//server/share/dir";
    std::string text = pv::findFileScriptText(s);
    EXPECT_NE(text.find("\r\nrem 1-2 //'\r\n\r\nPushd \"//server/share/dir\"\r\n\r\n\r\n\r\necho "
                        "starting at : //server/share/dir >> "),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find("cd "), std::string::npos);
    EXPECT_EQ(text.find("\r\n/home\r\n"), std::string::npos);
    // Popd stands between the two closing dash lines.
    EXPECT_NE(text.find("\r\n\r\n\r\nPopd \r\n\r\n\r\necho " + kDashes), std::string::npos) << text;
    EXPECT_EQ(text.find("Popd"), text.rfind("Popd"));
}

TEST(FindFileScript, CaptureStartAndScriptName) {
    EXPECT_EQ(pv::findFileCaptureStart("2026-11-23 08:09:10"),
              "\r\n\r\n ---------- Start 2026-11-23 08:09:10 -----------\r\n\r\n");
    EXPECT_EQ(pv::findFileScriptPath("/opt/pv", ""), "/opt/pv/pairviewFINDFile.bat");
    EXPECT_EQ(pv::findFileScriptPath("/opt/pv", "2"), "/opt/pv/pairviewFINDFile2.bat");
    EXPECT_EQ(pv::findFileScriptPath("/", "1"), "/pairviewFINDFile1.bat");
}

} // namespace
