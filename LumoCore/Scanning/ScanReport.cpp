#include "LumoCore/Scanning/ScanReport.h"

#include "Platform/CheckedSum.h"

namespace lumo {

namespace {

/// Adds up counts as they come from outside: negative ones and sums that do not fit are noted, not fatal.
class Audit final {
  public:
    void add(std::int64_t count) {
        isSound_ = isSound_ && count >= 0 && !__builtin_add_overflow(sum_, count, &sum_);
    }
    void add(const Usage& usage) {
        for (const std::int64_t count :
             {usage.allocatedBytes, usage.apparentBytes, usage.fileCount, usage.unreadableCount}) {
            add(count);
        }
    }
    [[nodiscard]] bool isSound() const { return isSound_; }

  private:
    std::int64_t sum_ = 0;
    bool isSound_ = true;
};

bool isSound(const ScanReport& report) {
    Audit audit;
    audit.add(report.volume.totalBytes);
    audit.add(report.volume.availableBytes);
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
    return audit.isSound();
}

} // namespace

Result<ScanReport> scanReportFromJson(std::string_view bytes) {
    Result<ScanReport> report = decodeJson<ScanReport>(bytes);
    if (report && !isSound(*report)) {
        return failure("document: counts are negative or too large");
    }
    return report;
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
