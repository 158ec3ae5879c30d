#include "TarvoModel/Exploring/Explorer.h"

#include "LumoCore/Cleanup/HistoryLog.h"
#include "Platform/Clock.h"
#include "TarvoModel/Exploring/EntryTexts.h"
#include "TarvoModel/Exploring/SettingAside.h"
#include "TarvoModel/Exploring/UsageExport.h"
#include "TarvoModel/Exploring/WhatIsIt.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace lumo;
using namespace tarvo;
using namespace tarvo::testing;
using namespace ::testing;
namespace fs = std::filesystem;

namespace {

std::shared_ptr<NamedTree> treeOf(const TempHome& home) {
    auto tree = std::make_shared<NamedTree>(home.path());
    measureInto(*tree, home.path(), NamedTree::root, nullptr, {});
    return tree;
}

Desk deskAt(const TempHome& home) {
    return Desk::ofThisMachine(home.path(), "tarvo explore");
}

std::vector<std::string> namesOf(const Explorer& explorer) {
    std::vector<std::string> names;
    for (const NamedEntry& row : explorer.rows()) {
        names.emplace_back(row.name);
    }
    return names;
}

void pointAt(Explorer& explorer, const std::string& path) {
    explorer.goTo(*explorer.tree().entryAt(path));
}

std::string exportOf(const NamedTree& tree) {
    std::string document;
    EXPECT_TRUE(exportUsage(tree, "1", platform::now(), [&](std::string_view piece) {
        document += piece;
        return true;
    }));
    return document;
}

/// All that an export tells, whoever wrote it: paths and what they take.
std::map<std::string, std::int64_t> bytesIn(const NamedTree& tree) {
    std::map<std::string, std::int64_t> content;
    std::vector<EntryIndex> left{NamedTree::root};
    while (!left.empty()) {
        const EntryIndex at = left.back();
        left.pop_back();
        content[tree.pathOf(at)] = tree.entry(at).sums.bytes;
        for (const NamedEntry& entry : tree.entriesOf(at)) {
            left.push_back(entry.index);
        }
    }
    return content;
}

} // namespace

TEST(Explorer, MarksNothingThatIsNeverTouched) {
    // It could be marked, and only the cleaning said that it stays.
    const TempHome home;
    home.files({"work/thesis/draft", "work/notes", "other"}, 9000);
    Explorer explorer(treeOf(home));
    pointAt(explorer, home.path("work"));
    EXPECT_FALSE(explorer.toggleMark());
    explorer.protect({.folders = {home.path("work/thesis")}});
    EXPECT_EQ(explorer.markCount(), 0U) << "what it holds would go with it";
    EXPECT_EQ(explorer.toggleMark(), "work: it holds a folder protected in Settings");
    EXPECT_FALSE(explorer.isProtected(explorer.current()->index));
    ASSERT_TRUE(explorer.enter());
    pointAt(explorer, home.path("work/thesis"));
    EXPECT_EQ(explorer.toggleMark(), "thesis: it's in a folder protected in Settings");
    EXPECT_EQ(protectionNote(explorer, *explorer.current()), "never touched");
    ASSERT_TRUE(explorer.enter());
    EXPECT_TRUE(explorer.toggleMark()) << "what lies in it";
    EXPECT_EQ(explorer.markCount(), 0U);
    explorer.leave();
    pointAt(explorer, home.path("work/notes"));
    EXPECT_FALSE(explorer.toggleMark());
    explorer.protect({});
    EXPECT_EQ(explorer.markCount(), 1U) << "what is held back by nothing stays marked";
}

TEST(Explorer, MarksNoLinkToWhatIsNeverTouchedHoweverThatIsSpelt) {
    // Only the text of paths was compared: the cleaning refused what could be marked.
    const TempHome home;
    home.files({"work/thesis/draft", "other/notes"}, 9000);
    home.link("other/shortcut", home.path("work/thesis"));
    home.link("other/elsewhere", home.path("other"));
    Preferences preferences = Preferences::load(home.path());
    ASSERT_TRUE(preferences.set(preference::protectedFolders, {home.path("other/../work/./thesis/")}));
    Explorer explorer(treeOf(home));
    const auto isMarked = [&](const char* name) {
        pointAt(explorer, home.path(name));
        const auto reason = explorer.toggleMark();
        explorer.protect(neverTouched(preferences, home.path(), explorer.inQuestion()));
        return !reason && explorer.isMarked(explorer.current()->index);
    };
    EXPECT_FALSE(isMarked("work"));
    EXPECT_FALSE(isMarked("work/thesis"));
    EXPECT_FALSE(isMarked("other/shortcut"));
    EXPECT_EQ(explorer.toggleMark(), "shortcut: it's in a folder protected in Settings");
    EXPECT_EQ(protectionNote(explorer, *explorer.current()), "never touched");
    EXPECT_TRUE(isMarked("other/elsewhere"));
    EXPECT_TRUE(explorer.isProtected(*explorer.tree().entryAt(home.path("other/shortcut")))) << "still";
    EXPECT_TRUE(isMarked("other")) << "that goes without what the link leads to";
}

TEST(Explorer, OrdersFiltersMarksAndFindsItsWay) {
    const TempHome home;
    home.file("big/one/x", 50000);
    home.files({"big/two", "Café.txt"}, 9000);
    home.file("zero");
    home.setModified("zero", 2000000000);
    Explorer explorer(treeOf(home));
    EXPECT_THAT(namesOf(explorer), ElementsAre("big", "Café.txt", "zero"));
    explorer.setOrder(ExplorerOrder::date);
    EXPECT_EQ(explorer.rows().front().name, "zero");
    explorer.setOrder(ExplorerOrder::name);
    EXPECT_THAT(namesOf(explorer), ElementsAre("Café.txt", "big", "zero"));
    explorer.setOrder(ExplorerOrder::items);
    EXPECT_EQ(explorer.rows().front().name, "big");
    explorer.setFilter("CAFE");
    EXPECT_THAT(namesOf(explorer), ElementsAre("Café.txt"));
    explorer.setFilter({});

    pointAt(explorer, home.path("big"));
    explorer.toggleMark();
    ASSERT_TRUE(explorer.enter());
    EXPECT_EQ(explorer.path(), home.path("big"));
    pointAt(explorer, home.path("big/two"));
    explorer.toggleMark();
    EXPECT_EQ(explorer.markCount(), 2U);
    EXPECT_THAT(explorer.chosen(), ElementsAre(*explorer.tree().entryAt(home.path("big"))))
        << "what lies in something marked goes with it";
    EXPECT_FALSE(explorer.enter()) << "a file is no folder";
    EXPECT_TRUE(explorer.leave());
    EXPECT_EQ(explorer.current()->name, "big") << "on what it came out of";
    EXPECT_FALSE(explorer.leave());
}

TEST(Explorer, ShowsOnlyWhatIsOldAndOffersNothingNewerWithIt) {
    const TempHome home;
    const Date now(std::chrono::seconds(1700000000));
    home.files({"old/x", "mixed/old", "mixed/deep/older", "mixed/new", "new"}, 9000);
    for (const char* name : {"old/x", "mixed/old", "mixed/deep/older"}) {
        home.setModified(name, 1600000000);
    }
    for (const char* name : {"mixed/new", "new"}) {
        home.setModified(name, 1699000000);
    }
    Explorer explorer(treeOf(home));
    explorer.setOlderThan(nextAge({}), now);
    explorer.setOrder(ExplorerOrder::name);
    ASSERT_THAT(namesOf(explorer), ElementsAre("mixed", "old"));
    EXPECT_EQ(explorer.rows()[0].sums.bytes, allocatedBytes(home.path("mixed/old")) +
                                                 allocatedBytes(home.path("mixed/deep")) +
                                                 allocatedBytes(home.path("mixed/deep/older")));
    EXPECT_EQ(explorer.rows()[0].sums.items, 3U);
    EXPECT_EQ(explorer.rows()[1].sums.bytes,
              allocatedBytes(home.path("old")) + allocatedBytes(home.path("old/x")));
    EXPECT_TRUE(explorer.holdsNewer(explorer.rows()[0].index));
    EXPECT_TRUE(whyNotAside(explorer, home.path())) << "the newer things in it would go as well";
    explorer.moveBy(1);
    EXPECT_FALSE(whyNotAside(explorer, home.path()));
    explorer.moveTo(0);
    ASSERT_TRUE(explorer.enter());
    EXPECT_THAT(namesOf(explorer), ElementsAre("deep", "old")) << "it stays when one goes elsewhere";
    explorer.setOlderThan(99999, now);
    EXPECT_TRUE(explorer.rows().empty()) << "longer ago than there are dates";
    explorer.setOlderThan({}, now);
    EXPECT_THAT(namesOf(explorer), ElementsAre("deep", "new", "old"));
    EXPECT_EQ(nextAge(nextAge(nextAge(nextAge({})))), std::nullopt);
    EXPECT_EQ(nextAge(200), 365);
}

TEST(Explorer, MarksWhatCouldNotBeReadAndTheFoldersAroundIt) {
    // A folder that could not be read looked like an empty one.
    const TempHome home;
    home.files({"a/b/shut/x", "a/open/y"}, 9000);
    home.setMode("a/b/shut", 0);
    expectHeld(asOrdinaryUser(home.path(), [&] {
        const auto tree = treeOf(home);
        const auto signs = [](const NamedTree& of, const std::string& path) {
            return of.entry(*of.entryAt(path)).traits &
                   (EntryTraits::unreadable | EntryTraits::holdsUnreadable);
        };
        const auto back = treeFromExport(exportOf(*tree));
        for (const NamedTree* each : {tree.get(), back->get()}) {
            if (signs(*each, home.path("a/b/shut")) != EntryTraits::unreadable ||
                signs(*each, home.path("a/b")) != EntryTraits::holdsUnreadable ||
                signs(*each, home.path()) != EntryTraits::holdsUnreadable ||
                signs(*each, home.path("a/open")) != 0 ||
                !unreadLine(each->entry(*each->entryAt(home.path("a/b/shut"))))) {
                return false;
            }
        }
        tree->detach(*tree->entryAt(home.path("a/b/shut")));
        return signs(*tree, home.path("a/b")) == 0 && signs(*tree, home.path()) == 0;
    }));
    home.setMode("a/b/shut", 0755);
}

TEST(Explorer, ShowsTheNearestFolderWhenTheOneItIsInGoes) {
    const TempHome home;
    home.file("a/b/c/d", 9000);
    const auto tree = treeOf(home);
    Explorer explorer(tree);
    pointAt(explorer, home.path("a/b/c/d"));
    explorer.toggleMark();
    fs::remove_all(home.path("a/b"));
    // The last one never came to an end: it was looked for above the root folder, too.
    dropMissing(*tree, {home.path("a/b/c/d"), home.path("a"), "/no such folder/at all"});
    explorer.refresh();
    EXPECT_EQ(explorer.path(), home.path("a"));
    EXPECT_EQ(explorer.markCount(), 0U);
    home.file("a/b/new", 70000);
    measureAnew(*tree, home.path("a/b"));
    explorer.refresh();
    EXPECT_THAT(namesOf(explorer), ElementsAre("b"));
    HardLinkRegistry registry;
    EXPECT_EQ(tree->entry(NamedTree::root).sums.bytes,
              FileTree::measure(home.path(), registry).allocatedBytes);
    // Measured anew as a whole, in another tree: where one was, with the marks that are left.
    home.files({"a/second", "a/third", "a/fourth"}, 9000);
    explorer.goOnIn(treeOf(home));
    for (int row = 0; row < 3; ++row) {
        explorer.toggleMark();
        explorer.moveBy(1);
    }
    explorer.setOrder(ExplorerOrder::name);
    explorer.setFilter("d");
    fs::remove(home.path("a/fourth"));
    explorer.moveBy(1);
    explorer.goOnIn(treeOf(home));
    EXPECT_EQ(explorer.path(), home.path("a"));
    EXPECT_THAT(namesOf(explorer), ElementsAre("second", "third"));
    EXPECT_EQ(explorer.cursor(), 1U);
    EXPECT_EQ(explorer.markCount(), 2U);
    EXPECT_EQ(explorer.markedBytes(), explorer.tree().freedWithout(explorer.chosen()));
}

TEST(Explorer, SetsAsideWhatWasAgreedToThroughTheLogAndPutsItBack) {
    const TempHome home;
    const std::string odd = "Videos/\xFF\x1B[31m.mkv";
    home.fileWith(odd, std::string(60000, 'v'));
    home.fileWith("Videos/folder/x", "inside");
    home.file("Videos/stays", 4000);
    const Desk desk = deskAt(home);
    const AsideOffer offer = asideOffer(
        {home.path(odd), home.path("Videos/folder"), home.path("Videos/gone")}, desk, *treeOf(home));
    EXPECT_EQ(offer.goingCount, 2U);
    EXPECT_TRUE(offer.items.back().reason) << "what is gone is said to be";
    EXPECT_EQ(offer.items.front().path, home.path(odd));
    EXPECT_TRUE(fs::exists(home.path(odd))) << "asking touches nothing";

    EXPECT_TRUE(setAside(offer, desk).isWhole);
    EXPECT_FALSE(fs::exists(home.path(odd)) || fs::exists(home.path("Videos/folder")));
    EXPECT_TRUE(fs::exists(home.path("Videos/stays")));
    EXPECT_THAT(history(desk).value(), SizeIs(2));

    const auto held = undoOffer(desk);
    ASSERT_THAT(held.value(), SizeIs(2));
    EXPECT_TRUE(putBack(*held, desk).isWhole);
    EXPECT_EQ(contentOf(home.path(odd)), std::string(60000, 'v'));
    EXPECT_EQ(contentOf(home.path("Videos/folder/x")), "inside");
    EXPECT_TRUE(undoOffer(desk).value().empty());
}

TEST(Explorer, LeavesWhatIsProtectedOursKeptOrChangedSinceTheQuestion) {
    const TempHome home;
    home.files({"Work/a", "Downloads/b", "Papers/mine/c", ".config/google-chrome/Default/History"}, 9000);
    home.fileWith(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papers/mine\"\n");
    home.fileWith(".config/TarvoAI/preferencias.json",
                  R"({"carpetasProtegidas":[")" + home.path("Work") + R"("]})");
    const Desk desk = deskAt(home);
    for (const char* name : {"Work/a", "Work", ".config/TarvoAI", ".config/google-chrome/Default",
                             ".config/google-chrome/Default/History", ".config",
                             // A main folder went whole, for good after 7 days.
                             "Downloads", "Papers/mine", "Papers"}) {
        const AsideOffer offer = asideOffer({home.path(name)}, desk, *treeOf(home));
        EXPECT_EQ(offer.goingCount, 0U) << name;
        EXPECT_TRUE(offer.items.front().reason) << name;
    }
    EXPECT_TRUE(onlyLookedAt("/etc", home.path()) && onlyLookedAt(home.path(), home.path()));
    EXPECT_FALSE(onlyLookedAt(home.path("Work"), home.path()));

    const AsideOffer offer = asideOffer({home.path("Downloads/b")}, desk, *treeOf(home));
    home.file("Downloads/b", 90000);
    const Told told = setAside(offer, desk);
    EXPECT_FALSE(told.isWhole);
    EXPECT_TRUE(fs::exists(home.path("Downloads/b"))) << told.text;
}

TEST(Explorer, KnowsWhatIsCertain) {
    const TempHome home;
    home.files({".npm/_cacache/x", "Documents/mine"}, 9000);
    const CertainPlaces certain(home.path());
    EXPECT_THAT(certain.safetiesOf({{.path = home.path(".npm/_cacache"), .usage = {}},
                                    {.path = home.path("Documents/mine"), .usage = {}}}),
                UnorderedElementsAre(Pair(home.path(".npm/_cacache"), Safety::safe),
                                     Pair(home.path("Documents/mine"), Safety::keep)));
    EXPECT_THAT(whatItIs(home.path(".npm/_cacache"), home.path(), platform::now()), Not(IsEmpty()));
}

TEST(UsageExport, ComesBackByteForByteWithEachFileOnce) {
    const TempHome home;
    home.files({"d/\xFF\x1B[31m\"\\\t", "d/e/plain", "ñ"}, 9000);
    home.hardLink("other", "ñ");
    home.link("link", "nowhere");
    const auto tree = treeOf(home);
    const std::string document = exportOf(*tree);
    const auto back = treeFromExport(document);
    ASSERT_TRUE(back) << back.error().message;
    EXPECT_EQ(bytesIn(**back), bytesIn(*tree));
    EXPECT_EQ(document.find('\x1B'), std::string::npos) << "no terminal is told anything by a name";
}

TEST(UsageExport, ReadsWhatOthersWrite) {
    const auto tree = treeFromExport(
        R"([1,2,{"progname":"gdu","more":[{"a":"}]"}],"timestamp":1.5e9},
[{"name":"/srv","mtime":5},
 {"name":"a\u00e9\ud83d\ude00","asize":3,"dsize":4096,"mtime":-7,"new":{"x":[null]}},
 [{"name":"sub","dsize":4096},{"name":"h","dsize":8192,"ino":5,"hlnkc":true},
  {"name":"i","dsize":8192,"ino":5,"nlink":2,"hlnkc":true},{"name":"out","excluded":"otherfs"}],
 {"name":"huge","dsize":99999999999999999999999999}]] )");
    ASSERT_TRUE(tree) << tree.error().message;
    EXPECT_EQ((*tree)->entry(*(*tree)->entryAt("/srv/a\u00e9\U0001F600")).sums.bytes, 4096);
    EXPECT_EQ((*tree)->entry(*(*tree)->entryAt("/srv/sub")).sums.bytes, 4096 + 8192);
    EXPECT_EQ((*tree)->entry(NamedTree::root).sums.items, 6U);
}

TEST(UsageExport, RefusesWhatIsNone) {
    for (const char* document :
         {"", "[", "[1]", "{}", "[1,2,{},[]]", R"([2,0,{},[{"name":"/"}]])", R"([1,2,{},[{"name":""}]])",
          R"([1,2,{},[{"name":"/"},{}]])", R"([1,2,{},[{"name":"/"}]] x)", R"([1,2,{},[{"name":"/"])",
          R"([1,2,{},[{"name":"/","dsize":"x"}]])", R"([1,2,{},[{"name":"/\q"}]])",
          R"([1,2,{},{"name":"/"}])"}) {
        EXPECT_FALSE(treeFromExport(document)) << document;
    }
    std::string deep = "[1,2,{}";
    for (int level = 0; level < 200000; ++level) {
        deep += ",[{\"name\":\"d\"}";
    }
    EXPECT_FALSE(treeFromExport(deep));
    EXPECT_FALSE(treeFromExport("[1,2," + std::string(1000000, '[')));
}
