#include "TarvoMCP/Answers.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Flows/HeldState.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>

namespace tarvo::mcp {


namespace {

constexpr std::size_t mostPaths = 5;
constexpr std::size_t mostProjects = 50;
constexpr std::size_t mostUnknown = 50;
constexpr std::size_t mostItems = 40;
constexpr std::size_t mostInside = 10;
constexpr std::size_t mostExtensions = 10;

template <class Value>
std::vector<Value> firstOf(std::vector<Value> values, std::size_t most) {
    values.resize(std::min(values.size(), most));
    return values;
}

/// How many of a list were left out.
std::int64_t leftOut(std::size_t count, std::size_t most) {
    return static_cast<std::int64_t>(count - std::min(count, most));
}

} // namespace

Analysis analysisOf(const lumo::ScanReport& report, bool isQuick) {
    Analysis analysis{.home = report.home,
                      .isQuick = isQuick,
                      .totalBytes = report.volume.totalBytes,
                      .availableBytes = report.volume.availableBytes,
                      .safeBytes = report.safeBytes(),
                      .reviewBytes = report.bytes(lumo::Safety::review),
                      .keepBytes = report.bytes(lumo::Safety::keep),
                      .moreProjects = leftOut(report.projects.size(), mostProjects),
                      .moreUnknownFolders = leftOut(report.unclassified.size(), mostUnknown),
                      .unreadable = report.unreadableCount()};
    for (const lumo::Finding& finding : report.findings) {
        analysis.items.push_back({finding.ruleID, finding.name, finding.safety, finding.usage.allocatedBytes,
                                  finding.explanation, firstOf(finding.paths, mostPaths)});
    }
    for (const lumo::ProjectReport& project : firstOf(report.projects, mostProjects)) {
        analysis.projects.push_back(
            {project.name, project.usage.allocatedBytes, project.recoverableBytes(), project.lastCodeChange});
    }
    for (const lumo::UnclassifiedItem& folder : firstOf(report.unclassified, mostUnknown)) {
        analysis.unknownFolders.push_back({folder.path, folder.usage.allocatedBytes});
    }
    return analysis;
}

FolderAnswer contentsOf(const std::string& path, const lumo::FileTree::Breakdown& breakdown,
                        const lumo::FolderContents::Listing& listing) {
    FolderAnswer answer{.path = path,
                        .bytes = breakdown.usage.allocatedBytes,
                        .files = breakdown.usage.fileCount,
                        .unreadable = breakdown.usage.unreadableCount,
                        .skipped = listing.skipped,
                        .items = firstOf(listing.items, mostItems),
                        .moreItems = leftOut(listing.items.size(), mostItems),
                        .extensions = firstOf(breakdown.extensions, mostExtensions)};
    for (lumo::FolderContents::Item& item : answer.items) {
        item.children = firstOf(std::move(item.children), mostInside);
    }
    return answer;
}

Fate fateOf(const lumo::CleanupAction& action) {
    if (std::holds_alternative<lumo::method::Command>(action.method)) {
        return Fate::byItsOwnTool;
    }
    return action.safety == lumo::Safety::safe ? Fate::deletedAtOnce : Fate::setAside;
}

Proposal proposalOf(const ProposedPlan& plan) {
    const CleanupShares shares = sharesOf(lumo::CleanupPlanner::actionsOf(plan.plan.entries));
    Proposal proposal{.plan = plan.handle,
                      .items = {},
                      .totalBytes = shares.total,
                      .deletedAtOnceBytes = shares.total - shares.trash - shares.tool,
                      .setAsideBytes = shares.trash,
                      .byItsOwnToolBytes = shares.tool};
    for (const lumo::PlanEntry& entry : plan.plan.entries) {
        proposal.items.push_back({entry.action.id, entry.action.title, entry.action.safety,
                                  entry.action.estimatedBytes, fateOf(entry.action), entry.skipReason});
    }
    return proposal;
}

lumo::Result<HeldItems> heldItems(const Desk& desk) {
    const auto state = heldState(desk);
    if (!state) {
        return std::unexpected(state.error());
    }
    if (state->historyProblem) {
        return lumo::failure(*state->historyProblem);
    }
    HeldItems held;
    for (const lumo::Holding::Batch& batch : state->batches) {
        held.bytes = lumo::checkedSum(held.bytes, batch.bytes);
    }
    for (const HeldItem& item : state->items) {
        const auto batch = std::ranges::find(state->batches, item.batch, &lumo::Holding::Batch::path);
        if (batch != state->batches.end()) {
            held.items.push_back({item.id, item.original, batch->expires()});
        }
    }
    return held;
}

} // namespace tarvo::mcp
