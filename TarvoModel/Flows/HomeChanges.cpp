#include "TarvoModel/Flows/HomeChanges.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "LumoCore/Cleanup/Mover.h"
#include "LumoCore/Cleanup/Undoing.h"
#include "LumoCore/Scanning/FileTree.h"

#include <algorithm>
#include <chrono>

namespace tarvo {

using lumo::CleanupAction;
using lumo::CleanupOutcome;
using lumo::HomeLock;
using lumo::PathGuard;
using lumo::Holding::Batch;

namespace {

lumo::Result<HomeLock> lockFor(const PathGuard& guard, const HomeDesk& desk) {
    using namespace std::chrono_literals;
    return HomeLock::take(guard, {.program = desk.program, .patience = 3s, .now = desk.now()});
}

/// The log with what a recovery could not write into it.
lumo::Result<std::vector<CleanupOutcome>> historyOf(const std::string& home,
                                                    const std::vector<CleanupOutcome>& unlogged) {
    auto outcomes = lumo::HistoryLog::outcomes(lumo::OwnFiles::historyLog(home));
    if (!outcomes) {
        return lumo::failure(unreadableHistoryText(outcomes.error()));
    }
    outcomes->insert(outcomes->end(), unlogged.begin(), unlogged.end());
    return std::move(*outcomes);
}

lumo::Result<std::vector<Batch>> batchesOf(const PathGuard& guard, lumo::Date now) {
    auto batches = lumo::Holding::batches(guard, now);
    if (!batches) {
        return lumo::failure(unreadableHoldingText(batches.error()));
    }
    return std::move(*batches);
}

} // namespace

std::vector<CleanupOutcome> usualCarryOut(const std::vector<CleanupAction>& actions, const PathGuard& guard,
                                          const lumo::CleanupExecutor::Control& control) {
    lumo::Mover mover(guard, lumo::Holding::newBatch(guard.home(), control.now()));
    return lumo::CleanupExecutor::run(actions, guard, lumo::OwnFiles::historyLog(guard.home()), mover,
                                      lumo::CleanupExecutor::SafeItems::deletedAtOnce, control);
}

lumo::Result<std::vector<CleanupOutcome>> historyUnder(const HomeLock& lock, const std::string& home) {
    return historyOf(home, lock.unlogged());
}

lumo::Result<Cleaned> cleanAllowed(const std::function<std::vector<CleanupAction>()>& allowed,
                                   const HomeDesk& desk, const CarryOut& carryOut,
                                   const lumo::CleanupExecutor::Control& control) {
    const PathGuard guard(desk.home);
    const auto lock = lockFor(guard, desk);
    if (!lock) {
        return std::unexpected(lock.error());
    }
    const std::int64_t lifetimeBefore = lumo::CleanupHistory::total(desk.home);
    return Cleaned{.outcomes = carryOut(allowed(), guard, control), .lifetimeBefore = lifetimeBefore};
}

lumo::Result<lumo::TrashOperationResult> undoNewest(const HomeDesk& desk) {
    const PathGuard guard(desk.home);
    const auto lock = lockFor(guard, desk);
    if (!lock) {
        return std::unexpected(lock.error());
    }
    const auto history = historyOf(desk.home, lock->unlogged());
    if (!history) {
        return std::unexpected(history.error());
    }
    return lumo::Holding::restore(lumo::Undoing::newestBatch(*history, guard), guard);
}

lumo::Result<HeldState> heldState(const HomeDesk& desk) {
    const PathGuard guard(desk.home);
    auto batches = batchesOf(guard, desk.now());
    if (!batches) {
        return std::unexpected(batches.error());
    }
    HeldState state{.batches = std::move(*batches)};
    if (!state.batches.empty()) {
        const auto history = historyOf(desk.home, {});
        state.canUndo = history && !lumo::Undoing::newestBatch(*history, guard).empty();
    }
    return state;
}

lumo::Holding::Emptied emptyUnchanged(const std::vector<Batch>& agreed, const std::vector<Batch>& now,
                                      const PathGuard& guard) {
    std::vector<Batch> unchanged;
    std::vector<std::string> changed;
    for (const Batch& batch : agreed) {
        const auto found = std::ranges::find(now, batch.path, &Batch::path);
        if (found != now.end() && found->bytes == batch.bytes) {
            unchanged.push_back(batch);
        } else if (found != now.end()) {
            changed.push_back(
                std::string(lumo::fileName(batch.path)) +
                lumo::Words{": ha cambiado desde la pregunta", ": it has changed since the question"}.in());
        }
    }
    lumo::Holding::Emptied emptied = lumo::Holding::empty(unchanged, guard);
    emptied.failures.insert(emptied.failures.end(), changed.begin(), changed.end());
    return emptied;
}

lumo::Result<lumo::Holding::Emptied> emptyAgreed(const std::vector<Batch>& agreed, const HomeDesk& desk) {
    const PathGuard guard(desk.home);
    const auto lock = lockFor(guard, desk);
    if (!lock) {
        return std::unexpected(lock.error());
    }
    const auto now = batchesOf(guard, desk.now());
    if (!now) {
        return std::unexpected(now.error());
    }
    return emptyUnchanged(agreed, *now, guard);
}

lumo::Result<Archived> archiveItem(const std::string& path, const HomeDesk& desk,
                                   const lumo::Archiver::ArchiveControl& control) {
    const PathGuard guard(desk.home);
    const auto lock = lockFor(guard, desk);
    if (!lock) {
        return std::unexpected(lock.error());
    }
    // Measured now, since nothing may take time between the last look at the original and its move.
    lumo::HardLinkRegistry registry;
    const std::int64_t bytes = lumo::FileTree::measure(path, registry).allocatedBytes;
    const auto archive = lumo::Archiver::archive(path, lumo::Archiver::destination(path), guard, control);
    if (!archive) {
        const std::string& detail = archive.error().detail;
        return lumo::failure(archive.error().errorDescription() +
                             (detail.empty() ? "" : " (" + detail + ")"));
    }
    Archived archived{.archive = archive->path, .outcome = {}};
    archived.archiveBytes = lumo::FileTree::measure(archive->path, registry).apparentBytes;
    archived.outcome =
        lumo::Archiver::setAside(*archive, std::string(lumo::fileName(path)), bytes, guard, desk.now())
            .front();
    if (archived.outcome.status == lumo::CleanupStatus::failed && !lumo::platform::kindOf(archive->path)) {
        return lumo::failure(archived.outcome.message.value_or(""));
    }
    return archived;
}

} // namespace tarvo
