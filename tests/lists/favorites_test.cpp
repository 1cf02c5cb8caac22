#include "lists/favorites.h"

#include "platform/runtimeerror.h"
#include "settings/itemlist.h"
#include "support/temptree.h"

#include <cerrno>
#include <gtest/gtest.h>

using pv::DirectoryListState;

TEST(Favorites, CandidateComesFromThePaneClickedLast) {
    const DirectoryListState leftOpen{-1, "", "/l"};
    const DirectoryListState leftSub{0, "/l/sub", "/l"};
    const DirectoryListState rightSub{2, "/r/x", "/r"};
    const DirectoryListState nothing{-1, "", ""};
    struct Row {
        const char* name;
        DirectoryListState left, right;
        bool leftClicked, rightClicked;
        std::string candidate;
    } rows[] = {
        {"left, open directory", leftOpen, rightSub, true, false, "/l"},
        {"left, highlighted sub-directory", leftSub, rightSub, true, false, "/l/sub"},
        {"right", leftSub, rightSub, false, true, "/r/x"},
        {"no pane clicked", leftSub, rightSub, false, false, ""},
        {"left pane without a directory", nothing, rightSub, true, false, ""},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::favoriteCandidate(r.left, r.right, r.leftClicked, r.rightClicked),
                  r.candidate)
            << r.name;
}

TEST(Favorites, DuplicateInAnotherCaseIsRejectedOncePerMatch) {
    pvtest::TempDir dir;
    pv::Settings s(
        dir.write("p.ini", "[FAVORITES]\nITEM0=/Data/Src\nITEM1=/other\nITEM2=/DATA/src\n"));
    EXPECT_EQ(pv::addFavorite(s, "/data/SRC"), 2);
    EXPECT_EQ(s.read("FAVORITES", "ITEM3"), "");
    EXPECT_EQ(pv::addFavorite(s, "/data/new"), 0);
    EXPECT_EQ(pv::readItemList(s, "FAVORITES"),
              (std::vector<std::string>{"/Data/Src", "/other", "/DATA/src", "/data/new"}));
}

TEST(Favorites, LocationTakesTheMountPointUnlessOnTheNetwork) {
    const std::vector<std::string> drives{"/", "/mnt/usb"};
    pv::FavoriteLocation local = pv::favoriteLocation("/mnt/usb/photos", drives);
    EXPECT_EQ(local.drive, "/mnt/usb");
    EXPECT_EQ(local.directory, "/mnt/usb/photos");
    pv::FavoriteLocation network = pv::favoriteLocation("//server/share", drives);
    EXPECT_FALSE(network.drive);
    EXPECT_EQ(network.directory, "//server/share");
}

TEST(Favorites, MenuErrorNamesDrivePathAndReason) {
    EXPECT_EQ(pv::favoriteMenuErrorText("/", "/gone", pv::RuntimeError(ENOENT, "Path not found")),
              "Menu:FavoritesClic::Error: \r\ntheDrive:/\r\nthePath:/gone\r\nPath not found\r\n"
              "Err.LastDllError2\r\n Err.source: Pairview");
}
