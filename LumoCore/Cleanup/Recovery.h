#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"

#include <vector>

/// Puts a home back in order after a process that died in the middle of changing it.
namespace lumo::Recovery {

/// Settles the intents, sweeps staging, empty batches, half-made archives and temporary files. Comes before
/// anything else under the home's lock, and changes nothing when there is nothing to do. Returns what was
/// owed and could not be written.
std::vector<CleanupOutcome> recover(const PathGuard& guard, Date now);

/// Writes the log lines that are owed for items which moved and are in no line. An intent is taken back once
/// its item is in the log or certainly not held; one whose item cannot be looked for stays. Returns what
/// could not be written; it is owed again next time.
std::vector<CleanupOutcome> settleIntents(const PathGuard& guard, Date now);

/// True when something is held, or a process that died may have left something to put right. Asks for no
/// lock and changes nothing.
bool mayHaveWork(const std::string& home);

} // namespace lumo::Recovery
