#include "LumoCore/Cleanup/Recovery.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "Tests/Cleanup/CleaningHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

const std::string own = "Library/Application Support/TarvoAI/";

std::string intentLine(const std::string& action, const TrashedItem& item) {
    return dumpJson(encode(Intent{action, "T " + action, item.original, item.inTrash}), JsonLayout::line) +
           "\n";
}

Result<HomeLock> take(const CleaningHome& home, Date now, std::string program = "tarvo test",
                      std::chrono::milliseconds patience = 0ms) {
    return HomeLock::take(home.guard(), {.program = std::move(program), .patience = patience, .now = now});
}

} // namespace

TEST(Recovery, WritesTheOneLineThatEachInterruptedActionOwes) {
    const CleaningHome home;
    home.files().files({"logged", "a1", "a2", "b"}, 9000);
    home.files().file("unmoved", 9000);
    const TrashedItem logged = home.setAside("logged");
    std::string intents = intentLine("first", logged);
    for (const char* name : {"a1", "a2", "b"}) {
        intents += intentLine(name[0] == 'a' ? "first" : "second", home.setAside(name));
    }
    intents += intentLine("second", {home.path("unmoved"), home.path(own + "Apartado/20260314-093005/none")});
    intents += intentLine("evil", {home.path("unmoved"), home.path("unmoved")});
    home.files().fileWith(own + "apartado.jsonl", intents + "{\"torn");
    // As if the process had died before the lines of these two actions: only the first line stands.
    const std::string written = contentOf(home.historyPath());
    home.files().fileWith(own + "historial.jsonl", written.substr(0, written.find('\n') + 1) + "{\"torn");

    EXPECT_THAT(Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    const auto history = home.history();
    ASSERT_THAT(history, SizeIs(3));
    EXPECT_EQ(history[1].id, "first");
    EXPECT_EQ(history[1].title, "T first");
    EXPECT_EQ(history[1].status, CleanupStatus::failed);
    EXPECT_EQ(history[1].message, std::nullopt);
    EXPECT_THAT(history[1].restorable.value(), SizeIs(2));
    EXPECT_GE(history[1].trashedBytes, 18000);
    EXPECT_EQ(history[2].id, "second");
    EXPECT_FALSE(fs::exists(home.path(own + "apartado.jsonl")));
    EXPECT_EQ(home.undo().done, 4);
    EXPECT_THAT(Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    EXPECT_THAT(home.history(), SizeIs(3)) << "a second time nothing is owed";
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
    (void)Recovery::recover(home.guard(), cleaningTime);
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

TEST(HistoryLog, LosesOnlyTheLinesThatAreDamaged) {
    const CleaningHome home;
    home.files().files({"a", "name\x80"}, 9000);
    const auto outcomes =
        home.clean({home.items(Safety::review, {"a"}), home.items(Safety::review, {"name\x80"})});
    const std::string log = contentOf(home.historyPath());
    const std::string first = log.substr(0, log.find('\n'));
    const std::string second = log.substr(first.size() + 1, log.size() - first.size() - 2);
    home.files().fileWith(own + "historial.jsonl",
                          "\n{}\nnot json\n" + first + "\n\"\xFF\"\n" + first.substr(0, 30) + "\n" + second);
    EXPECT_EQ(home.history(), outcomes);
    EXPECT_TRUE(HistoryLog::append(outcomes.front(), home.historyPath()));
    EXPECT_THAT(home.history(), SizeIs(3)) << "the line without its end was healed";
}

TEST(CleanupHistory, AddsUpWhatSucceededWhateverStandsInTheLog) {
    const CleanupOutcome failed{.status = CleanupStatus::failed, .freedBytes = 100, .trashedBytes = 100};
    EXPECT_EQ(CleanupHistory::total({{.freedBytes = 5}, {.trashedBytes = 7}, failed, {.freedBytes = -50}}),
              12);
    EXPECT_EQ(CleanupHistory::total({{.freedBytes = INT64_MAX, .trashedBytes = 1}, {.freedBytes = 1}}),
              INT64_MAX);
    EXPECT_EQ(CleanupHistory::total(CleaningHome().path("nowhere")), 0);
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
    const Date now = Date(std::chrono::floor<std::chrono::seconds>(
        std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now())));
    EXPECT_TRUE(take(home, now)->mayPurge(now, 0s)) << "nobody was here before";
    EXPECT_TRUE(take(home, now + 29 * 24h)->mayPurge(now + 29 * 24h, 3600s));
    const Date leap = now + 31 * 24h;
    EXPECT_FALSE(take(home, leap)->mayPurge(leap, 0s));
    EXPECT_FALSE(take(home, leap + 59min)->mayPurge(leap + 59min, 0s));
    EXPECT_TRUE(take(home, now)->mayPurge(now, 0s)) << "the clock was set right again";
    EXPECT_FALSE(take(home, now)->mayPurge(now, 3601s));
    EXPECT_FALSE(take(home, now + 30min)->mayPurge(now + 30min, 0s));
    EXPECT_TRUE(take(home, now + 61min)->mayPurge(now + 61min, 0s));
}
