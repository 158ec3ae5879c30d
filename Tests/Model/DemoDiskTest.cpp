#include "TarvoApp/Model/DemoDisk.h"
#include "LumoCore/History/GrowthTracker.h"
#include "TarvoApp/Model/CleanupTexts.h"
#include "TarvoApp/Model/Rows.h"
#include "TarvoApp/Model/Selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::Language;
using ::testing::SizeIs;
using namespace tarvo;

constexpr lumo::Date now{std::chrono::seconds(1790000000)};

TEST(DemoDisk, HasSomethingOfEverythingAndFitsTheDisk) {
    for (const Language language : {Language::es, Language::en}) {
        const lumo::ScanReport report = DemoDisk::report(now, language);
        std::set<lumo::Category> categories;
        std::set<lumo::Safety> safeties;
        for (const lumo::Finding& finding : report.findings) {
            categories.insert(finding.category);
            safeties.insert(finding.safety);
            for (const std::string& path : finding.paths) {
                EXPECT_TRUE(path.starts_with("/Users/demo/")) << path;
            }
        }
        EXPECT_THAT(categories, SizeIs(9));
        EXPECT_THAT(safeties, SizeIs(3));
        EXPECT_THAT(report.findings, SizeIs(45)) << "a row names a rule that there is not";
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
    const lumo::ScanReport report = DemoDisk::report(now, Language::en);
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

    for (const Language language : {Language::es, Language::en}) {
        const lumo::ScanReport shown = DemoDisk::report(now, language);
        const lumo::Growth growth = lumo::GrowthTracker::growthOf(shown, {DemoDisk::yesterday(shown)});
        EXPECT_EQ(growth.since, now - std::chrono::days(1));
        ASSERT_THAT(growth.items, SizeIs(6));
        EXPECT_EQ(growth.items.front().id, "xcode-derived-data");
    }
    const HeldTotals held = totalsOf(DemoDisk::held(now));
    EXPECT_EQ(held.bytes / 1000000, 3209);
    EXPECT_EQ(held.expiry, lumo::daysLater(now - std::chrono::days(5), 7));
    EXPECT_EQ(heldTitle(held, Language::en), "3.2 GB in Recently Cleaned");
    EXPECT_EQ(DemoDisk::explanations(now).size() + 1, report.unclassified.size());

    const auto actions = selectedActions(defaultSelection(entries), entries);
    const CleanupSums sums = sumsOf(DemoDisk::outcomes(actions, now));
    EXPECT_EQ(sums.freed, sharesOf(actions).total);
    EXPECT_EQ(sums.trashed, 0);
}
