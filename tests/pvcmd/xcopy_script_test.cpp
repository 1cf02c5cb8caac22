// The copy script as Pairview writes it, run by the interpreter, copies the left
// files into the right directory and writes its results file.

#include "scriptrun.h"

#include <gtest/gtest.h>

using namespace pvtest;

namespace {

std::string xcopyScript(const std::string& l, const std::string& t,
                        const std::vector<std::string>& items, const std::string& params,
                        const std::string& r) {
    const std::string dt = "2026-01-02 03:04:05";
    std::string script = entry(2, "REM ---------- Start " + dt + " -----------", 3);
    script += entry(2, "REM ---------------------", 3);
    for (int i = 0; i < 3; ++i)
        script += entry(1, "DIR " + quoted(l + "/*.*"), 0);
    for (int i = 0; i < 3; ++i)
        script += entry(1, "DIR " + quoted(t + "/*.*"), 0);
    script += entry(1, "ECHO " + quoted("---") + " > " + quoted(r), 0);
    for (const std::string& item : items)
        script += entry(1,
                        "XCOPY " + quoted(l + "/" + item) + " " + quoted(t + "/*.*") + " " +
                            params + " >> " + quoted(r),
                        0);
    script += entry(2, "REM ---------------------", 3);
    script += entry(1, "true " + quoted(r), 0);
    script += entry(2, "REM ---------- END " + dt + " -----------", 3);
    return script;
}

TEST(XcopyScript, CopiesLeftFilesAndWritesResults) {
    if (!havePvcmd())
        GTEST_SKIP() << "pvcmd is not built";
    TempDir program, left, right;
    left.write("one.txt", "first");
    left.write("two words.txt", "second");
    right.write("two words.txt", "old");
    std::string results = program / "XCOPY_FILE.TXT";
    program.write("Xcopy_FILE.CMD", xcopyScript(left.str(), right.str(),
                                                {"one.txt", "two words.txt"}, "/y", results));
    runScript(program.str(), "Xcopy_FILE.CMD");
    EXPECT_EQ(readFile(right / "one.txt"), "first");
    EXPECT_EQ(readFile(right / "two words.txt"), "second");
    EXPECT_EQ(readFile(results), "\"---\" \r\n" + left / "one.txt" + "\r\n1 File(s) copied\r\n" +
                                     left / "two words.txt" + "\r\n1 File(s) copied\r\n");
}

TEST(XcopyScript, WithoutParametersAnExistingFileIsKept) {
    if (!havePvcmd())
        GTEST_SKIP() << "pvcmd is not built";
    TempDir program, left, right;
    left.write("a.txt", "new");
    right.write("a.txt", "old");
    std::string results = program / "XCOPY_FILE.TXT";
    program.write("Xcopy_FILE.CMD", xcopyScript(left.str(), right.str(), {"a.txt"}, "", results));
    runScript(program.str(), "Xcopy_FILE.CMD");
    // No input to answer the question: end of input answers No.
    EXPECT_EQ(readFile(right / "a.txt"), "old");
    EXPECT_EQ(readFile(results), "\"---\" \r\nOverwrite " + right / "a.txt" +
                                     " (Yes/No/All)? \r\n0 File(s) copied\r\n");
}

} // namespace
