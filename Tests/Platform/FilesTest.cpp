#include "Platform/Folder.h"
#include "Platform/StateFile.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <filesystem>

using lumo::platform::absolutePath;
using lumo::platform::readWhole;
using lumo::platform::replaceWhole;
using tarvo::testing::TempHome;

TEST(Folder, MakesPathsComparableAsText) {
    // Once "." stayed in a protected folder's path, which then protected nothing.
    const TempHome home;
    home.folder("a/b");
    home.link("to-b", "a/b");
    const std::string here = std::filesystem::current_path();
    for (const auto& [given, expected] :
         std::vector<std::pair<std::string, std::string>>{{home.path() + "//a/./b/", home.path("a/b")},
                                                          {home.path("a/.."), home.path()},
                                                          {home.path("to-b/.."), home.path("a")},
                                                          {home.path("to-b"), home.path("to-b")},
                                                          {".", here},
                                                          {"x/", here + "/x"},
                                                          {"//", "/"}}) {
        EXPECT_EQ(absolutePath(given), expected) << given;
    }
    EXPECT_FALSE(absolutePath(home.path("missing/..")));
}

TEST(StateFile, IsReplacedWholeWhereLinksLeadAndKeepsItsMode) {
    const TempHome home;
    home.fileWith("kept/real", "old");
    home.setMode("kept/real", 0640);
    home.link("link", "kept/real");
    home.link("dangling", "kept/new");
    ASSERT_TRUE(replaceWhole(home.path("link"), "one"));
    ASSERT_TRUE(replaceWhole(home.path("dangling"), "two"));
    EXPECT_EQ(readWhole(home.path("kept/real"), 100), "one");
    EXPECT_EQ(readWhole(home.path("kept/new"), 100), "two");
    EXPECT_TRUE(std::filesystem::is_symlink(home.path("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(home.path("dangling")));
    EXPECT_EQ(std::filesystem::status(home.path("kept/real")).permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(std::filesystem::status(home.path("kept/new")).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(lumo::platform::namesIn(home.path("kept")), (std::vector<std::string>{"new", "real"}));
}

TEST(StateFile, LeavesAloneWhatIsNoRegularFileAndNeverBlocksOnIt) {
    const TempHome home;
    home.folder("folder");
    home.fifo("fifo");
    home.file("large", 11);
    EXPECT_FALSE(replaceWhole(home.path("fifo"), "x"));
    EXPECT_FALSE(replaceWhole(home.path("folder"), "x"));
    EXPECT_FALSE(readWhole(home.path("fifo"), 10));
    EXPECT_FALSE(readWhole(home.path("folder"), 10));
    EXPECT_FALSE(readWhole(home.path("large"), 10));
}
