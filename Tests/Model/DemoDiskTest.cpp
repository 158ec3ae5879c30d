#include "TarvoModel/Showing/DemoDisk.h"
#include "LumoCore/History/GrowthTracker.h"
#include "TarvoModel/Showing/CleanupTexts.h"
#include "TarvoModel/Showing/GrowthSeries.h"
#include "TarvoModel/Showing/HistoryRows.h"
#include "TarvoModel/Showing/Rows.h"
#include "TarvoModel/Showing/Selection.h"
#include "TarvoModel/Showing/TickedPlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using lumo::Language;
using lumo::System;
using ::testing::SizeIs;
using namespace tarvo;

constexpr lumo::Date now{std::chrono::seconds(1790000000)};

namespace {

/// The made-up computers, as each language and system shows them.
constexpr std::array shownAs{std::pair{Language::es, System::macos}, std::pair{Language::en, System::macos},
                             std::pair{Language::es, System::linux}, std::pair{Language::en, System::linux}};

} // namespace

TEST(DemoDisk, HasSomethingOfEverythingAndFitsTheDisk) {
    // The only one was a Mac, with places and rules that Linux has not.
    for (const auto& [language, system] : shownAs) {
        const lumo::ScanReport report = DemoDisk::report(now, language, system);
        std::set<lumo::Category> categories;
        std::set<lumo::Safety> safeties;
        for (const lumo::Finding& finding : report.findings) {
            categories.insert(finding.category);
            safeties.insert(finding.safety);
            for (const std::string& path : finding.paths) {
                EXPECT_TRUE(path.starts_with(std::string(DemoDisk::home(system)) + "/")) << path;
            }
        }
        EXPECT_THAT(categories, SizeIs(9));
        EXPECT_THAT(safeties, SizeIs(3));
        EXPECT_THAT(report.findings, SizeIs(system == System::macos ? 45 : 50))
            << "a row names a rule that there is not";
        EXPECT_TRUE(std::ranges::is_sorted(report.findings, std::greater(),
                                           [](const auto& each) { return each.usage.allocatedBytes; }));
        std::int64_t used = 0;
        for (const Row& row : rowsOf(report, DemoDisk::entries(report, language), language)) {
            used += row.bytes;
            EXPECT_FALSE(row.title.empty() || row.detail.empty()) << row.id;
        }
        EXPECT_LT(used, report.volume.totalBytes - report.volume.availableBytes);
    }
}

TEST(DemoDisk, ShowsWhatIsHeldBackWhatGrewAndWhatIsSetAside) {
    const lumo::ScanReport report = DemoDisk::report(now, Language::en, System::macos);
    const auto entries = DemoDisk::entries(report, Language::en);
    const auto reasonOf = [&](std::string_view id) {
        return std::ranges::find(entries, id, [](const auto& each) { return each.action.id; })
            ->skipReason.value_or("-");
    };
    EXPECT_EQ(reasonOf("chrome-cache"), "quit Google Chrome first");
    EXPECT_TRUE(reasonOf("proyecto:Projects/shop/node_modules").starts_with("project changed today"));
    EXPECT_EQ(reasonOf("proyecto:Projects/old-blog/node_modules"), "-");
    EXPECT_GT(lumo::CleanupPlanner::safeRecoverableBytes(entries), 24000000000)
        << "the usual goal is reached";

    for (const auto& [language, system] : shownAs) {
        const lumo::ScanReport shown = DemoDisk::report(now, language, system);
        const lumo::Growth growth = lumo::GrowthTracker::growthOf(lumo::DiskSnapshot::from(shown),
                                                                  {DemoDisk::yesterday(shown, system)});
        EXPECT_EQ(growth.since, now - std::chrono::days(1));
        ASSERT_THAT(growth.items, SizeIs(6));
        EXPECT_EQ(growth.items.front().id, system == System::macos ? "xcode-derived-data" : "go-build-cache");
        EXPECT_EQ(DemoDisk::explanations(now, language, system).size() + 1, shown.unclassified.size());
        const auto lines = growthSeries(DemoDisk::snapshots(shown, system), 12, language);
        std::set<GrowthChange> changes;
        for (const GrowthLine& line : lines) {
            changes.insert(line.change);
            EXPECT_GE(std::ranges::min(line.points, {}, &GrowthPoint::bytes).bytes, 0) << line.name;
        }
        EXPECT_THAT(changes, SizeIs(3));
        const auto log = DemoDisk::history(shown, language, system);
        const auto cleanups = historyRows(log, {.held = DemoDisk::heldItems(log, now, system)}, language);
        ASSERT_THAT(cleanups, SizeIs(4));
        EXPECT_EQ(cleanups[0].held + cleanups[1].held, 4);
        EXPECT_EQ(cleanups[2].held, 0) << "its time is over";
        EXPECT_EQ(cleanups[3].failures, 1);
    }
    const HeldTotals held = totalsOf(DemoDisk::held(now));
    EXPECT_EQ(held.bytes / 1000000, 3209);
    EXPECT_EQ(held.expiry, lumo::daysLater(now - std::chrono::days(5), 7));
    EXPECT_EQ(heldTitle(held, Language::en), "3.2 GB in Recently Cleaned");

    TickedPlan plan;
    plan.take({.entries = entries, .defaults = defaultSelection(entries)});
    const auto actions = plan.selectedActions();
    const CleanupSums sums = sumsOf(DemoDisk::outcomes(actions, now));
    EXPECT_EQ(sums.freed, sharesOf(actions).total);
    EXPECT_EQ(sums.trashed, 0);
}

namespace {

/// Checks the listing of a folder and, one after another, of the folders in it.
void expectWholeListing(const std::string& path, std::int64_t bytes, Language language, System system) {
    const auto listing = DemoDisk::contents(path, language, system);
    std::int64_t sum = 0;
    std::set<std::string> names;
    for (const auto& item : listing.items) {
        sum += item.bytes;
        EXPECT_TRUE(names.insert(item.name).second) << item.path;
        EXPECT_EQ(item.path, path + "/" + item.name);
        EXPECT_GT(item.bytes, 0) << item.path;
        EXPECT_NE(item.isDirectory, item.children.empty()) << item.path;
        if (item.isDirectory) {
            expectWholeListing(item.path, item.bytes, language, system);
        }
    }
    EXPECT_EQ(sum, bytes) << path;
    EXPECT_TRUE(std::ranges::is_sorted(listing.items, std::greater(), [](auto& each) { return each.bytes; }));
}

} // namespace

TEST(DemoDisk, ShowsWhatIsInItsFolders) {
    for (const auto& [language, system] : shownAs) {
        const lumo::ScanReport report = DemoDisk::report(now, language, system);
        for (const lumo::Finding& finding : report.findings) {
            const auto listing = DemoDisk::contents(finding.paths, language, system);
            if (finding.paths.size() == 1 && !listing.items.empty()) {
                expectWholeListing(finding.paths.front(), finding.usage.allocatedBytes, language, system);
                continue;
            }
            std::int64_t sum = 0;
            for (const auto& item : listing.items) {
                sum += item.bytes;
                EXPECT_EQ(*item.via + "/" + item.name, item.path);
            }
            EXPECT_EQ(sum, finding.ruleID == "docker-disk" ? 0 : finding.usage.allocatedBytes)
                << finding.ruleID;
        }
        for (const lumo::ProjectReport& project : report.projects) {
            for (const lumo::ProjectArtifact& artifact : project.artifacts) {
                expectWholeListing(artifact.paths.front(), artifact.usage.allocatedBytes, language, system);
            }
        }
        for (const lumo::UnclassifiedItem& item : report.unclassified) {
            expectWholeListing(item.path, item.usage.allocatedBytes, language, system);
        }
    }
    EXPECT_THAT(DemoDisk::contents("/etc").items, SizeIs(0));
    EXPECT_THAT(DemoDisk::contents("/Users/demo/Downloads/Docker.dmg", Language::en, System::macos).items,
                SizeIs(0));
}
