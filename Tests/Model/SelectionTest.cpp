#include "TarvoModel/Showing/Selection.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Showing/Emptied.h"
#include "TarvoModel/Showing/Rows.h"
#include "TarvoModel/Showing/TickedPlan.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::Language;
using lumo::PlanEntry;
using lumo::Safety;
using ::testing::ElementsAre;
using namespace tarvo;
namespace method = lumo::method;

namespace {

constexpr lumo::Date now{std::chrono::seconds(1790000000)};

PlanEntry entry(const std::string& id, Safety safety, std::int64_t bytes, lumo::Method how = {}) {
    PlanEntry entry;
    entry.action.id = id;
    entry.action.safety = safety;
    entry.action.estimatedBytes = bytes;
    entry.action.method = std::move(how);
    return entry;
}

lumo::Finding finding(const std::string& id, Safety safety, std::int64_t bytes, const std::string& path) {
    lumo::Finding finding;
    finding.ruleID = id;
    finding.name = "Name of " + id;
    finding.safety = safety;
    finding.explanation = "What " + id + " is";
    finding.paths = {path};
    finding.usage.allocatedBytes = bytes;
    return finding;
}

lumo::ProjectReport project(const std::string& home, const std::string& name, int daysAgo) {
    lumo::ProjectReport project;
    project.name = name;
    project.path = home + "/" + name;
    project.lastCodeChange = now - std::chrono::days(daysAgo);
    lumo::ProjectArtifact modules;
    modules.name = "node_modules";
    modules.paths = {project.path + "/node_modules"};
    modules.usage.allocatedBytes = 5000000;
    project.artifacts = {modules};
    return project;
}

lumo::ScanReport reportOf(const std::string& home) {
    lumo::ScanReport report;
    report.home = home;
    report.findings = {finding("photos", Safety::keep, 900, home + "/Photos"),
                       finding("models", Safety::review, 500, home + "/Models"),
                       finding("cache", Safety::safe, 300, home + "/Cache"),
                       finding("letters", Safety::review, 800, home + "/Letters")};
    report.projects = {project(home, "quiet", 30), project(home, "busy", 29), project(home, "mine", 90)};
    report.unclassified = {{.path = home + "/Folder", .usage = {}}};
    report.unclassified.front().usage.allocatedBytes = 700;
    return report;
}

std::vector<std::string> idsOf(const std::vector<Row>& rows) {
    std::vector<std::string> ids;
    std::ranges::transform(rows, std::back_inserter(ids), &Row::id);
    return ids;
}

std::vector<PlanEntry> plannedFor(const lumo::ScanReport& report) {
    lumo::CleanupOptions options = windowOptions(report, {}, Language::en);
    leaveOutProjectsWith(report.home + "/mine/build/app", report, options);
    return lumo::CleanupPlanner::plan(
        report, options,
        {.now = now, .isRunning = [](const auto&) { return false; }, .nameOf = {}, .language = Language::en});
}

} // namespace

TEST(Rows, ShowEveryEntryWhatIsKeptAndWhatNobodyKnowsGroupByGroupTheLargestFirst) {
    const lumo::ScanReport report = reportOf("/home/u");
    const std::vector<Row> rows = rowsOf(report, plannedFor(report), Language::en);
    EXPECT_THAT(idsOf(rows), ElementsAre("proyecto:quiet/node_modules", "proyecto:busy/node_modules", "cache",
                                         "letters", "models", "photos", "sin:/home/u/Folder"));
    EXPECT_EQ(rows[0].detail, "reinstalled with npm, pnpm or bun install");
    EXPECT_EQ(rows[1].skipReason, "project changed 29 days ago, so it isn't included by default (you can "
                                  "change the days in Settings)");
    EXPECT_EQ(rows.back().title + " " + rows.back().detail, "Folder ~/Folder");
    EXPECT_EQ(rows.back().safety, std::nullopt);
    EXPECT_EQ(bytesOf(RowGroup::review, rows), 1300);
    EXPECT_THAT(idsOf(rowsMatching("LÉTTERS", rows)), ElementsAre("letters"));
    EXPECT_EQ(rowsMatching("", rows), rows);
}

// The sum above a group counted what cannot be ticked, and among what recreates itself stood the user's own
// files that were set aside.
TEST(Rows, TellWhatIsHeldBackApartAndLeaveOutWhatIsSetAside) {
    std::vector<PlanEntry> entries{entry("free", Safety::safe, 3000000), entry("open", Safety::safe, 2000000),
                                   entry("held", Safety::safe, 9000000)};
    entries[1].skipReason = "quit it first";
    entries[2].action.measuredPaths = {"/home/u/Library/Application Support/TarvoAI/Apartado"};
    lumo::ScanReport report;
    report.home = "/home/u";
    std::vector<Row> rows = rowsOf(report, entries, Language::en);
    EXPECT_THAT(idsOf(rows), ElementsAre("free", "open"));
    EXPECT_EQ(groupAmount(RowGroup::safe, rows, Language::en), "3 MB · 2 MB not now");
    rows.pop_back();
    EXPECT_EQ(groupAmount(RowGroup::safe, rows, Language::es), "3 MB");
}

TEST(Selection, BeginsWithWhatIsSafeAndOffersTheRest) {
    const std::vector<PlanEntry> entries = plannedFor(reportOf("/home/u"));
    EXPECT_THAT(defaultSelection(entries), ElementsAre("cache", "proyecto:quiet/node_modules"));
    TickedPlan plan;
    plan.take({.entries = entries});
    for (const std::string id : {"letters", "cache"}) {
        EXPECT_TRUE(plan.canSelect(id) && plan.toggle(id) && plan.selection().contains(id)) << id;
    }
    for (const std::string id :
         {"proyecto:busy/node_modules", "proyecto:mine/node_modules", "photos", "sin:/home/u/Folder"}) {
        EXPECT_FALSE(plan.canSelect(id) || plan.toggle(id) || plan.selection().contains(id)) << id;
    }
    EXPECT_TRUE(plan.toggle("cache"));
    EXPECT_THAT(plan.selection(), ElementsAre("letters"));
}

TEST(Selection, SurvivesANewReportAsTheUserLeftIt) {
    struct Case {
        Selection selection, before, defaults, tickable, expected;
    };
    const std::vector<Case> cases{
        {{}, {}, {"a", "b"}, {"a", "b", "c"}, {"a", "b"}},                 // The first report.
        {{"b"}, {"a", "b"}, {"a", "b", "c"}, {"a", "b", "c"}, {"b", "c"}}, // Unticked stays, new is added.
        {{"b", "z"}, {"b"}, {"b"}, {"b", "z"}, {"b", "z"}},                // The user's own tick stays.
        {{"b", "gone"}, {"b"}, {"b"}, {"b"}, {"b"}},
        {{"b"}, {"b"}, {}, {"b"}, {"b"}}, // No longer safe, still there.
    };
    for (const Case& each : cases) {
        EXPECT_EQ(reconciled(each.selection, each.before, each.defaults,
                             [&](const std::string& id) { return each.tickable.contains(id); }),
                  each.expected);
    }
}

// What was held back after it had been ticked, by a protected folder as much as by an open program, stayed
// ticked in list and map although no cleanup would have taken it.
TEST(Selection, LosesWhatIsHeldBackAndWhatWasCleaned) {
    std::vector<PlanEntry> entries{entry("cache", Safety::safe, 2000000),
                                   entry("own", Safety::review, 2000000)};
    TickedPlan plan;
    plan.take({.entries = entries, .defaults = {"cache"}});
    EXPECT_TRUE(plan.toggle("own"));
    entries[1].skipReason = "in a protected folder";
    plan.take({.entries = entries, .defaults = {"cache"}});
    EXPECT_EQ(plan.stateOf("own"), TileState::blocked);
    EXPECT_THAT(plan.selection(), ElementsAre("cache"));
    plan.forget({"cache"});
    plan.take({.entries = entries});
    EXPECT_THAT(plan.selection(), ::testing::IsEmpty());
    plan.take({.entries = entries, .defaults = {"cache"}});
    EXPECT_THAT(plan.selection(), ElementsAre("cache")) << "it has grown again";
}

TEST(Selection, ActsInPlanOrderAndLeavesOutWhatIsHeldBackMeanwhile) {
    std::vector<PlanEntry> entries{entry("z", Safety::safe, 1000000), entry("held", Safety::safe, 2000000),
                                   entry("images", Safety::review, 4000000, method::Command{}),
                                   entry("a", Safety::review, 8000000),
                                   entry("unticked", Safety::safe, 16000000)};
    entries[1].skipReason = "quit it first";
    TickedPlan plan;
    plan.take(std::make_shared<const WholePlan>(
        std::make_shared<const ShownPlan>(ShownPlan{.entries = {entries.begin(), entries.begin() + 3},
                                                    .defaults = {"a", "held", "images", "z", "gone"}}),
        std::make_shared<const ShownItems>(ShownItems{.entries = {entries.begin() + 3, entries.end()}}),
        "/home/u"));
    const auto actions = plan.selectedActions();
    ASSERT_EQ(actions.size(), 3U);
    EXPECT_EQ(actions[0].id + actions[1].id + actions[2].id, "zimagesa");
    const CleanupShares shares = plan.shares();
    EXPECT_EQ(shares, (CleanupShares{.total = 13000000, .trash = 8000000, .tool = 4000000}));
    EXPECT_EQ(selectedText(shares, Language::en), "13 MB selected: 5 MB freed now · 8 MB set aside 7 days");
    EXPECT_EQ(selectedText({.total = 5000000}, Language::es), "5 MB marcados");
}

TEST(Selection, IsSetBackToTheSafeRowsOnlyWhileNobodyWorksOnThem) {
    const Selection own{"own"};
    for (const Phase& quiet : {Phase(), Phase(phase::ScanningFolders())}) {
        EXPECT_THAT(safeSelection(own, {"safe"}, quiet), ElementsAre("safe"));
    }
    for (const Phase& busy :
         {Phase(phase::Scanning()), Phase(phase::Cleaning()), Phase(phase::Explaining())}) {
        EXPECT_EQ(safeSelection(own, {"safe"}, busy), own);
    }
}

TEST(Selection, OffersNothingWhileThePreferencesCannotBeTrusted) {
    const tarvo::testing::TempHome home;
    const lumo::ScanReport report = reportOf(home.path());
    const auto ticked = [&] {
        const Plan plan = planned({.report = std::make_shared<const lumo::ScanReport>(report)},
                                  Desk::ofThisMachine(home.path(), "tests"));
        return defaultSelection(plan.entries).size();
    };
    home.fileWith(".config/TarvoAI/preferencias.json",
                  R"({"carpetasProtegidas":[")" + home.path("Cache") + R"("],"diasProyectoActivo":0})");
    EXPECT_EQ(ticked(), 3U);
    home.fileWith(".config/TarvoAI/preferencias.json", "{");
    EXPECT_EQ(ticked(), 0U);
}

// What its tool had freed nothing of was ticked again at once, for the same cleanup with the same result.
TEST(Emptied, TicksNothingThatACleanupFreedNothingOfUntilThereIsMore) {
    Emptied emptied;
    const auto done =
        emptied.take({{.id = "npm", .message = "nothing freed"}, {.id = "uv", .freedBytes = 5000000}}, {});
    EXPECT_EQ(done, std::set<std::string>{"uv"});
    const auto ticked = [&](std::int64_t bytes) {
        std::vector<lumo::PlanEntry> entries{{{.id = "npm", .estimatedBytes = bytes}, {}},
                                             {{.id = "uv", .estimatedBytes = 40}, {}}};
        Selection defaults{"npm", "uv"};
        std::vector<Row> rows{{.id = "npm"}, {.id = "uv"}};
        emptied.leaveOut(entries, defaults, rows);
        EXPECT_EQ(rows.size(), 1U) << "it is still shown";
        return defaults.contains("npm");
    };
    EXPECT_FALSE(ticked(63000000));
    EXPECT_FALSE(ticked(63100000));
    EXPECT_TRUE(ticked(80000000));
}
