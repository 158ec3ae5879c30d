#include "LumoCore/Cleanup/HeldNotes.h"
#include "Tests/Cleanup/CleaningHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

#include <filesystem>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

const std::string own = "Library/Application Support/TarvoAI/";

/// Runs the rest of a test in a time zone.
class InTimeZone final {
  public:
    explicit InTimeZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    ~InTimeZone() {
        unsetenv("TZ");
        tzset();
    }
    InTimeZone(const InTimeZone&) = delete;
    InTimeZone& operator=(const InTimeZone&) = delete;
};

} // namespace

TEST(Holding, ListsBatchesOldestFirstByStampOrElseByChange) {
    const CleaningHome home;
    const std::string root = own + "Apartado/";
    home.files().file(root + "20260314-093005/A-x", 5000);
    home.files().file(root + "20260231-000000/x");
    home.files().file(root + "notes/x");
    home.files().setModified(root + "notes", 1000000000);
    home.files().setModified(root + "20260231-000000", 1100000000);
    const auto batches = Holding::batches(home.guard(), cleaningTime).value();
    ASSERT_THAT(batches, SizeIs(3));
    EXPECT_EQ(batches[0].path, home.path(root + "notes"));
    EXPECT_EQ(batches[0].date, Date(1000000000s));
    EXPECT_EQ(batches[1].date, Date(1100000000s)) << "no such day";
    EXPECT_EQ(batches[2].path, home.path(root + "20260314-093005"));
    EXPECT_GT(batches[2].bytes, 5000);
    EXPECT_THAT(Holding::batches(CleaningHome().guard(), cleaningTime).value(), IsEmpty());
}

TEST(Holding, ExpiresAfterSevenCalendarDaysToTheSecondAcrossSummerTime) {
    const InTimeZone madrid("Europe/Madrid");
    const CleaningHome home;
    // The clocks go forward on 29 March 2026: the seventh day ends an hour "early".
    home.files().file(own + "Apartado/20260325-120000/x", 5000);
    home.files().file(own + "Apartado/20260325-120100/x", 5000);
    const auto batches = Holding::batches(home.guard(), cleaningTime).value();
    const Date end = dateFromIsoText("2026-04-01T10:00:00Z").value();
    EXPECT_EQ(batches[0].expires(), end);
    EXPECT_EQ(Holding::purgeExpired(home.guard(), end - 1s), 0);
    EXPECT_EQ(Holding::purgeExpired(home.guard(), end), batches[0].bytes);
    EXPECT_FALSE(fs::exists(batches[0].path));
    EXPECT_TRUE(fs::exists(batches[1].path));
}

TEST(Holding, PutsBackTheLastOneFirstAndRemovesTheEmptyBatch) {
    const CleaningHome home;
    home.files().fileWith("deep/folder/cache", "one");
    home.files().fileWith("other/cache", "two");
    const std::string longest = "other/" + std::string(254, 'x') + "\xC3"; // Cut inside a character's bytes.
    home.files().file(longest, 1);
    // The folder of an item that was set aside before goes, too: the last one has to come back first.
    const auto outcomes =
        home.clean({home.items(Safety::review, {"deep/folder/cache", "other/cache", longest}),
                    home.items(Safety::review, {"deep"})});
    EXPECT_FALSE(fs::exists(home.path("deep")));
    const std::string batch = fs::path(outcomes[0].restorable->front().inTrash).parent_path();
    EXPECT_EQ(fs::status(batch).permissions(), fs::perms::owner_all);
    EXPECT_EQ(home.undo(), TrashOperationResult{.done = 4});
    EXPECT_EQ(contentOf(home.path("deep/folder/cache")) + contentOf(home.path("other/cache")), "onetwo");
    EXPECT_TRUE(fs::exists(home.path(longest)));
    EXPECT_FALSE(fs::exists(batch));
    EXPECT_EQ(home.undo(), TrashOperationResult{});
}

TEST(Holding, RefusesToRestoreWhatIsTakenGoneOrNotItsOwn) {
    const CleaningHome home;
    std::vector<TrashedItem> items;
    for (const char* name : {"file", "link", "purged", "outside"}) {
        home.files().fileWith(name, name);
        items.push_back(home.setAside(name));
    }
    home.files().fileWith("file", "newer");
    home.files().link("link", "dangling");
    fs::remove(items[2].inTrash);
    items[3].original = "/tmp/tarvo-outside";
    TrashedItem dots = items[0];
    dots.original = home.path("sub/../file2");
    TrashedItem crossed = items[0];
    crossed.inTrash += "/../" + fs::path(items[0].inTrash).filename().string();
    items.push_back(dots);
    items.push_back(crossed);
    items.push_back({.original = home.path("stolen"), .inTrash = home.files().file("victim")});
    items.push_back({.original = home.path("batch"), .inTrash = fs::path(items[0].inTrash).parent_path()});

    const auto result = Holding::restore(items, home.guard());
    EXPECT_EQ(result.done, 0);
    const auto gone = [](const std::string& name) {
        return AnyOf(name + ": no longer in Recently Cleaned", name + ": ya no está apartado");
    };
    EXPECT_THAT(result.failures, ElementsAre("file: ya existe en su sitio", "link: ya existe en su sitio",
                                             gone("purged"), HasSubstr("/tmp/tarvo-outside"), gone("file2"),
                                             gone("file"), gone("stolen"), gone("batch")));
    EXPECT_TRUE(fs::exists(items[0].inTrash));
    EXPECT_TRUE(fs::exists(home.path("victim")));
    EXPECT_FALSE(fs::exists(home.path("sub")));
}

TEST(Holding, EmptiesForGoodOnlyInItsOwnAreaAndUnlinksLinksWithoutTheirTargets) {
    const CleaningHome home;
    home.files().file("letter", 9000);
    home.files().file("kept/file");
    (void)home.setAside("letter");
    home.files().link(own + "Apartado/linked", home.path("kept"));
    const auto before = Holding::batches(home.guard(), cleaningTime).value();
    const auto emptied = Holding::emptyAll(home.guard(), cleaningTime);
    EXPECT_THAT(emptied.failures, IsEmpty());
    EXPECT_EQ(emptied.freed, before[0].bytes + before[1].bytes);
    EXPECT_TRUE(fs::is_empty(home.path(own + "Apartado")));
    EXPECT_TRUE(fs::is_empty(home.path("Library/Caches/TarvoAI/vaciando")));
    home.files().file("letter");
    const TrashedItem letter = home.setAside("letter");
    const auto chosen = Holding::emptyTrashed(
        {letter, letter, {.original = "x/kept", .inTrash = home.path("kept")}}, home.guard());
    EXPECT_EQ(chosen.done, 1) << "what is gone is passed over";
    EXPECT_THAT(chosen.failures,
                ElementsAre(AnyOf("kept: not in Recently Cleaned", "kept: no está apartado")));
    EXPECT_TRUE(fs::exists(home.path("kept/file")));
}

TEST(Holding, EmptiesWithoutAStagingFolderAndPutsBackWhatCannotBeRemoved) {
    const CleaningHome home;
    home.files().files({"letter", "tree/locked/file", "tree/loose", "whole"}, 9000);
    home.files().file("Library/Caches/TarvoAI"); // No staging folder can be made here.
    const TrashedItem letter = home.setAside("letter", cleaningTime - 1h);
    EXPECT_GT(Holding::emptyAll(home.guard(), cleaningTime).freed, 9000);
    EXPECT_FALSE(fs::exists(letter.inTrash));
    const TrashedItem tree = home.setAside("tree");
    const TrashedItem whole = home.setAside("whole");
    if (runProgram("/bin/chown", {"-R", "65534", home.root()}).exitCode != 0) {
        GTEST_SKIP() << "needs the right to own files as another user";
    }
    EXPECT_EQ(lchown((tree.inTrash + "/locked").c_str(), 0, 0), 0);
    expectHeld(asOrdinaryUser(home.root(), [&] {
        const auto emptied = Holding::emptyAll(home.guard(), cleaningTime);
        return emptied.freed == 0 && emptied.failures.size() == 1 && !fs::exists(whole.inTrash) &&
               fs::exists(tree.inTrash + "/locked/file") && !fs::exists(tree.inTrash + "/loose");
    }));
    // What an emptying had gutted came back as if nothing were missing.
    EXPECT_TRUE(HeldNotes::of(home.root()).isIncomplete(tree.inTrash));
    const auto undone = home.undo();
    EXPECT_EQ(undone.done, 1);
    EXPECT_THAT(undone.failures,
                ElementsAre(AnyOf(HasSubstr("tree: parts of it"), HasSubstr("tree: le faltan"))))
        << "what went as it was told to is not missed";
    EXPECT_TRUE(fs::exists(home.path("tree/locked/file")));
}

TEST(Holding, CountsALinkInPlaceOfItsFoldersAsMissing) {
    const CleaningHome home;
    home.files().file("letter");
    const TrashedItem letter = home.setAside("letter");
    fs::rename(home.path(own + "Apartado"), home.path("moved"));
    home.files().link(own + "Apartado", home.path("moved"));
    EXPECT_THAT(Holding::batches(home.guard(), cleaningTime).value(), IsEmpty());
    EXPECT_EQ(Holding::emptyAll(home.guard(), cleaningTime), Holding::Emptied{});
    EXPECT_EQ(Holding::restore({letter}, home.guard()).done, 0);
    home.files().file("second");
    EXPECT_EQ(home.clean({home.items(Safety::review, {"second"})}).front().status, CleanupStatus::failed);
    EXPECT_TRUE(fs::exists(home.path("second")));
}

TEST(Undoing, FindsTheNewestBatchByTheLogAndThenTheOneBefore) {
    const CleaningHome home;
    home.files().files({"first", "second"});
    (void)home.setAside("first", cleaningTime);
    (void)home.setAside("second", cleaningTime - 24h); // The clock was set back in between.
    home.files().folder("first");
    (void)home.setAside("first", cleaningTime - 48h);
    EXPECT_EQ(home.undo().done, 1);
    EXPECT_TRUE(fs::is_directory(home.path("first")));
    EXPECT_EQ(home.undo().done, 1);
    EXPECT_TRUE(fs::exists(home.path("second")));
    const auto found = Undoing::newestFrom(home.path("first"), home.history(), home.guard());
    ASSERT_TRUE(found);
    EXPECT_TRUE(fs::is_regular_file(found->inTrash));
}

TEST(Undoing, IsNotHeldUpByABatchThatCannotGoBack) {
    // A batch with a taken place came first each time, and nothing before it could ever be undone.
    const CleaningHome home;
    home.files().files({"before", "taken", "nested/item"});
    (void)home.setAside("before", cleaningTime - 2h);
    (void)home.setAside("nested/item", cleaningTime - 1h);
    (void)home.setAside("nested", cleaningTime - 1h); // Comes back first: the item belongs in it.
    (void)home.setAside("taken", cleaningTime);
    home.files().file("taken");
    for (const auto& [name, done] : {std::pair{"nested/item", 2}, {"before", 1}}) {
        EXPECT_FALSE(Undoing::newestBatch(home.history(), home.guard()).empty());
        const TrashOperationResult undone = home.undo();
        EXPECT_EQ(undone.done, done);
        EXPECT_THAT(undone.failures, ElementsAre("taken: ya existe en su sitio"));
        EXPECT_TRUE(fs::exists(home.path(name)));
    }
    EXPECT_THAT(Undoing::newestBatch(home.history(), home.guard()), IsEmpty());
    EXPECT_EQ(home.undo().done, 0);
    EXPECT_THAT(Undoing::held(home.history(), home.guard()), SizeIs(1));
}

TEST(Undoing, TellsWhatVanishedAndNotWhatWasPutBackOrEndedForGood) {
    // What had vanished from the area was passed over in silence.
    const CleaningHome home;
    home.files().files({"old", "emptied", "chosen", "back", "alone", "vanished", "kept"});
    fs::remove_all(fs::path(home.setAside("old", cleaningTime - 7 * 24h).inTrash).parent_path());
    (void)home.setAside("emptied", cleaningTime - 2h);
    (void)Holding::emptyAll(home.guard(), cleaningTime);
    const TrashedItem alone = home.setAside("alone", cleaningTime - 1h);
    std::vector<TrashedItem> items;
    for (const char* name : {"chosen", "back", "vanished", "kept"}) {
        items.push_back(home.setAside(name));
    }
    EXPECT_EQ(Holding::emptyTrashed({items[0]}, home.guard()).done, 1);
    EXPECT_EQ(Holding::restore({items[1]}, home.guard()).done, 1);
    fs::remove(home.path("back"));
    fs::remove(items[2].inTrash);
    fs::remove_all(fs::path(alone.inTrash).parent_path());
    const auto gone = [](const std::string& name) {
        return AnyOf(name + ": no longer in Recently Cleaned", name + ": ya no está apartado");
    };
    const TrashOperationResult undone = home.undo();
    EXPECT_EQ(undone.done, 1);
    EXPECT_THAT(undone.failures, ElementsAre(gone("vanished")));
    EXPECT_THAT(home.undo().failures, ElementsAre(gone("alone")));
    EXPECT_EQ(home.undo(), TrashOperationResult{}) << "once is enough";
}

TEST(Undoing, FindsWhatIsHeldHoweverTheHomeIsSpelled) {
    // With a home behind a link, undo, restore and the lists denied what another spelling had set aside.
    const CleaningHome home;
    home.files().files({"a", "deep/b", "c", "d"});
    for (const char* name : {"a", "deep/b", "c", "d"}) {
        (void)home.setAside(name);
    }
    const auto held = Undoing::held(home.history(), home.guard());
    home.respell();
    const auto respelled = home.history();
    EXPECT_NE(respelled.front().restorable->front().inTrash, held.front().inTrash);
    EXPECT_EQ(Undoing::held(respelled, home.guard()), held);
    EXPECT_THAT(Undoing::newestBatch(respelled, home.guard()), SizeIs(4));
    EXPECT_EQ(Undoing::newestFrom(home.path("deep/b"), respelled, home.guard()), held[1]);
    EXPECT_EQ(Holding::restore(*respelled[1].restorable, home.guard()).done, 1);
    EXPECT_EQ(Holding::emptyTrashed(*respelled[2].restorable, home.guard()).done, 1);
    EXPECT_EQ(home.undo(), TrashOperationResult{.done = 2});
    EXPECT_TRUE(fs::exists(home.path("a")) && fs::exists(home.path("deep/b")));
    // A name that others may give is not proof enough.
    const std::string plain =
        home.files().file(own + "Apartado/20260314-093005/x").substr(home.root().size());
    const TrashedItem foreign{.original = "/home/other/x", .inTrash = "/home/other" + plain};
    EXPECT_EQ(Holding::restore({foreign}, home.guard()).done, 0);
}

TEST(Undoing, CollectsWhatTheLatestCleanupSetAsideWithinAWindow) {
    std::vector<CleanupOutcome> history;
    for (const auto& [age, bytes] : {std::pair{61s, 1}, {60s, 2}, {0s, 4}}) {
        history.push_back({.trashedBytes = bytes, .restorable = std::vector<TrashedItem>(1)});
        history.back().date = cleaningTime - age;
        history.back().restorable->front().original = std::to_string(bytes);
    }
    history.push_back({.trashedBytes = 7});
    history.back().date = cleaningTime + 1h;
    const auto last = Undoing::lastBatchInTrash(history, 60s);
    EXPECT_EQ(last.bytes, 6);
    ASSERT_THAT(last.items, SizeIs(2));
    EXPECT_EQ(last.items.front().original, "2");
}
