#include "platform/runtimeerror.h"
#include "platform/textfile.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

using pv::TextFileWriter;

TEST(TextFile, WriterEndsEveryLineWithCrLfAndAppends) {
    pvtest::TempDir dir;
    std::string path = dir / "out.txt";
    {
        TextFileWriter w(path, TextFileWriter::Mode::Replace);
        w.writeLine("one");
        w.writeLine();
        w.writeLine("two ");
    }
    EXPECT_EQ(pvtest::readFile(path), "one\r\n\r\ntwo \r\n");
    {
        TextFileWriter w(path, TextFileWriter::Mode::Append);
        w.writeLine("three");
    }
    EXPECT_EQ(pvtest::readFile(path), "one\r\n\r\ntwo \r\nthree\r\n");
    TextFileWriter(path, TextFileWriter::Mode::Replace).writeLine("x");
    EXPECT_EQ(pvtest::readFile(path), "x\r\n");
}

TEST(TextFile, OpenFailureCarriesErrno) {
    pvtest::TempDir dir;
    try {
        TextFileWriter w(dir / "missing/dir/out.txt", TextFileWriter::Mode::Replace);
        FAIL() << "expected an error";
    } catch (const pv::RuntimeError& e) {
        EXPECT_EQ(e.number(), ENOENT);
        EXPECT_NE(e.description().find("out.txt"), std::string::npos);
    }
}

TEST(TextFile, AtomicWriteReplacesWholeFileAndLeavesNoTemporary) {
    pvtest::TempDir dir;
    std::string path = dir.write("a.ini", "old contents");
    pv::writeFileAtomic(path, "new");
    EXPECT_EQ(pvtest::readFile(path), "new");
    int entries = 0;
    for ([[maybe_unused]] auto& e : std::filesystem::directory_iterator(dir.path()))
        ++entries;
    EXPECT_EQ(entries, 1);
    EXPECT_THROW(pv::writeFileAtomic(dir / "no/such/dir/x", "y"), pv::RuntimeError);
}

// A file replaced on close keeps its old contents until close(); a writer dropped
// or opened again before that leaves it so, and no temporary file behind.
TEST(TextFile, ReplaceOnCloseLeavesTheOldFileUntilClose) {
    pvtest::TempDir dir;
    std::string path = dir.write("Pairview.cmd", "old\r\n");
    auto entries = [&] {
        int n = 0;
        for ([[maybe_unused]] auto& e : std::filesystem::directory_iterator(dir.path()))
            ++n;
        return n;
    };
    {
        TextFileWriter w(path, TextFileWriter::Mode::ReplaceOnClose);
        w.writeLine("half");
        EXPECT_EQ(pvtest::readFile(path), "old\r\n");
        w.open(path, TextFileWriter::Mode::ReplaceOnClose);
        w.writeLine("half again");
    }
    EXPECT_EQ(pvtest::readFile(path), "old\r\n");
    EXPECT_EQ(entries(), 1);
    TextFileWriter w(path, TextFileWriter::Mode::ReplaceOnClose);
    w.writeLine("new");
    w.close();
    EXPECT_EQ(pvtest::readFile(path), "new\r\n");
    EXPECT_EQ(entries(), 1);
}
