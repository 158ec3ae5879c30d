#pragma once

#include "LumoCore/History/DiskSnapshot.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "LumoCore/Scanning/Scanner.h"
#include "TarvoModel/Flows/Desk.h"

#include <optional>
#include <stop_token>
#include <vector>

/// Measuring a home.
namespace tarvo {

/// How a scan is watched and ended.
struct ScanWatch {
    lumo::ScanProgress* progress = nullptr;
    std::stop_token stop = {};
    lumo::ScanMemory* memory = nullptr; ///< Shared by the two passes of one scan.
};

/// Why there is nothing to be learned of the home, in a finished sentence: it is not there, or cannot be
/// listed. Absent when it can. What was found without it says nothing of the disk.
std::optional<std::string> homeProblem(const Desk& desk);

/// One scan with those rules and what is known of this machine's applications. Changes nothing. Absent only
/// after a stop.
std::optional<lumo::ScanReport> scanned(const std::vector<lumo::Rule>& rules,
                                        const lumo::ScanOptions& options, const Desk& desk,
                                        const ScanWatch& watch = {});

/// What a full scan knows besides its report: the large files and the models of the home, as they are now.
std::vector<lumo::Inventory> itemsBeside(const Desk& desk, const ScanWatch& watch = {});

/// What is known of a home by a report that has just been made, with those items: what others are compared
/// with, and what is stored.
lumo::DiskSnapshot snapshotNow(const lumo::ScanReport& report, const Desk& desk);

/// Stores a snapshot with which later scans are compared. No reason to fail a scan: when another program is
/// at work, the home is somebody else's or cannot be written, nothing happens.
void storeSnapshot(const lumo::DiskSnapshot& snapshot, const Desk& desk);

} // namespace tarvo
