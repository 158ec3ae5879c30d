#pragma once

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

/// Why there is nothing to be learned from a scan: the home cannot be listed. Absent when it can.
std::optional<std::string> homeProblem(const Desk& desk);

/// One scan with those rules and what is known of this machine's applications. Changes nothing. Absent only
/// after a stop.
std::optional<lumo::ScanReport> scanned(const std::vector<lumo::Rule>& rules,
                                        const lumo::ScanOptions& options, const Desk& desk,
                                        const ScanWatch& watch = {});

/// Stores the snapshot with which later scans are compared. No reason to fail a scan: when another program is
/// at work, the home is somebody else's or cannot be written, nothing happens.
void storeSnapshot(const lumo::ScanReport& report, const Desk& desk);

} // namespace tarvo
