#include "TarvoModel/Flows/ScanResult.h"

#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/Explaining/KnownPlaces.h"
#include "LumoCore/History/SnapshotStore.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/Scanning.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <utility>

namespace tarvo {

namespace {

ShownPlan shownPlanOf(const lumo::ScanReport& report, std::vector<lumo::PlanEntry> entries) {
    ShownPlan plan;
    plan.rows = rowsOf(report, entries);
    plan.defaults = defaultSelection(entries);
    plan.recoverable = lumo::CleanupPlanner::safeRecoverableBytes(entries);
    plan.entries = std::move(entries);
    return plan;
}

/// What nobody needs to guess of the folders that no rule knows.
std::map<std::string, lumo::Explanation> certainOf(const lumo::ScanReport& report, const Desk& desk) {
    const lumo::Installed installed = lumo::Installed::ofThisMachine(desk.home, desk.installedApps()->apps());
    const lumo::KnownPlaces known(lumo::HomePlaces::ofThisMachine(desk.home), installed);
    return known.explainAll(report.unclassified, desk.now());
}

void lookAtHeld(ScanResult& result, const Desk& desk) {
    result.problem = homeProblem(desk);
    auto held = heldState(desk);
    if (held) {
        result.held = std::move(*held);
    } else if (!result.problem) {
        result.problem = held.error().message;
    }
}

} // namespace

ShownPlan shownPlan(const PlanRequest& request, const Desk& desk) {
    Plan made = planned(request, desk);
    ShownPlan plan = shownPlanOf(*request.report, std::move(made.entries));
    plan.shown = std::move(made.shown);
    return plan;
}

ScanResult demoResult(lumo::Date now) {
    lumo::ScanReport report = DemoDisk::report(now);
    ScanResult result;
    result.plan = WholePlan::of(shownPlanOf(report, DemoDisk::entries(report)));
    result.summary = lumo::DiskSummary::templateText(report, result.plan->plan()->recoverable, now);
    const lumo::DiskSnapshot yesterday = DemoDisk::yesterday(report);
    result.growth =
        lumo::Growth{.since = yesterday.date,
                     .items = lumo::GrowthTracker::compare(lumo::DiskSnapshot::from(report), yesterday,
                                                           lumo::GrowthTracker::smallestGrowth)};
    for (lumo::Explanation& explanation : DemoDisk::explanations(now)) {
        const std::string path = explanation.path;
        result.certain.insert_or_assign(path, std::move(explanation));
    }
    result.held = {.batches = DemoDisk::held(now),
                   .items = DemoDisk::heldItems(DemoDisk::history(report), now),
                   .canUndo = true};
    result.report = std::make_shared<const lumo::ScanReport>(std::move(report));
    return result;
}

std::optional<ScanResult> scanResult(const PassRequest& request) {
    const std::string& home = request.desk.home;
    Desk desk = request.desk;
    desk.installed = desk.installedApps();
    std::optional<lumo::ScanReport> report =
        scanned(rulesFor(request.pass, home), optionsFor(request.pass, home), desk,
                {.progress = request.progress, .stop = request.stop, .memory = request.memory});
    if (!report) {
        return std::nullopt;
    }
    if (request.pass == ScanPass::quick && request.full) {
        report = complemented(std::move(*report), *request.full, request.cleaned);
    }
    const bool isUnseen = homeProblem(desk).has_value();
    ScanResult result;
    result.report = std::make_shared<const lumo::ScanReport>(std::move(*report));
    PlanRequest plan = request.plan;
    plan.report = result.report;
    const auto shown = std::make_shared<const ShownPlan>(shownPlan(plan, desk));
    result.plan = std::make_shared<const WholePlan>(shown, request.items, home);
    result.summary = lumo::DiskSummary::templateText(*result.report, shown->recoverable, desk.now());
    if (request.pass == ScanPass::full) {
        result.certain = certainOf(*result.report, desk);
        result.items = itemsBeside(desk, {.progress = request.progress, .stop = request.stop});
        if (request.stop.stop_requested()) {
            return std::nullopt; // Those lists end in the middle.
        }
        const auto snapshot = lumo::DiskSnapshot::from(*result.report, result.items);
        result.growth = lumo::GrowthTracker::growthOf(snapshot, lumo::SnapshotStore(home).load());
        if (request.snapshot == Snapshot::stored && !isUnseen) {
            storeSnapshot(snapshot, desk);
        }
    }
    lookAtHeld(result, desk);
    if (isUnseen) {
        result.hasSeenHome = false;
        result.summary.clear();
    }
    return result;
}

ScanResult savedResult(std::shared_ptr<const lumo::ScanReport> report, PlanRequest request,
                       const Desk& desk) {
    ScanResult result;
    result.report = std::move(report);
    result.isFromFile = true;
    request.report = result.report;
    request.isReportFromFile = true;
    result.plan = WholePlan::of(shownPlan(request, desk));
    result.summary =
        lumo::DiskSummary::templateText(*result.report, result.plan->plan()->recoverable, desk.now());
    result.certain = certainOf(*result.report, desk);
    lookAtHeld(result, desk);
    return result;
}

} // namespace tarvo
