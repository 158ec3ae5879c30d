#include "TarvoModel/Flows/ScanUpkeep.h"

#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/History/SnapshotStore.h"

namespace tarvo::ScanUpkeep {

using namespace std::chrono_literals;

std::int64_t purgeExpired(const std::string& home, const std::string& program, lumo::Date now,
                          std::chrono::seconds clockDrift) {
    const lumo::PathGuard guard(home);
    auto lock = lumo::HomeLock::take(guard, {.program = program, .patience = 0ms, .now = now});
    return lock && lock->mayPurge(now, clockDrift) ? lumo::Holding::purgeExpired(guard, now) : 0;
}

void storeSnapshot(const lumo::ScanReport& report, const std::string& program, lumo::Date now) {
    const lumo::PathGuard guard(report.home);
    const auto lock = lumo::HomeLock::take(guard, {.program = program, .patience = 3s, .now = now});
    if (lock) {
        // A history that cannot be written now is one snapshot short, no more.
        (void)lumo::SnapshotStore(report.home)
            .append(lumo::DiskSnapshot::from(report), lumo::GrowthTracker::snapshotsKept);
    }
}

} // namespace tarvo::ScanUpkeep
