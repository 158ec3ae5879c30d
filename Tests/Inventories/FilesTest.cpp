#include "LumoCore/Inventories/Inventories.h"
#include "Platform/QuietFile.h"
#include "Tests/support/InventoryQuery.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <random>

#include <fcntl.h>
#include <sys/stat.h>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

constexpr std::int64_t longAgo = 1700000000;

std::vector<std::string> idsIn(const Inventory& inventory) {
    return eachOf<decltype(inventory.items), std::string>(inventory.items, &DetailItem::id);
}

/// Gives the file the time when it was last opened, and that of its last change.
void setTimes(const TempHome& home, const std::string& name, std::int64_t opened, std::int64_t changed) {
    const std::array<timespec, 2> times{timespec{.tv_sec = opened}, timespec{.tv_sec = changed}};
    ASSERT_EQ(utimensat(AT_FDCWD, home.path(name).c_str(), times.data(), 0), 0);
}

} // namespace

TEST(LargeFiles, AreTheUsersOwnAndNobodyElses) {
    const TempHome home;
    home.files({"Videos/film.mkv", "letter", "bad\xE9name"}, 20000);
    home.files({".hidden/x", "Library/y", "snap/z", "shop/data.db", "Pictures/P.photoslibrary/a",
                "bottle/drive_c/game", "repo/data/x", "VirtualBox VMs/v/v.vdi", "Downloads/a.iso", "small"},
               20000);
    home.files({"shop/Cargo.toml", "repo/config", "repo/index/i", "repo/keys/k", "repo/snapshots/s"});
    // The binary of an editor that was unpacked in the home was offered.
    home.files({"VSCode-linux-x64/code", "ide/lib/app.jar", "jdk-21/lib/modules", "tool/tool"}, 20000);
    home.files({"VSCode-linux-x64/chrome-sandbox", "ide/product-info.json", "jdk-21/release",
                "jdk-21/bin/java", "tool/a.so", "tool/b.so.1", "tool/c.dll", "Documents/a.so"});
    home.file("small", 10);
    home.sparseFile("empty.img", 1000000000);
    home.link("link", home.path("letter"));
    const Inventory found = Inventories::find(InventoryKind::large, queryOf(home, 1000));
    EXPECT_THAT(idsIn(found),
                UnorderedElementsAre("archivo:Videos/film.mkv", "archivo:letter", "archivo:bad\xE9name"));
    for (const DetailItem& item : found.items) {
        EXPECT_EQ(Inventories::itemWith(item.id, queryOf(home, 999999999)), item);
        EXPECT_EQ(item.bytes, allocatedBytes(*item.path));
        EXPECT_EQ(item.action.method, Method(method::TrashItems{{*item.path}}));
    }
    for (const char* id : {"archivo:.hidden/x", "archivo:../x", "archivo:", "archivo:Videos", "archivo:link",
                           "archivo:Downloads/a.iso", "archivo:gone"}) {
        EXPECT_FALSE(Inventories::itemWith(id, queryOf(home, 1000))) << id;
    }
}

TEST(LargeFiles, NameTheFoldersThatCouldNotBeListed) {
    // "2 places could not be looked at" was all that was told of them.
    const TempHome home;
    home.files({"Videos/a/shut/x", "closed/y", "open/z"}, 20000);
    home.setMode("Videos/a/shut", 0);
    home.setMode("closed", 0);
    expectHeld(asOrdinaryUser(home.path(), [&] {
        const Inventory found = Inventories::find(InventoryKind::large, queryOf(home, 1000));
        return found.items.size() == 1 && found.unreadableCount == 2 &&
               found.unread ==
                   std::vector<UnreadPlace>{{home.path("Videos/a/shut"), ""}, {home.path("closed"), ""}};
    }));
    home.setMode("Videos/a/shut", 0755);
    home.setMode("closed", 0755);
}

TEST(LargeFiles, OfOneSizeAreInTheOrderOfTheirPaths) {
    // Threads found them in any order, and two looks at one disk were two lists.
    const TempHome home;
    std::vector<std::string> ids;
    for (int number = 10; number < 74; ++number) {
        home.file("films " + std::to_string(number) + "/of/a/year", 4096);
        ids.push_back("archivo:films " + std::to_string(number) + "/of/a/year");
    }
    EXPECT_THAT(idsIn(Inventories::find(InventoryKind::large, queryOf(home, 1))), ElementsAreArray(ids));
    std::ranges::reverse(ids);
    EXPECT_THAT(eachOf(Inventories::itemsWith(ids, queryOf(home)), &DetailItem::id), ElementsAreArray(ids));
}

TEST(LargeFiles, WithSeveralNamesGoWithAllOrNotAtAll) {
    const TempHome home;
    home.file("a", 20000);
    home.hardLink("b/c", "a");
    home.file("d", 20000);
    home.hardLink(".hidden/e", "d");
    const Inventory found = Inventories::find(InventoryKind::large, queryOf(home, 1000));
    ASSERT_THAT(idsIn(found), ElementsAre("archivo:a"));
    EXPECT_EQ(found.items[0].action.method, Method(method::TrashItems{{home.path("a"), home.path("b/c")}}));
    // Whoever takes one for a spare copy must know.
    EXPECT_THAT(found.items[0].detail, HasSubstr("also called ~/b/c"));
    EXPECT_EQ(Inventories::itemWith("archivo:a", queryOf(home, 1000)), found.items[0]);
    EXPECT_FALSE(Inventories::itemWith("archivo:d", queryOf(home, 1000)));
}

TEST(LargeFiles, SayWhatIsForgottenAndLeaveOutWhatIsTooYoung) {
    const TempHome home;
    home.files({"old", "young"}, 20000);
    setTimes(home, "old", longAgo, longAgo);
    setTimes(home, "young", noon.time_since_epoch() / std::chrono::seconds(1), longAgo);
    InventoryQuery query = queryOf(home, 1000);
    std::map<std::string, std::string> details;
    for (const DetailItem& item : Inventories::find(InventoryKind::large, query).items) {
        details[item.name] = item.detail;
    }
    EXPECT_EQ(details["old"], "File, last changed Nov 14, 2023; forgotten");
    EXPECT_EQ(details["young"], "File, last changed Nov 14, 2023, last opened Mar 14, 2026");
    query.olderThanDays = 180;
    EXPECT_THAT(idsIn(Inventories::find(InventoryKind::large, query)), ElementsAre("archivo:old"));
}

TEST(Duplicates, KeepTheTidierCopyAndNameIt) {
    const TempHome home;
    home.files({"Downloads/a", "Pictures/deep/a", "Pictures/a"}, 20000);
    home.fileWith("Pictures/other", std::string(20000, 'y'));
    std::string middle(20000, 'x');
    middle[10000] = 'z';
    home.fileWith("Pictures/nearly", middle);
    home.hardLink("Pictures/again", "Pictures/a");
    const Inventory found = Inventories::find(InventoryKind::duplicates, queryOf(home, 1000));
    EXPECT_THAT(idsIn(found),
                UnorderedElementsAre("copia:Downloads/a//Pictures/a", "copia:Pictures/deep/a//Pictures/a"));
    for (const DetailItem& item : found.items) {
        EXPECT_EQ(item.kept, home.path("Pictures/a"));
        EXPECT_EQ(item.detail, "The same as ~/Pictures/a, which stays");
        EXPECT_EQ(Inventories::itemWith(item.id, queryOf(home, 1000)), item);
        EXPECT_EQ(Inventories::keptBy(item.id, home.path()), home.path("Pictures/a"));
        EXPECT_FALSE(Inventories::refusal(item.action, queryOf(home, 1000)));
    }
    for (const char* id :
         {"copia:Pictures/again//Pictures/a", "copia:Pictures/a//Pictures/a", "copia:Pictures/a",
          "copia:Pictures/other//Pictures/a", "copia://", "copia:Pictures/deep/a//.hidden/a"}) {
        EXPECT_FALSE(Inventories::itemWith(id, queryOf(home, 1000))) << id;
    }
}

TEST(Duplicates, MayNotGoOnceTheOtherCopyIsGoneOrChanged) {
    const TempHome home;
    home.files({"a", "b/a", "b/c"}, 20000);
    std::map<std::string, CleanupAction> actions;
    for (const DetailItem& item : Inventories::find(InventoryKind::duplicates, queryOf(home, 1000)).items) {
        actions[item.name] = item.action;
    }
    ASSERT_THAT(actions, SizeIs(2));
    std::string changed = contentOf(home.path("b/c"));
    changed[10000] ^= 1;
    home.fileWith("b/c", changed);
    EXPECT_THAT(Inventories::refusal(actions["c"], queryOf(home, 1000)).value_or(""),
                HasSubstr("no longer the same"));
    std::filesystem::remove(home.path("a"));
    EXPECT_THAT(Inventories::refusal(actions["a"], queryOf(home, 1000)).value_or(""),
                HasSubstr("no longer there"));
    // The copy that should stay became another name of the one that goes: it would have gone with it.
    home.hardLink("a", "b/a");
    EXPECT_TRUE(Inventories::refusal(actions["a"], queryOf(home, 1000)));
}

TEST(Duplicates, AreThoseOfAnIndependentCount) {
    const TempHome home;
    std::mt19937 random(7);
    std::map<std::string, std::size_t> counts;
    for (int index = 0; index < 300; ++index) {
        std::string content(9000 + 4096 * (random() % 2), static_cast<char>('a' + random() % 3));
        content[5000] = static_cast<char>('a' + random() % 3);
        home.fileWith("d" + std::to_string(random() % 9) + "/f" + std::to_string(index), content);
        ++counts[content];
    }
    std::map<std::string, std::size_t> going;
    for (const DetailItem& item : Inventories::find(InventoryKind::duplicates, queryOf(home, 1000)).items) {
        const std::string content = contentOf(*item.path);
        EXPECT_EQ(content, contentOf(*item.kept));
        ++going[content];
    }
    for (const auto& [content, count] : counts) {
        EXPECT_EQ(going[content], count - 1);
    }
}

TEST(QuietFile, LeavesNoTraceOfHavingBeenRead) {
    const TempHome home;
    home.file("a", 20000);
    setTimes(home, "a", longAgo, longAgo + 10);
    EXPECT_EQ(platform::quietBeginning(home.path("a"), 30000)->size(), 20000U);
    struct stat status = {};
    ASSERT_EQ(stat(home.path("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, longAgo);
    home.fifo("pipe");
    EXPECT_FALSE(platform::QuietFile::open(home.path("pipe")));
}
