#include "LumoCore/History/DiskSnapshot.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"

namespace lumo {

DiskSnapshot DiskSnapshot::from(const ScanReport& report) {
    DiskSnapshot snapshot{.date = report.scannedAt, .freeBytes = report.volume.availableBytes};
    const auto add = [&](const std::string& id, std::string name, const Usage& usage) {
        std::int64_t& size = snapshot.sizes[id];
        size = checkedSum(size, usage.allocatedBytes);
        snapshot.names[id] = std::move(name);
    };
    for (const Finding& finding : report.findings) {
        add(finding.ruleID, finding.name, finding.usage);
    }
    for (const ProjectReport& project : report.projects) {
        for (const ProjectArtifact& artifact : project.artifacts) {
            add(artifactID(project, artifact), std::string(fileName(project.path)) + " · " + artifact.name,
                artifact.usage);
        }
    }
    for (const UnclassifiedItem& item : report.unclassified) {
        add(unclassifiedID(item), std::string(fileName(item.path)), item.usage);
    }
    return snapshot;
}

} // namespace lumo
