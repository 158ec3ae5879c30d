#pragma once

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "LumoCore/Explaining/FreeingAction.h"
#include "LumoCore/Rules/Rule.h"

#include <optional>
#include <string>

/// What a model may claim about a folder. It never decides that something is safe: only the place where a
/// folder lies does.
namespace lumo::SafetyPolicy {

/// Why a cache may be emptied.
inline constexpr SystemWords cachesReason{
    .macos = {"macOS permite borrar las cachés: la app las regenera.",
              "macOS allows caches to be deleted: the app recreates them."},
    .linux = {"Los programas vuelven a crear sus cachés.", "Programs recreate their caches."}};

/// A folder among the caches is safe and a part of macOS is kept, whatever was suggested, in that order. Of
/// anything else the best that can be had is a look.
Safety finalSafety(Safety suggested, const FolderEvidence& evidence);

/// Why the suggestion was overruled; absent when it was not, or when nothing is known to say.
std::optional<std::string> note(Safety suggested, Safety final, const FolderEvidence& evidence,
                                Language language = currentLanguage(), System system = currentSystem());

/// The advice for the action, unless the folder is to be kept: on Linux that never comes with an advice to
/// remove anything, whoever suggested the action.
std::string advice(FreeingAction action, Safety final, const FolderEvidence& evidence,
                   Language language = currentLanguage(), System system = currentSystem());

} // namespace lumo::SafetyPolicy
