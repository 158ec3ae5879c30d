#include "LumoCore/Scanning/ScanReport.h"

#include "LumoCore/Basics/CheckedSum.h"

namespace lumo {

namespace {

/// Adds up counts as they come from outside: negative ones and sums that do not fit are noted, not fatal.
/// Lengths are only what files claim and may be any.
class Audit final {
  public:
    void add(const Usage& usage) {
        add(usage.allocatedBytes, allocatedBytes_);
        add(usage.fileCount, fileCount_);
        add(usage.unreadableCount, unreadableCount_);
        isSound_ = isSound_ && usage.apparentBytes >= 0;
    }
    [[nodiscard]] bool isSound() const { return isSound_; }

  private:
    void add(std::int64_t count, std::int64_t& sum) {
        isSound_ = isSound_ && count >= 0 && !__builtin_add_overflow(sum, count, &sum);
    }

    std::int64_t allocatedBytes_ = 0;
    std::int64_t fileCount_ = 0;
    std::int64_t unreadableCount_ = 0;
    bool isSound_ = true;
};

bool isSound(const ScanReport& report) {
    Audit audit;
    for (const Finding& finding : report.findings) {
        audit.add(finding.usage);
    }
    for (const ProjectReport& project : report.projects) {
        audit.add(project.usage);
        for (const ProjectArtifact& artifact : project.artifacts) {
            audit.add(artifact.usage);
        }
    }
    for (const UnclassifiedItem& item : report.unclassified) {
        audit.add(item.usage);
    }
    return audit.isSound() && report.volume.totalBytes >= 0 && report.volume.availableBytes >= 0;
}

} // namespace

Result<ScanReport> scanReportFromJson(std::string_view bytes) {
    Result<ScanReport> report = decodeJson<ScanReport>(bytes);
    if (report && !isSound(*report)) {
        return failure("document: counts are negative or too large");
    }
    return report;
}

std::string artifactID(const ProjectReport& project, const ProjectArtifact& artifact) {
    return std::string(artifactIDPrefix) + project.name + "/" + artifact.name;
}

std::string unclassifiedID(const UnclassifiedItem& item) {
    return std::string(unclassifiedIDPrefix) + item.path;
}

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
