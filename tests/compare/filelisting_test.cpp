#include "compare/filelisting.h"
#include "platform/runtimeerror.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

using pv::matchesPatternList;

TEST(PatternList, WildcardsIgnoreCaseAndAnyPatternMatches) {
    EXPECT_TRUE(matchesPatternList("README", "*.*"));
    EXPECT_TRUE(matchesPatternList("a.CPP", "*.cpp;*.h"));
    EXPECT_TRUE(matchesPatternList("x.h", "*.cpp;*.h"));
    EXPECT_FALSE(matchesPatternList("x.hpp", "*.cpp;*.h"));
    EXPECT_TRUE(matchesPatternList("file1.txt", "file?.txt"));
    EXPECT_FALSE(matchesPatternList("file12.txt", "file?.txt"));
    EXPECT_TRUE(matchesPatternList("a.aspx", "*.aspx;*.cs"));
    EXPECT_TRUE(matchesPatternList("Makefile", "make*"));
    EXPECT_FALSE(matchesPatternList("x.txt", ""));
    EXPECT_TRUE(matchesPatternList("abcabd", "*abd"));
    EXPECT_TRUE(matchesPatternList("Makefile", "*."));
    EXPECT_FALSE(matchesPatternList("a.txt", "*."));
    EXPECT_TRUE(matchesPatternList("README", "readme.*"));
}

TEST(FileListing, FilesFilteredSortedAndHiddenLeftOut) {
    pvtest::TempDir dir;
    for (const char* name : {"b.txt", "A.txt", "a.TXT", "_x.txt", ".hidden.txt", "c.cpp"})
        dir.write(name, "x");
    dir.mkdir("sub.txt");
    dir.mkdir(".git");
    dir.mkdir("Zed");
    EXPECT_EQ(pv::listFiles(dir.str(), "*.txt"),
              (std::vector<std::string>{"A.txt", "a.TXT", "b.txt", "_x.txt"}));
    EXPECT_EQ(pv::listSubdirectories(dir.str()), (std::vector<std::string>{"sub.txt", "Zed"}));
}

TEST(FileListing, UnreadableDirectoryThrowsWithErrno) {
    pvtest::TempDir dir;
    try {
        pv::listFiles(dir / "gone", "*.*");
        FAIL();
    } catch (const pv::RuntimeError& e) {
        EXPECT_EQ(e.number(), ENOENT);
    }
}

TEST(FileListing, JoinAndParent) {
    EXPECT_EQ(pv::joinPath("/", "a"), "/a");
    EXPECT_EQ(pv::joinPath("/x", "a"), "/x/a");
    EXPECT_EQ(pv::parentPath("/x/y"), "/x");
    EXPECT_EQ(pv::parentPath("/x"), "/");
    EXPECT_EQ(pv::normalizeDirectoryPath("/x//y/../z/"), "/x/z");
    EXPECT_EQ(pv::normalizeDirectoryPath("/"), "/");
    EXPECT_EQ(pv::normalizeDirectoryPath("rel").front(), '/');
}
