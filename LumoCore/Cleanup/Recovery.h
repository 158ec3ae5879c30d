#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"

#include <vector>

/// Puts a home back in order after a process that died in the middle of changing it.
namespace lumo::Recovery {

/// Writes the log lines that are owed for items which moved and are in no line, takes the intents back,
/// sweeps staging, empty batches, half-made archives and temporary files. Comes before anything else under
/// the home's lock, and changes nothing when there is nothing to do. Returns what was owed and could not be
/// written; it is owed again next time.
std::vector<CleanupOutcome> recover(const PathGuard& guard, Date now);

} // namespace lumo::Recovery
