#include "LumoCore/History/GrowthTracker.h"
#include "TarvoModel/Showing/GrowthSeries.h"
#include "TarvoModel/Showing/GrowthTexts.h"
#include "TarvoModel/Showing/HistoryRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <limits>

using namespace std::chrono_literals;
using namespace tarvo;
using lumo::CleanupOutcome;
using lumo::Language;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

constexpr lumo::Date start{std::chrono::seconds(1790000000)};
constexpr std::int64_t gigabyte = 1'000'000'000;
constexpr const char* firstID = "0A000000-0000-4000-8000-000000000001";

CleanupOutcome line(std::string id, std::chrono::seconds after, std::int64_t freed) {
    return {.id = id,
            .title = id,
            .message = {},
            .freedBytes = freed,
            .restorable = {},
            .date = start + after,
            .caller = {}};
}

/// The same for something that was set aside in the batch of that name.
CleanupOutcome aside(std::string id, std::chrono::seconds after, const std::string& batch) {
    CleanupOutcome outcome = line(std::move(id), after, 0);
    outcome.trashedBytes = 3 * gigabyte;
    const std::string place = "/home/ana/Library/Application Support/TarvoAI/Apartado/" + batch + "/";
    outcome.restorable = {{.original = "/home/ana/a", .inTrash = place + firstID + "-a"},
                          {.original = "/home/ana/b", .inTrash = place + "b"}};
    return outcome;
}

std::vector<std::vector<std::string>> titlesOf(const std::vector<HistoryCleanup>& cleanups) {
    std::vector<std::vector<std::string>> titles;
    for (const HistoryCleanup& cleanup : cleanups) {
        auto& each = titles.emplace_back();
        for (const HistoryItem& item : cleanup.items) {
            each.push_back(item.title);
        }
    }
    return titles;
}

lumo::DiskSnapshot snapshot(std::chrono::hours after, std::map<std::string, std::int64_t> sizes) {
    lumo::DiskSnapshot made{
        .date = start + after, .freeBytes = 50 * gigabyte, .sizes = std::move(sizes), .names = {}};
    for (const auto& [id, size] : made.sizes) {
        made.names[id] = "the " + id;
    }
    return made;
}

} // namespace

TEST(HistoryRows, TellsCleanupsApartByTimeCallerBatchAndAnActionThatComesAgain) {
    std::vector<CleanupOutcome> log{line("small", 0s, 1), line("large", 60s, gigabyte), line("large", 70s, 2),
                                    line("agent's", 80s, 3)};
    log.back().caller = "Claude";
    log.push_back(aside("first", 90s, "20260922-000000"));
    log.push_back(aside("second", 100s, "20260922-000001"));
    log.push_back(line("late", 1h, 4));
    log.push_back(line("earlier by a clock that was set back", 50min, 5));
    const auto cleanups = historyRows(log, {}, Language::en);
    EXPECT_THAT(titlesOf(cleanups),
                ElementsAre(ElementsAre("earlier by a clock that was set back"), ElementsAre("late"),
                            ElementsAre("second"), ElementsAre("first"), ElementsAre("agent's"),
                            ElementsAre("large"), ElementsAre("large", "small")));
    EXPECT_EQ(cleanups.back().number, 0);
    EXPECT_EQ(cleanups.front().number, 7);
    EXPECT_EQ(factsText(cleanups[4], Language::es), "<1 MB liberados · a petición de Claude");
    EXPECT_EQ(historyTotalText(cleanups, Language::en), "7.0 GB in 7 cleanups");
    EXPECT_THAT(historyRows({}, {}), IsEmpty());
}

TEST(HistoryRows, TellsCleanupsApartByTheMomentAtWhichABatchWasBegun) {
    // What a weekly cleanup freed was one with what the user set aside three minutes later.
    const CleanupOutcome weekly = line("weekly", 0s, 1);
    const std::vector<CleanupOutcome> log{weekly, aside("own", 185s, lumo::stampText(weekly.date + 180s)),
                                          line("with it", 190s, 2)};
    EXPECT_THAT(titlesOf(historyRows(log, {}, Language::en)),
                ElementsAre(ElementsAre("own", "with it"), ElementsAre("weekly")));
}

TEST(HistoryRows, NeverTearsACleanupAndNeverJoinsTwo) {
    // The first half of a cleanup was shown with an archive that had been made before it.
    CleanupOutcome archived = aside("archivar:/home/ana/film", 0s, lumo::stampText(start));
    const std::string batch = lumo::stampText(start + 60s);
    std::vector<CleanupOutcome> log{archived,
                                    line("npm-cache", 65s, 3),
                                    line("gradle-caches", 10min, 2),
                                    aside("whisper", 11min, batch),
                                    line("proyecto:web/node_modules", 20min, 1),
                                    aside("archivo:a", 30min, batch)};
    const std::vector<std::string> cleanup{"whisper", "archivo:a", "npm-cache", "gradle-caches",
                                           "proyecto:web/node_modules"};
    EXPECT_THAT(titlesOf(historyRows(log, {}, Language::en)), ElementsAre(cleanup, ElementsAre(archived.id)));
    // What the weekly cleanup freed was one with the photos that had just been set aside.
    log.push_back(line("npm-cache-again", 31min, 1));
    EXPECT_THAT(titlesOf(historyRows(log, {}, Language::en)),
                ElementsAre(ElementsAre("npm-cache-again"), cleanup, ElementsAre(archived.id)));
    EXPECT_THAT(titlesOf(historyRows({archived, line("docker:image", 60s, 1)}, {}, Language::en)),
                ElementsAre(ElementsAre("docker:image"), ElementsAre(archived.id)));
}

// Two cleanups that set nothing aside, one minute apart, were one line.
TEST(HistoryRows, KeepCleanupsApartThatNameThemselvesAndReadOlderLinesAsBefore) {
    const auto of = [](CleanupOutcome outcome, const char* cleanup) {
        outcome.cleanup = cleanup;
        return outcome;
    };
    const std::string batch = lumo::stampText(start + 60s);
    const std::vector<CleanupOutcome> log{line("older", 0s, 9),
                                          line("older too", 1s, 8),
                                          of(line("npm-cache", 2s, 7), "A"),
                                          of(line("pip-cache", 60s, 6), "B"),
                                          of(line("proyecto:web/node_modules", 10min, 5), "B"),
                                          of(aside("archivo:a", 20min, batch), "B"),
                                          of(line("apt", 21min, 4), "B"),
                                          aside("owed after a kill", 22min, batch),
                                          of(line("uv-cache", 23min, 3), "C")};
    EXPECT_THAT(titlesOf(historyRows(log, {}, Language::en)),
                ElementsAre(ElementsAre("uv-cache"),
                            ElementsAre("archivo:a", "owed after a kill", "pip-cache",
                                        "proyecto:web/node_modules", "apt"),
                            ElementsAre("npm-cache"), ElementsAre("older", "older too")));
}

TEST(HistoryRows, HaveATotalThatIsTheSumOfWhatEachSays) {
    // What an action freed before it failed was in its cleanup's line and not in the total.
    std::vector<CleanupOutcome> log{line("npm-cache", 0s, gigabyte), line("pip-cache", 1s, gigabyte)};
    log.back().status = lumo::CleanupStatus::failed;
    const auto cleanups = historyRows(log, {}, Language::en);
    ASSERT_THAT(cleanups, SizeIs(1));
    EXPECT_EQ(factsText(cleanups.front(), Language::en), "2.0 GB freed · 1 failure");
    EXPECT_EQ(historyTotalText(cleanups, Language::en), "2.0 GB in one cleanup");
}

TEST(Growth, NamesAFolderOfAProjectAsTheListDoes) {
    EXPECT_EQ(growthName("proyecto:projects/web/node_modules", "web · node_modules"),
              "projects/web · node_modules");
    EXPECT_EQ(growthName("proyecto:a/web/ios/Pods", "web · ios/Pods"), "a/web · ios/Pods");
    EXPECT_EQ(growthName("proyecto:a/b", "another"), "another");
    EXPECT_EQ(growthName("npm-cache", "npm · cache"), "npm · cache");
}

TEST(HistoryRows, OffersWhatIsStillHeldAndSaysWhatBecameOfTheRest) {
    std::vector<CleanupOutcome> log{aside("own", 0s, "20260922-000000"), line("gone", 1s, gigabyte),
                                    line("cut", 2s, 0)};
    log.back().status = lumo::CleanupStatus::failed;
    const auto cleanups =
        historyRows(log,
                    {.held = {{.id = firstID, .original = "/ana/a", .batch = "x", .isIncomplete = true},
                              {.id = "", .original = "/home/ana/b", .batch = "x"}}},
                    Language::en);
    ASSERT_THAT(cleanups, SizeIs(1));
    const HistoryItem& own = cleanups.front().items.front();
    EXPECT_THAT(own.pieces,
                ElementsAre(HistoryPiece{firstID, "/ana/a", true}, HistoryPiece{"", "/home/ana/b", false}));
    EXPECT_EQ(pieceText(own.pieces[0], Language::en), "parts of it are gone");
    EXPECT_EQ(pieceText(own.pieces[1], Language::en), "no longer set aside");
    EXPECT_EQ(own.text, "set aside");
    EXPECT_EQ(cleanups.front().items[1].text, "freed");
    EXPECT_EQ(cleanups.front().items[2].text, "failed: it was cut short half-way");
    EXPECT_EQ(factsText(cleanups.front(), Language::en),
              "1.0 GB freed · 3.0 GB set aside · 1 failure · 1 item can go back");
}

// Of what had been put back the history said that it was no longer set aside, as of what is gone for good,
// and counted it among what was freed.
TEST(HistoryRows, SayWhatIsBackAndDoNotCountIt) {
    const std::vector<CleanupOutcome> log{aside("own", 0s, "20260922-000000"),
                                          line("npm-cache", 1s, gigabyte)};
    lumo::HeldNotes notes;
    notes.putBack("20260922-000000/b");
    auto cleanups = historyRows(log, {.held = {}, .notes = notes}, Language::en);
    EXPECT_EQ(pieceText(cleanups.front().items.front().pieces[0], Language::en), "no longer set aside");
    EXPECT_EQ(pieceText(cleanups.front().items.front().pieces[1], Language::en), "put back");
    EXPECT_EQ(factsText(cleanups.front(), Language::en), "1.0 GB freed · 3.0 GB set aside · 1 item put back");
    EXPECT_EQ(historyTotalText(cleanups, Language::en), "4.0 GB in one cleanup");
    notes.putBack(std::string("20260922-000000/") + firstID + "-a");
    cleanups = historyRows(log, {.held = {}, .notes = notes}, Language::en);
    EXPECT_EQ(historyTotalText(cleanups, Language::en), "1.0 GB in one cleanup");
}

TEST(GrowthSeries, HasTheLargestChangesFirstWithWhatIsNewGoneAndLess) {
    const std::vector<lumo::DiskSnapshot> stored{
        snapshot(0h,
                 {{"cache", 2 * gigabyte}, {"steady", gigabyte}, {"gone", gigabyte}, {"less", 9 * gigabyte}}),
        // Out of order: the clock was set back.
        snapshot(48h, {{"cache", 6 * gigabyte},
                       {"steady", gigabyte + 1},
                       {"less", 6 * gigabyte},
                       {"sin:/new", 2 * gigabyte},
                       {"rule", 5 * gigabyte}}),
        snapshot(24h, {{"cache", 8 * gigabyte}, {"steady", gigabyte}, {"less", 9 * gigabyte}})};
    const auto lines = growthSeries(stored, 4, Language::en);
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_EQ(lines[0].name, "Free space");
    EXPECT_EQ(lines[1].name, "the cache");
    EXPECT_THAT(lines[1].points,
                ElementsAre(GrowthPoint{start, 2 * gigabyte}, GrowthPoint{start + 24h, 8 * gigabyte},
                            GrowthPoint{start + 48h, 6 * gigabyte}));
    EXPECT_EQ(lines[2].id, "less");
    EXPECT_EQ(lines[2].delta, -3 * gigabyte);
    EXPECT_EQ(changeText(lines[2].delta, Language::es), "−3,0 GB");
    EXPECT_EQ(lines[3].change, GrowthChange::appeared);
    EXPECT_EQ(changeWord(lines[3], Language::es), "nuevo");
    EXPECT_EQ(lines[4].change, GrowthChange::vanished);
    EXPECT_TRUE(lineText(lines[1], Language::en).starts_with("6.0 GB now, +4.0 GB since "));
    EXPECT_NE(lineText(lines[1], Language::en).find("; at most 8.0 GB on "), std::string::npos);
    EXPECT_THAT(growthSeries({stored[0]}, 4), IsEmpty()) << "one point is no line";
    EXPECT_THAT(growthSeries({stored[0], stored[0]}, 4), SizeIs(1)) << "only the free space";
}

TEST(GrowthSeries, HasNoLineForWhatCameAndWentAgain) {
    // What was set aside after the first scan and put back before the last was listed as gone, with all that
    // it had taken, though it takes as much as at first: nothing.
    const std::vector<lumo::DiskSnapshot> stored{
        snapshot(0h, {{"cache", gigabyte}}),
        snapshot(24h, {{"cache", gigabyte}, {"aside", 3 * gigabyte}, {"sin:/a", 3 * gigabyte}}),
        snapshot(48h, {{"cache", 2 * gigabyte}})};
    const auto lines = growthSeries(stored, 4);
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_EQ(lines[1].id, "cache");
}

TEST(GrowthSeries, HoldsEveryLineWithinItsFrame) {
    // A snapshot may hold any number.
    const auto most = std::numeric_limits<std::int64_t>::max();
    const auto lines = growthSeries(
        {snapshot(0h, {{"a", most}, {"b", -most}}), snapshot(1h, {{"a", -most}, {"b", most}})}, 9);
    const GrowthFrame frame = GrowthFrame::around(lines);
    for (const GrowthLine& line : lines) {
        for (const GrowthPoint& point : line.points) {
            const double up =
                frame.up(lumo::GrowthTracker::difference(point.bytes, line.points.front().bytes));
            EXPECT_TRUE(up >= 0 && up <= 1) << up;
            EXPECT_TRUE(frame.across(point.date) >= 0 && frame.across(point.date) <= 1);
        }
    }
    EXPECT_EQ(changeText(std::numeric_limits<std::int64_t>::min()).substr(0, 3), "−");
    EXPECT_EQ(GrowthFrame().up(0), 0);
}
