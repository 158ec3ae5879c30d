#include "TarvoApp/Model/ScanPass.h"

#include "LumoCore/Inventories/AppCaches.h"
#include "LumoCore/Rules/RuleCatalog.h"

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

std::vector<lumo::Rule> rulesFor(ScanPass pass) {
    std::vector<lumo::Rule> rules = lumo::RuleCatalog::all();
    if (pass == ScanPass::quick) {
        std::erase_if(rules, [](const lumo::Rule& rule) { return rule.needsFolderPermission(); });
    }
    return rules;
}

std::vector<lumo::Rule> appCacheRules(const std::vector<lumo::Rule>& given, const std::string& home) {
    return lumo::AppCaches::rules(lumo::InstalledApp::scan(home), given, home);
}

} // namespace tarvo
