#include "LumoCore/Rules/Locator.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using locator::InstallerUse;
using tarvo::testing::TempHome;
using namespace testing;

TEST(Locator, SortsVersionFoldersAsNumbersAndPassesOverEverythingElse) {
    const TempHome home;
    home.folders({"v/2.0.9", "v/2.0.10", "v/notes", "v/v3", "v/.4"});
    home.file("v/9.9.9");
    home.link("v/8.0", home.path("v/2.0.9"));
    EXPECT_THAT(versionsIn(home.path("v")), ElementsAre(home.path("v/2.0.9"), home.path("v/2.0.10")));
    EXPECT_THAT(resolve(locator::NewestVersion{"~/v"}, home.path()), ElementsAre(home.path("v/2.0.10")));
    EXPECT_THAT(olderVersionsIn(home.path("v"), {}), ElementsAre(home.path("v/2.0.9")));
}

TEST(Locator, TakesASingleVersionForTheNewestAndNoneForNothing) {
    const TempHome home;
    home.folders({"one/1.0", "none/notes"});
    EXPECT_THAT(resolve(locator::OlderVersions{"~/one"}, home.path()), IsEmpty());
    EXPECT_THAT(resolve(locator::NewestVersion{"~/one"}, home.path()), ElementsAre(home.path("one/1.0")));
    EXPECT_THAT(resolve(locator::NewestVersion{"~/none"}, home.path()), IsEmpty());
}

TEST(Locator, LeavesAVersionThatACommandUses) {
    const TempHome home;
    const std::string two = home.folder("v/2.0");
    home.folders({"v/1.0", "v/1.0.1", "v/3.0"});
    // Written as installers write it: relative, and through the folder above.
    home.link(".local/bin/tool", "../.././v//2.0/bin/tool");
    home.link("bin/newest", home.path("v/3.0"));
    home.link("bin/dangling", home.path("gone"));
    home.file("bin/program");
    EXPECT_THAT(linkTargetsIn({home.path("nowhere"), home.path(".local/bin"), home.path("bin")}),
                UnorderedElementsAre(two + "/bin/tool", home.path("v/3.0"), home.path("gone")));
    EXPECT_THAT(resolve(locator::OlderVersions{"~/v"}, home.path()),
                ElementsAre(home.path("v/1.0"), home.path("v/1.0.1")));
    // The folder itself counts, a name that merely begins alike does not.
    EXPECT_THAT(olderVersionsIn(home.path("v"), {home.path("v/1.0"), two + ".5/x"}),
                ElementsAre(home.path("v/1.0.1"), two));
}

TEST(Locator, MatchesChildrenComposedAndWithTheirCase) {
    const TempHome home;
    const std::string decomposed = home.file("d/Grabacio\u0301n de pantalla 1.mov");
    const std::string stray = home.file("d/Captura de pantalla caf\xE9.png");
    home.files({"d/captura de pantalla 2.png", "d/Captura de pantalla", "d/Otra Captura de pantalla 3.png"});
    const locator::Children screenshots{"~/d", {"Captura de pantalla *", "Grabaci\u00F3n de pantalla *"}};
    EXPECT_THAT(resolve(screenshots, home.path()), ElementsAre(stray, decomposed));
}

TEST(Locator, ListsEachChildOnceInOrderHiddenOnesAndLinksIncluded) {
    const TempHome home;
    const std::string b = home.folder("d/b.updater");
    const std::string hidden = home.file("d/.updater");
    const std::string a = home.link("d/a.updater", "nowhere");
    home.file("d/c.Updater");
    EXPECT_THAT(resolve(locator::Children{"~/d", {"*updater*", "*.updater", "b*"}}, home.path()),
                ElementsAre(hidden, a, b));
}

TEST(Locator, FindsAPathByItselfWithoutFollowingALink) {
    const TempHome home;
    const std::string dangling = home.link("dangling", "nowhere");
    const std::string file = home.file("a b/file");
    EXPECT_THAT(resolve(locator::Path{"~/dangling"}, home.path()), ElementsAre(dangling));
    EXPECT_THAT(resolve(locator::Path{"~/a b/file"}, home.path()), ElementsAre(file));
    EXPECT_THAT(resolve(locator::Path{file}, "/nowhere"), ElementsAre(file));
    EXPECT_THAT(resolve(locator::Path{"~/a b/other"}, home.path()), IsEmpty());
}

TEST(Locator, KnowsInstallersByTheirExtensionUntilTheirUseIsKnown) {
    const TempHome home;
    std::vector<std::string> installers;
    for (const char* name : {"B.DMG", "a.pkg", "b.zip", "c.tar.Iso", "d.xip"}) {
        installers.push_back(home.file(std::string("Downloads/") + name));
    }
    home.files({"Downloads/zip", "Downloads/a.zip.part"});
    home.folder("Downloads/folder.zip");
    home.link("Downloads/link.zip", "b.zip");
    const locator::Installers unused{"~/Downloads", InstallerUse::unused};
    const locator::Installers used{"~/Downloads", InstallerUse::used};
    EXPECT_EQ(resolve(unused, home.path()), installers);
    EXPECT_THAT(resolve(used, home.path()), IsEmpty());

    const auto finder = [](const locator::Installers& where, const std::string& of) {
        return std::vector{where.in, of, std::string(where.use == InstallerUse::used ? "used" : "unused")};
    };
    EXPECT_THAT(resolve(used, "/h", finder), ElementsAre("~/Downloads", "/h", "used"));
}

TEST(Locator, FindsNothingInAFolderThatIsMissingOrNone) {
    const TempHome home;
    home.file("file");
    for (const char* name : {"~/nowhere", "~/file"}) {
        for (const Locator& where :
             {Locator(locator::Children{name, {"*"}}), Locator(locator::OlderVersions{name}),
              Locator(locator::NewestVersion{name}), Locator(locator::Installers{name})}) {
            EXPECT_THAT(resolve(where, home.path()), IsEmpty()) << name << " " << where.index();
        }
    }
}
