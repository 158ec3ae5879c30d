#include "Platform/Folder.h"
#include "Platform/ForeignFile.h"
#include "Platform/StateFile.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

using namespace lumo;
using platform::absolutePath;
using platform::readWhole;
using platform::replaceWhole;
using namespace tarvo::testing;

TEST(Folder, MakesPathsComparableAsText) {
    // Once "." stayed in a protected folder's path, which then protected nothing.
    const TempHome home;
    home.folder("a/b");
    home.link("to-b", "a/b");
    const std::string here = std::filesystem::current_path();
    using Case = std::pair<std::string, std::string>;
    for (const auto& [given, expected] :
         {Case{home.path() + "//a/./b/", home.path("a/b")}, Case{home.path("a/.."), home.path()},
          Case{home.path("to-b/.."), home.path("a")}, Case{home.path("to-b"), home.path("to-b")},
          Case{".", here}, Case{"x/", here + "/x"}, Case{"//", "/"}}) {
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
    EXPECT_EQ(platform::namesIn(home.path("kept")), (std::vector<std::string>{"new", "real"}));
}

TEST(StateFile, IsReplacedInPiecesOnlyByAllOfThem) {
    const TempHome home;
    home.fileWith("kept", "old");
    home.setMode("kept", 0640);
    const auto pieces = [](bool isWhole) {
        return [=](const platform::TakePiece& take) { return take("one ") && take("two") && isWhole; };
    };
    EXPECT_EQ(platform::replaceInPieces(home.path("kept"), pieces(false)).error().code, ECANCELED);
    EXPECT_EQ(readWhole(home.path("kept"), 100), "old");
    ASSERT_TRUE(platform::replaceInPieces(home.path("kept"), pieces(true)));
    EXPECT_EQ(readWhole(home.path("kept"), 100), "one two");
    EXPECT_EQ(std::filesystem::status(home.path("kept")).permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(platform::namesIn(home.path()), std::vector<std::string>{"kept"});
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

TEST(ForeignFile, StartsOverWhenItsOwnerWritesMeanwhileAndGivesUpInTheEnd) {
    const TempHome home;
    const std::string path = home.fileWith("settings", "a");
    home.setMode("settings", 0640);
    const auto rewrite = [&](int writes) {
        return platform::rewriteForeign(path, path + ".old", 100, [&](const auto& present) {
            if (writes-- > 0) {
                std::ofstream(path) << *present << "b";
            }
            return std::optional(present.value_or("") + "!");
        });
    };
    ASSERT_TRUE(rewrite(2));
    EXPECT_EQ(readWhole(path, 100), "abb!");
    EXPECT_EQ(readWhole(path + ".old", 100), "abb");
    EXPECT_EQ(std::filesystem::status(path + ".old").permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(rewrite(99).error().code, ESTALE);
    EXPECT_EQ(readWhole(path, 100), "abb!bbbbb");
    EXPECT_EQ(platform::namesIn(home.path()), (std::vector<std::string>{"settings", "settings.old"}));
}

TEST(ForeignFile, IsLeftAloneWhenItMayNotBeWrittenOrIsNoFile) {
    const TempHome home;
    home.fileWith("a/settings", "old");
    home.setMode("a/settings", 0400);
    home.folder("b/settings");
    home.fifo("c/settings");
    home.link("d", "settings");
    home.link("settings", "d");
    home.fileWith("e", "no folder");
    const auto rewriteAll = [&] {
        for (const char* name : {"a/settings", "b/settings", "c/settings", "d", "e/f"}) {
            EXPECT_FALSE(platform::rewriteForeign(home.path(name), home.path("old"), 100, [](const auto&) {
                return std::optional<std::string>("new");
            })) << name;
        }
        return !HasFailure();
    };
    EXPECT_NE(asOrdinaryUser(home.path(), rewriteAll), Outcome::failed);
    EXPECT_EQ(readWhole(home.path("a/settings"), 100), "old");
    EXPECT_EQ(platform::namesIn(home.path("a")), std::vector<std::string>{"settings"});
}
