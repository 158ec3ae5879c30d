#include "LumoCore/Cleanup/CleanupPlanner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using namespace testing;

namespace {

const Date now = *dateFromIsoText("2026-03-14T12:00:00Z");

PlanSurroundings surroundings(Language language = Language::en) {
    return {.now = now,
            .isRunning = [](const std::string& id) { return id == "running"; },
            .nameOf = [](const std::string& id) { return "App " + id; },
            .language = language};
}

Finding finding(std::string id, Safety safety, Cleanup cleanup) {
    return {.ruleID = id,
            .name = "Name of " + id,
            .safety = safety,
            .cleanup = std::move(cleanup),
            .paths = {"/home/x/" + id},
            .usage = {.allocatedBytes = 5000}};
}

ScanReport reportOf(std::vector<Finding> findings) {
    ScanReport report;
    report.findings = std::move(findings);
    return report;
}

/// A project whose code changed that long ago, with one artifact.
ScanReport reportOf(std::optional<std::chrono::seconds> age, const std::string& artifact,
                    std::int64_t bytes) {
    ProjectReport project{.name = "code/app", .path = "/home/x/code/app"};
    if (age) {
        project.lastCodeChange = now - *age;
    }
    project.artifacts = {
        {.name = artifact, .paths = {project.path + "/" + artifact}, .usage = {.allocatedBytes = bytes}}};
    ScanReport report;
    report.projects = {project};
    return report;
}

std::vector<std::string> idsOf(const std::vector<PlanEntry>& entries) {
    std::vector<std::string> ids;
    for (const PlanEntry& entry : entries) {
        ids.push_back(entry.action.id);
    }
    return ids;
}

} // namespace

TEST(CleanupPlanner, AdmitsBySafetyTicksAndTheOnlySet) {
    const ScanReport report = reportOf({finding("keep", Safety::keep, cleanup::DeleteItems{}),
                                        finding("review", Safety::review, cleanup::DeleteItems{}),
                                        finding("ticked", Safety::review, cleanup::DeleteItems{}),
                                        finding("safe", Safety::safe, cleanup::DeleteItems{})});
    const auto planned = [&](const CleanupOptions& options) {
        return idsOf(CleanupPlanner::plan(report, options, surroundings()));
    };
    EXPECT_THAT(planned({}), ElementsAre("safe"));
    EXPECT_THAT(planned({.include = {"ticked", "keep"}}), ElementsAre("ticked", "safe"));
    EXPECT_THAT(planned({.include = {"ticked"}, .only = std::set<std::string>{"review", "keep"}}),
                ElementsAre("review"));
    EXPECT_THAT(planned({.only = std::set<std::string>{}}), IsEmpty());
}

TEST(CleanupPlanner, ChoosesTheMethodByTheCleanupAndLeavesChoicesToTheUser) {
    const auto entry = [](Cleanup cleanup, Safety safety = Safety::safe) {
        return CleanupPlanner::plan(reportOf({finding("a", safety, std::move(cleanup))}), {.include = {"a"}},
                                    surroundings())
            .front();
    };
    const std::vector<std::string> paths{"/home/x/a"};
    const std::vector<std::string> nothing;
    EXPECT_EQ(entry(cleanup::DeleteItems{}).action.method, Method(method::TrashItems{paths}));
    EXPECT_EQ(entry(cleanup::DeleteContents{}).action.method, Method(method::TrashContents{paths}));
    const PlanEntry command = entry(cleanup::Command{"npm  cache clean --force "});
    EXPECT_EQ(command.action.method, Method(method::Command{{"npm", "cache", "clean", "--force"}}));
    EXPECT_EQ(command.action.fallbackContents, paths);
    EXPECT_EQ(command.action.title, "Name of a");
    EXPECT_EQ(entry(cleanup::Command{"x"}, Safety::review).action.fallbackContents, nothing);
    const PlanEntry choice = entry(cleanup::Command{"ollama rm <modelo>"});
    EXPECT_EQ(choice.skipReason, "you have to choose by hand: ollama rm <modelo>");
    EXPECT_EQ(choice.action.method, Method(method::TrashItems{}));
    EXPECT_EQ(entry(cleanup::Manual{"Empty it"}).skipReason, "by hand: Empty it");
}

TEST(CleanupPlanner, GivesTheMostImportantReason) {
    Finding held = finding("a", Safety::safe, cleanup::DeleteItems{});
    held.closeFirst = "running";
    const auto reason = [&](const CleanupOptions& options, Language language = Language::en) {
        return CleanupPlanner::plan(reportOf({held}), options, surroundings(language)).front().skipReason;
    };
    EXPECT_EQ(reason({}), "quit App running first");
    EXPECT_EQ(reason({}, Language::es), "cierra App running antes");
    EXPECT_EQ(reason({.protectedFolders = {"/home/x"}}), "it's in a folder protected in Settings");
    held.closeFirst = "idle";
    EXPECT_EQ(reason({}), std::nullopt);
    held.closeFirst = "running";
    held.cleanup = cleanup::Manual{"Empty it"};
    EXPECT_EQ(reason({}), "by hand: Empty it");
}

TEST(CleanupPlanner, HoldsBackDependenciesOfActiveProjects) {
    using namespace std::chrono;
    const std::string before = "project changed ";
    const std::string after = ", so it isn't included by default (include it with --dependencies)";
    using Case = std::tuple<std::optional<seconds>, std::string, CleanupOptions, std::optional<std::string>>;
    const std::string id = "proyecto:code/app/node_modules";
    const auto no = std::nullopt;
    for (const auto& [age, artifact, options, reason] :
         {Case{hours(23), "node_modules", {}, before + "today" + after},
          Case{hours(24), ".venv", {}, before + "yesterday" + after},
          Case{days(30) - seconds(1), "venv", {}, before + "29 days ago" + after},
          Case{days(30), "node_modules", {}, no}, Case{no, "node_modules", {}, no},
          Case{hours(1), "target", {}, no}, Case{-hours(80), "node_modules", {}, before + "today" + after},
          Case{hours(1), "node_modules", {.includeActiveDependencies = true}, no},
          Case{hours(1), "node_modules", {.include = {id}}, no},
          Case{hours(1), "node_modules", {.only = std::set<std::string>{id}}, before + "today" + after},
          Case{days(2), "node_modules", {.activeProjectDays = 2}, no},
          Case{hours(1),
               "node_modules",
               {.recentProjectHint = "!"},
               before + "today, so it isn't included by default!"},
          Case{hours(1),
               "target",
               {.protectedFolders = {"/home/x/code"}},
               "it's in a folder protected in Settings"}}) {
        const auto entries = CleanupPlanner::plan(reportOf(age, artifact, 1000000), options, surroundings());
        ASSERT_EQ(entries.size(), 1U) << artifact;
        EXPECT_EQ(entries.front().skipReason, reason) << artifact;
        EXPECT_EQ(entries.front().action.title, "code/app · " + artifact);
    }
    EXPECT_THAT(CleanupPlanner::plan(reportOf(hours(1), "target", 999999), {}, surroundings()), IsEmpty());
    EXPECT_THAT(CleanupPlanner::plan(reportOf(hours(1), "target", 1000000),
                                     {.excludedProjects = {"/home/x/code/app"}}, surroundings()),
                IsEmpty());
}

TEST(CleanupPlanner, ProtectsWhatLiesInAFolderAndWhatHoldsIt) {
    for (const auto& [path, isTouched] : {std::pair{"/Users/x/Work", true},
                                          {"/Users/x/Work/a/b", true},
                                          {"/Users/x", true},
                                          {"/Users/x/Workshop", false},
                                          {"/Users/x/Wor", false}}) {
        EXPECT_EQ(CleanupPlanner::touchesProtected({"/elsewhere", path}, {"/Users/x/Work"}), isTouched)
            << path;
    }
}

TEST(ScanReport, RefusesSavedReportsThatNoScanWrites) {
    ScanReport report = reportOf(std::chrono::hours(1), "target", 1000000);
    report.findings = {finding("a", Safety::safe, cleanup::Command{"x y"})};
    const auto read = [](const ScanReport& written) {
        return scanReportFromJson(dumpJson(encode(written), JsonLayout::line));
    };
    EXPECT_EQ(read(report), Result<ScanReport>(report));
    ScanReport negative = report;
    negative.findings[0].usage.fileCount = -1;
    EXPECT_FALSE(read(negative));
    ScanReport tooMuch = report;
    tooMuch.projects[0].usage.allocatedBytes = std::numeric_limits<std::int64_t>::max();
    EXPECT_FALSE(read(tooMuch));
    EXPECT_FALSE(scanReportFromJson("[]"));
}
