#include "LumoCore/Scanning/FolderContents.h"
#include "LumoCore/Scanning/FolderLocation.h"
#include "Platform/BreakdownTally.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using lumo::FolderLocation;
using lumo::Language;
using lumo::NamedSize;
using lumo::FolderContents::Item;
using lumo::FolderContents::Listing;
using lumo::platform::ExtensionTally;
using lumo::platform::LargestParts;
using lumo::platform::TreeBreakdown;
using lumo::platform::TreeParts;
using tarvo::testing::allocatedBytes;
using tarvo::testing::TempHome;
using testing::ElementsAre;
using testing::IsEmpty;
namespace FileTree = lumo::FileTree;
namespace FolderContents = lumo::FolderContents;

namespace {

/// What stands at these paths, by their paths.
std::vector<std::string> pathsOf(const std::vector<Item>& items) {
    std::vector<std::string> paths;
    std::ranges::transform(items, std::back_inserter(paths), &Item::path);
    return paths;
}

Item folderItem(const std::string& name, std::int64_t bytes) {
    return {
        .name = name, .path = "/" + name, .bytes = bytes, .isDirectory = true, .children = {{.name = "in"}}};
}

/// Opens "/top", which lists those items; what is opened through lists one file.
std::vector<std::string> skippedOf(const std::vector<Item>& items) {
    return FolderContents::open({"/top"},
                                [&](const std::vector<std::string>& paths) {
                                    return paths.front() == "/top" ? items
                                                                   : std::vector<Item>{{.name = "file"}};
                                })
        .skipped;
}

} // namespace

TEST(FileTree, BreaksAFolderDownByChildAndLowerCasedExtension) {
    const TempHome home;
    home.file("a/big/one.JPG", 40000);
    home.file("a/big/deep/two.jpg", 30000);
    home.file("a/three.Ñ", 20000);
    home.file("a/four.ñ", 10000);
    for (const char* name : {"plain", ".hidden", "ends.", "..x", "a.b.Gz"}) {
        home.file(std::string("a/") + name, 5000);
    }
    home.link("a/link.jpg", "nowhere");
    const auto bytes = [&](const char* name) { return allocatedBytes(home.path(std::string("a/") + name)); };
    const FileTree::Breakdown breakdown = FileTree::breakdown(home.path("a"), {}, Language::es);
    EXPECT_THAT(breakdown.extensions,
                ElementsAre(NamedSize{"jpg", bytes("big/one.JPG") + bytes("big/deep/two.jpg")},
                            NamedSize{"ñ", bytes("three.Ñ") + bytes("four.ñ")},
                            NamedSize{"sin extensión", bytes("plain") + bytes(".hidden") + bytes("ends.")},
                            NamedSize{"gz", bytes("a.b.Gz")}, NamedSize{"x", bytes("..x")}));
    EXPECT_EQ(
        breakdown.children.front(),
        (NamedSize{"big", bytes("big") + bytes("big/deep") + bytes("big/one.JPG") + bytes("big/deep/two.jpg"),
                   true}));
    EXPECT_EQ(breakdown.children.size(), 9U);
    EXPECT_EQ(FileTree::breakdown(home.path("a"), {}, Language::en).extensions[2].name, "no extension");

    const FileTree::Breakdown file = FileTree::breakdown(home.path("a/big/one.JPG"));
    EXPECT_THAT(file.children, IsEmpty());
    EXPECT_THAT(file.extensions, ElementsAre(NamedSize{"jpg", bytes("big/one.JPG")}));
    EXPECT_EQ(FileTree::breakdown(home.path("missing")).usage.unreadableCount, 1);
}

TEST(ExtensionTally, KeepsTheLargestOfAMillionExtensionsAndEveryByte) {
    ExtensionTally tally;
    ExtensionTally another;
    for (int number = 0; number < 100000; ++number) {
        tally.add("f." + std::to_string(number), 10);
        another.add("big.iso", 1);
    }
    another.add("plain", 1);
    tally.add(another);
    TreeBreakdown breakdown;
    tally.addTo(breakdown);
    std::map<std::string, std::int64_t> sums;
    std::int64_t total = breakdown.otherExtensionsBytes;
    for (const auto& [extension, bytes] : breakdown.extensions) {
        sums[extension] = bytes;
        total += bytes;
    }
    EXPECT_LE(sums.size(), 5000U);
    EXPECT_EQ(total, 1100001);
    EXPECT_EQ(sums["iso"], 100000);
    EXPECT_EQ(sums[""], 1);
}

TEST(LargestParts, KeepTheSameOnesHoweverTheyCome) {
    const auto kept = [](int step) {
        LargestParts all(5);
        LargestParts other = all.fresh();
        for (int number = 0; number < 1001; ++number) {
            // Every number once, since 1001 and the step have no common divisor.
            const int value = number * step % 1001;
            (number % 3 == 0 ? other : all).add("n" + std::to_string(value % 10), value / 100, false);
            if (number % 100 == 0) {
                all.add(std::exchange(other, all.fresh()));
            }
        }
        all.add(std::move(other));
        const TreeParts parts = all.take();
        std::string text = std::to_string(parts.restCount) + " " + std::to_string(parts.restBytes);
        for (const auto& part : parts.largest) {
            text += " " + part.name + "=" + std::to_string(part.allocatedBytes);
        }
        return text;
    };
    EXPECT_EQ(kept(1), "996 4464 n0=10 n0=9 n0=9 n0=9 n0=9");
    for (const int step : {2, 10, 500, 1000}) {
        EXPECT_EQ(kept(step), kept(1)) << step;
    }
}

TEST(FolderContents, ListsTwoLevelsLargestFirstAndSumsUpWhatIsTooMuch) {
    const TempHome home;
    for (int number = 0; number < 103; ++number) {
        home.file("f/many/" + std::to_string(1000 + number), 5000);
    }
    home.file("f/single/below/deep", 4000000);
    home.file("f/file", 9000);
    const std::vector<Item> items = FolderContents::list({home.path("f")});
    EXPECT_THAT(pathsOf(items), ElementsAre(home.path("f/single"), home.path("f/many"), home.path("f/file")));
    EXPECT_THAT(pathsOf(items[0].children), ElementsAre(home.path("f/single/below")));
    EXPECT_THAT(items[0].children[0].children, IsEmpty());
    EXPECT_EQ(items[0].bytes, FolderContents::usageOf(home.path("f/single")).allocatedBytes);
    const std::vector<Item>& many = items[1].children;
    ASSERT_EQ(many.size(), 101U);
    EXPECT_EQ(many[0].path, "");
    EXPECT_EQ(many[0].bytes, 3 * allocatedBytes(home.path("f/many/1000")));
    EXPECT_FALSE(items[2].isDirectory);
    EXPECT_EQ(items[2].bytes, allocatedBytes(home.path("f/file")));

    EXPECT_THAT(pathsOf(FolderContents::list({home.path("f/file")})), ElementsAre(home.path("f/file")));
    EXPECT_THAT(FolderContents::list({home.path("missing")}), IsEmpty());
    const auto several =
        FolderContents::list({home.path("f/file"), home.path("missing"), home.path("f/single")});
    EXPECT_THAT(pathsOf(several), ElementsAre(home.path("f/single"), home.path("f/file")));
    EXPECT_EQ(several[0].via, home.path("f"));
    EXPECT_EQ(several[0].children, items[0].children);
}

TEST(FolderContents, GoesThroughAFolderThatHoldsNearlyEverything) {
    struct Case {
        std::vector<Item> items;
        std::size_t skipped;
    };
    const Item file{.name = "file", .bytes = 99};
    Item hollow = folderItem("hollow", 99);
    hollow.children.clear();
    for (const Case& expected :
         {Case{{folderItem("a", 0)}, 1}, Case{{}, 0}, Case{{file}, 0}, Case{{hollow}, 0},
          Case{{folderItem("a", 96), folderItem("b", 4)}, 1},
          Case{{folderItem("a", 95), folderItem("b", 5)}, 1},
          Case{{folderItem("a", 94), folderItem("b", 6)}, 0},
          Case{{folderItem("a", 949999), folderItem("b", 50001)}, 0}, Case{{file, folderItem("b", 1)}, 0}}) {
        EXPECT_EQ(skippedOf(expected.items).size(), expected.skipped)
            << testing::PrintToString(expected.skipped);
    }
}

TEST(FolderContents, GoesThroughSixFoldersAtMost) {
    const TempHome home;
    home.file("1/2/3/4/5/6/7/8/file", 100);
    const Listing listing =
        FolderContents::open({home.path()}, [](const auto& paths) { return FolderContents::list(paths); });
    EXPECT_THAT(listing.skipped, ElementsAre("1", "2", "3", "4", "5", "6"));
    EXPECT_THAT(listing.paths, ElementsAre(home.path("1/2/3/4/5/6")));
    EXPECT_THAT(pathsOf(listing.items), ElementsAre(home.path("1/2/3/4/5/6/7")));
}

TEST(FolderContents, OpensSeveralPathsOrOneFolder) {
    const TempHome home;
    home.file("folder/file");
    home.link("link", "folder");
    struct Case {
        std::vector<std::string> paths;
        bool canOpen;
    };
    for (const Case& expected : {Case{{}, false}, Case{{"/nowhere", "/else"}, true},
                                 Case{{home.path("folder")}, true}, Case{{home.path("folder/file")}, false},
                                 Case{{home.path("link")}, false}, Case{{"/nowhere"}, false}}) {
        EXPECT_EQ(FolderContents::canOpen(expected.paths), expected.canOpen)
            << testing::PrintToString(expected.paths);
    }
}

TEST(FolderLocation, FollowsFromThePathAlone) {
    struct Case {
        const char* path;
        FolderLocation location;
        const char* es;
        const char* en;
    };
    for (const Case& expected :
         {Case{"/h/Library/Caches/x", FolderLocation::caches,
               "carpeta de cachés de macOS (las apps deben poder regenerar lo que hay aquí)",
               "macOS caches folder (apps must be able to recreate what's here)"},
          Case{"/h/Library/Application Support/x/y", FolderLocation::applicationSupport,
               "Application Support (datos y ajustes de apps)",
               "Application Support (app data and settings)"},
          Case{"/h/Library/Containers/x", FolderLocation::containers, "contenedor de una app con sandbox",
               "a sandboxed app's container"},
          Case{"/h/Library/Group Containers/x", FolderLocation::groupContainers,
               "datos compartidos entre apps de un mismo desarrollador",
               "data shared between apps from the same developer"},
          Case{"/h/Library/Developer/x", FolderLocation::developer, "herramientas de desarrollo de Apple",
               "Apple developer tools"},
          Case{"/h/.config/x", FolderLocation::hiddenHome,
               "carpeta oculta en la carpeta personal (suele ser de herramientas de terminal o de IA)",
               "hidden folder in the home folder (usually from terminal or AI tools)"},
          Case{"/h/Library/Caches", FolderLocation::other, "otra ubicación", "other location"},
          Case{"/h", FolderLocation::other, "otra ubicación", "other location"},
          Case{"/other/.config", FolderLocation::other, "otra ubicación", "other location"},
          Case{"/h/code/.git", FolderLocation::other, "otra ubicación", "other location"}}) {
        const FolderLocation location = lumo::folderLocation(expected.path, "/h");
        EXPECT_EQ(location, expected.location) << expected.path;
        EXPECT_EQ(lumo::description(location, Language::es), expected.es);
        EXPECT_EQ(lumo::description(location, Language::en), expected.en);
    }
}
