#include "LumoCore/Inventories/Installers.h"
#include "LumoCore/Explaining/KnownPlaces.h"
#include "LumoCore/Inventories/Inventories.h"
#include "Platform/ArchiveEntries.h"
#include "Tests/support/InventoryQuery.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

void shell(const TempHome& home, const std::string& line) {
    const Ran ran = runProgram("sh", {"-c", "cd '" + home.path() + "' && " + line}, {"PATH=/usr/bin:/bin"});
    ASSERT_EQ(ran.exitCode, 0) << line << ran.error;
}

/// A package as dpkg-deb makes it, as far as anybody reads it here.
void makePackage(const TempHome& home, const std::string& name, const std::string& version) {
    home.fileWith("pack/control", "Package: " + name + "\nVersion: " + version + "\nArchitecture: all\n");
    home.fileWith("pack/debian-binary", "2.0\n");
    shell(home, "cd pack && tar czf control.tar.gz ./control && ar rc ../Downloads/" + name + "_" + version +
                    ".deb debian-binary control.tar.gz");
}

std::map<std::string, DetailItem> itemsOf(const TempHome& home) {
    std::map<std::string, DetailItem> items;
    for (const DetailItem& item : Installers::find(queryOf(home)).items) {
        items[item.name] = item;
    }
    return items;
}

} // namespace

TEST(Packages, AreOrderedAsDebianOrdersVersions) {
    const std::vector<std::string> ascending{"1.0~rc1-1", "1.0-1", "1.0-1+b1", "1.0a-1",
                                             "1.0+2",     "1.2",   "1.10",     "1:0.1"};
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            const int order = compareVersions(ascending[left], ascending[right]);
            EXPECT_EQ(order < 0, left < right) << ascending[left] << " " << ascending[right];
            EXPECT_EQ(order > 0, left > right) << ascending[left] << " " << ascending[right];
        }
    }
    const auto packages = packagesInStatus("Package: a\nStatus: deinstall ok config-files\nVersion: 2\n\n"
                                           "Package: a\nStatus: install ok installed\nVersion: 1\n"
                                           "Installed-Size: 10\n\nbroken\n\nPackage: b\nStatus: install ok "
                                           "half-installed");
    EXPECT_THAT(packages,
                ElementsAre(Pair("a", Package{Package::State::installed, "1", 10240}), Pair("b", Package{})));
}

TEST(Installers, AreUsedWhenWhatTheyHoldIsHere) {
    const TempHome home;
    home.folders({"Downloads", "pack"});
    home.fileWith("system/var/lib/dpkg/status",
                  "Package: tool\nStatus: install ok installed\nVersion: 2.0-1\n");
    makePackage(home, "tool", "1.9-3");
    makePackage(home, "tool", "2.1-1");
    makePackage(home, "other", "1");
    home.folder("system/var/lib/flatpak/app/org.x.App");
    home.fileWith("Downloads/App.flatpakref", "[Flatpak Ref]\nName=org.x.App\n");
    home.files({"Downloads/photos/a", "Downloads/photos/b/c", "Downloads/loose"}, 3000);
    shell(home, "cd Downloads && tar czf photos.tar.gz photos && zip -q loose.zip loose && "
                "cd photos && tar cJf ../photos.tar.xz . && cd .. && tar czf changed.tgz photos loose");
    const auto judged = itemsOf(home);
    std::map<std::string, Safety> safeties;
    for (const auto& [name, item] : judged) {
        safeties[name] = item.safety;
        EXPECT_EQ(Inventories::itemWith(item.id, queryOf(home)), item);
    }
    EXPECT_THAT(safeties,
                ElementsAre(Pair("App.flatpakref", Safety::safe), Pair("changed.tgz", Safety::safe),
                            Pair("loose.zip", Safety::safe), Pair("other_1.deb", Safety::review),
                            Pair("photos.tar.gz", Safety::safe), Pair("photos.tar.xz", Safety::safe),
                            Pair("tool_1.9-3.deb", Safety::safe), Pair("tool_2.1-1.deb", Safety::review)));
    EXPECT_THAT(judged.at("tool_1.9-3.deb").detail, StartsWith("tool 2.0-1 is installed, from "));
    // Explained by itself, every installer was one that needs a look.
    const Installed installed;
    const KnownPlaces known(HomePlaces(home.path(), System::linux), installed, Language::en,
                            home.path("system"));
    for (const auto& [name, item] : judged) {
        EXPECT_EQ(known.explain({.path = *item.path}, noon)->safety, item.safety) << name;
    }

    // One file of it is gone, another has grown since.
    std::filesystem::remove(home.path("Downloads/photos/b/c"));
    home.file("Downloads/loose", 3001);
    for (const auto& [name, item] : itemsOf(home)) {
        const bool isWhole = name == "App.flatpakref" || name == "tool_1.9-3.deb";
        EXPECT_EQ(item.safety, isWhole ? Safety::safe : Safety::review) << name;
    }
    // Elsewhere an archive beside its contents may be somebody's copy of them.
    home.file("Backup/mine", 3000);
    shell(home, "cd Backup && zip -q mine.zip mine");
    EXPECT_EQ(Inventories::itemWith("instalador:Backup/mine.zip", queryOf(home))->safety, Safety::review);
}

TEST(Installers, FillTheTwoRulesOfTheCatalogue) {
    const TempHome home;
    home.files({"Downloads/loose", "Downloads/image.iso"}, 3000);
    shell(home, "cd Downloads && zip -q loose.zip loose");
    const auto pathsOf = [&, find = Installers::finder()](locator::InstallerUse use) {
        return find({.in = "~/Downloads", .use = use}, home.path());
    };
    EXPECT_THAT(pathsOf(locator::InstallerUse::used), ElementsAre(home.path("Downloads/loose.zip")));
    EXPECT_THAT(pathsOf(locator::InstallerUse::unused), ElementsAre(home.path("Downloads/image.iso")));
}

TEST(ArchiveEntries, LeadNowhereElse) {
    const TempHome home;
    home.files({"Downloads/in/x", "outside"}, 10);
    shell(home,
          "cd Downloads/in && tar cPzf ../up.tar.gz ../../outside && tar cPzf ../root.tar.gz \"$PWD/x\"");
    home.fileWith("Downloads/broken.zip", "PK\3\4 and nothing more");
    for (const auto& [name, item] : itemsOf(home)) {
        EXPECT_EQ(item.safety, Safety::review) << name;
    }
    EXPECT_FALSE(platform::visitArchive(home.path("Downloads/broken.zip"), [](const auto&) { return true; }));
}
