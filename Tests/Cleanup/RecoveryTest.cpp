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
    const TrashedItem unmoved{home.path("unmoved"), home.path("unmoved")};
    EXPECT_EQ(contentOf(home.path(own + "apartado.jsonl")), intentLine("evil", unmoved))
        << "what cannot be placed is not ours to forget";
    EXPECT_EQ(home.undo().done, 4);
    EXPECT_THAT(Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    EXPECT_THAT(home.history(), SizeIs(3)) << "a second time nothing is owed";
}

TEST(Recovery, KeepsAnIntentUntilItsItemIsLoggedOrGoneHoweverItsHomeIsSpelled) {
    // The next command knew the home under another name, forgot the intent, and the item was nobody's.
    const CleaningHome home;
    home.files().files({"a", "b", "c"});
    const TrashedItem a = home.setAside("a");
    const TrashedItem b = home.setAside("b");
    home.files().fileWith(own + "apartado.jsonl", intentLine("1", a));
    home.files().fileWith(own + "historial.jsonl", "");
    home.respell();
    const std::string intents = contentOf(home.path(own + "apartado.jsonl"));
    // Where the area cannot be looked at now, nothing is forgotten.
    fs::rename(home.path(own + "Apartado"), home.path("elsewhere"));
    home.files().link(own + "Apartado", home.path("elsewhere"));
    EXPECT_THAT(Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    EXPECT_EQ(contentOf(home.path(own + "apartado.jsonl")), intents);
    fs::remove(home.path(own + "Apartado"));
    fs::rename(home.path("elsewhere"), home.path(own + "Apartado"));
    EXPECT_THAT(Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    EXPECT_FALSE(fs::exists(home.path(own + "apartado.jsonl")));
    EXPECT_EQ(home.history().at(0).restorable->at(0), a) << "spelled with the home in hand";
    // Logged under the other name, and gone.
    home.files().fileWith(own + "apartado.jsonl", intentLine("1", a) + intentLine("2", b));
    home.respell();
    home.files().fileWith(own + "apartado.jsonl", intentLine("1", a) + intentLine("2", b));
    fs::remove(b.inTrash);
    EXPECT_THAT(Recovery::recover(home.guard(), cleaningTime), IsEmpty());
    EXPECT_THAT(home.history(), SizeIs(1));
    EXPECT_FALSE(fs::exists(home.path(own + "apartado.jsonl")));
    EXPECT_EQ(home.undo().done, 1);
    EXPECT_TRUE(fs::exists(home.path("a")));
}

TEST(Recovery, AsksForNothingWhereNothingIsHeldOrLeft) {
    // A purge with nothing to purge made the folder and the lock file in a fresh home.
    for (const std::string& name :
         {own + "apartado.jsonl", own + "archivando.jsonl", own + "Apartado/20260101-000000",
          own + "vaciando-0F0E0D0C-0B0A-4908-8706-050403020100", own + "historial.jsonl.nuevo-7",
          std::string("Library/Caches/TarvoAI/vaciando/0F0E0D0C-0B0A-4908-8706-050403020100"),
          std::string(".config/TarvoAI/preferencias.json.nuevo-7")}) {
        const CleaningHome home;
        EXPECT_FALSE(Recovery::mayHaveWork(home.root()));
        EXPECT_TRUE(fs::is_empty(home.root()));
        home.files().file(own + "historial.jsonl");
        home.files().folder(own + "Apartado");
        EXPECT_FALSE(Recovery::mayHaveWork(home.root()));
        home.files().file(name);
        EXPECT_TRUE(Recovery::mayHaveWork(home.root())) << name;
    }
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

TEST(HistoryWriter, TriesAgainWhatCouldNotBeWrittenAndKeepsTheIntentsUntilThen) {
    // A line that failed once was never tried again: the next start made a failure of what had succeeded.
    const CleaningHome home;
    home.files().files({"a", "b", "c"});
    home.files().folder(own + "historial.jsonl");
    std::vector<std::string> intents;
    const auto look = [&](std::size_t action) {
        intents.push_back(contentOf(home.path(own + "apartado.jsonl")));
        if (action == 2) {
            fs::remove(home.historyPath());
        }
    };
    const auto outcomes = home.clean({home.items(Safety::review, {"a"}), home.items(Safety::review, {"b"}),
                                      home.items(Safety::review, {"c"})},
                                     {.onBegin = look, .now = {}});
    EXPECT_THAT(intents, ElementsAre("", HasSubstr("/a\""), AllOf(HasSubstr("/a\""), HasSubstr("/b\""))));
    EXPECT_EQ(home.history(), outcomes);
    EXPECT_FALSE(fs::exists(home.path(own + "apartado.jsonl")));
}

TEST(HomeLock, GivesTheLogWhatItIsOwedBeforeTheLockEnds) {
    // What a recovery could not write was left to the next start, though the disk had room again.
    const CleaningHome home;
    home.files().file("a");
    const TrashedItem a = home.setAside("a");
    home.files().fileWith(own + "apartado.jsonl", intentLine("1", a));
    fs::remove(home.historyPath());
    home.files().link(own + "historial.jsonl", "nowhere"); // Reads as empty and cannot be written.
    {
        const auto lock = take(home, cleaningTime);
        ASSERT_TRUE(lock);
        EXPECT_THAT(lock->unlogged(), SizeIs(1));
        fs::remove(home.historyPath());
    }
    EXPECT_THAT(home.history(), SizeIs(1));
    EXPECT_FALSE(fs::exists(home.path(own + "apartado.jsonl")));
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
    // A home that was visited once a month never got its space back, and a clock that was set by less than a
    // month purged at once.
    struct Visit {
        std::chrono::seconds wall;
        std::chrono::seconds boot;
        std::string run = "A";
        std::chrono::seconds drift = 0s;
        bool asks = true;
        bool expected = true;
    };
    constexpr auto day = 24h;
    const std::vector<std::pair<std::string, std::vector<Visit>>> stories{
        {"nobody was here before", {{0s, 0s}}},
        {"29 days", {{0s, 0s}, {29 * day, 29 * day}}},
        {"once a month, every second time",
         {{0s, 0s},
          {.wall = 31 * day, .boot = 31 * day, .expected = false},
          {.wall = 31 * day + 59min, .boot = 31 * day + 59min, .expected = false},
          {62 * day, 62 * day},
          {.wall = 93 * day, .boot = 5s, .run = "B", .expected = false},
          {.wall = 124 * day, .boot = 5s, .run = "C"}}},
        {"the visit after the hour that does not ask is none that purged",
         {{0s, 0s},
          {.wall = 31 * day, .boot = 31 * day, .expected = false},
          {.wall = 62 * day, .boot = 62 * day, .asks = false},
          {93 * day, 93 * day}}},
        {"an absence that is over is no excuse for the next one",
         {{0s, 0s},
          {.wall = 31 * day, .boot = 31 * day, .asks = false},
          {.wall = 32 * day, .boot = 32 * day, .asks = false},
          {.wall = 70 * day, .boot = 70 * day, .expected = false}}},
        {"set by eight days, and set right again",
         {{0s, 0s},
          {.wall = 8 * day, .boot = 60s, .expected = false},
          {.wall = 8 * day + 50min, .boot = 3060s, .expected = false},
          {.wall = 3200s, .boot = 3200s, .expected = false},
          {.wall = 6801s, .boot = 6801s}}},
        {"slept, and set by less than an hour", {{0s, 0s}, {3 * day, 3 * day - 3600s}}},
        {"started anew", {{0s, 0s}, {.wall = 8 * day, .boot = 5s, .run = "B"}}},
        {"by a clock far ahead, which was set right while the machine was off",
         {{0s, 0s},
          {.wall = 40 * day, .boot = 5s, .run = "B", .expected = false},
          {.wall = 1h, .boot = 5s, .run = "C"}}},
        {"while the caller looked",
         {{.wall = 0s, .boot = 0s, .drift = 3600s},
          {.wall = 1s, .boot = 1s, .drift = 3601s, .expected = false},
          {.wall = 1800s, .boot = 1800s, .expected = false},
          {3601s, 3601s}}}};
    for (const auto& [name, visits] : stories) {
        const CleaningHome home;
        for (std::size_t index = 0; index < visits.size(); ++index) {
            const Visit& visit = visits[index];
            const Date now = cleaningTime + visit.wall;
            const platform::BootMoment boot{.boot = visit.run, .seconds = visit.boot.count()};
            auto lock = HomeLock::take(home.guard(), {.program = "test", .now = now, .boot = boot});
            ASSERT_TRUE(lock);
            if (visit.asks) {
                EXPECT_EQ(lock->mayPurge(now, visit.drift), visit.expected) << name << ", visit " << index;
            }
            home.files().setModified(
                own + "cerrojo", std::chrono::floor<std::chrono::seconds>(now).time_since_epoch().count());
        }
    }
    EXPECT_TRUE(platform::bootMoment());
}
