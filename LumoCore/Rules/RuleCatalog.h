#pragma once

#include "LumoCore/Rules/Rule.h"

#include <vector>

/// What the system knows about the folders that fill disks: 64 rules, first the safe ones, then those that
/// need a look, then those that are kept.
namespace lumo::RuleCatalog {

/// The catalogue in the language of this process, made once.
const std::vector<Rule>& all();

/// The catalogue in a language. Commands are the same in both, placeholders such as "<paquete>" included.
std::vector<Rule> inLanguage(Language language);

} // namespace lumo::RuleCatalog
