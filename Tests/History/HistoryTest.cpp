#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/History/SnapshotStore.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <ranges>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

const Date now = *dateFromIsoText("2026-03-14T12:00:00Z");
constexpr std::string_view stored = "Library/Application Support/TarvoAI/instantaneas.json";

std::vector<GrowthItem> growth(std::map<std::string, std::int64_t> before,
                               std::map<std::string, std::int64_t> after) {
    return GrowthTracker::compare({.sizes = std::move(after)}, {.sizes = std::move(before)},
                                  GrowthTracker::smallestGrowth);
}

} // namespace

TEST(DiskSnapshot, AddsUpWhatHasTheSameIdentifierAndNamesItForAPerson) {
    ScanReport report{.scannedAt = now, .volume = {.totalBytes = 900, .availableBytes = 300}};
    report.findings = {{.ruleID = "uv-cache", .name = "uv", .usage = {.allocatedBytes = 5}},
                       {.ruleID = "uv-cache", .name = "uv", .usage = {.allocatedBytes = 7}}};
    report.projects = {{.name = "code/app",
                        .path = "/home/x/code/app",
                        .usage = {.allocatedBytes = 100},
                        .artifacts = {{.name = "target", .usage = {.allocatedBytes = 20}},
                                      {.name = "node_modules", .usage = {.allocatedBytes = 30}}}}};
    report.unclassified = {{.path = "/home/x/caf\xE9", .usage = {.allocatedBytes = 40}}};
    using Sizes = std::map<std::string, std::int64_t>;
    using Names = std::map<std::string, std::string>;
    const DiskSnapshot made = DiskSnapshot::from(report);
    EXPECT_EQ(made.date, now);
    EXPECT_EQ(made.freeBytes, 300);
    const std::string app = "proyecto:code/app/";
    EXPECT_EQ(made.sizes, (Sizes{{app + "node_modules", 30},
                                 {app + "target", 20},
                                 {"sin:/home/x/caf\xE9", 40},
                                 {"uv-cache", 12}}));
    EXPECT_EQ(made.names, (Names{{app + "node_modules", "app · node_modules"},
                                 {app + "target", "app · target"},
                                 {"sin:/home/x/caf\xE9", "caf\xE9"},
                                 {"uv-cache", "uv"}}));
}

TEST(GrowthTracker, TakesTheNewestSnapshotThatIsOldEnoughOrElseTheOldest) {
    using Case = std::tuple<std::vector<std::chrono::microseconds>, std::optional<std::chrono::microseconds>>;
    for (const auto& [ages, expected] :
         {Case{std::vector<std::chrono::microseconds>(), std::nullopt}, Case{{30s}, std::nullopt},
          Case{{60s}, std::nullopt}, Case{{60s + 1us}, 60s + 1us}, Case{{-2h, 0s}, std::nullopt},
          Case{{30h, 22h, 2h}, 22h}, Case{{5h, 2h}, 5h}, Case{{5h, 2h, 30s, -1h}, 5h},
          Case{{30h, 20h, 20h - 1us}, 20h}, Case{{30h, 20h - 1us}, 30h}}) {
        std::vector<DiskSnapshot> snapshots;
        for (const auto age : ages) {
            snapshots.push_back({.date = now - age});
        }
        const auto chosen = GrowthTracker::baseline(snapshots, now, GrowthTracker::baselineAge);
        const auto age = chosen ? std::optional(now - chosen->date) : std::nullopt;
        EXPECT_EQ(age, expected) << PrintToString(ages.size());
    }
}

TEST(GrowthTracker, KnowsANewFileFromOneThatNobodyLookedForAndNeverGuesses) {
    // Films and models came and went, and no snapshot said so.
    constexpr std::int64_t film = 5000000000;
    Inventory large{.kind = InventoryKind::large};
    const ScanReport report{.scannedAt = now};
    const DiskSnapshot before = DiskSnapshot::from(report, {large});
    large.items = {{.id = "archivo:Videos/film.mkv", .name = "film.mkv", .bytes = film}};
    Inventory models{.kind = InventoryKind::models};
    models.items = {{.id = "modelo:ollama:llama3", .name = "llama3", .bytes = film}};
    const DiskSnapshot after = DiskSnapshot::from(report, {large, models});
    EXPECT_THAT(GrowthTracker::compare(after, before, GrowthTracker::smallestGrowth),
                ElementsAre(GrowthItem{"archivo:Videos/film.mkv", "film.mkv", film, film}));
    EXPECT_THAT(GrowthTracker::compare(after, DiskSnapshot::from(report), 1), IsEmpty());
    models.unavailable = "slow";
    EXPECT_FALSE(DiskSnapshot::from(report, {models}).sizes.contains("modelo:"));
}

TEST(GrowthTracker, ReportsWhatGrewByTheMinimumAndNewFoldersButNoNewRules) {
    constexpr std::int64_t some = 300000000;
    const std::string artifact = "proyecto:app/node_modules";
    EXPECT_THAT(
        growth({{"a", 5}, {"b", 5}, {"c", 500000000}}, {{"a", 200000005}, {"b", 200000004}, {"c", 5}}),
        ElementsAre(GrowthItem{"a", "a", 200000000, 200000005}));
    EXPECT_THAT(growth({}, {{artifact, some}, {"rule", some}, {"sin:/x", 200000000}, {"sin:/y", 199999999}}),
                ElementsAre(GrowthItem{artifact, artifact, some, some},
                            GrowthItem{"sin:/x", "sin:/x", 200000000, 200000000}));
    EXPECT_THAT(growth({{"a", 0}, {"b", 0}, {"c", 0}}, {{"c", some}, {"b", some}, {"a", some - 1}}),
                ElementsAre(GrowthItem{"b", "b", some, some}, GrowthItem{"c", "c", some, some},
                            GrowthItem{"a", "a", some - 1, some - 1}));
    const auto named = GrowthTracker::compare({.sizes = {{"a", 9}}, .names = {{"a", "New"}}},
                                              {.sizes = {{"a", 1}}, .names = {{"a", "Old"}}}, 8);
    EXPECT_THAT(named, ElementsAre(GrowthItem{"a", "New", 8, 9}));
    // Differences that do not fit are the nearest number that does.
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_THAT(growth({{"a", Limits::min()}, {"b", Limits::max()}}, {{"a", some}, {"b", Limits::min()}}),
                ElementsAre(GrowthItem{"a", "a", Limits::max(), some}));
}

TEST(SnapshotStore, KeepsTheLastOnesForTheUserAlone) {
    const TempHome home;
    const SnapshotStore store(home.path());
    EXPECT_THAT(store.load(), IsEmpty());
    EXPECT_FALSE(fs::exists(home.path("Library"))) << "Reading wrote something.";
    std::vector<DiskSnapshot> expected;
    for (int hour = 0; hour < 61; ++hour) {
        expected.push_back({.date = now + std::chrono::hours(hour),
                            .freeBytes = hour,
                            .sizes = {{"sin:/caf\xE9\n", hour}, {"uv-cache", 1}},
                            .names = {{"sin:/caf\xE9\n", "caf\xE9\n"}}});
        ASSERT_TRUE(store.append(expected.back(), GrowthTracker::snapshotsKept));
    }
    expected.erase(expected.begin());
    EXPECT_EQ(store.load(), expected);
    EXPECT_EQ(store.path(), home.path(stored));
    EXPECT_EQ(fs::status(store.path()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(SnapshotStore, TakesWhatIsNoListForEmptyAndPassesOverWhatIsNoSnapshot) {
    const std::string good = R"({"date":"2026-03-14T12:00:00Z","freeBytes":1,"sizes":{"a":2},"names":{}})";
    using Case = std::tuple<std::string, std::size_t>;
    for (const auto& [content, snapshots] :
         {Case{"", 0}, Case{"[" + good, 0}, Case{good, 0}, Case{"[]", 0}, Case{"\xFF", 0},
          Case{"[" + good + "," + good + "]", 2}, Case{"[null,7,{}," + good + ",[" + good + "]]", 1},
          Case{R"([{"date":"yesterday","freeBytes":1,"sizes":{},"names":{}},)" + good + "]", 1},
          Case{R"([{"date":"2026-03-14T12:00:00Z","freeBytes":1,"sizes":{"a":-1},"names":{}},)" + good + "]",
               1},
          Case{R"([{"date":"2026-03-14T12:00:00Z","freeBytes":1,"sizes":{"a":2,"a":3},"names":{}}])", 1},
          Case{"[9999999999999999999," + good + "]", 0}}) {
        const TempHome home;
        home.fileWith(stored, content);
        const SnapshotStore store(home.path());
        EXPECT_EQ(store.load().size(), snapshots) << content;
        EXPECT_EQ(contentOf(home.path(stored)), content) << "Reading wrote something.";
        EXPECT_TRUE(store.append({.date = now}, GrowthTracker::snapshotsKept)) << content;
        EXPECT_EQ(store.load().size(), snapshots + 1) << content;
    }
}

TEST(SnapshotStore, LeavesAFileThatCannotBeReadAsItIs) {
    const TempHome home;
    const SnapshotStore store(home.path());
    const auto isLeftAlone = [&](int code) {
        const auto appended = store.append({.date = now}, GrowthTracker::snapshotsKept);
        return !appended && appended.error().code == code && store.load().empty() && !store.read();
    };
    home.fifo(stored);
    EXPECT_TRUE(isLeftAlone(EINVAL));
    fs::remove(store.path());
    home.fileWith(stored, "[]");
    home.setMode(stored, 0000);
    fs::permissions(fs::path(store.path()).parent_path(), fs::perms::all);
    expectHeld(asOrdinaryUser(home.path(), [&] { return isLeftAlone(EACCES); }));
    home.setMode(stored, 0600);
    EXPECT_EQ(contentOf(store.path()), "[]");
}

TEST(SnapshotStore, NeverOutgrowsWhatItCanRead) {
    // Once the file was larger than what is read, nothing was read or stored ever again.
    const TempHome home;
    constexpr std::size_t most = 80000;
    const SnapshotStore store(home.path(), most);
    home.file(stored, most + 1);
    DiskSnapshot large{.date = now};
    for (int index = 0; index < 40; ++index) {
        const std::string id = "sin:/caf\xE9/" + std::to_string(index) + std::string(60, 'x');
        large.sizes[id] = index;
        large.names[id] = "caf\xE9";
    }
    DiskSnapshot huge = large;
    for (int index = 40; index < 500; ++index) {
        huge.sizes["proyecto:" + std::to_string(index) + std::string(60, 'y')] = index;
    }
    for (int count = 0; count < 30; ++count) {
        ASSERT_TRUE(store.append(count % 2 == 1 ? huge : large, GrowthTracker::snapshotsKept));
        ASSERT_LE(fs::file_size(store.path()), most);
        ASSERT_GE(store.load().size(), std::min(count + 1, 8));
    }
    const auto kept = store.load();
    EXPECT_EQ(kept.at(kept.size() - 2), large);
    const auto left = kept.back().sizes | std::views::values;
    EXPECT_EQ(std::ranges::max(left), 499);
    EXPECT_EQ(std::ranges::min(left), 500 - static_cast<std::int64_t>(left.size())) << "the smallest went";
    EXPECT_GT(left.size(), 60U);
}
