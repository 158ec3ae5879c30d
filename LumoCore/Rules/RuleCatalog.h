#pragma once

#include "LumoCore/Rules/HomePlaces.h"
#include "LumoCore/Rules/Rule.h"

#include <vector>

/// What is known about the folders that fill disks: 64 rules that every system has, first the safe ones, then
/// those that need a look, then those that are kept; and after them a system's own, in the same order.
namespace lumo::RuleCatalog {

/// The 64 in the language of this process, as they are on macOS, made once.
const std::vector<Rule>& all();

/// The 64 as they are on macOS, in a language. Commands are the same in both, placeholders such as
/// "<paquete>" included.
std::vector<Rule> inLanguage(Language language);

/// The 64 and the system's own, with the texts and the usual places of that system.
std::vector<Rule> of(System system, Language language = currentLanguage());

/// The same, looking where the places of that home are. What would lie outside it is not looked for.
std::vector<Rule> inHome(const HomePlaces& home, Language language = currentLanguage());

/// `inHome` of this machine, now.
std::vector<Rule> inHome(const std::string& home);

} // namespace lumo::RuleCatalog
