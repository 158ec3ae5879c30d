#include "TarvoModel/Exploring/SettingAside.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <tuple>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::Words;

namespace {

std::string pathOf(const lumo::CleanupAction& action) {
    const std::vector<std::string> paths = lumo::CleanupExecutor::touchedPaths(action);
    return paths.empty() ? std::string() : paths.front();
}

std::string sentence(const Cleaned& cleaned) {
    std::vector<const CleanupOutcome*> failed;
    for (const CleanupOutcome& outcome : cleaned.outcomes) {
        if (outcome.status == lumo::CleanupStatus::failed) {
            failed.push_back(&outcome);
        }
    }
    if (!failed.empty()) {
        const std::string first = failed.front()->message.value_or(failed.front()->title);
        const std::string text = failedText(failed.size(), first);
        // Where an item goes is written down before; what recreates itself goes without that.
        return failed.front()->cause == lumo::platform::SystemError{ENOSPC}
                   ? text + Words{"; «tarvo limpiar» libera antes lo que se regenera solo",
                                  "; “tarvo clean” first frees what recreates itself"}
                                .in()
                   : text;
    }
    if (cleaned.logProblem) {
        return *cleaned.logProblem;
    }
    if (!cleaned.leftOut.empty()) {
        return leftOutText(cleaned.leftOut.size(), cleaned.leftOut.front().title,
                           cleaned.leftOut.front().reason);
    }
    return cleanupDone(sumsOf(cleaned.outcomes));
}

} // namespace

AsideOffer asideOffer(const std::vector<std::string>& paths, const Desk& desk, const lumo::NamedTree& tree) {
    AsideOffer offer{.request = {.report = nullptr, .chosen = paths}};
    const Plan plan = planned(offer.request, desk);
    offer.agreed = agreementTo(plan);
    std::vector<lumo::EntryIndex> going;
    for (const lumo::PlanEntry& entry : plan.entries) {
        offer.items.push_back({pathOf(entry.action), entry.action.estimatedBytes, entry.skipReason});
        if (!entry.skipReason) {
            ++offer.goingCount;
            offer.bytes += entry.action.estimatedBytes;
            if (const auto its = tree.entryAt(offer.items.back().path)) {
                going.push_back(*its);
            }
        }
    }
    offer.freedBytes = std::min(offer.bytes, tree.freedWithout(going));
    std::ranges::sort(offer.items, {}, [](const AsideOffer::Item& item) {
        return std::tuple(item.reason.has_value(), -item.bytes, item.path);
    });
    return offer;
}

std::optional<std::string> onlyLookedAt(const std::string& path, const std::string& home) {
    if (!lumo::isInside(path, home) || path == home) {
        return Words{"fuera de tu carpeta personal solo se mira",
                     "outside your home folder you can only look"}
            .in();
    }
    if (lumo::HomeLock::isForeign(home)) {
        return lumo::HomeLock::foreignText();
    }
    return std::nullopt;
}

std::optional<std::string> whyNotWhole(const Explorer& explorer,
                                       const std::vector<lumo::EntryIndex>& entries) {
    const auto part =
        std::ranges::find_if(entries, [&](lumo::EntryIndex entry) { return explorer.holdsNewer(entry); });
    if (part == entries.end()) {
        return std::nullopt;
    }
    return Words{"«{}» tiene también cosas más nuevas: entra en ella, o muéstralo todo",
                 "“{}” also holds newer things: go into it, or show everything"}
        .with(lumo::revealed(explorer.tree().entry(*part).name));
}

std::optional<std::string> whyNotAside(const Explorer& explorer, const std::string& home) {
    const std::vector<lumo::EntryIndex> entries = explorer.chosen();
    if (auto reason = whyNotWhole(explorer, entries)) {
        return reason;
    }
    for (const lumo::EntryIndex entry : entries) {
        if (auto reason = onlyLookedAt(explorer.tree().pathOf(entry), home)) {
            return reason;
        }
    }
    return std::nullopt;
}

Told setAside(const AsideOffer& offer, const Desk& desk, const CleanupWatch& watch) {
    Told told;
    for (const lumo::CleanupAction& action : offer.agreed.actions) {
        told.paths.push_back(pathOf(action));
    }
    const auto cleaned = clean(offer.request, offer.agreed, desk, watch);
    if (!cleaned) {
        told.text = cleaned.error().message;
        return told;
    }
    told.text = sentence(*cleaned);
    told.isWhole = !cleaned->logProblem && cleaned->leftOut.empty() &&
                   cleaned->outcomes.size() == offer.agreed.actions.size() &&
                   std::ranges::none_of(cleaned->outcomes, [](const CleanupOutcome& outcome) {
                       return outcome.status == lumo::CleanupStatus::failed;
                   });
    return told;
}

lumo::Result<std::vector<lumo::TrashedItem>> undoOffer(const Desk& desk) {
    return itemsMeant({}, desk);
}

Told putBack(const std::vector<lumo::TrashedItem>& shown, const Desk& desk) {
    Told told;
    std::ranges::transform(shown, std::back_inserter(told.paths), &lumo::TrashedItem::original);
    const auto result = restoreAgreed({}, shown, desk);
    if (!result) {
        told.text = result.error().message;
        return told;
    }
    told.text = restoredText(*result);
    told.isWhole = result->failures.empty();
    return told;
}

} // namespace tarvo
