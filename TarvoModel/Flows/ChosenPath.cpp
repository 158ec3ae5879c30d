#include "TarvoModel/Flows/ChosenPath.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Archiver.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "LumoCore/Rules/Locator.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <optional>

namespace tarvo {

using lumo::Words;

namespace {

bool areWithinEachOther(const std::string& left, const std::string& right) {
    return lumo::isInside(left, right) || lumo::isInside(right, left);
}

std::optional<std::string> reasonOf(const lumo::Rule& rule, const lumo::PlanSurroundings& surroundings) {
    if (rule.safety == lumo::Safety::keep) {
        return Words{"{}: eso se conserva", "{}: that is kept"}.with(rule.name);
    }
    return lumo::CleanupPlanner::openReason(rule.closeFirst, surroundings);
}

/// A rule with where it looks in the home now.
struct PlacedRule {
    const lumo::Rule& rule;
    std::vector<std::string> places;
};

std::optional<std::string> reasonAgainst(const std::string& path, const std::vector<PlacedRule>& rules,
                                         const lumo::PlanSurroundings& surroundings,
                                         const std::string& home) {
    if (lumo::platform::isMissing(path)) {
        return Words{"ya no está ahí", "it is no longer there"}.in();
    }
    for (const std::string& own :
         {lumo::OwnFiles::support(home), lumo::OwnFiles::caches(home), lumo::OwnFiles::settings(home)}) {
        if (areWithinEachOther(path, own)) {
            return Words{"Tarvo AI guarda ahí lo suyo", "Tarvo AI keeps its own there"}.in();
        }
    }
    if (lumo::Archiver::isMainFolder(path, home)) {
        return Words{"es una de tus carpetas principales, o contiene una: elige dentro de ella",
                     "it is one of your main folders, or holds one: choose inside it"}
            .in();
    }
    for (const PlacedRule& placed : rules) {
        const bool isConcerned = std::ranges::any_of(
            placed.places, [&](const std::string& place) { return areWithinEachOther(path, place); });
        if (auto reason = isConcerned ? reasonOf(placed.rule, surroundings) : std::nullopt) {
            return reason;
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<lumo::PlanEntry> chosenEntries(const std::vector<std::string>& paths,
                                           const std::vector<lumo::Rule>& rules,
                                           const lumo::PlanSurroundings& surroundings,
                                           const std::string& home) {
    std::vector<PlacedRule> placed;
    std::vector<std::vector<std::string>> found = lumo::resolveAll(rules, home);
    for (std::size_t index = 0; index < rules.size(); ++index) {
        placed.push_back({rules[index], std::move(found[index])});
    }
    std::vector<lumo::PlanEntry> entries;
    for (const std::string& path : paths) {
        lumo::HardLinkRegistry registry;
        const std::int64_t bytes = lumo::FileTree::measure(path, registry).allocatedBytes;
        lumo::DetailItem item = lumo::itemToSetAside("elegido:" + lumo::pathInID(path, home),
                                                     std::string(lumo::fileName(path)), {path}, bytes, {});
        entries.push_back({std::move(item.action), reasonAgainst(path, placed, surroundings, home)});
    }
    return entries;
}

} // namespace tarvo
