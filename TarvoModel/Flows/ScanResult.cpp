#include "TarvoModel/Flows/ScanResult.h"

#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/History/SnapshotStore.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/ScanUpkeep.h"

#include <utility>

namespace tarvo {

ScanResult resultFrom(lumo::ScanReport report, std::vector<lumo::PlanEntry> entries, lumo::Date now) {
    ScanResult result;
    result.rows = rowsOf(report, entries);
    result.defaults = defaultSelection(entries);
    result.recoverable = lumo::CleanupPlanner::safeRecoverableBytes(entries);
    result.summary = lumo::DiskSummary::templateText(report, result.recoverable, now);
    result.entries = std::move(entries);
    result.report = std::make_shared<const lumo::ScanReport>(std::move(report));
    return result;
}

std::optional<ScanResult> scanResult(const PassRequest& request) {
    const std::string& home = request.desk.home;
    lumo::ScanContext context;
    context.startedAt = request.desk.now();
    context.stop = request.stop;
    context.progress = request.progress;
    context.findAppCaches = appCacheRules;
    std::optional<lumo::ScanReport> report =
        lumo::Scanner::scan(rulesFor(request.pass), optionsFor(request.pass, home), context);
    if (!report) {
        return std::nullopt;
    }
    if (request.pass == ScanPass::quick && request.full) {
        report = complemented(std::move(*report), *request.full, request.cleaned);
    }
    std::vector<lumo::PlanEntry> entries =
        plannedEntries(*report, Preferences::load(home), home, request.applicationPath);
    ScanResult result = resultFrom(std::move(*report), std::move(entries), request.desk.now());
    if (request.pass == ScanPass::full) {
        result.growth = lumo::GrowthTracker::growthOf(*result.report, lumo::SnapshotStore(home).load());
        if (request.snapshot == Snapshot::stored) {
            ScanUpkeep::storeSnapshot(*result.report, request.desk.program, request.desk.now());
        }
    }
    auto held = heldState(request.desk);
    if (held) {
        result.held = std::move(*held);
    } else {
        result.heldProblem = held.error().message;
    }
    return result;
}

} // namespace tarvo
