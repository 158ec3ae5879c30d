#include "TarvoModel/Flows/Cleaning.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/Mover.h"
#include "LumoCore/Inventories/Inventories.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace tarvo {

using lumo::CleanupAction;
using lumo::CleanupOutcome;
using lumo::PathGuard;
using lumo::PlanEntry;
using lumo::Words;

std::vector<CleanupOutcome> usualCarryOut(const std::vector<CleanupAction>& actions, const PathGuard& guard,
                                          const lumo::CleanupExecutor::Control& control) {
    lumo::Mover mover(guard, lumo::Holding::newBatch(guard.home(), control.now()));
    return lumo::CleanupExecutor::run(actions, guard, lumo::OwnFiles::historyLog(guard.home()), mover,
                                      lumo::CleanupExecutor::SafeItems::deletedAtOnce, control);
}

namespace {

std::string changedText() {
    return Words{"ha cambiado desde la pregunta", "it has changed since the question"}.in();
}

/// Said when the log does not end with what was just done.
std::optional<std::string> unloggedText(const std::vector<CleanupOutcome>& outcomes, const Desk& desk) {
    const auto logged = history(desk);
    const bool isLogged =
        outcomes.empty() || (logged && !logged->empty() && logged->back().id == outcomes.back().id &&
                             lumo::isoText(logged->back().date) == lumo::isoText(outcomes.back().date));
    if (isLogged) {
        return std::nullopt;
    }
    return Words{"No he podido apuntarlo en {}: arréglalo y lo apartado se podrá devolver a su sitio",
                 "It could not be written into {}: mend that, and what is set aside can be put back"}
        .with(lumo::printable(lumo::OwnFiles::historyLog(desk.home)));
}

} // namespace

Agreement agreementTo(const Plan& plan) {
    return {.actions = lumo::CleanupPlanner::actionsOf(plan.entries),
            .shown = plan.shown,
            .refused = plan.refused};
}

bool dependsOnCompany(const Agreement& agreed) {
    return std::ranges::count_if(agreed.actions, [](const CleanupAction& action) {
               return lumo::Inventories::mayShareParts(action.id);
           }) > 1;
}

Agreement together(Agreement agreed, const Desk& desk) {
    std::vector<std::string> ids;
    std::ranges::transform(agreed.actions, std::back_inserter(ids), &CleanupAction::id);
    std::vector<lumo::DetailItem> items =
        lumo::Inventories::itemsWith(ids, {.home = desk.home, .now = desk.now()});
    std::set<std::string> found;
    std::ranges::transform(items, std::inserter(found, found.end()), &lumo::DetailItem::id);
    // Each place of an item is taken by the next, since they come in the order in which they may go.
    auto next = items.begin();
    for (CleanupAction& action : agreed.actions) {
        if (next != items.end() && found.contains(action.id)) {
            action = std::move(next++->action);
        }
    }
    lumo::ResolvedPaths added = lumo::CleanupExecutor::resolved(agreed.actions, PathGuard(desk.home));
    agreed.shown.merge(added);
    return agreed;
}

std::vector<LeftOut> leftOutNow(const std::vector<CleanupAction>& agreed, const Plan& now) {
    std::vector<LeftOut> left;
    for (const CleanupAction& action : agreed) {
        const auto found = std::ranges::find_if(
            now.entries, [&](const PlanEntry& entry) { return entry.action.id == action.id; });
        const auto same = std::ranges::find_if(
            now.entries, [&](const PlanEntry& entry) { return entry.action == action && !entry.skipReason; });
        if (same != now.entries.end()) {
            continue;
        }
        if (found == now.entries.end()) {
            left.push_back({action.id, action.title,
                            Words{"ya no está, o ya no es lo que era: búscalo otra vez",
                                  "it is gone, or no longer what it was: look for it again"}
                                .in()});
        } else {
            left.push_back({action.id, action.title, found->skipReason.value_or(changedText())});
        }
    }
    return left;
}

lumo::Result<Cleaned> cleanChosen(const PlanRequest& request, const Desk& desk, const CleanupWatch& watch,
                                  const std::function<lumo::Result<Agreement>(const Plan&)>& choose) {
    const auto lock = lockHome(PathGuard(desk.home), desk);
    if (!lock) {
        return std::unexpected(lock.error());
    }
    const Plan plan = planned(request, desk);
    if (plan.problem) {
        return lumo::failure(*plan.problem);
    }
    const auto chosen = choose(plan);
    if (!chosen) {
        return std::unexpected(chosen.error());
    }
    if (watch.onPlanned) {
        watch.onPlanned(chosen->actions);
    }
    const lumo::CleanupExecutor::Control control{.onBegin = watch.onBegin,
                                                 .stop = watch.stop,
                                                 .cancelTool = watch.cancelTool,
                                                 .now = desk.now,
                                                 .caller = desk.caller,
                                                 .shown = chosen->shown,
                                                 .refusal = refusalFor(request, chosen->actions, desk),
                                                 .regret = regretFor(desk)};
    const std::int64_t lifetimeBefore = lumo::CleanupHistory::total(desk.home);
    const PathGuard guard(desk.home, plan.protectedFolders);
    Cleaned cleaned{.outcomes = watch.carryOut(chosen->actions, guard, control),
                    .lifetimeBefore = lifetimeBefore};
    const std::size_t done = cleaned.outcomes.size();
    cleaned.notBegun = chosen->actions.size() - std::min(done, chosen->actions.size());
    cleaned.logProblem = unloggedText(cleaned.outcomes, desk);
    return cleaned;
}

namespace {

/// The request with the agreed items and no others: what items come to depends on which of them go together.
PlanRequest requestFor(const Agreement& agreed, PlanRequest request) {
    if (request.saved) {
        return request; // Its items are those of the file.
    }
    request.items.clear();
    for (const CleanupAction& action : agreed.actions) {
        if (lumo::inventoryKindOfID(action.id)) {
            request.items.push_back(action.id);
        }
    }
    return request;
}

} // namespace

lumo::Result<Cleaned> clean(const PlanRequest& request, const Agreement& agreed, const Desk& desk,
                            const CleanupWatch& watch) {
    std::vector<LeftOut> left;
    auto cleaned = cleanChosen(requestFor(agreed, request), desk, watch, [&](const Plan& now) {
        left = leftOutNow(agreed.actions, now);
        Agreement allowed = agreed;
        std::erase_if(allowed.actions, [&](const CleanupAction& action) {
            return std::ranges::find(left, action.id, &LeftOut::id) != left.end();
        });
        for (const CleanupAction& action : agreed.refused) {
            // What was refused and no longer would be was never agreed to.
            if (std::ranges::find(now.refused, action) == now.refused.end()) {
                left.push_back({action.id, action.title, changedText()});
            } else {
                allowed.actions.push_back(action);
            }
        }
        return lumo::Result<Agreement>(std::move(allowed));
    });
    if (cleaned) {
        cleaned->leftOut = std::move(left);
    }
    return cleaned;
}

} // namespace tarvo
