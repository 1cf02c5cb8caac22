#include "compare/filelisting.h"
#include "platform/runtimeerror.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

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

TEST(PatternList, ExclusionsAndDirectoryPatterns) {
    struct Row {
        const char* name;
        const char* entry;
        const char* patterns;
        bool file, directory;
    };
    const Row rows[] = {
        {"an exclusion wins over the inclusion", "x.o", "*.*;!*.o", false, true},
        {"a name no exclusion matches stays", "x.c", "*.*;!*.o;!*.tmp", true, true},
        {"the second exclusion counts too", "a.TMP", "*.*;!*.o;!*.tmp", false, true},
        {"exclusions alone let the rest through", "x.c", "!*.o", true, true},
        {"an excluded file still needs an inclusion", "x.c", "*.h;!*.o", false, true},
        {"a directory pattern leaves that directory out", "node_modules",
         "*.*;!.git/;!node_modules/", true, false},
        {"other directories stay", "src", "*.*; !node_modules/ ", true, true},
        {"directory inclusions limit the walk", "docs", "*.*;src/", true, false},
        {"a directory inclusion lets its directory through", "src", "*.*;src/", true, true},
        {"no directory pattern: every directory", "build", "*.c", false, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(matchesPatternList(row.entry, row.patterns), row.file);
        EXPECT_EQ(pv::directoryPassesPatternList(row.entry, row.patterns), row.directory);
    }
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

TEST(FileListing, OneReadGivesFilesAndDirectoriesWithOrWithoutEntryTypes) {
    pvtest::TempDir dir;
    dir.write("b.txt", "x");
    dir.write("A.dat", "x");
    dir.mkdir("sub");
    dir.mkdir(".hid");
    ASSERT_EQ(::symlink("sub", (dir / "linkdir").c_str()), 0);
    ASSERT_EQ(::symlink("b.txt", (dir / "linkfile").c_str()), 0);
    ASSERT_EQ(::symlink("nowhere", (dir / "dangling").c_str()), 0);
    ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0600), 0);
    // Without types every entry is looked at by a stat: links count as what they
    // point to, a dangling link and a pipe as neither.
    for (bool trust : {true, false}) {
        SCOPED_TRACE(trust ? "types from the directory" : "no types");
        pv::DirectoryListing listing = pv::readDirectory(dir.str(), trust);
        EXPECT_EQ(listing.files, (std::vector<std::string>{"A.dat", "b.txt", "linkfile"}));
        EXPECT_EQ(listing.subdirectories, (std::vector<std::string>{"linkdir", "sub"}));
    }
    EXPECT_EQ(pv::matchingNames({"A.dat", "b.txt", "c.TXT"}, "*.txt"),
              (std::vector<std::string>{"b.txt", "c.TXT"}));
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
