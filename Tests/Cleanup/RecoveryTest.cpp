#include "LumoCore/Cleanup/Recovery.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "Tests/Cleanup/CleaningHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using lumo::CleanupOutcome;
using lumo::HomeLock;
using lumo::Safety;
using lumo::TrashedItem;
using tarvo::testing::CleaningHome;
using tarvo::testing::cleaningTime;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

const std::string own = "Library/Application Support/TarvoAI/";

std::string intentLine(const std::string& action, const TrashedItem& item) {
    return lumo::dumpJson(lumo::encode(lumo::Intent{action, "T " + action, item.original, item.inTrash}),
                          lumo::JsonLayout::line) +
           "\n";
}

lumo::Result<HomeLock> take(const CleaningHome& home, lumo::Date now, std::string program = "tarvo test",
                            std::chrono::milliseconds patience = 0ms) {
    return HomeLock::take(home.guard(), {.program = std::move(program), .patience = patience, .now = now});
}

} // namespace

TEST(Recovery, WritesTheOneLineThatEachInterruptedActionOwes) {
    const CleaningHome home;
    for (const char* name : {"logged", "a1", "a2", "b"}) {
        home.files().file(name, 9000);
    }
    home.files().file("unmoved", 9000);
    const TrashedItem logged = home.setAside("logged");
    const std::string log = home.historyPath();
    std::string intents = intentLine("first", logged);
    for (const char* name : {"a1", "a2", "b"}) {
        intents += intentLine(name[0] == 'a' ? "first" : "second", home.setAside(name));
    }
    intents += intentLine("second", {home.path("unmoved"), home.path(own + "Apartado/20260314-093005/none")});
    intents += intentLine("evil", {home.path("unmoved"), home.path("unmoved")});
    home.files().fileWith(own + "apartado.jsonl", intents + "{\"torn");
    // As if the process had died before the lines of these two actions: only the first line stands.
    std::ifstream lines(log);
    std::string first;
    std::getline(lines, first);
    home.files().fileWith(own + "historial.jsonl", first + "\n{\"torn");

    EXPECT_THAT(lumo::Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    const auto history = home.history();
    ASSERT_THAT(history, SizeIs(3));
    EXPECT_EQ(history[1].id, "first");
    EXPECT_EQ(history[1].title, "T first");
    EXPECT_EQ(history[1].status, lumo::CleanupStatus::failed);
    EXPECT_EQ(history[1].message, std::nullopt);
    EXPECT_THAT(history[1].restorable.value(), SizeIs(2));
    EXPECT_GE(history[1].trashedBytes, 18000);
    EXPECT_EQ(history[2].id, "second");
    EXPECT_FALSE(fs::exists(home.path(own + "apartado.jsonl")));
    EXPECT_EQ(home.undo().done, 4);
    EXPECT_THAT(lumo::Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    EXPECT_THAT(home.history(), SizeIs(3)) << "a second time nothing is owed";
}

TEST(Recovery, KeepsTheIntentsWhileTheLogCannotBeWrittenAndTellsWhatIsOwed) {
    const CleaningHome home;
    home.files().file("letter", 9000);
    const TrashedItem letter = home.setAside("letter");
    home.files().fileWith(own + "apartado.jsonl", intentLine("id", letter));
    fs::rename(home.historyPath(), home.path("log"));
    home.files().link(own + "historial.jsonl", home.path("empty-elsewhere"));
    const auto owed = lumo::Recovery::recover(home.guard(), cleaningTime);
    ASSERT_THAT(owed, SizeIs(1));
    EXPECT_EQ(owed.front().restorable->front(), letter);
    EXPECT_TRUE(fs::exists(home.path(own + "apartado.jsonl")));
    EXPECT_FALSE(fs::exists(home.path("empty-elsewhere")));
}

TEST(Recovery, SweepsStagingEmptyBatchesAndTemporaryFilesOnly) {
    const CleaningHome home;
    const std::string staging = "Library/Caches/TarvoAI/vaciando/";
    const std::string id = "0F0E0D0C-0B0A-4908-8706-050403020100";
    home.files().file(staging + id + "/deep/file");
    home.files().file(own + "vaciando-" + id + "/file");
    home.files().file(staging + "notes");
    home.files().file(own + "historial.jsonl.nuevo-2147483646");
    home.files().file(own + "instantaneas.json.nuevo-" + std::to_string(getpid()));
    home.files().folder(own + "Apartado/20260101-000000");
    home.files().file(own + "Apartado/20260102-000000/item");
    (void)lumo::Recovery::recover(home.guard(), cleaningTime);
    for (const std::string& swept : {staging + id, own + "vaciando-" + id, own + "Apartado/20260101-000000",
                                     own + "historial.jsonl.nuevo-2147483646"}) {
        EXPECT_FALSE(fs::exists(home.path(swept))) << swept;
    }
    for (const std::string& kept :
         {staging + "notes", own + "Apartado/20260102-000000/item",
          own + "instantaneas.json.nuevo-" + std::to_string(getpid())}) { // Its writer is alive.
        EXPECT_TRUE(fs::exists(home.path(kept))) << kept;
    }
}

TEST(Mover, KeepsTheIntentsOfAnActionWhoseLineCouldNotBeWrittenWhenTheNextOneIsSettled) {
    const CleaningHome home;
    home.files().file("a", 9000);
    home.files().file("b", 9000);
    const lumo::PathGuard guard = home.guard();
    lumo::Mover mover(guard, lumo::Holding::newBatch(home.root(), cleaningTime));
    const auto reserve = [&](const char* name) {
        const auto action = home.items(Safety::review, {name});
        return mover.reserve(action, action.measuredPaths).value().front();
    };
    (void)reserve("a");
    mover.leaveIntents();
    mover.settle();
    (void)reserve("b");
    mover.settle();
    const auto pending = lumo::IntentFile(home.path(own + "apartado.jsonl")).pending().value();
    ASSERT_THAT(pending, SizeIs(1));
    EXPECT_EQ(pending.front().original, home.path("a"));
}

TEST(HistoryLog, LosesOnlyTheLinesThatAreDamaged) {
    const CleaningHome home;
    home.files().file("a", 9000);
    home.files().file("name\x80", 9000);
    const auto outcomes =
        home.clean({home.items(Safety::review, {"a"}), home.items(Safety::review, {"name\x80"})});
    std::ifstream file(home.historyPath());
    std::string first;
    std::string second;
    std::getline(file, first);
    std::getline(file, second);
    home.files().fileWith(own + "historial.jsonl",
                          "\n{}\nnot json\n" + first + "\n\"\xFF\"\n" + first.substr(0, 30) + "\n" + second);
    EXPECT_EQ(home.history(), outcomes);
    EXPECT_TRUE(lumo::HistoryLog::append(outcomes.front(), home.historyPath()));
    EXPECT_THAT(home.history(), SizeIs(3)) << "the line without its end was healed";
}

TEST(CleanupHistory, AddsUpWhatSucceededWhateverStandsInTheLog) {
    const auto outcome = [](lumo::CleanupStatus status, std::int64_t freed, std::int64_t trashed) {
        return CleanupOutcome{.status = status, .freedBytes = freed, .trashedBytes = trashed};
    };
    using enum lumo::CleanupStatus;
    EXPECT_EQ(lumo::CleanupHistory::total({outcome(done, 5, 0), outcome(done, 0, 7),
                                           outcome(failed, 100, 100), outcome(done, -50, 0)}),
              12);
    EXPECT_EQ(lumo::CleanupHistory::total({outcome(done, INT64_MAX, 1), outcome(done, 1, 0)}), INT64_MAX);
    EXPECT_EQ(lumo::CleanupHistory::total(CleaningHome().path("nowhere")), 0);
}

TEST(HomeLock, LetsOneProgramInAtATimeAndSaysWhoItIs) {
    const CleaningHome home;
    {
        const auto held = take(home, cleaningTime, "tarvo clean (1)");
        ASSERT_TRUE(held);
        const auto second = take(home, cleaningTime);
        ASSERT_FALSE(second);
        EXPECT_THAT(second.error().message, HasSubstr("tarvo clean (1)"));
        // A tool that a cleanup started must not keep the home locked when it outlives it.
        EXPECT_EQ(std::system("sleep 3 >/dev/null 2>&1 &"), 0);
    }
    EXPECT_TRUE(take(home, cleaningTime));
    EXPECT_EQ(fs::status(home.path(own)).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(home.path(own + "cerrojo")).permissions(), fs::perms(0600));
}

TEST(HomeLock, PutsPurgesOffForAnHourWhenTheClockMayBeWrong) {
    const CleaningHome home;
    const lumo::Date now = lumo::Date(std::chrono::floor<std::chrono::seconds>(
        std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now())));
    EXPECT_TRUE(take(home, now)->mayPurge(now, 0s)) << "nobody was here before";
    EXPECT_TRUE(take(home, now + 29 * 24h)->mayPurge(now + 29 * 24h, 3600s));
    const lumo::Date leap = now + 31 * 24h;
    EXPECT_FALSE(take(home, leap)->mayPurge(leap, 0s));
    EXPECT_FALSE(take(home, leap + 59min)->mayPurge(leap + 59min, 0s));
    EXPECT_TRUE(take(home, now)->mayPurge(now, 0s)) << "the clock was set right again";
    EXPECT_FALSE(take(home, now)->mayPurge(now, 3601s));
    EXPECT_FALSE(take(home, now + 30min)->mayPurge(now + 30min, 0s));
    EXPECT_TRUE(take(home, now + 61min)->mayPurge(now + 61min, 0s));
}

TEST(HomeLock, RefusesRootOnSomebodyElsesHomeAndAHomeThatIsNone) {
    const CleaningHome home;
    EXPECT_FALSE(HomeLock::take(lumo::PathGuard("/"), {.now = cleaningTime}));
    if (geteuid() != 0 || lchown(home.root().c_str(), 65534, 65534) != 0) {
        GTEST_SKIP() << "needs to be root";
    }
    const auto taken = take(home, cleaningTime);
    ASSERT_FALSE(taken);
    EXPECT_EQ(taken.error().message, HomeLock::foreignText());
    EXPECT_FALSE(fs::exists(home.path("Library")));
}

TEST(Recovery, GivesTheLogWhatItWasOwedSinceACleanupThatCouldNotWriteIt) {
    const CleaningHome home;
    home.files().file("letter", 9000);
    home.files().folder(own + "historial.jsonl");
    EXPECT_EQ(home.clean({home.items(Safety::review, {"letter"})}).front().status, lumo::CleanupStatus::done);
    fs::remove(home.historyPath());
    EXPECT_THAT(lumo::Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    EXPECT_EQ(home.undo().done, 1);
    EXPECT_TRUE(fs::exists(home.path("letter")));
}
