#include "TarvoModel/Flows/Scanning.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/History/SnapshotStore.h"
#include "LumoCore/Inventories/Installers.h"
#include "TarvoModel/Flows/ScanPass.h"

namespace tarvo {

std::optional<std::string> homeProblem(const Desk& desk) {
    if (lumo::Scanner::canList(desk.home)) {
        return std::nullopt;
    }
    return lumo::Words{"no puedo ver lo que hay en {}: comprueba sus permisos",
                       "cannot list what is in {}: check its permissions"}
        .with(lumo::printable(desk.home));
}

std::optional<lumo::ScanReport> scanned(const std::vector<lumo::Rule>& rules,
                                        const lumo::ScanOptions& options, const Desk& desk,
                                        const ScanWatch& watch) {
    return lumo::Scanner::scan(rules, options,
                               {.startedAt = desk.now(),
                                .stop = watch.stop,
                                .progress = watch.progress,
                                .memory = watch.memory,
                                .findInstallers = lumo::Installers::located,
                                .findAppCaches = appCacheRules});
}

void storeSnapshot(const lumo::ScanReport& report, const Desk& desk) {
    if (const auto lock = lockHome(lumo::PathGuard(desk.home), desk)) {
        // A history that cannot be written now is one snapshot short, no more.
        (void)lumo::SnapshotStore(desk.home).append(lumo::DiskSnapshot::from(report),
                                                    lumo::GrowthTracker::snapshotsKept);
    }
}

} // namespace tarvo
