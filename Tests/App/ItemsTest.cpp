#include "TarvoApp/App/QtText.h"
#include "Tests/App/AppStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <latch>

using namespace tarvo;
using namespace tarvo::testing;
using lumo::InventoryKind;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
namespace fs = std::filesystem;

namespace {

const QString film = QStringLiteral("archivo:Videos/film");

/// A home with a film, two copies of a picture and a cache, which the application has looked at. Even small
/// things are looked for.
void settle(AppStory& story) {
    story.addCache(2'000'000);
    story.home.fileWith("Videos/film", std::string(3'000'000, 'f'));
    story.home.fileWith("Pictures/a", std::string(1'500'000, 'p'));
    story.home.fileWith("Desktop/a", std::string(1'500'000, 'p'));
    story.services.look = [desk = story.services.desk](InventoryKind kind, const std::stop_token& stop) {
        const bool isOfFiles = kind == InventoryKind::large || kind == InventoryKind::duplicates;
        return isOfFiles ? lookedAt({.kinds = {kind}, .minimumBytes = 1000}, desk, {.stop = stop})
                         : CloserLook{.found = {.kind = kind}};
    };
    story.app().settings()->setWelcomeSeen(true);
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntilIdle());
    ASSERT_TRUE(story.waitUntil([&] { return !story.app().items()->isLooking(); }));
}

int kindOf(InventoryKind kind) {
    return static_cast<int>(kind);
}

std::vector<std::string> shownIDs(AppStory& story) {
    std::vector<std::string> ids;
    for (const Row& row : story.app().rows()->rows()) {
        ids.push_back(row.id);
    }
    return ids;
}

bool isLookedAtAgain(AppStory& story) {
    return story.waitUntil(
        [&] { return !story.app().activity()->isBusy() && !story.app().items()->isLooking(); });
}

} // namespace

TEST(Items, AreTickedConfirmedSetAsideAndPutBackLikeEverythingElse) {
    AppStory story;
    settle(story);
    AppModel& app = story.app();
    TickedDesk& ticked = *app.ticked();
    EXPECT_FALSE(ticked.plan().selection().contains(idOf(film))) << "nothing of the user's by itself";
    app.list()->showKind(kindOf(InventoryKind::large));
    EXPECT_THAT(shownIDs(story),
                UnorderedElementsAre("archivo:Videos/film", "archivo:Desktop/a", "archivo:Pictures/a"));
    const std::int64_t before = ticked.selectedTrashBytes();
    app.places()->toggle(film);
    EXPECT_EQ(ticked.selectedTrashBytes(), before + app.items()->forgottenFiles().front().bytes);
    app.cleaning()->requestClean();
    EXPECT_EQ(ticked.agreement().actions.back().id, idOf(film)) << "after the plan's";
    const QVariantList lines = app.question()->lines();
    EXPECT_TRUE(lines[0].toMap()["isHead"].toBool());
    EXPECT_EQ(lines[1].toMap()["title"], "film") << "the user's own first";
    app.question()->accept();
    ASSERT_TRUE(isLookedAtAgain(story));
    EXPECT_FALSE(fs::exists(story.home.path("Videos/film")));
    EXPECT_FALSE(story.hasCache());
    EXPECT_EQ(app.rows()->indexOf(film), -1);
    EXPECT_FALSE(ticked.plan().selection().contains(idOf(film)));
    app.holding()->undoLastCleanup();
    ASSERT_TRUE(isLookedAtAgain(story));
    EXPECT_TRUE(fs::exists(story.home.path("Videos/film")));
    EXPECT_GE(app.rows()->indexOf(film), 0) << "there again";
}

TEST(Items, OfDuplicatesAreLookedForWhenSomebodyWantsThem) {
    AppStory story;
    settle(story);
    ItemsDesk& items = *story.app().items();
    EXPECT_THAT(items.duplicateFiles(), IsEmpty()) << "that takes long";
    EXPECT_THAT(bytesOf(items.noteOf(kindOf(InventoryKind::duplicates))), HasSubstr("Not looked at yet"));
    items.want(kindOf(InventoryKind::duplicates));
    ASSERT_TRUE(story.waitUntil([&] { return !items.isLooking(); }));
    ASSERT_EQ(items.duplicateFiles().size(), 1U);
    EXPECT_EQ(items.duplicateFiles().front().kept, story.home.path("Pictures/a"));
    // The copies are no large files any more, so that nobody takes both.
    story.app().list()->showKind(kindOf(InventoryKind::large));
    EXPECT_THAT(shownIDs(story), ElementsAre("archivo:Videos/film"));
    // A tile of its own leads to its row, which the list did not show.
    story.app().list()->showKind(-1);
    story.app().places()->explain(film);
    EXPECT_EQ(story.app().list()->onlyKind(), kindOf(InventoryKind::large));
    EXPECT_EQ(story.app().places()->opened(), film);
}

TEST(Items, AreLookedForOneAtATimeAndGiveWayToWhatTheUserWants) {
    AppStory story;
    std::atomic<int> going = 0;
    std::atomic<int> most = 0;
    std::atomic<int> begun = 0;
    std::latch held(1);
    story.services.look = [&](InventoryKind kind, const std::stop_token& stop) {
        most = std::max<int>(most, ++going);
        if (++begun == 1) {
            const std::stop_callback whenStopped(stop, [&] { held.count_down(); });
            held.wait();
        }
        --going;
        return CloserLook{.found = {.kind = kind}};
    };
    story.app().settings()->setWelcomeSeen(true);
    story.app().scanning()->scan();
    ASSERT_TRUE(story.waitUntil([&] { return begun == 1; }));
    EXPECT_FALSE(story.app().activity()->isBusy());
    story.app().scanning()->scan(); // Ends the look, which would wait for ever.
    ASSERT_TRUE(isLookedAtAgain(story));
    EXPECT_EQ(most, 1);
    EXPECT_TRUE(story.app().items()->docker());
}
