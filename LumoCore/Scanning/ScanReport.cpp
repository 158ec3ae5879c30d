#include "LumoCore/Scanning/ScanReport.h"

#include "Platform/CheckedSum.h"

namespace lumo {

std::int64_t ProjectReport::recoverableBytes() const {
    std::int64_t sum = 0;
    for (const ProjectArtifact& artifact : artifacts) {
        sum = checkedSum(sum, artifact.usage.allocatedBytes);
    }
    return sum;
}

std::int64_t ScanReport::bytes(Safety safety) const {
    std::int64_t sum = 0;
    for (const Finding& finding : findings) {
        sum = checkedSum(sum, finding.safety == safety ? finding.usage.allocatedBytes : 0);
    }
    return sum;
}

std::int64_t ScanReport::safeBytes() const {
    std::int64_t sum = bytes(Safety::safe);
    for (const ProjectReport& project : projects) {
        sum = checkedSum(sum, project.recoverableBytes());
    }
    return sum;
}

std::int64_t ScanReport::unreadableCount() const {
    std::int64_t sum = 0;
    const auto add = [&](const auto& items) {
        for (const auto& item : items) {
            sum = checkedSum(sum, item.usage.unreadableCount);
        }
    };
    add(findings);
    add(projects);
    add(unclassified);
    return sum;
}

} // namespace lumo
