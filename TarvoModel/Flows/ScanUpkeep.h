#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Scanning/ScanReport.h"

#include <chrono>
#include <cstdint>
#include <string>

/// What comes before and after a full scan, whoever asked for it. Neither is worth failing a scan for: when
/// another program is at work, the home is somebody else's or cannot be written, nothing happens.
namespace tarvo::ScanUpkeep {

/// Removes what is past its days in the holding area; the bytes freed.
std::int64_t purgeExpired(const std::string& home, const std::string& program, lumo::Date now,
                          std::chrono::seconds clockDrift);

/// Stores the snapshot with which later scans are compared.
void storeSnapshot(const lumo::ScanReport& report, const std::string& program, lumo::Date now);

} // namespace tarvo::ScanUpkeep
