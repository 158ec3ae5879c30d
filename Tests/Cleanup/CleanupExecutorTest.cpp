#include "LumoCore/Basics/OwnFiles.h"
#include "Tests/Cleanup/CleaningHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;

TEST(CleanupExecutor, DeletesWhatRecreatesItselfAndSetsEverythingElseAside) {
    const CleaningHome home;
    home.files().file("cache/blob", 20000);
    home.files().file("doc/letter", 30000);
    home.files().link("dangling", "nowhere");
    const std::int64_t cache = allocatedBytes(home.path("cache")) + allocatedBytes(home.path("cache/blob"));
    const std::int64_t letter = allocatedBytes(home.path("doc/letter"));

    const auto outcomes = home.clean({home.items(Safety::safe, {"cache", "missing"}),
                                      home.items(Safety::review, {"doc/letter", "gone", "dangling"})});
    ASSERT_THAT(outcomes, SizeIs(2));
    EXPECT_FALSE(fs::exists(home.path("cache")));
    EXPECT_EQ(outcomes[0].freedBytes, cache);
    EXPECT_EQ(outcomes[0].trashedBytes, 0);
    EXPECT_EQ(outcomes[0].restorable, std::nullopt);
    EXPECT_FALSE(fs::exists(home.path("doc/letter")));
    EXPECT_EQ(outcomes[1].freedBytes, 0);
    EXPECT_EQ(outcomes[1].trashedBytes, letter + allocatedBytes(outcomes[1].restorable->back().inTrash));
    ASSERT_THAT(outcomes[1].restorable.value(), SizeIs(2));
    EXPECT_EQ(outcomes[1].restorable->front().original, home.path("doc/letter"));
    EXPECT_TRUE(fs::is_regular_file(outcomes[1].restorable->front().inTrash));
    EXPECT_TRUE(fs::is_symlink(outcomes[1].restorable->back().inTrash));
    EXPECT_EQ(home.history(), outcomes);
    EXPECT_FALSE(fs::exists(OwnFiles::intents(home.root()))) << "intents are retired";
}

TEST(CleanupExecutor, TakesWhatIsInAFolderAndLeavesTheFolder) {
    const CleaningHome home;
    home.files().files({"safe/.hidden", "safe/sub/file", "mine/.hidden", "mine/sub/file"}, 5000);
    home.files().link("link", "elsewhere");
    home.files().file("elsewhere/keep");
    const auto outcomes = home.clean(
        {home.action(Safety::safe, method::TrashContents{{home.path("safe"), home.path("no")}}, {"safe"}),
         home.action(Safety::review, method::TrashContents{{home.path("mine")}}, {"mine"}),
         home.action(Safety::safe, method::TrashContents{{home.path("link")}}, {"link"})});
    EXPECT_TRUE(fs::is_empty(home.path("safe")));
    EXPECT_TRUE(fs::is_empty(home.path("mine")));
    EXPECT_GT(outcomes[0].freedBytes, 10000);
    EXPECT_THAT(outcomes[1].restorable.value(), SizeIs(2));
    EXPECT_EQ(outcomes[2].status, CleanupStatus::failed);
    EXPECT_TRUE(fs::exists(home.path("elsewhere/keep"))) << "a link has no contents of its own";
}

TEST(CleanupExecutor, TouchesNothingWhenOnePathOfTheActionIsOutside) {
    const CleaningHome home;
    home.files().file("inside", 5000);
    CleanupAction action = home.items(Safety::safe, {"inside"});
    std::get<method::TrashItems>(action.method).paths.emplace_back("/Library/Caches");
    CleanupAction tool = home.action(Safety::safe, method::Command{{"touch", home.path("ran")}}, {});
    tool.fallbackContents = {home.path("../x")};
    const auto outcomes = home.clean({action, tool});
    EXPECT_TRUE(fs::exists(home.path("inside")));
    EXPECT_FALSE(fs::exists(home.path("ran")));
    for (const CleanupOutcome& outcome : outcomes) {
        EXPECT_EQ(outcome.status, CleanupStatus::failed);
        EXPECT_THAT(outcome.message.value(), HasSubstr(": /")) << "the path is named";
    }
    EXPECT_THAT(home.history(), SizeIs(2));
}

TEST(CleanupExecutor, FreesNothingWhereNothingWasLeftOrMoreIsThereThanBefore) {
    const CleaningHome home;
    CleanupAction gone = home.items(Safety::safe, {"gone"});
    gone.estimatedBytes = 1000000;
    home.files().file("grown/small", 1);
    home.files().file("grown/large", 300000);
    CleanupAction grown = home.items(Safety::safe, {"grown/small"});
    grown.measuredPaths = {home.path("grown")};
    const auto outcomes = home.clean({gone, grown});
    EXPECT_EQ(outcomes[0].status, CleanupStatus::done);
    EXPECT_EQ(outcomes[0].freedBytes, 0);
    EXPECT_EQ(outcomes[1].freedBytes, 0);
}

TEST(CleanupExecutor, RunsToolsAndEmptiesTheirFoldersOnlyWhenTheyFailByThemselves) {
    const CleaningHome home;
    home.files().program(".local/bin/good", "rm -r \"$1\"");
    home.files().program(".local/bin/bad", "echo 'Error: no such image'; echo; exit 1");
    home.files().files({"data/blob", "store/blob"}, 9000);
    CleanupAction fallback = home.action(Safety::safe, method::Command{{"bad"}}, {"store"});
    fallback.fallbackContents = {home.path("store")};
    const auto outcomes =
        home.clean({home.action(Safety::review, method::Command{{"good", home.path("data")}}, {"data"}),
                    home.action(Safety::review, method::Command{{"bad", "x y"}}, {}), fallback,
                    home.action(Safety::review, method::Command{{"no-such-tool-here"}}, {}),
                    home.action(Safety::review, method::EvictFromICloud{{home.path("data")}}, {})});
    EXPECT_EQ(outcomes[0].status, CleanupStatus::done);
    EXPECT_GT(outcomes[0].freedBytes, 9000);
    EXPECT_THAT(outcomes[1].message.value(),
                AnyOf("bad x y failed: Error: no such image", "bad x y falló: Error: no such image"));
    EXPECT_EQ(outcomes[2].status, CleanupStatus::done);
    EXPECT_TRUE(fs::is_empty(home.path("store")));
    EXPECT_EQ(outcomes[3].status, CleanupStatus::failed);
    EXPECT_THAT(outcomes[3].message.value(), HasSubstr("no-such-tool-here"));
    EXPECT_EQ(outcomes[4].status, CleanupStatus::failed);
}

TEST(CleanupExecutor, ACancelledToolNeverStartsTheFallback) {
    const CleaningHome home;
    home.files().file("store/blob", 9000);
    CleanupAction action = home.action(Safety::safe, method::Command{{"sleep", "1000"}}, {"store"});
    action.fallbackContents = {home.path("store")};
    std::stop_source cancel;
    const auto outcomes = home.clean(
        {action}, {.onBegin = [&](std::size_t) { cancel.request_stop(); }, .cancelTool = cancel.get_token()});
    EXPECT_EQ(outcomes.front().status, CleanupStatus::failed);
    EXPECT_TRUE(fs::exists(home.path("store/blob")));
}

TEST(CleanupExecutor, DeletesOnWithoutALogAndMovesNothingWithoutItsIntent) {
    const CleaningHome home;
    home.files().files({"cache/blob", "letter"}, 9000);
    home.files().folders({"Library/Application Support/TarvoAI/historial.jsonl",
                          "Library/Application Support/TarvoAI/apartado.jsonl"});
    const auto outcomes =
        home.clean({home.items(Safety::safe, {"cache"}), home.items(Safety::review, {"letter"})});
    EXPECT_EQ(outcomes[0].status, CleanupStatus::done);
    EXPECT_FALSE(fs::exists(home.path("cache")));
    EXPECT_EQ(outcomes[1].status, CleanupStatus::failed);
    EXPECT_TRUE(fs::exists(home.path("letter"))) << "nobody would know where it came from";
}
