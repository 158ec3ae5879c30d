#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "Tests/Cleanup/CleaningHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

#include <filesystem>
#include <thread>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;

TEST(CleanupExecutor, HoldsAToolToThePlaceThatWasShown) {
    // A tool's own settings, or those of the folder it was started in, led it to a folder nobody had agreed
    // to.
    const CleaningHome home;
    home.files().program(".local/bin/npm", "#!/bin/sh\necho \"$npm_config_cache $PWD\" >\"$HOME/seen\"\n");
    home.files().file(".npm/_cacache/data", 5000);
    const CleanupAction action =
        home.action(Safety::safe, method::Command{{"npm", "cache", "clean"}}, {".npm/_cacache"});
    EXPECT_EQ(home.clean({action}).front().status, CleanupStatus::done);
    EXPECT_EQ(contentOf(home.path("seen")), home.path(".npm") + " " + home.root() + "\n");
}

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
    // Two cleanups could not be told apart in the log.
    (void)home.clean({home.items(Safety::safe, {"missing"})});
    const auto log = HistoryLog::outcomes(home.historyPath()).value();
    ASSERT_THAT(log, SizeIs(3));
    EXPECT_TRUE(log[0].cleanup);
    EXPECT_EQ(log[0].cleanup, log[1].cleanup);
    EXPECT_NE(log[1].cleanup, log[2].cleanup);
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

TEST(CleanupExecutor, NeitherDeletesNorMovesWhatIsOrHoldsAProtectedFolder) {
    // A cache that was a link to a protected folder was emptied by its tool, and folders that held one under
    // another name went with it.
    CleaningHome home;
    home.files().file("Documents/keep/x", 5000);
    home.files().folder("tree/empty");
    home.files().link(".cache/uv", "../Documents/keep");
    home.files().link("docs", "Documents");
    home.files().link("alias", "tree/empty");
    home.files().program(".local/bin/uv", "rm -rf \"$HOME\"/.cache/uv/*");
    home.protectedFolders = {home.path("docs/keep"), home.path("alias")};
    CleanupAction tool = home.action(Safety::safe, method::Command{{"uv", "cache", "clean"}}, {".cache/uv"});
    const auto contents = method::TrashContents{{home.path(".cache/uv")}};
    CleanupAction fallback = home.action(Safety::safe, method::Command{{"false"}}, {});
    fallback.fallbackContents = contents.folders;
    const auto outcomes = home.clean(
        {tool, fallback, home.action(Safety::safe, contents, {}), home.action(Safety::review, contents, {}),
         home.items(Safety::safe, {"Documents"}), home.items(Safety::review, {"Documents"}),
         home.items(Safety::safe, {"tree"}), home.items(Safety::review, {"tree"}),
         home.action(Safety::safe, method::TrashContents{{home.path("tree")}}, {})});
    for (const CleanupOutcome& outcome : outcomes) {
        EXPECT_EQ(outcome.status, CleanupStatus::failed);
        EXPECT_EQ(outcome.message, CleanupPlanner::protectedReason());
    }
    EXPECT_TRUE(fs::exists(home.path("Documents/keep/x")));
    EXPECT_TRUE(fs::exists(home.path("tree/empty")));
}

TEST(CleanupExecutor, ActsOnlyOnWhatAPathMeantWhenItWasShown) {
    // While a folder traded places with a link to the user's documents, these were deleted and set aside.
    const CleaningHome home;
    home.files().files({"gate/x", "gate/in/x", "Documents/x", "Documents/in/x"});
    home.files().link("link", "Documents");
    const std::vector<CleanupAction> actions{
        home.items(Safety::safe, {"gate/x"}), home.items(Safety::review, {"gate/in"}),
        home.action(Safety::safe, method::TrashContents{{home.path("gate/in")}}, {}),
        home.action(Safety::review, method::TrashContents{{home.path("gate/in")}}, {})};
    const ResolvedPaths shown = CleanupExecutor::resolved(actions, home.guard());
    const auto swap = [&] {
        renameat2(AT_FDCWD, home.path("gate").c_str(), AT_FDCWD, home.path("link").c_str(), RENAME_EXCHANGE);
    };
    swap();
    for (const CleanupOutcome& outcome : home.clean(actions, {.shown = shown})) {
        EXPECT_EQ(outcome.status, CleanupStatus::failed);
        EXPECT_THAT(outcome.message.value(), AnyOf(HasSubstr("cuando se mostró"), HasSubstr("it was shown")));
    }
    EXPECT_TRUE(fs::exists(home.path("link/x")) && fs::exists(home.path("link/in/x")));
    {
        const std::jthread swapper([&](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                swap();
            }
        });
        for (int round = 0; round < 100; ++round) {
            (void)home.clean(actions, {.shown = shown});
            ASSERT_TRUE(fs::exists(home.path("Documents/x")) && fs::exists(home.path("Documents/in/x")));
        }
    }
    const std::string gate = fs::is_symlink(home.path("gate")) ? "link" : "gate";
    EXPECT_FALSE(fs::exists(home.path(gate + "/x"))) << "what was shown is done in a calm moment";
}

TEST(CleanupExecutor, LeavesAloneWhatTookThePlaceOfWhatWasShown) {
    // A cache that became a link, and a build that was made anew with a file of the user's in it, were
    // removed as if they had been shown.
    const CleaningHome home;
    home.files().files({"cache/x", "build/x", "own/x", "letter", "same/x", "Documents/x"});
    const std::vector<CleanupAction> actions{
        home.items(Safety::safe, {"cache"}), home.items(Safety::safe, {"build"}),
        home.items(Safety::review, {"own"}), home.items(Safety::review, {"letter"}),
        home.action(Safety::safe, method::TrashContents{{home.path("build")}}, {})};
    const ResolvedPaths shown = CleanupExecutor::resolved(actions, home.guard());
    fs::remove_all(home.path("cache"));
    home.files().link("cache", "Documents");
    for (const char* folder : {"build", "own"}) {
        fs::remove_all(home.path(folder));
        home.files().files({std::string(folder) + "/important"});
    }
    home.files().files({"letter.new"});
    fs::rename(home.path("letter.new"), home.path("letter"));
    for (const CleanupOutcome& outcome : home.clean(actions, {.shown = shown})) {
        EXPECT_EQ(outcome.status, CleanupStatus::failed) << outcome.title;
        EXPECT_THAT(outcome.message.value_or(""),
                    AnyOf(HasSubstr("cuando se mostró"), HasSubstr("it was shown")));
    }
    EXPECT_TRUE(fs::is_symlink(home.path("cache")) && fs::exists(home.path("letter")));
    EXPECT_TRUE(fs::exists(home.path("build/important")) && fs::exists(home.path("own/important")));
    // What has only changed inside is what was shown; and what is gone is no error.
    const std::vector<CleanupAction> same{home.items(Safety::safe, {"same"}),
                                          home.items(Safety::safe, {"Documents/x"})};
    const ResolvedPaths shownOfSame = CleanupExecutor::resolved(same, home.guard());
    home.files().files({"same/y"});
    fs::remove(home.path("Documents/x"));
    for (const CleanupOutcome& outcome : home.clean(same, {.shown = shownOfSame})) {
        EXPECT_EQ(outcome.status, CleanupStatus::done) << outcome.message.value_or("");
    }
    EXPECT_FALSE(fs::exists(home.path("same")));
}

TEST(CleanupExecutor, CountsTheSameBytesOnceHoweverOftenAPlanIsCarriedOut) {
    // The same plan counted its bytes each time that it was carried out, and a tool that freed nothing was
    // simply done.
    const CleaningHome home;
    home.files().program(".local/bin/idle", "true");
    home.files().files({"cache/a/file", "cache/b/file", "store/file"}, 9000);
    const CleanupAction both = home.items(Safety::safe, {"cache/a", "cache/b"});
    CleanupAction first = both;
    first.method = method::TrashItems{{home.path("cache/a")}};
    const CleanupAction tool = home.action(Safety::safe, method::Command{{"idle"}}, {"store"});
    const CleanupAction unmeasured = home.action(Safety::safe, method::Command{{"idle"}}, {});
    const auto outcomes = home.clean({first, both, both, tool, unmeasured});
    EXPECT_GT(outcomes[0].freedBytes, 9000);
    EXPECT_EQ(outcomes[0].freedBytes + outcomes[1].freedBytes, both.estimatedBytes);
    EXPECT_EQ(outcomes[2].freedBytes, 0);
    EXPECT_EQ(outcomes[3].status, CleanupStatus::done);
    EXPECT_EQ(outcomes[3].freedBytes, 0);
    EXPECT_THAT(outcomes[3].message.value(),
                AnyOf("la herramienta no ha liberado nada aquí", "the tool freed nothing here"));
    EXPECT_EQ(outcomes[4].message, std::nullopt);
    // A pip that knows nothing of a newer one's folder left 39 of 40 MB there and was simply done.
    home.files().program(".local/bin/older", "rm ~/pip/http/a");
    home.files().file("pip/http/a", 9000);
    home.files().file("pip/http-v2/b", 2000000);
    const auto half = home.clean({home.action(Safety::safe, method::Command{{"older"}}, {"pip"})});
    EXPECT_GT(half[0].freedBytes, 9000);
    EXPECT_THAT(half[0].message.value(),
                AnyOf("la herramienta ha dejado aquí 2 MB", "the tool left 2 MB here"));
}
