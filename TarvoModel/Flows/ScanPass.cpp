#include "TarvoModel/Flows/ScanPass.h"

#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Rules/RuleCatalog.h"

#include <algorithm>
#include <utility>

namespace tarvo {

lumo::ScanOptions optionsFor(ScanPass pass, const std::string& home) {
    constexpr std::int64_t quickMinimum = 300000000;
    lumo::ScanOptions options{.home = home};
    if (pass == ScanPass::quick) {
        options.includeProjects = false;
        options.unclassifiedMinimumBytes = quickMinimum;
    }
    return options;
}

std::vector<lumo::Rule> rulesFor(ScanPass pass, const std::string& home) {
    std::vector<lumo::Rule> rules = lumo::RuleCatalog::inHome(home);
    if (pass == ScanPass::quick) {
        std::erase_if(rules, [](const lumo::Rule& rule) { return rule.needsFolderPermission(); });
    }
    return rules;
}

lumo::ScanReport complemented(lumo::ScanReport quick, const lumo::ScanReport& full,
                              const std::set<std::string>& cleaned) {
    const std::vector<lumo::Rule> seen = rulesFor(ScanPass::quick, quick.home);
    const auto isQuick = [&](const std::string& ruleID) {
        return ruleID.starts_with("cache-app:") ||
               std::ranges::find(seen, ruleID, &lumo::Rule::id) != seen.end();
    };
    for (const lumo::Finding& finding : full.findings) {
        if (!isQuick(finding.ruleID) && !cleaned.contains(finding.ruleID)) {
            quick.findings.push_back(finding);
        }
    }
    for (lumo::ProjectReport project : full.projects) {
        std::erase_if(project.artifacts, [&](const lumo::ProjectArtifact& artifact) {
            return cleaned.contains(lumo::artifactID(project, artifact));
        });
        quick.projects.push_back(std::move(project));
    }
    for (const lumo::UnclassifiedItem& item : full.unclassified) {
        if (std::ranges::find(quick.unclassified, item.path, &lumo::UnclassifiedItem::path) ==
            quick.unclassified.end()) {
            quick.unclassified.push_back(item);
        }
    }
    lumo::sortLargestFirst(quick.findings);
    lumo::sortLargestFirst(quick.unclassified);
    return quick;
}

} // namespace tarvo
