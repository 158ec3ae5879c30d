#include "LumoCore/History/DiskSnapshot.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"

namespace lumo {

DiskSnapshot DiskSnapshot::from(const ScanReport& report, const std::vector<Inventory>& inventories) {
    DiskSnapshot snapshot{.date = report.scannedAt, .freeBytes = report.volume.availableBytes};
    const auto add = [&](const std::string& id, std::string name, std::int64_t bytes) {
        std::int64_t& size = snapshot.sizes[id];
        size = checkedSum(size, bytes);
        snapshot.names[id] = std::move(name);
    };
    for (const Finding& finding : report.findings) {
        add(finding.ruleID, finding.name, finding.usage.allocatedBytes);
    }
    for (const ProjectReport& project : report.projects) {
        for (const ProjectArtifact& artifact : project.artifacts) {
            add(artifactID(project, artifact), std::string(fileName(project.path)) + " · " + artifact.name,
                artifact.usage.allocatedBytes);
        }
    }
    for (const UnclassifiedItem& item : report.unclassified) {
        add(unclassifiedID(item), std::string(fileName(item.path)), item.usage.allocatedBytes);
    }
    for (const Inventory& inventory : inventories) {
        if (inventory.unavailable) {
            continue;
        }
        snapshot.sizes.emplace(idPrefixOf(inventory.kind), 0);
        for (const DetailItem& item : inventory.items) {
            add(item.id, item.name, item.bytes);
        }
    }
    return snapshot;
}

} // namespace lumo
