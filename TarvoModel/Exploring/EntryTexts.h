#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Scanning/NamedTree.h"
#include "TarvoModel/Exploring/Explorer.h"

#include <string>

/// What every face says of an entry that somebody looks at in the explorer.
namespace tarvo {

/// What its size does not tell: that it is another disk, could not be read, or has other names; empty for
/// nothing.
std::string entryNote(const lumo::NamedEntry& entry, lumo::Language language = lumo::currentLanguage());

/// That it is never touched, or lies in such a folder; empty for what may be.
std::string protectionNote(const Explorer& explorer, const lumo::NamedEntry& entry,
                           lumo::Language language = lumo::currentLanguage());

/// The day of its latest change; empty when that is not known.
std::string entryDay(const lumo::NamedEntry& entry, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
