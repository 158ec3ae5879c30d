#include "Fuzz/Check.h"
#include "LumoCore/Inventories/Packages.h"
#include "LumoCore/Inventories/Snaps.h"
#include "LumoCore/Inventories/UnusedApps.h"

// Lists of packages and records of launches are read whatever is in them, and versions have an order.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all = text(data, size);
    for (const auto& [name, package] : lumo::packagesInStatus(all)) {
        check(!name.empty() && package.installedBytes >= 0);
    }
    const std::size_t middle = all.find('\n');
    if (middle != std::string_view::npos) {
        const std::string_view left = all.substr(0, middle);
        const std::string_view right = all.substr(middle + 1);
        check(lumo::compareVersions(left, right) == -lumo::compareVersions(right, left));
        check(lumo::compareVersions(left, left) == 0);
    }
    (void)lumo::UnusedApps::launchesIn(all);
    for (const lumo::InstalledSnap& snap : lumo::snapsIn(all)) {
        check(!snap.name.empty() && !snap.name.starts_with('-') &&
              snap.name.find_first_of(" /;\n") == std::string::npos && snap.bytes >= 0);
    }
    return 0;
}
