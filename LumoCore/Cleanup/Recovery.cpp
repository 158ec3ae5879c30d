#include "LumoCore/Cleanup/Recovery.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "LumoCore/Cleanup/ArchiveStaging.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/Intents.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/ForeignFile.h"
#include "Platform/StateFile.h"

#include <set>
#include <string>

namespace lumo::Recovery {

namespace {

/// Where the log's items are held.
std::set<std::string> loggedPlaces(const std::vector<CleanupOutcome>& outcomes) {
    std::set<std::string> places;
    for (const CleanupOutcome& outcome : outcomes) {
        for (const TrashedItem& item : outcome.restorable.value_or(std::vector<TrashedItem>())) {
            places.insert(item.inTrash);
        }
    }
    return places;
}

/// True for intents of one action of one cleanup.
bool belongTogether(const Intent& left, const Intent& right) {
    return left.actionID == right.actionID &&
           Holding::batchOf(left.inTrash) == Holding::batchOf(right.inTrash);
}

/// The one outcome that each interrupted action owes, for what it had moved.
std::vector<CleanupOutcome> owed(const std::vector<Intent>& intents, const std::set<std::string>& logged,
                                 const PathGuard& guard, Date now) {
    std::vector<CleanupOutcome> outcomes;
    const Intent* previous = nullptr;
    HardLinkRegistry registry;
    for (const Intent& intent : intents) {
        if (logged.contains(intent.inTrash) || !isInside(intent.inTrash, Holding::root(guard.home())) ||
            platform::isMissing(intent.inTrash)) {
            continue;
        }
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

/// Turns intents into log lines. Those are kept for which that was not possible.
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
    std::vector<CleanupOutcome> missing = owed(*intents, loggedPlaces(*outcomes), guard, now);
    while (!missing.empty() && HistoryLog::append(missing.front(), history)) {
        missing.erase(missing.begin());
    }
    if (missing.empty()) {
        (void)file.clear();
    }
    return missing;
}

} // namespace

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

} // namespace lumo::Recovery
