#pragma once

#include "LumoCore/Inventories/InstalledApp.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "LumoCore/Rules/Rule.h"

#include <string>
#include <vector>

/// Cache folders of the applications installed on this machine.
namespace lumo::AppCaches {

/// A safe rule for each installed application that has a cache folder under its own identifier, in the order
/// of the applications; ids are "cache-app:" and the identifier. Folders that a given rule already locates,
/// or that hold or lie in one, are left to that rule. Only an exact identifier counts: a name that merely
/// looks alike may belong to something else.
std::vector<Rule> rules(const std::vector<InstalledApp>& apps, const std::vector<Rule>& given,
                        const HomePlaces& places, Language language = currentLanguage());

/// The same for whoever has located the given rules already: what they have found.
std::vector<Rule> rulesBeside(const std::vector<std::string>& located, const std::vector<InstalledApp>& apps,
                              const HomePlaces& places, Language language = currentLanguage());

} // namespace lumo::AppCaches
