#include "TarvoModel/Flows/Scanning.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/History/SnapshotStore.h"
#include "LumoCore/Inventories/AppCaches.h"
#include "LumoCore/Inventories/Installers.h"
#include "Platform/Folder.h"
#include "TarvoModel/Flows/Finding.h"

namespace tarvo {

std::optional<std::string> homeProblem(const Desk& desk) {
    if (lumo::Scanner::canList(desk.home)) {
        return std::nullopt;
    }
    const lumo::Words words =
        lumo::platform::isMissing(desk.home)
            ? lumo::Words{"Tu carpeta personal no está en {}: comprueba que su disco sigue conectado",
                          "Your home folder is not at {}: check that its disk is still connected"}
            : lumo::Words{"No puedo ver lo que hay en {}: comprueba sus permisos",
                          "Cannot list what is in {}: check its permissions"};
    return words.with(lumo::printable(desk.home));
}

std::optional<lumo::ScanReport> scanned(const std::vector<lumo::Rule>& rules,
                                        const lumo::ScanOptions& options, const Desk& desk,
                                        const ScanWatch& watch) {
    return lumo::Scanner::scan(rules, options,
                               {.startedAt = desk.now(),
                                .stop = watch.stop,
                                .progress = watch.progress,
                                .memory = watch.memory,
                                .findInstallers = lumo::Installers::finder(watch.stop),
                                .findAppCaches = [&](const auto& located, const std::string& home) {
                                    return lumo::AppCaches::rulesBeside(
                                        located, desk.installedApps()->apps(),
                                        lumo::HomePlaces::ofThisMachine(home));
                                }});
}

std::vector<lumo::Inventory> itemsBeside(const Desk& desk, const ScanWatch& watch) {
    return found(
        {.kinds = {lumo::InventoryKind::large, lumo::InventoryKind::models}}, desk,
        {.progress = watch.progress != nullptr ? &watch.progress->walked : nullptr, .stop = watch.stop});
}

lumo::DiskSnapshot snapshotNow(const lumo::ScanReport& report, const Desk& desk) {
    return lumo::DiskSnapshot::from(report, itemsBeside(desk));
}

void storeSnapshot(const lumo::DiskSnapshot& snapshot, const Desk& desk) {
    if (const auto lock = lockHome(lumo::PathGuard(desk.home), desk)) {
        // A history that cannot be written now is one snapshot short, no more.
        (void)lumo::SnapshotStore(desk.home).append(snapshot, lumo::GrowthTracker::snapshotsKept);
    }
}

} // namespace tarvo
