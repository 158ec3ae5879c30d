#pragma once

#include "LumoCore/Rules/Rule.h"
#include "LumoCore/Scanning/Scanner.h"

#include <set>
#include <string>
#include <vector>

/// The two passes in which a home is scanned, the same for every face.
namespace tarvo {

enum class ScanPass {
    quick, ///< What can be seen soon: nothing that needs permission, no projects, only the largest folders.
    full,
};

/// The options of the pass.
lumo::ScanOptions optionsFor(ScanPass pass, const std::string& home);

/// The catalog's rules that the pass uses.
std::vector<lumo::Rule> rulesFor(ScanPass pass, const std::string& home);

/// The report of a quick pass with what only a full pass sees, as the last full one saw it: findings of rules
/// that need permission, projects, and unclassified folders. Without it, a window that is scanned again would
/// lose those rows for a moment, and with them what the user has ticked or unticked. What has one of the ids
/// was cleaned since and is left out.
lumo::ScanReport complemented(lumo::ScanReport quick, const lumo::ScanReport& full,
                              const std::set<std::string>& cleaned);

} // namespace tarvo
