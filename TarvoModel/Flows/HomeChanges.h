#pragma once

#include "LumoCore/Basics/Result.h"
#include "LumoCore/Cleanup/Archiver.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// What an application changes in a home folder, each change under the home's lock and on whichever thread it
/// is called. A failure says in the interface language why nothing was done.
namespace tarvo {

/// Whose home, who changes it, and what time it is.
struct HomeDesk {
    std::string home;
    std::string program; ///< For whoever finds the home locked.
    std::function<lumo::Date()> now;
};

/// Carries out actions under the guard: `usualCarryOut`, or a stand-in for it.
using CarryOut = std::function<std::vector<lumo::CleanupOutcome>(
    const std::vector<lumo::CleanupAction>&, const lumo::PathGuard&, const lumo::CleanupExecutor::Control&)>;

/// The executor: the user's own into a new batch of the holding area, what recreates itself deleted at once,
/// each with its line in the log.
std::vector<lumo::CleanupOutcome> usualCarryOut(const std::vector<lumo::CleanupAction>& actions,
                                                const lumo::PathGuard& guard,
                                                const lumo::CleanupExecutor::Control& control);

/// What came of a cleanup.
struct Cleaned {
    std::vector<lumo::CleanupOutcome> outcomes;
    std::int64_t lifetimeBefore = 0; ///< See `CleanupHistory::total`.
};

/// Carries out what is allowed; that is asked once nobody else can change the home any more.
lumo::Result<Cleaned> cleanAllowed(const std::function<std::vector<lumo::CleanupAction>()>& allowed,
                                   const HomeDesk& desk, const CarryOut& carryOut,
                                   const lumo::CleanupExecutor::Control& control);

/// Puts back what the newest cleanup still has set aside.
lumo::Result<lumo::TrashOperationResult> undoNewest(const HomeDesk& desk);

/// What is set aside, and whether something of it can be put back.
struct HeldState {
    std::vector<lumo::Holding::Batch> batches; ///< Oldest first.
    bool canUndo = false;

    friend bool operator==(const HeldState&, const HeldState&) = default;
};

/// Changes nothing and needs no lock. A failure says why it cannot be looked at.
lumo::Result<HeldState> heldState(const HomeDesk& desk);

/// The log with what a recovery could not write into it, for whoever holds the lock. A failure says why it
/// cannot be read.
lumo::Result<std::vector<lumo::CleanupOutcome>> historyUnder(const lumo::HomeLock& lock,
                                                             const std::string& home);

/// Removes for good those of the agreed batches that are still as they were; the others stay, each with a
/// failure. The home's lock must be held.
lumo::Holding::Emptied emptyUnchanged(const std::vector<lumo::Holding::Batch>& agreed,
                                      const std::vector<lumo::Holding::Batch>& now,
                                      const lumo::PathGuard& guard);

/// Removes for good the batches that were agreed to. One that is not as it was then stays, with a failure.
lumo::Result<lumo::Holding::Emptied> emptyAgreed(const std::vector<lumo::Holding::Batch>& agreed,
                                                 const HomeDesk& desk);

/// A verified archive, and what became of its original.
struct Archived {
    std::string archive;
    std::int64_t archiveBytes = 0;
    lumo::CleanupOutcome outcome; ///< Failed when the original could not be set aside.
};

/// Archives the item and sets the original aside. A failure says why there is no archive; the original is
/// where it was then.
lumo::Result<Archived> archiveItem(const std::string& path, const HomeDesk& desk,
                                   const lumo::Archiver::ArchiveControl& control);

} // namespace tarvo
