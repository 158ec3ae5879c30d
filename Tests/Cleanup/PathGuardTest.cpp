#include "LumoCore/Cleanup/PathGuard.h"

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "Platform/Place.h"
#include "Tests/support/AwkwardTree.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using lumo::Language;
using lumo::PathGuard;
using namespace tarvo::testing;

namespace {

bool isRefused(const PathGuard& guard, const std::string& path) {
    EXPECT_EQ(guard.refusal({path}, Language::es).has_value(),
              !guard.place(path).has_value() && !guard.place(path).error().isMissing())
        << path;
    return guard.refusal({path}, Language::en) == "outside your home folder: " + path &&
           guard.refusal({path}, Language::es) == "fuera de tu carpeta personal: " + path;
}

} // namespace

TEST(PathGuard, RefusesEveryPathThatIsNotSpeltOutBeneathTheHome) {
    const TempHome home;
    home.file("file");
    home.folder("folder");
    const PathGuard guard(home.path());
    const std::string h = home.path();
    for (const std::string& path : wordsIn("/ /etc/passwd file ./file /Library/Caches /Applications "
                                           "/Applications/Utilities/Foo.app /Applications/Foo.app/../x "
                                           "/Applications/Foo.app/x.app /Applications//Foo.app "
                                           "/Applications/..app /Applications/.app /Applications/Foo")) {
        EXPECT_TRUE(isRefused(guard, path)) << path;
    }
    for (const std::string& end : wordsIn("/ /. /.. x/file /../other /folder/../../etc /missing/../file "
                                          "/folder/./x /folder//x //file /folder/ /missing/")) {
        EXPECT_TRUE(isRefused(guard, h + end)) << end;
    }
    for (const std::string& path : {std::string(), h, h + std::string("/file\0", 6)}) {
        EXPECT_TRUE(isRefused(guard, path)) << path;
    }
    for (const std::string& path : {h + "/file", h + "/folder/missing", h + "/missing/deep/er",
                                    std::string("/Applications/Foo.app"), h + "/..x", h + "/fol\ner\x80"}) {
        EXPECT_EQ(guard.refusal({path}), std::nullopt) << path;
    }
}

TEST(PathGuard, FollowsLinksThatStayInTheHomeAndRefusesThoseThatLeave) {
    const TempHome home;
    const TempHome outside;
    outside.file("sub/victim");
    home.file("real/item");
    home.link("relative", "real");
    home.link("absolute", home.path("real"));
    home.link("leaves", outside.path());
    home.link("chain", "leaves");
    home.link("up", "..");
    home.link("loop", "loop");
    const PathGuard guard(home.path());
    for (const char* name : {"relative/item", "absolute/item"}) {
        const auto place = guard.place(home.path(name));
        ASSERT_TRUE(place) << name;
        EXPECT_EQ(place->path(), std::filesystem::canonical(home.path("real")).string() + "/item");
    }
    for (const char* name : {"leaves/sub", "leaves/sub/victim", "chain/sub", "up/x"}) {
        EXPECT_TRUE(isRefused(guard, home.path(name))) << name;
    }
    EXPECT_EQ(guard.refusal({home.path("leaves")}), std::nullopt) << "the link itself may go";
    EXPECT_EQ(guard.refusal({home.path("loop/x")}, Language::en), "x: it is a link");
}

TEST(PathGuard, RefusesWhatIsHoldsOrLiesInTheOwnFolderHoweverItIsReached) {
    const TempHome home;
    home.file("Library/Application Support/TarvoAI/Apartado/20250101-000000/held");
    home.link("shortcut", "Library/Application Support");
    home.file("Library/Application Support/TarvoAI2/file");
    const PathGuard guard(home.path());
    for (const char* name :
         {"Library", "Library/Application Support", "Library/Application Support/TarvoAI/Apartado",
          "Library/Application Support/TarvoAI/missing/x", "shortcut/TarvoAI", "shortcut/TarvoAI/Apartado"}) {
        EXPECT_TRUE(isRefused(guard, home.path(name))) << name;
    }
    EXPECT_EQ(guard.refusal({home.path("Library/Application Support/TarvoAI2")}), std::nullopt);
}

TEST(PathGuard, ActsOnWhatItFoundWhenTheFolderIsSwappedForALinkAfterwards) {
    const TempHome home;
    const TempHome outside;
    outside.file("item", 10);
    home.file("folder/item", 10);
    home.folder("target");
    const PathGuard guard(home.path());
    const auto from = guard.place(home.path("folder/item"));
    const auto to = guard.place(home.path("target/moved"));
    ASSERT_TRUE(from && to);
    std::filesystem::rename(home.path("folder"), home.path("aside"));
    home.link("folder", outside.path());
    EXPECT_TRUE(lumo::platform::moveWithoutReplacing(*from, *to));
    EXPECT_TRUE(std::filesystem::exists(outside.path("item")));
    EXPECT_FALSE(std::filesystem::exists(home.path("aside/item")));
    EXPECT_TRUE(std::filesystem::exists(home.path("target/moved")));
}

TEST(PathGuard, KnowsAProtectedFolderHoweverItIsReached) {
    // A protected folder was a text: under another name, behind a link, it protected nothing.
    const TempHome home;
    home.file("Documents/keep/deep/x");
    home.file("Documents/other");
    home.link("cache", "Documents/keep");
    home.link("shortcut", "Documents");
    home.link("work", home.path("Documents/keep"));
    const TempHome beside;
    beside.link("home", home.path());
    for (const std::string& spelling :
         {home.path("Documents/keep"), home.path("work"), beside.path("home/shortcut/keep")}) {
        const PathGuard guard(home.path(), {spelling, home.path("missing")});
        const std::string reason = lumo::CleanupPlanner::protectedReason(Language::en);
        for (const char* name :
             {"Documents", "Documents/keep", "Documents/keep/deep", "Documents/keep/deep/x", "cache",
              "cache/deep", "shortcut", "shortcut/keep/deep/x", "work", "missing/x"}) {
            EXPECT_EQ(guard.refusal({home.path(name)}, Language::en), reason) << spelling << " " << name;
            EXPECT_TRUE(guard.place(home.path(name)) || name == std::string("missing/x"))
                << "may still be given back";
        }
        EXPECT_EQ(guard.refusal({home.path("Documents/other"), home.path("shortcut/other")}), std::nullopt);
        EXPECT_TRUE(guard.protectedRefusal({home.path("cache/deep/x")}));
        EXPECT_FALSE(guard.protectedRefusal({home.path("Documents/other"), "/etc"}));
    }
}

TEST(PathGuard, KnowsAProtectedFolderThroughAMount) {
    const TempHome home;
    home.file("Documents/keep/x");
    home.folder("mounted");
    expectHeld(withMounts({{home.path("Documents"), home.path("mounted")}}, [&] {
        for (const char* spelling : {"Documents/keep", "mounted/keep"}) {
            const PathGuard guard(home.path(), {home.path(spelling)});
            for (const char* name : {"Documents", "Documents/keep/x", "mounted/keep", "mounted/keep/x"}) {
                EXPECT_EQ(guard.refusal({home.path(name)}), lumo::CleanupPlanner::protectedReason()) << name;
            }
        }
        return !testing::Test::HasFailure();
    }));
}
