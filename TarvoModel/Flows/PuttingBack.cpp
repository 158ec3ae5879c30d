#include "TarvoModel/Flows/PuttingBack.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/Undoing.h"
#include "TarvoModel/Flows/GivenPath.h"
#include "TarvoModel/Flows/HeldState.h"

#include <algorithm>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::PathGuard;
using lumo::TrashedItem;
using lumo::TrashOperationResult;
using lumo::Words;

namespace {

using Items = std::vector<TrashedItem>;

/// Does something with the log under the lock.
template <class Value>
lumo::Result<Value> withHistory(
    const Desk& desk,
    const std::function<lumo::Result<Value>(const std::vector<CleanupOutcome>&, const PathGuard&)>& act) {
    const PathGuard guard(desk.home);
    const auto lock = lockHome(guard, desk);
    if (!lock) {
        return std::unexpected(lock.error());
    }
    const auto outcomes = history(desk, *lock);
    return outcomes ? act(*outcomes, guard) : std::unexpected(outcomes.error());
}

lumo::Result<Items> meant(const PutBackRequest& request, const std::vector<CleanupOutcome>& outcomes,
                          const PathGuard& guard) {
    if (request.originals.empty() && request.ids.empty()) {
        return lumo::Undoing::newestBatch(outcomes, guard);
    }
    Items items;
    Items held = lumo::Undoing::held(outcomes, guard);
    std::ranges::reverse(held); // Of several from one place the newest is meant.
    for (const std::string& word : request.originals) {
        const std::string original = pathMeant(word, guard.home());
        const auto found = std::ranges::find_if(held, [&](const TrashedItem& item) {
            return item.original == original || pathMeant(item.original, guard.home()) == original;
        });
        // One that is not held any more has its own failure text.
        items.push_back(found != held.end() ? *found : TrashedItem{.original = original, .inTrash = {}});
    }
    for (const std::string& id : request.ids) {
        const auto item = heldItemNamed(id, outcomes, guard);
        if (!item) {
            return lumo::failure(
                Words{"nada apartado tiene el identificador «{}»", "nothing set aside has the id “{}”"}.with(
                    lumo::printable(id)));
        }
        items.push_back(*item);
    }
    return items;
}

} // namespace

lumo::Result<TrashOperationResult> undo(const Desk& desk) {
    return withHistory<TrashOperationResult>(desk, [&](const auto& outcomes, const PathGuard& guard) {
        return lumo::Undoing::undo(outcomes, guard, desk.now());
    });
}

lumo::Result<TrashOperationResult> restore(const PutBackRequest& request, const Desk& desk) {
    return withHistory<TrashOperationResult>(
        desk, [&](const auto& outcomes, const PathGuard& guard) -> lumo::Result<TrashOperationResult> {
            const auto items = meant(request, outcomes, guard);
            return items ? lumo::Holding::restore(*items, guard)
                         : lumo::Result<TrashOperationResult>(std::unexpected(items.error()));
        });
}

lumo::Result<Items> itemsMeant(const PutBackRequest& request, const Desk& desk) {
    return withHistory<Items>(
        desk, [&](const auto& outcomes, const PathGuard& guard) { return meant(request, outcomes, guard); });
}

lumo::Result<TrashOperationResult> restoreAgreed(const PutBackRequest& request, const Items& agreed,
                                                 const Desk& desk) {
    return withHistory<TrashOperationResult>(
        desk, [&](const auto& outcomes, const PathGuard& guard) -> lumo::Result<TrashOperationResult> {
            const auto items = meant(request, outcomes, guard);
            if (!items) {
                return std::unexpected(items.error());
            }
            if (*items != agreed) {
                return lumo::failure(Words{"Lo apartado ha cambiado mientras tanto: no se ha tocado nada.",
                                           "What is set aside has changed meanwhile: nothing was touched."}
                                         .in());
            }
            // What was shown was one batch: no other is touched, whatever comes of it.
            return request.originals.empty() && request.ids.empty() && !items->empty()
                       ? lumo::Undoing::undoBatch(lumo::Holding::batchOf(items->front().inTrash), outcomes,
                                                  guard, desk.now())
                       : lumo::Holding::restore(*items, guard);
        });
}

} // namespace tarvo
