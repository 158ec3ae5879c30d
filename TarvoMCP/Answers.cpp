#include "TarvoMCP/Answers.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Flows/HeldState.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace tarvo::mcp {

using lumo::Words;

namespace {

constexpr std::size_t mostPaths = 2;
constexpr std::size_t mostInside = 3;
constexpr std::size_t mostExtensions = 10;
constexpr std::size_t mostIDs = 3;
constexpr std::size_t mostReasons = 12;
constexpr std::size_t mostLeftOut = 20;

template <class Value>
std::vector<Value> firstOf(std::vector<Value> values, std::size_t most) {
    values.resize(std::min(values.size(), most));
    return values;
}

/// How many of a list were left out.
std::int64_t leftOut(std::size_t count, std::size_t most) {
    return static_cast<std::int64_t>(count - std::min(count, most));
}

/// For lists of what has sizes.
More cutBySize(auto& elements, const Page& page) {
    return cut(elements, page, [](const auto& element) { return element.bytes; });
}

} // namespace

Analysis analysisOf(const lumo::ScanReport& report, bool isQuick, std::int64_t recoverableBytes,
                    const Page& page) {
    Analysis analysis{.home = report.home,
                      .isQuick = isQuick,
                      .totalBytes = report.volume.totalBytes,
                      .availableBytes = report.volume.availableBytes,
                      .recoverableBytes = recoverableBytes,
                      .reviewBytes = report.bytes(lumo::Safety::review),
                      .keepBytes = report.bytes(lumo::Safety::keep),
                      .unreadable = report.unreadableCount()};
    for (const lumo::Finding& finding : report.findings) {
        analysis.items.push_back({finding.ruleID, finding.name, finding.safety, finding.usage.allocatedBytes,
                                  finding.explanation, firstOf(finding.paths, mostPaths),
                                  leftOut(finding.paths.size(), mostPaths)});
    }
    for (const lumo::ProjectReport& project : report.projects) {
        analysis.projects.push_back(
            {project.name, project.usage.allocatedBytes, project.recoverableBytes(), project.lastCodeChange});
    }
    for (const lumo::UnclassifiedItem& folder : report.unclassified) {
        analysis.unknownFolders.push_back({folder.path, folder.usage.allocatedBytes});
    }
    lumo::sortLargestFirst(analysis.items, &AnalyzedItem::bytes);
    analysis.moreItems = cutBySize(analysis.items, page);
    analysis.moreProjects = cutBySize(analysis.projects, page);
    analysis.moreUnknownFolders = cutBySize(analysis.unknownFolders, page);
    return analysis;
}

namespace {

ListedEntry entryOf(const lumo::FolderContents::Item& item) {
    ListedEntry entry{item.name, item.path, item.bytes, item.isDirectory, {}};
    for (const lumo::FolderContents::Item& child : firstOf(item.children, mostInside)) {
        entry.inside = entry.inside.value_or(std::vector<lumo::NamedSize>());
        entry.inside->push_back({child.name, child.bytes, child.isDirectory});
    }
    return entry;
}

} // namespace

FolderAnswer contentsOf(const std::string& path, const lumo::FileTree::Breakdown& breakdown,
                        const lumo::FolderContents::Listing& listing, const Page& page) {
    FolderAnswer answer{.path = path,
                        .bytes = breakdown.usage.allocatedBytes,
                        .files = breakdown.usage.fileCount,
                        .unreadable = breakdown.usage.unreadableCount,
                        .skipped = listing.skipped,
                        .items = {},
                        .moreItems = {},
                        .extensions = {}};
    std::ranges::transform(listing.items, std::back_inserter(answer.items), entryOf);
    const auto rest =
        std::ranges::find_if(answer.items, [](const ListedEntry& entry) { return entry.path.empty(); });
    if (rest != answer.items.end()) {
        std::rotate(rest, std::next(rest), answer.items.end());
    }
    answer.moreItems = cutBySize(answer.items, page);
    for (const lumo::NamedSize& extension : firstOf(breakdown.extensions, mostExtensions)) {
        answer.extensions.push_back({extension.name, extension.bytes});
    }
    return answer;
}

FoundItems foundItemsOf(const lumo::Inventory& inventory, const Page& page) {
    const auto kind = static_cast<std::size_t>(inventory.kind);
    FoundItems found{.kind = std::string(lumo::EnumNames<lumo::InventoryKind>::values[kind]),
                     .items = {},
                     .moreItems = {},
                     .unavailable = inventory.unavailable,
                     .unreadable = inventory.unreadableCount};
    for (const lumo::DetailItem& item : inventory.items) {
        if (item.bytes >= page.minBytes) {
            std::int64_t& sum = item.blockedBecause ? found.blockedBytes : found.bytes;
            sum = lumo::checkedSum(sum, item.bytes);
        }
        found.items.push_back({item.id, item.name, item.path, item.bytes, item.detail, item.safety, item.kept,
                               item.blockedBecause});
    }
    found.moreItems = cutBySize(found.items, page);
    return found;
}

Fate fateOf(const lumo::CleanupAction& action) {
    if (action.safety == lumo::Safety::safe) {
        return Fate::deletedAtOnce;
    }
    return std::holds_alternative<lumo::method::Command>(action.method) ? Fate::byItsOwnTool : Fate::setAside;
}

namespace {

/// What is held back, by its reasons.
std::vector<BlockedItems> blockedIn(const std::vector<lumo::PlanEntry>& entries) {
    std::vector<BlockedItems> groups;
    for (const lumo::PlanEntry& entry : entries) {
        if (!entry.skipReason) {
            continue;
        }
        auto group = std::ranges::find(groups, *entry.skipReason, &BlockedItems::reason);
        if (group == groups.end()) {
            groups.push_back({.reason = *entry.skipReason, .count = 0, .bytes = 0, .ids = {}});
            group = std::prev(groups.end());
        }
        ++group->count;
        group->bytes = lumo::checkedSum(group->bytes, entry.action.estimatedBytes);
        if (group->ids.size() < mostIDs) {
            group->ids.push_back(entry.action.id);
        }
    }
    lumo::sortLargestFirst(groups, &BlockedItems::bytes);
    return groups;
}

} // namespace

Proposal proposalOf(const ProposedPlan& plan, const Page& page) {
    const std::vector<lumo::CleanupAction> actions = lumo::CleanupPlanner::actionsOf(plan.plan.entries);
    const CleanupShares shares = sharesOf(actions);
    Proposal proposal{.plan = plan.handle,
                      .items = {},
                      .moreItems = {},
                      .blocked = blockedIn(plan.plan.entries),
                      .moreBlocked = {},
                      .totalBytes = shares.total,
                      .deletedAtOnceBytes = shares.total - shares.trash - shares.tool,
                      .setAsideBytes = shares.trash,
                      .byItsOwnToolBytes = shares.tool};
    for (const lumo::CleanupAction& action : actions) {
        proposal.items.push_back(
            {action.id, action.title, action.safety, action.estimatedBytes, fateOf(action)});
    }
    lumo::sortLargestFirst(proposal.items, &ProposedItem::bytes);
    proposal.moreItems = cutBySize(proposal.items, page);
    proposal.moreBlocked = cutBySize(proposal.blocked, {.limit = std::min(page.limit, mostReasons)});
    return proposal;
}

CleanedItem cleanedItem(const lumo::CleanupOutcome& outcome) {
    return {outcome.id,         outcome.title,        outcome.status, outcome.message,
            outcome.freedBytes, outcome.trashedBytes, outcome.date};
}

namespace {

/// The page of the outcomes, in their order.
CleaningAnswer pageOf(const std::vector<lumo::CleanupOutcome>& outcomes, const Page& page) {
    const CleanupSums sums = sumsOf(outcomes);
    CleaningAnswer answer{.plan = {},
                          .outcomes = {},
                          .moreOutcomes = {},
                          .leftOut = {},
                          .moreLeftOut = 0,
                          .freedBytes = sums.freed,
                          .setAsideBytes = sums.trashed};
    std::ranges::transform(outcomes, std::back_inserter(answer.outcomes), cleanedItem);
    answer.moreOutcomes = cut(answer.outcomes, page, [](const CleanedItem& item) {
        return lumo::checkedSum(item.freedBytes, item.setAsideBytes);
    });
    return answer;
}

} // namespace

CleaningAnswer cleaningAnswer(const std::string& plan, const Cleaned& cleaned, const Page& page) {
    std::vector<lumo::CleanupOutcome> outcomes;
    const auto hasFailed = [](const lumo::CleanupOutcome& outcome) {
        return outcome.status == lumo::CleanupStatus::failed;
    };
    std::ranges::copy_if(cleaned.outcomes, std::back_inserter(outcomes), hasFailed);
    std::ranges::copy_if(cleaned.outcomes, std::back_inserter(outcomes), std::not_fn(hasFailed));
    CleaningAnswer answer = pageOf(outcomes, page);
    answer.plan = plan;
    for (const LeftOut& left : firstOf(cleaned.leftOut, mostLeftOut)) {
        answer.leftOut.push_back({left.id, left.title, left.reason});
    }
    answer.moreLeftOut = leftOut(cleaned.leftOut.size(), mostLeftOut);
    return answer;
}

CleaningAnswer historyAnswer(std::vector<lumo::CleanupOutcome> outcomes, const Page& page) {
    std::ranges::reverse(outcomes);
    return pageOf(outcomes, page);
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
    std::ranges::reverse(held.items);
    return held;
}

std::string cleanedText(const CleaningAnswer& answer, const Page& page) {
    constexpr std::size_t mostLines = 6;
    std::string text = cleanupDone({answer.freedBytes, answer.setAsideBytes});
    std::size_t lines = 0;
    for (const CleanedItem& item : answer.outcomes) {
        if (item.status == lumo::CleanupStatus::failed && lines++ < mostLines) {
            text += Words{"\n• NO se pudo limpiar {}: {}", "\n• could NOT be cleaned: {}: {}"}.with(
                lumo::printableWithStrays(item.title), lumo::printableWithStrays(item.message.value_or("")));
        }
    }
    for (const LeftItem& left : firstOf(answer.leftOut, mostLines)) {
        text += Words{"\n• se ha dejado como estaba {}: {}", "\n• left as it was: {}: {}"}.with(
            lumo::printableWithStrays(left.title), lumo::printableWithStrays(left.reason));
    }
    if (const std::int64_t more = leftOut(answer.leftOut.size(), mostLines) + answer.moreLeftOut; more > 0) {
        text +=
            Words{"\n… y {} más se han dejado como estaban", "\n… and {} more left as they were"}.with(more);
    }
    return text + moreLine(answer.moreOutcomes, page);
}

FieldWords cleaningWords() {
    return {
        {"setAsideBytes", Words{"apartado, aún no libre", "set aside, not free yet"}.in()},
        {"leftOut",
         Words{"lo que se aceptó y se ha dejado como estaba", "what was agreed to and left as it was"}.in()}};
}

std::string noSuchPlan() {
    return Words{"No hay ningún plan con ese identificador, o tiene más de una hora: haz uno con "
                 "propose_cleanup.",
                 "There is no plan with that handle, or it is more than an hour old: make one with "
                 "propose_cleanup."}
        .in();
}

HeldItems heldPage(HeldItems held, const Page& page) {
    held.moreItems = cut(held.items, page, [](const ListedItem&) { return std::int64_t{0}; }).count;
    return held;
}

} // namespace tarvo::mcp
