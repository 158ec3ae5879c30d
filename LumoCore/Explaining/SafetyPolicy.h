#pragma once

#include "LumoCore/Basics/System.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "LumoCore/Rules/Rule.h"

#include <optional>
#include <string>

/// What a model may claim about a folder. It never decides that something is safe: only the place where a
/// folder lies does.
namespace lumo::SafetyPolicy {

/// A folder among the caches is safe and a part of macOS is kept, whatever was suggested, in that order. Of
/// anything else the best that can be had is a look.
Safety finalSafety(Safety suggested, const FolderEvidence& evidence);

/// Why the suggestion was overruled; absent when it was not, or when nothing is known to say.
std::optional<std::string> note(Safety suggested, Safety final, const FolderEvidence& evidence,
                                Language language = currentLanguage(), System system = currentSystem());

} // namespace lumo::SafetyPolicy
