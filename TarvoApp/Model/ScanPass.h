#pragma once

#include "LumoCore/Rules/Rule.h"
#include "LumoCore/Scanning/Scanner.h"

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

/// The catalogue's rules that the pass uses.
std::vector<lumo::Rule> rulesFor(ScanPass pass);

/// The rules for caches of applications, for `ScanContext::findAppCaches`.
std::vector<lumo::Rule> appCacheRules(const std::vector<lumo::Rule>& given, const std::string& home);

} // namespace tarvo
