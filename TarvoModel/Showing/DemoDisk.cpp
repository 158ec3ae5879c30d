#include "TarvoModel/Showing/DemoDisk.h"

#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/HeuristicExplainer.h"
#include "LumoCore/Explaining/SafetyPolicy.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/ProjectArtifacts.h"
#include "TarvoModel/Showing/CleanupTexts.h"
#include "TarvoModel/Showing/DemoTables.h"
#include "TarvoModel/Showing/Selection.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace tarvo::DemoDisk {

using lumo::Date;
using lumo::Language;
using lumo::System;
using std::chrono::days;
using std::chrono::hours;

namespace {

std::string absolute(std::string_view path, System system) {
    return lumo::expanded(path, home(system));
}

/// Whole blocks, as on a disk.
std::int64_t bytesOf(std::int64_t megabytes) {
    constexpr std::int64_t block = 4096;
    return megabytes * 1000000 / block * block;
}

lumo::Usage usageOf(std::int64_t megabytes, Date lastModified) {
    // About forty kilobytes a file, as caches have it.
    constexpr std::int64_t filesPerMegabyte = 25;
    const std::int64_t bytes = bytesOf(megabytes);
    return {.allocatedBytes = bytes,
            .apparentBytes = bytes,
            .fileCount = megabytes * filesPerMegabyte,
            .unreadableCount = 0,
            .lastModified = lastModified};
}

lumo::Finding findingOf(const FindingRow& row, const lumo::Rule& rule, Date now, Language language,
                        System system) {
    lumo::Finding finding{.ruleID = rule.id,
                          .name = rule.name,
                          .category = rule.category,
                          .safety = rule.safety,
                          .explanation = rule.explanation,
                          .cleanup = rule.cleanup,
                          .paths = {},
                          .usage = usageOf(row.megabytes, now - hours(5)),
                          .closeFirst = rule.closeFirst};
    for (const std::string_view place : row.places) {
        finding.paths.push_back(absolute(named(place, language, system), system));
    }
    if (finding.paths.empty()) {
        finding.paths.push_back(absolute(lumo::startOf(rule.locator), system));
    }
    return finding;
}

std::vector<lumo::Finding> findings(Date now, Language language, System system) {
    const std::vector<lumo::Rule> rules = lumo::RuleCatalog::of(system, language);
    std::vector<lumo::Finding> findings;
    for (const FindingRow& row : findingRows(system)) {
        if (const auto rule = std::ranges::find(rules, row.rule, &lumo::Rule::id); rule != rules.end()) {
            findings.push_back(findingOf(row, *rule, now, language, system));
        }
    }
    lumo::sortLargestFirst(findings);
    return findings;
}

lumo::ProjectReport projectOf(const ProjectRow& row, Date now, Language language, System system) {
    const Date changed = now - days(row.daysAgo) - hours(1);
    lumo::ProjectReport project{.name = row.name.in(language),
                                .path = absolute("~/" + row.name.in(language), system),
                                .usage = usageOf(row.ownMegabytes, changed),
                                .artifacts = {},
                                .lastCodeChange = changed};
    for (const ArtifactRow& artifact : row.artifacts) {
        const std::string name(artifact.name);
        project.artifacts.push_back({.name = name,
                                     .hint = lumo::ProjectArtifacts::hint(name, language),
                                     .paths = {project.path + "/" + name},
                                     .usage = usageOf(artifact.megabytes, changed)});
        project.usage += project.artifacts.back().usage;
    }
    return project;
}

std::vector<lumo::ProjectReport> projects(Date now, Language language, System system) {
    std::vector<lumo::ProjectReport> projects;
    for (const ProjectRow& row : projectRows(system)) {
        projects.push_back(projectOf(row, now, language, system));
    }
    lumo::sortLargestFirst(projects,
                           [](const lumo::ProjectReport& project) { return project.recoverableBytes(); });
    return projects;
}

std::vector<lumo::UnclassifiedItem> unclassified(Date now, System system) {
    std::vector<lumo::UnclassifiedItem> items;
    for (const UnclassifiedRow& row : unclassifiedRows(system)) {
        items.push_back({.path = absolute(row.path, system), .usage = usageOf(row.megabytes, now - days(2))});
    }
    lumo::sortLargestFirst(items);
    return items;
}

lumo::Explanation explanationOf(const UnclassifiedRow& row, Date now, Language language, System system) {
    using Source = lumo::Explanation::Source;
    const ExplanationRow& words = *row.explanation;
    const lumo::FolderEvidence shown = evidence(absolute(row.path, system), language, system);
    if (words.whatItIs.es.empty()) {
        return lumo::HeuristicExplainer::explain(shown, now - hours(3), language, system);
    }
    const bool wasOverruled = words.suggested && *words.suggested != words.safety;
    return {.path = absolute(row.path, system),
            .sizeBytes = bytesOf(row.megabytes),
            .whatItIs = words.whatItIs.in(language),
            .owner =
                words.owner.empty() ? Words{"desconocida", "unknown"}.in(language) : std::string(words.owner),
            .safety = words.safety,
            .suggestedSafety = wasOverruled ? words.suggested : std::nullopt,
            .reason = words.reason.in(language),
            .howToFree = words.action ? lumo::advice(*words.action, shown, language, system)
                                      : words.howToFree.in(language),
            .note = words.action ? lumo::SafetyPolicy::note(*words.suggested, words.safety, shown, language)
                    : words.note.es.empty() ? std::nullopt
                                            : std::optional(words.note.in(language)),
            .source = words.suggested ? Source::ai : Source::heuristic,
            .createdAt = now - hours(3)};
}

/// By how much things grew since yesterday, by id. A project has one in each language.
std::vector<std::pair<std::string, std::int64_t>> growths(System system) {
    std::vector<std::pair<std::string, std::int64_t>> growths;
    const auto add = [&](std::string id, std::int64_t megabytes) {
        growths.emplace_back(std::move(id), bytesOf(megabytes));
    };
    for (const FindingRow& row : findingRows(system)) {
        add(std::string(row.rule), row.grown);
    }
    for (const UnclassifiedRow& row : unclassifiedRows(system)) {
        add(std::string(lumo::unclassifiedIDPrefix) + absolute(row.path, system), row.grown);
    }
    for (const ProjectRow& row : projectRows(system)) {
        for (const ArtifactRow& artifact : row.artifacts) {
            for (const std::string_view name : {row.name.es, row.name.en}) {
                add(fmt::format("{}{}/{}", lumo::artifactIDPrefix, name, artifact.name), artifact.grown);
            }
        }
    }
    return growths;
}

} // namespace

lumo::ScanReport report(Date now, Language language, System system) {
    return {.home = std::string(home(system)),
            .scannedAt = now,
            .durationSeconds = 4.2,
            .volume = {.totalBytes = 494384795648, .availableBytes = bytesOf(38200)},
            .findings = findings(now, language, system),
            .projects = projects(now, language, system),
            .unclassified = unclassified(now, system)};
}

std::vector<lumo::PlanEntry> entries(const lumo::ScanReport& report, Language language) {
    const std::string openBrowser = "com.google.Chrome";
    return lumo::CleanupPlanner::plan(
        report, windowOptions(report, {}, language),
        {.now = report.scannedAt,
         .isRunning = [&](const std::string& bundleID) { return bundleID == openBrowser; },
         .nameOf = [](const std::string&) { return std::string("Google Chrome"); },
         .language = language});
}

lumo::DiskSnapshot yesterday(const lumo::ScanReport& report, System system) {
    lumo::DiskSnapshot snapshot = lumo::DiskSnapshot::from(report);
    snapshot.date = report.scannedAt - days(1);
    for (const auto& [id, grown] : growths(system)) {
        if (const auto size = snapshot.sizes.find(id); size != snapshot.sizes.end()) {
            size->second -= grown;
            snapshot.freeBytes += grown;
        }
    }
    return snapshot;
}

std::vector<lumo::Holding::Batch> held(Date now, System system) {
    std::vector<lumo::Holding::Batch> batches;
    // Together as large as the finding that is the holding area.
    for (const auto& [age, megabytes] : {std::pair(days(5), 1180), std::pair(days(2), 2030)}) {
        const Date date = now - age;
        batches.push_back({.path = lumo::Holding::newBatch(std::string(home(system)), date),
                           .date = date,
                           .bytes = bytesOf(megabytes)});
    }
    return batches;
}

std::vector<lumo::Explanation> explanations(Date now, Language language, System system) {
    std::vector<lumo::Explanation> explanations;
    for (const UnclassifiedRow& row : unclassifiedRows(system)) {
        if (row.explanation) {
            explanations.push_back(explanationOf(row, now, language, system));
        }
    }
    return explanations;
}

std::vector<lumo::CleanupOutcome> outcomes(const std::vector<lumo::CleanupAction>& actions, Date now) {
    std::vector<lumo::CleanupOutcome> outcomes;
    for (const lumo::CleanupAction& action : actions) {
        const CleanupShares shares = sharesOf({action});
        outcomes.push_back({.id = action.id,
                            .title = action.title,
                            .message = {},
                            .freedBytes = shares.total - shares.trash,
                            .trashedBytes = shares.trash,
                            .restorable = {},
                            .date = now,
                            .caller = {}});
    }
    return outcomes;
}

std::string notice(Language language, System system) {
    return lumo::SystemWords{.macos = {"Modo demo: es un Mac inventado y aquí no se limpia nada",
                                       "Demo mode: this is a made-up Mac and nothing gets cleaned here"},
                             .linux = {"Modo demo: es un equipo inventado y aquí no se limpia nada",
                                       "Demo mode: this is a made-up computer and nothing gets cleaned here"}}
        .on(system)
        .in(language);
}

} // namespace tarvo::DemoDisk
