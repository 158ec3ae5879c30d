#include "LumoCore/Scanning/Scanner.h"

#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/System.h"
#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "Platform/Volume.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <ranges>
#include <string_view>

namespace lumo::Scanner {

namespace {

constexpr std::string_view appCachePrefix = "cache-app:";

/// A rule and the paths it resolved to.
struct Located {
    const Rule* rule;
    std::vector<std::string> paths;
};

FileTree::Watch watchOf(const ScanContext& context) {
    return {context.progress != nullptr ? &context.progress->walked : nullptr, context.stop};
}

void enter(ScanPhase phase, const ScanContext& context) {
    if (context.progress != nullptr) {
        context.progress->phase = phase;
    }
}

/// Adds what the rules locate.
void locate(const std::vector<Rule>& rules, const ScanOptions& options, const ScanContext& context,
            std::vector<Located>& located) {
    std::vector<std::vector<std::string>> paths =
        resolveAll(rules, options.home, context.findInstallers, context.stop);
    for (std::size_t index = 0; index < rules.size(); ++index) {
        if (!paths[index].empty()) {
            located.push_back({&rules[index], std::move(paths[index])});
        }
    }
}

std::vector<std::string> pathsOf(const std::vector<Located>& located) {
    std::vector<std::string> paths;
    for (const Located& one : located) {
        paths.insert(paths.end(), one.paths.begin(), one.paths.end());
    }
    return paths;
}

std::vector<Usage> measureAll(const std::vector<std::string_view>& paths, HardLinkRegistry& registry,
                              const ScanContext& context) {
    return context.memory != nullptr ? context.memory->measureAll(paths, registry, watchOf(context))
                                     : FileTree::measureAll(paths, registry, watchOf(context));
}

/// Every distinct path measured once, however many rules name it. The keys are the located paths themselves.
std::map<std::string_view, Usage> measureDistinct(const std::vector<Located>& located,
                                                  HardLinkRegistry& registry, const ScanContext& context) {
    std::map<std::string_view, Usage> measured;
    for (const Located& one : located) {
        for (const std::string& path : one.paths) {
            measured.try_emplace(path);
        }
    }
    std::vector<std::string_view> paths;
    paths.reserve(measured.size());
    std::ranges::copy(std::views::keys(measured), std::back_inserter(paths));
    const std::vector<Usage> usages = measureAll(paths, registry, context);
    std::ranges::copy(usages, std::views::values(measured).begin());
    return measured;
}

Finding findingOf(const Located& located, const std::map<std::string_view, Usage>& measured) {
    const Rule& rule = *located.rule;
    Finding finding{.ruleID = rule.id,
                    .name = rule.name,
                    .category = rule.category,
                    .safety = rule.safety,
                    .explanation = rule.explanation,
                    .cleanup = cleanupOf(rule, located.paths),
                    .paths = located.paths,
                    .usage = {},
                    .closeFirst = rule.closeFirst};
    for (const std::string& path : located.paths) {
        finding.usage += measured.at(path);
    }
    return finding;
}

/// Applications have many small caches that nobody would miss or look for. Of what could not be read nobody
/// knows that it is empty.
bool isWorthReporting(const Finding& finding) {
    constexpr std::int64_t smallestAppCache = 50000000;
    if (finding.ruleID.starts_with(appCachePrefix)) {
        return finding.usage.allocatedBytes >= smallestAppCache;
    }
    // Folders take blocks of their own on Linux. Tools make theirs before they have anything to put there,
    // and a cleanup leaves them behind.
    const bool isEmpty = finding.usage.fileCount == 0 && finding.usage.unreadableCount == 0;
    if (isEmpty && currentSystem() == System::linux) {
        return false;
    }
    return finding.usage.allocatedBytes >= 1 || finding.usage.unreadableCount > 0;
}

std::vector<Finding> findAll(const std::vector<Rule>& rules, const ScanOptions& options,
                             const ScanContext& context, HardLinkRegistry& registry) {
    enter(ScanPhase::locating, context);
    std::vector<Located> located;
    locate(rules, options, context, located);
    std::vector<Rule> ofApps;
    if (options.discoverAppCaches && context.findAppCaches) {
        ofApps = context.findAppCaches(pathsOf(located), options.home);
        locate(ofApps, options, context, located);
    }
    enter(ScanPhase::measuringRules, context);
    const std::map<std::string_view, Usage> measured = measureDistinct(located, registry, context);
    std::vector<Finding> findings;
    for (const Located& one : located) {
        Finding finding = findingOf(one, measured);
        if (isWorthReporting(finding)) {
            findings.push_back(std::move(finding));
        }
    }
    sortLargestFirst(findings);
    return findings;
}

std::vector<ProjectReport> findProjects(const ScanOptions& options, const ScanContext& context,
                                        HardLinkRegistry& registry) {
    enter(ScanPhase::searchingProjects, context);
    const std::vector<std::string> paths = discoverProjects(options.home, projectDepth, context.stop);
    enter(ScanPhase::measuringProjects, context);
    std::vector<ProjectReport> projects = measureProjects(paths, options.home, registry, watchOf(context));
    sortLargestFirst(projects, &ProjectReport::recoverableBytes);
    return projects;
}

std::vector<std::string> claimedBy(const ScanReport& report) {
    std::vector<std::string> claimed{report.home + "/.minimax-agent/projects", OwnFiles::support(report.home),
                                     OwnFiles::caches(report.home), OwnFiles::settings(report.home)};
    for (const ProjectReport& project : report.projects) {
        claimed.push_back(project.path);
    }
    for (const Finding& finding : report.findings) {
        claimed.insert(claimed.end(), finding.paths.begin(), finding.paths.end());
    }
    return claimed;
}

std::vector<UnclassifiedItem> findUnclassified(const ScanReport& report, const ScanOptions& options,
                                               const ScanContext& context, HardLinkRegistry& registry) {
    enter(ScanPhase::measuringUnclassified, context);
    const HomePlaces places = HomePlaces::ofThisMachine(options.home);
    std::vector<std::string> paths = foldersNotListed(places);
    const std::size_t notListed = paths.size();
    std::ranges::move(unclassifiedCandidates(places, claimedBy(report), context.stop),
                      std::back_inserter(paths));
    const std::vector<Usage> usages = measureAll({paths.begin(), paths.end()}, registry, context);
    const std::int64_t smallest = std::max<std::int64_t>(options.unclassifiedMinimumBytes, 1);
    std::vector<UnclassifiedItem> items;
    for (std::size_t index = 0; index < paths.size(); ++index) {
        // A folder whose size is not known is not a small one.
        if (index < notListed || usages[index].allocatedBytes >= smallest) {
            items.push_back({paths[index], usages[index]});
        }
    }
    sortLargestFirst(items);
    return items;
}

} // namespace

std::optional<ScanReport> scan(const std::vector<Rule>& rules, const ScanOptions& options,
                               const ScanContext& context) {
    const double start = platform::monotonicSeconds();
    HardLinkRegistry registry;
    ScanReport report;
    report.home = options.home;
    report.scannedAt = context.startedAt;
    report.findings = findAll(rules, options, context, registry);
    if (options.includeProjects && !context.stop.stop_requested()) {
        report.projects = findProjects(options, context, registry);
    }
    if (!context.stop.stop_requested()) {
        report.unclassified = findUnclassified(report, options, context, registry);
    }
    if (context.stop.stop_requested()) {
        return std::nullopt;
    }
    report.volume = volumeInfo(options.home);
    report.durationSeconds = platform::monotonicSeconds() - start;
    return report;
}

bool canList(const std::string& home) {
    return platform::canList(home);
}

std::vector<std::string> children(const std::string& path) {
    std::vector<std::string> paths;
    const std::string prefix = path.ends_with('/') ? path : path + "/";
    for (const std::string& name : platform::namesIn(path)) {
        paths.push_back(prefix + name);
    }
    return paths;
}

VolumeInfo volumeInfo(const std::string& home) {
    const auto capacity = platform::volumeCapacity(home);
    return capacity ? VolumeInfo{capacity->total, capacity->availableForImportant} : VolumeInfo{};
}

} // namespace lumo::Scanner
