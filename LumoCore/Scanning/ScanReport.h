#pragma once

#include "LumoCore/Rules/Rule.h"
#include "LumoCore/Scanning/Usage.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// A rule that found something.
struct Finding {
    std::string ruleID;
    std::string name;
    Category category = Category::packageCache;
    Safety safety = Safety::keep;
    std::string explanation;
    Cleanup cleanup = cleanup::DeleteItems{};
    std::vector<std::string> paths; ///< Absolute.
    Usage usage;                    ///< The sum over the paths.
    std::optional<std::string> closeFirst;

    static constexpr auto fields = std::tuple{field("ruleID", &Finding::ruleID),
                                              field("name", &Finding::name),
                                              field("category", &Finding::category),
                                              field("safety", &Finding::safety),
                                              field("explanation", &Finding::explanation),
                                              field("cleanup", &Finding::cleanup),
                                              field("paths", &Finding::paths),
                                              field("usage", &Finding::usage),
                                              field("closeFirst", &Finding::closeFirst)};
    friend bool operator==(const Finding&, const Finding&) = default;
};

/// All folders of one regenerable kind in a project.
struct ProjectArtifact {
    std::string name;               ///< The folders' name, such as "node_modules".
    std::string hint;               ///< How it comes back.
    std::vector<std::string> paths; ///< Absolute, ascending.
    Usage usage;                    ///< Their sum.

    static constexpr auto fields =
        std::tuple{field("name", &ProjectArtifact::name), field("hint", &ProjectArtifact::hint),
                   field("paths", &ProjectArtifact::paths), field("usage", &ProjectArtifact::usage)};
    friend bool operator==(const ProjectArtifact&, const ProjectArtifact&) = default;
};

/// A developer project.
struct ProjectReport {
    std::string name; ///< Its path relative to the home folder.
    std::string path; ///< Absolute.
    Usage usage;      ///< The whole folder, artifacts included.
    std::vector<ProjectArtifact> artifacts;
    std::optional<Date> lastCodeChange; ///< Latest change of its own files; absent when it has none.

    static constexpr auto fields =
        std::tuple{field("name", &ProjectReport::name), field("path", &ProjectReport::path),
                   field("usage", &ProjectReport::usage), field("artifacts", &ProjectReport::artifacts),
                   field("lastCodeChange", &ProjectReport::lastCodeChange)};

    /// What the artifacts take.
    [[nodiscard]] std::int64_t recoverableBytes() const;

    friend bool operator==(const ProjectReport&, const ProjectReport&) = default;
};

/// A large folder that no rule claims.
struct UnclassifiedItem {
    std::string path; ///< Absolute.
    Usage usage;

    static constexpr auto fields =
        std::tuple{field("path", &UnclassifiedItem::path), field("usage", &UnclassifiedItem::usage)};
    friend bool operator==(const UnclassifiedItem&, const UnclassifiedItem&) = default;
};

/// Capacities in bytes; 0 for what the system does not say.
struct VolumeInfo {
    std::int64_t totalBytes = 0;
    std::int64_t availableBytes =
        0; ///< For important use: what the system frees by itself counts as available.

    static constexpr auto fields = std::tuple{field("totalBytes", &VolumeInfo::totalBytes),
                                              field("availableBytes", &VolumeInfo::availableBytes)};
    friend bool operator==(const VolumeInfo&, const VolumeInfo&) = default;
};

/// What an artifact and an unclassified folder are known by in plans, selections and snapshots; a finding is
/// known by its rule's identifier, which begins with neither prefix. The same in every language and release,
/// since identifiers are stored.
inline constexpr std::string_view artifactIDPrefix = "proyecto:";
inline constexpr std::string_view unclassifiedIDPrefix = "sin:";
std::string artifactID(const ProjectReport& project, const ProjectArtifact& artifact);
std::string unclassifiedID(const UnclassifiedItem& item);

/// All that one scan of a home folder found.
struct ScanReport {
    std::string home;
    Date scannedAt; ///< When the scan began.
    double durationSeconds = 0;
    VolumeInfo volume;
    std::vector<Finding> findings;              ///< Largest first.
    std::vector<ProjectReport> projects;        ///< Most recoverable first.
    std::vector<UnclassifiedItem> unclassified; ///< Largest first.

    static constexpr auto fields = std::tuple{field("home", &ScanReport::home),
                                              field("scannedAt", &ScanReport::scannedAt),
                                              field("durationSeconds", &ScanReport::durationSeconds),
                                              field("volume", &ScanReport::volume),
                                              field("findings", &ScanReport::findings),
                                              field("projects", &ScanReport::projects),
                                              field("unclassified", &ScanReport::unclassified)};

    /// What the findings with that safety take.
    [[nodiscard]] std::int64_t bytes(Safety safety) const;
    /// What recreates itself: the safe findings and all projects' artifacts.
    [[nodiscard]] std::int64_t safeBytes() const;
    /// Entries of findings, projects and unclassified folders that could not be read.
    [[nodiscard]] std::int64_t unreadableCount() const;

    friend bool operator==(const ScanReport&, const ScanReport&) = default;
};

/// A saved report. Fails on anything that no scan writes: malformed JSON, missing fields, negative counts, or
/// counts whose sum does not fit in 64 bits.
Result<ScanReport> scanReportFromJson(std::string_view bytes);

} // namespace lumo
