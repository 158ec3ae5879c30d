#include "Tests/Cleanup/CleaningHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using lumo::CleanupAction;
using lumo::CleanupOutcome;
using lumo::CleanupStatus;
using lumo::Safety;
using tarvo::testing::allocatedBytes;
using tarvo::testing::CleaningHome;
using tarvo::testing::Outcome;
using testing::HasSubstr;
using testing::SizeIs;
namespace fs = std::filesystem;
namespace method = lumo::method;

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
    EXPECT_FALSE(fs::exists(lumo::ApplicationFolders::intents(home.root()))) << "intents are retired";
}

TEST(CleanupExecutor, TakesWhatIsInAFolderAndLeavesTheFolder) {
    const CleaningHome home;
    for (const char* folder : {"safe", "mine"}) {
        home.files().file(std::string(folder) + "/.hidden", 5000);
        home.files().file(std::string(folder) + "/sub/file", 5000);
    }
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

TEST(CleanupExecutor, StopsAtTheItemThatFailsAndStillTellsWhatItMoved) {
    const CleaningHome home;
    home.files().file("a", 5000);
    home.files().file("locked/b", 5000);
    home.files().file("c", 5000);
    home.files().setMode("locked", 0555);
    const Outcome outcome = tarvo::testing::asOrdinaryUser(home.root(), [&] {
        const CleanupAction action = home.items(Safety::review, {"a", "locked/b", "c"});
        const CleanupOutcome done = home.clean({action}).front();
        return done.status == CleanupStatus::failed && done.message->starts_with("b: ") && done.restorable &&
               done.restorable->size() == 1 && done.restorable->front().original == home.path("a") &&
               done.trashedBytes > 0 && fs::exists(home.path("c")) && home.undo().done == 1 &&
               fs::exists(home.path("a"));
    });
    if (outcome == Outcome::notPossible) {
        GTEST_SKIP() << "needs the right to become another user";
    }
    EXPECT_EQ(outcome, Outcome::held);
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
    home.files().fileWith(".local/bin/good", "#!/bin/sh\nrm -r \"$1\"\n");
    home.files().fileWith(".local/bin/bad", "#!/bin/sh\necho 'Error: no such image'; echo; exit 1\n");
    home.files().setMode(".local/bin/good", 0755);
    home.files().setMode(".local/bin/bad", 0755);
    home.files().file("data/blob", 9000);
    home.files().file("store/blob", 9000);
    CleanupAction fallback = home.action(Safety::safe, method::Command{{"bad"}}, {"store"});
    fallback.fallbackContents = {home.path("store")};
    const auto outcomes =
        home.clean({home.action(Safety::review, method::Command{{"good", home.path("data")}}, {"data"}),
                    home.action(Safety::review, method::Command{{"bad", "x y"}}, {}), fallback,
                    home.action(Safety::review, method::Command{{"no-such-tool-here"}}, {})});
    EXPECT_EQ(outcomes[0].status, CleanupStatus::done);
    EXPECT_GT(outcomes[0].freedBytes, 9000);
    EXPECT_THAT(outcomes[1].message.value(), testing::AnyOf("bad x y failed: Error: no such image",
                                                            "bad x y falló: Error: no such image"));
    EXPECT_EQ(outcomes[2].status, CleanupStatus::done);
    EXPECT_TRUE(fs::is_empty(home.path("store")));
    EXPECT_EQ(outcomes[3].status, CleanupStatus::failed);
    EXPECT_THAT(outcomes[3].message.value(), HasSubstr("no-such-tool-here"));
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

TEST(CleanupExecutor, EndsAfterTheActionInHandAndLogsIt) {
    const CleaningHome home;
    home.files().file("a", 5000);
    home.files().file("b", 5000);
    std::stop_source stop;
    const auto outcomes =
        home.clean({home.items(Safety::review, {"a"}), home.items(Safety::review, {"b"})},
                   {.onBegin = [&](std::size_t) { stop.request_stop(); }, .stop = stop.get_token()});
    EXPECT_THAT(outcomes, SizeIs(1));
    EXPECT_EQ(home.history(), outcomes);
    EXPECT_TRUE(fs::exists(home.path("b")));
}

TEST(CleanupExecutor, SaysThatCloudFilesCannotBeEvictedHere) {
    const CleaningHome home;
    const auto outcomes =
        home.clean({home.action(Safety::review, method::EvictFromICloud{{home.path("x")}}, {})});
    EXPECT_EQ(outcomes.front().status, CleanupStatus::failed);
    EXPECT_THAT(outcomes.front().message.value(), HasSubstr("iCloud Drive"));
}

TEST(CleanupExecutor, DeletesOnWithoutALogAndMovesNothingWithoutItsIntent) {
    const CleaningHome home;
    home.files().file("cache/blob", 9000);
    home.files().file("letter", 9000);
    home.files().folder("Library/Application Support/TarvoAI/historial.jsonl");
    home.files().folder("Library/Application Support/TarvoAI/apartado.jsonl");
    const auto outcomes =
        home.clean({home.items(Safety::safe, {"cache"}), home.items(Safety::review, {"letter"})});
    EXPECT_EQ(outcomes[0].status, CleanupStatus::done);
    EXPECT_FALSE(fs::exists(home.path("cache")));
    EXPECT_EQ(outcomes[1].status, CleanupStatus::failed);
    EXPECT_TRUE(fs::exists(home.path("letter"))) << "nobody would know where it came from";
}
