#include "LumoCore/Scanning/FolderContents.h"
#include "LumoCore/Scanning/FolderLocation.h"
#include "Platform/BreakdownTally.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using namespace lumo;
using FolderContents::Item;
using FolderContents::Listing;
using platform::ExtensionTally;
using platform::LargestParts;
using platform::TreeBreakdown;
using platform::TreeParts;
using namespace tarvo::testing;
using namespace testing;

namespace {

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
    home.files({"a/plain", "a/.hidden", "a/ends.", "a/..x", "a/a.b.Gz"}, 5000);
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
    EXPECT_THAT(eachOf(items, &Item::path),
                ElementsAre(home.path("f/single"), home.path("f/many"), home.path("f/file")));
    EXPECT_THAT(eachOf(items[0].children, &Item::path), ElementsAre(home.path("f/single/below")));
    EXPECT_THAT(items[0].children[0].children, IsEmpty());
    EXPECT_EQ(items[0].bytes, FolderContents::usageOf(home.path("f/single")).allocatedBytes);
    const std::vector<Item>& many = items[1].children;
    ASSERT_EQ(many.size(), 101U);
    EXPECT_EQ(many[0].path, "");
    EXPECT_EQ(many[0].bytes, 3 * allocatedBytes(home.path("f/many/1000")));
    EXPECT_FALSE(items[2].isDirectory);
    EXPECT_EQ(items[2].bytes, allocatedBytes(home.path("f/file")));

    EXPECT_THAT(eachOf(FolderContents::list({home.path("f/file")}), &Item::path),
                ElementsAre(home.path("f/file")));
    EXPECT_THAT(FolderContents::list({home.path("missing")}), IsEmpty());
    const auto several =
        FolderContents::list({home.path("f/file"), home.path("missing"), home.path("f/single")});
    EXPECT_THAT(eachOf(several, &Item::path), ElementsAre(home.path("f/single"), home.path("f/file")));
    EXPECT_EQ(several[0].via, home.path("f"));
    EXPECT_EQ(several[0].children, items[0].children);
}

TEST(FolderContents, GoesThroughAFolderThatHoldsNearlyEverything) {
    using Items = std::vector<Item>;
    const Item file{.name = "file", .bytes = 99};
    Item hollow = folderItem("hollow", 99);
    hollow.children.clear();
    using Case = std::pair<Items, std::size_t>;
    for (const auto& [items, skipped] :
         {Case{Items{folderItem("a", 0)}, 1}, Case{Items{}, 0}, Case{Items{file}, 0}, Case{Items{hollow}, 0},
          Case{Items{folderItem("a", 95), folderItem("b", 5)}, 1},
          Case{Items{folderItem("a", 94), folderItem("b", 6)}, 0},
          Case{Items{folderItem("a", 949999), folderItem("b", 50001)}, 0},
          Case{Items{file, folderItem("b", 1)}, 0}}) {
        EXPECT_EQ(skippedOf(items).size(), skipped) << items.size();
    }
}

TEST(FolderContents, GoesThroughSixFoldersAtMost) {
    const TempHome home;
    home.file("1/2/3/4/5/6/7/8/file", 100);
    const Listing listing =
        FolderContents::open({home.path()}, [](const auto& paths) { return FolderContents::list(paths); });
    EXPECT_THAT(listing.skipped, ElementsAre("1", "2", "3", "4", "5", "6"));
    EXPECT_THAT(listing.paths, ElementsAre(home.path("1/2/3/4/5/6")));
    EXPECT_THAT(eachOf(listing.items, &Item::path), ElementsAre(home.path("1/2/3/4/5/6/7")));
}

TEST(FolderContents, OpensSeveralPathsOrOneFolder) {
    const TempHome home;
    home.file("folder/file");
    home.link("link", "folder");
    EXPECT_TRUE(FolderContents::canOpen({"/nowhere", "/else"}));
    EXPECT_TRUE(FolderContents::canOpen({home.path("folder")}));
    EXPECT_FALSE(FolderContents::canOpen({}));
    for (const char* other : {"folder/file", "link", "nowhere"}) {
        EXPECT_FALSE(FolderContents::canOpen({home.path(other)})) << other;
    }
}

TEST(FolderLocation, FollowsFromThePathAlone) {
    using enum FolderLocation;
    using Case = std::pair<const char*, FolderLocation>;
    for (const auto& [path, expected] :
         {Case{"/h/Library/Caches/x", caches}, Case{"/h/Library/Application Support/x/y", applicationSupport},
          Case{"/h/Library/Containers/x", containers}, Case{"/h/Library/Group Containers/x", groupContainers},
          Case{"/h/Library/Developer/x", developer}, Case{"/h/.config/x", hiddenHome},
          Case{"/h/Library/Caches", other}, Case{"/h", other}, Case{"/other/.config", other},
          Case{"/h/code/.git", other}}) {
        EXPECT_EQ(folderLocation(path, "/h", System::macos), expected) << path;
    }
    EXPECT_EQ(description(containers, Language::es, System::macos), "contenedor de una app con sandbox");
    EXPECT_EQ(description(containers, Language::en, System::macos), "a sandboxed app's container");
}

TEST(FolderLocation, KnowsWhereProgramsKeepTheirFilesOnLinux) {
    // Every cache below ~/.cache was a hidden folder that nobody could name.
    using enum FolderLocation;
    using Case = std::tuple<const char*, FolderLocation, const char*>;
    for (const auto& [path, expected, owner] : {Case{"/h/.cache/pip", caches, "pip"},
                                                Case{"/h/.cache/pip/http", caches, "pip"},
                                                Case{"/h/.var/app/org.a.B/cache", caches, "org.a.B"},
                                                Case{"/h/.var/app/org.a.B/cache/x", caches, "org.a.B"},
                                                Case{"/h/.var/app/org.a.B/caches", containers, "org.a.B"},
                                                Case{"/h/.var/app/org.a.B", containers, "org.a.B"},
                                                Case{"/h/snap/tool/common/.cache", caches, "tool"},
                                                Case{"/h/snap/tool/12", containers, "tool"},
                                                Case{"/h/.config/Code", applicationSupport, "Code"},
                                                Case{"/h/.local/share/x/y", applicationSupport, "x"},
                                                Case{"/h/.local/state/x", applicationSupport, "x"},
                                                Case{"/h/.cache", hiddenHome, ".cache"},
                                                Case{"/h/.ssh", hiddenHome, ".ssh"},
                                                Case{"/h/.cargo/bin/x", hiddenHome, ".cargo"},
                                                Case{"/h/.local/lib/x", hiddenHome, "x"},
                                                Case{"/h/Library/Caches/TarvoAI/x", own, "x"},
                                                Case{"/h/.config/TarvoAI", own, "TarvoAI"},
                                                Case{"/h/.config/TarvoAIx", applicationSupport, "TarvoAIx"},
                                                Case{"/h/Documents", other, "Documents"},
                                                Case{"/other/.cache/x", other, "x"}}) {
        EXPECT_EQ(folderLocation(path, "/h", System::linux), expected) << path;
        EXPECT_EQ(ownersName(path, "/h", System::linux), owner) << path;
    }
    EXPECT_EQ(description(caches, Language::es, System::linux),
              "carpeta de cachés (los programas vuelven a crear lo que hay aquí)");
    EXPECT_EQ(description(caches, Language::en, System::linux),
              "caches folder (programs recreate what's here)");
}
