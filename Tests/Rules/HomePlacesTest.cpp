#include "LumoCore/Rules/HomePlaces.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using namespace lumo;
using tarvo::testing::TempHome;

namespace {

using Environment = std::map<std::string, std::string>;

HomePlaces placesOf(const TempHome& home, const Environment& environment, System system = System::linux) {
    return {home.path(), system, [&](const std::string& name) {
                const auto variable = environment.find(name);
                return variable != environment.end() ? std::optional(variable->second) : std::nullopt;
            }};
}

} // namespace

TEST(HomePlaces, AreWhereTheUsersSettingsSay) {
    const TempHome home;
    home.fileWith(".config/user-dirs.dirs", "# x\nXDG_DOWNLOAD_DIR=\"$HOME/Descargas\"\n"
                                            "#XDG_MUSIC_DIR=\"/music\"\nXDG_PICTURES_DIR=\"Pictures2\"\n"
                                            " XDG_DESKTOP_DIR=\"/a/b \\\"c\\\"/\" # x\n"
                                            "XDG_DOCUMENTS_DIR=\"$HOME/\"\nXDG_TEMPLATES_DIR=\"$HOME\"\n");
    const HomePlaces places = placesOf(home, {});
    EXPECT_EQ(places.placed("~/Downloads/x"), "~/Descargas/x");
    EXPECT_EQ(places.path("~/Downloads"), home.path("Descargas"));
    EXPECT_EQ(places.path("~/Desktop"), "/a/b \"c\"");
    // A folder named as the home itself is how they say that there is none.
    for (const char* kept : {"~/Documents", "~/Templates", "~/Music", "~/Pictures", "~/DownloadsX"}) {
        EXPECT_EQ(places.placed(kept), kept);
    }
    EXPECT_THAT(places.mainFolders(),
                testing::IsSupersetOf({home.path("Descargas"), home.path("Documents"), home.path("Videos")}));
    EXPECT_EQ(placesOf(home, {}, System::macos).placed("~/Downloads"), "~/Downloads");
}

TEST(HomePlaces, FollowTheBaseFoldersAndTheToolsVariables) {
    const TempHome home;
    home.fileWith("settings/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Escritorio\"\n");
    const HomePlaces places = placesOf(home, {{"XDG_CACHE_HOME", home.path("var/cache/")},
                                              {"XDG_CONFIG_HOME", home.path("settings")},
                                              {"UV_CACHE_DIR", home.path("fast/uv")},
                                              {"GOPATH", home.path("area/go") + ":" + home.path("other")},
                                              {"GOMODCACHE", home.path("area/go/pkg/mod")}});
    EXPECT_EQ(places.placed("~/.cache/pip"), "~/var/cache/pip");
    EXPECT_EQ(places.placed("~/.cache/uv"), "~/fast/uv");
    EXPECT_EQ(places.placed("~/go/pkg/mod"), "~/area/go/pkg/mod");
    EXPECT_EQ(places.placed("~/Desktop"), "~/Escritorio");
    EXPECT_EQ(places.placed("~/.cachet"), "~/.cachet");
}

// What a variable names would be emptied as a cache.
TEST(HomePlaces, TakeNoFolderForACacheThatHoldsMore) {
    const TempHome home;
    home.fileWith(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papeles/Mis documentos\"\n");
    for (const std::string& folder :
         {home.path(), home.path() + "/", home.path("Papeles"), home.path("Papeles/Mis documentos"),
          home.path("Desktop"), home.path("Videos"), home.path(".cache"), home.path(".local"),
          home.path("Library"), home.path(".config/TarvoAI"), home.path("a/../b"), home.path("a//b"),
          std::string("/var/tmp/x"), std::string("relative/x"), std::string("/"), std::string(),
          home.path() + "x/y"}) {
        for (const auto& [name, usual] :
             Environment{{"PIP_CACHE_DIR", "~/.cache/pip"}, {"XDG_CACHE_HOME", "~/.cache"}}) {
            EXPECT_EQ(placesOf(home, {{name, folder}}).placed(usual), usual) << name << "=" << folder;
        }
    }
    const HomePlaces both =
        placesOf(home, {{"UV_CACHE_DIR", home.path("c")}, {"PIP_CACHE_DIR", home.path("c")}});
    EXPECT_EQ(both.placed("~/.cache/uv"), "~/c");
    EXPECT_EQ(both.placed("~/.cache/pip"), "~/.cache/pip");
}
