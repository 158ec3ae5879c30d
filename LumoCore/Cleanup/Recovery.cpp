#include "LumoCore/Cleanup/Recovery.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "LumoCore/Cleanup/ArchiveStaging.h"
#include "LumoCore/Cleanup/HeldItem.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/Intents.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "Platform/ForeignFile.h"
#include "Platform/StateFile.h"

#include <set>
#include <string>

namespace lumo::Recovery {

namespace {

/// Where the log's items are held, as "batch/name": the log may spell the home otherwise than an intent.
std::set<std::string, std::less<>> loggedPlaces(const std::vector<CleanupOutcome>& outcomes) {
    std::set<std::string, std::less<>> places;
    for (const CleanupOutcome& outcome : outcomes) {
        for (const TrashedItem& item : outcome.restorable.value_or(std::vector<TrashedItem>())) {
            places.emplace(HeldItem::placeInRoot(item.inTrash));
        }
    }
    return places;
}

/// True for intents of one action of one cleanup.
bool belongTogether(const Intent& left, const Intent& right) {
    return left.actionID == right.actionID &&
           Holding::batchOf(left.inTrash) == Holding::batchOf(right.inTrash);
}

/// What is to become of the intents.
struct Settled {
    std::vector<Intent> owed;    ///< Their items are held and in no line; as the home in hand spells them.
    std::vector<Intent> unclear; ///< Nobody can say now where their items are.
};

Settled sorted(const std::vector<Intent>& intents, const std::set<std::string, std::less<>>& logged,
               const PathGuard& guard) {
    Settled settled;
    for (const Intent& intent : intents) {
        const auto item =
            HeldItem::ofThisHome({.original = intent.original, .inTrash = intent.inTrash}, guard.home());
        if (!item) {
            settled.unclear.push_back(intent);
        } else if (!logged.contains(HeldItem::placeInRoot(item->inTrash))) {
            const auto held = Holding::heldPlace(item->inTrash, guard);
            if (held) {
                settled.owed.push_back({intent.actionID, intent.title, item->original, item->inTrash});
            } else if (!held.error().isMissing()) {
                settled.unclear.push_back(intent);
            }
        }
    }
    return settled;
}

/// The one outcome that each interrupted action owes, for what it had moved.
std::vector<CleanupOutcome> outcomesOf(const std::vector<Intent>& owed, Date now) {
    std::vector<CleanupOutcome> outcomes;
    const Intent* previous = nullptr;
    HardLinkRegistry registry;
    for (const Intent& intent : owed) {
        if (previous == nullptr || !belongTogether(*previous, intent)) {
            outcomes.push_back({.id = intent.actionID, .title = intent.title});
            outcomes.back().status = CleanupStatus::failed;
            outcomes.back().restorable.emplace();
            outcomes.back().date = now;
        }
        previous = &intent;
        CleanupOutcome& outcome = outcomes.back();
        outcome.restorable->push_back({.original = intent.original, .inTrash = intent.inTrash});
        outcome.trashedBytes =
            checkedSum(outcome.trashedBytes, FileTree::measure(intent.inTrash, registry).allocatedBytes);
    }
    return outcomes;
}

} // namespace

std::vector<CleanupOutcome> settleIntents(const PathGuard& guard, Date now) {
    const IntentFile file(OwnFiles::intents(guard.home()));
    const std::string history = OwnFiles::historyLog(guard.home());
    if (!platform::kindOf(OwnFiles::intents(guard.home()))) {
        return {};
    }
    const auto intents = file.pending();
    const auto outcomes = HistoryLog::outcomes(history);
    if (!intents || !outcomes) {
        return {}; // Unreadable now; nothing may be taken back on a guess.
    }
    const Settled settled = sorted(*intents, loggedPlaces(*outcomes), guard);
    std::vector<CleanupOutcome> missing = outcomesOf(settled.owed, now);
    while (!missing.empty() && HistoryLog::append(missing.front(), history)) {
        missing.erase(missing.begin());
    }
    if (missing.empty() && (settled.unclear.empty() || settled.unclear != *intents)) {
        (void)file.keepOnly(settled.unclear);
    }
    return missing;
}

std::vector<CleanupOutcome> recover(const PathGuard& guard, Date now) {
    std::vector<CleanupOutcome> missing = settleIntents(guard, now);
    Holding::sweep(guard);
    ArchiveStaging::sweep(guard);
    platform::sweepTemporaries(OwnFiles::support(guard.home()));
    platform::sweepTemporaries(OwnFiles::settings(guard.home()));
    platform::sweepForeign(ApplicationFolders::claudeDesktopSettings(guard.home()),
                           ApplicationFolders::claudeDesktopBackup(guard.home()));
    return missing;
}

bool mayHaveWork(const std::string& home) {
    const auto hasAny = [](const std::string& folder) { return !platform::namesIn(folder).empty(); };
    return platform::kindOf(OwnFiles::intents(home)) || platform::kindOf(OwnFiles::archiving(home)) ||
           hasAny(OwnFiles::holding(home)) || hasAny(OwnFiles::staging(home)) ||
           Holding::hasStagedInSupport(home) || platform::hasTemporaries(OwnFiles::support(home)) ||
           platform::hasTemporaries(OwnFiles::settings(home));
}

} // namespace lumo::Recovery
