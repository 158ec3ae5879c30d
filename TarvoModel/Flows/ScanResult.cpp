#include "TarvoModel/Flows/ScanResult.h"

#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/History/SnapshotStore.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/Scanning.h"

#include <utility>

namespace tarvo {

ScanResult resultFrom(std::shared_ptr<const lumo::ScanReport> report, std::vector<lumo::PlanEntry> entries,
                      lumo::Date now) {
    ScanResult result;
    result.rows = rowsOf(*report, entries);
    result.defaults = defaultSelection(entries);
    result.recoverable = lumo::CleanupPlanner::safeRecoverableBytes(entries);
    result.summary = lumo::DiskSummary::templateText(*report, result.recoverable, now);
    result.entries = std::move(entries);
    result.report = std::move(report);
    return result;
}

std::optional<ScanResult> scanResult(const PassRequest& request) {
    const std::string& home = request.desk.home;
    std::optional<lumo::ScanReport> report =
        scanned(rulesFor(request.pass, home), optionsFor(request.pass, home), request.desk,
                {.progress = request.progress, .stop = request.stop});
    if (!report) {
        return std::nullopt;
    }
    if (request.pass == ScanPass::quick && request.full) {
        report = complemented(std::move(*report), *request.full, request.cleaned);
    }
    const auto shared = std::make_shared<const lumo::ScanReport>(std::move(*report));
    PlanRequest plan = request.plan;
    plan.report = shared;
    Plan made = planned(plan, request.desk);
    ScanResult result = resultFrom(shared, std::move(made.entries), request.desk.now());
    result.shown = std::move(made.shown);
    if (request.pass == ScanPass::full) {
        result.growth = lumo::GrowthTracker::growthOf(*result.report, lumo::SnapshotStore(home).load());
        if (request.snapshot == Snapshot::stored) {
            storeSnapshot(*result.report, request.desk);
        }
    }
    result.problem = homeProblem(request.desk);
    auto held = heldState(request.desk);
    if (held) {
        result.held = std::move(*held);
    } else {
        result.problem = held.error().message;
    }
    return result;
}

} // namespace tarvo
